"""Works the program at random and prints what it took: soak.py BIN MESSAGES HOURS [SEED]"""

import os
import pathlib
import random
import subprocess
import sys
import threading
import time

sys.dont_write_bytecode = True  # the sources stay clean
sys.path.append(str(pathlib.Path(__file__).parents[1] / "tests/e2e"))

from gi.repository import GLib

from driver import ACCESSIBLE, PROPERTIES, ROOT, SHOWING, Desktop, Program, until

MAIN, LINES, FINDINGS = "RAS Log Browser", "RAS Expanded Data Window", "Findings"
LIMIT = int(os.environ.get("ZELQ_SOAK_LIMIT", 4 << 30))
ROWS = 10  # of the table
MIB = 1 << 20


class Watch(threading.Thread):
    """Asks the program for its name again and again, which it answers between two events, and notes
    the longest time that took. The bus itself is asked, too: how long that takes is the machine's."""

    def __init__(self, program):
        super().__init__(daemon=True)
        self.program, self.doing, self.isEnding = program, "", False
        self.clear()

    def clear(self):
        self.slowest, self.during, self.slowestBus, self.peak = 0, "", 0, 0

    def ask(self, name, path, interface, method, arguments):
        begin = time.monotonic()
        self.program.desktop.bus.call_sync(name, path, interface, method, arguments, None, 0, 600_000,
                                           None)
        return time.monotonic() - begin

    def run(self):
        which = GLib.Variant("(ss)", (ACCESSIBLE, "Name"))
        while not self.isEnding:
            doing = self.doing
            try:
                took = self.ask(self.program.name, ROOT, PROPERTIES, "Get", which)
                bus = self.ask("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId", None)
            except GLib.Error:
                return  # the program has ended, which is noticed elsewhere
            if took > self.slowest:
                self.slowest, self.during = took, doing
            self.slowestBus = max(self.slowestBus, bus)
            self.peak = max(self.peak, self.resident())
            time.sleep(0.01)

    def process(self, name):
        return pathlib.Path("/proc", str(self.program.process.pid), name)

    def resident(self):
        return int(self.process("statm").read_text().split()[1]) * os.sysconf("SC_PAGE_SIZE")

    def count(self, folder):
        return len(os.listdir(self.process(folder)))


class Walk:
    """What is done at random. Each action leaves the main window without a dialog or a menu."""

    def __init__(self, desktop, binaries, seed, messages):
        self.desktop, self.binaries, self.messages = desktop, binaries, messages
        self.random = random.Random(seed)
        self.logs = self.makeLogs()
        self.program = Program(desktop, "prlimit", f"--as={LIMIT}",
                               os.path.join(binaries, "ras-log-browser"), self.logs[0])
        self.watch = Watch(self.program)
        self.done, self.merged = 0, 1
        self.actions = [(self.menu, 8), (self.keys, 8), (self.mouse, 5), (self.load, 1),
                        (self.merge, 2), (self.unload, 1), (self.filter, 3), (self.write, 1),
                        (self.find, 3), (self.goToTime, 1), (self.rowMenu, 3), (self.expanded, 2),
                        (self.findings, 1), (self.resize, 1)]

    def makeLogs(self):
        """A short log, longer ones, and what is no log or a damaged one."""
        home, names = self.desktop.home, []
        for number, entries in enumerate((500, 5_000, 20_000, 60_000, 120_000, 300_000)):
            names.append(home / f"log{number}.log")
            subprocess.run([self.binaries / "raslog", "sample", "-n", str(entries), "--seed",
                            str(number + 1), "-o", names[-1]], check=True)
        damaged = bytearray(names[2].read_bytes())
        for _ in range(2_000):
            damaged[self.random.randrange(len(damaged))] = self.random.randrange(256)
        (home / "damaged.log").write_bytes(damaged)
        (home / "cut.log").write_bytes(names[3].read_bytes()[:1_234_567])
        (home / "noise.log").write_bytes(self.random.randbytes(1_000_000))
        # May be written over while it is not loaded.
        (home / "again.log").write_bytes(names[1].read_bytes())
        (home / "text.log").write_text("This is no log.\n" * 1000)
        with open(home / "sparse.log", "wb") as sparse:
            sparse.truncate(64 << 30)
        os.mkfifo(home / "pipe.log")
        more = "again", "damaged", "cut", "noise", "text", "sparse", "pipe", "missing"
        return names + [home / f"{name}.log" for name in more]

    # Windows

    def shown(self):
        nodes = self.program.children(ROOT)
        states = self.program.states(nodes, SHOWING)
        return dict(zip(self.program.names([n for n, s in zip(nodes, states) if s]),
                        [n for n, s in zip(nodes, states) if s]))

    def dialogs(self):
        return {title: node for title, node in self.shown().items()
                if title not in (MAIN, LINES, FINDINGS)}

    def tidy(self):
        """Closes what an action may have left open: menus, lists of boxes, dialogs."""
        self.program.key("Escape", "Escape")
        for keys in ("Escape", "Escape", "Return", "Escape") * 3:
            open_ = self.dialogs()
            if not open_:
                return
            self.program.key(keys)
            time.sleep(0.05)
        raise AssertionError(f"does not close: {', '.join(self.dialogs())}")

    def pick(self, menu, item):
        self.program.activate(self.program.main)
        self.program.pick(menu, item)

    def dialog(self, menu, item):
        """Opens a dialog and waits until it has the keyboard; false if none comes."""
        self.pick(menu, item)
        title, = until(self.dialogs, f"dialog of {item}")
        self.program.dialog(title)

    # Actions

    def menu(self):
        menu = self.random.choice(["Edit", "Columns", "Expansion", "Expansion", "Display", "Display"])
        self.pick(menu, self.random.choice([name for name in self.program.items[menu] if name]))

    def keys(self):
        keys = ["Up", "Down", "Next", "Prior", "Home", "End", "shift+Down", "shift+Next",
                "shift+End", "ctrl+Down", "ctrl+space", "Return", "Return", "slash",
                "ctrl+backslash", "ctrl+Insert", "ctrl+F2", "F2", "shift+F2", "F3", "shift+F3", "F6",
                "Tab", "Left", "Right"]
        self.program.key(*self.random.choices(keys, k=self.random.randint(1, 12)))

    def mouse(self):
        _, _, width, height = self.extents()
        for _ in range(self.random.randint(1, 4)):
            self.at(self.random.randrange(width), self.random.randrange(25, height))
            self.program.xdotool("click", "--repeat", self.random.choice((1, 1, 2)),
                                 self.random.choice((1, 1, 1, 4, 5)))
        if self.random.random() < 0.2:
            self.at(self.random.randrange(width), self.random.randrange(60, height), "mousedown", 1)
            self.at(self.random.randrange(width), self.random.randrange(60, height), "mouseup", 1)

    def extents(self):
        return self.program._ask([self.program.main], "org.a11y.atspi.Component", "GetExtents",
                                 GLib.Variant("(u)", (0,)))[0]

    def at(self, x, y, *more):
        left, top, _, _ = self.extents()
        self.program.xdotool("mousemove", left + x, top + y, *more)

    def load(self):
        self.open("Load...", self.random.choice(self.logs))
        self.merged = 1

    def merge(self):
        if self.merged < 8:
            self.open("Merge...", self.random.choice(self.logs))
            self.merged += 1

    def open(self, item, path):
        self.dialog("File", item)
        self.program.type(path)
        self.program.key("Return")

    def unload(self):
        self.dialog("File", "Unload...")
        self.program.key(*["Down"] * self.random.randint(0, 5), "Return")

    def filter(self):
        items = [name for name in self.program.items["Filters"] if name]
        item = self.random.choice(items)
        if item.startswith("Remove"):
            return self.pick("Filters", item)
        self.dialog("Filters", item)
        select = ["ctrl+a"], ["Home"], ["Home", "shift+End"], ["End", *["shift+Up"] * 5], ["Down"]
        self.program.key(*self.random.choice(select))
        end = ["Return"], ["Return"], ["Escape"], [*["Tab"] * 4, "space"]
        self.program.key(*self.random.choice(end))

    def write(self):
        self.dialog("File", "Write log to disk...")
        self.program.type(self.random.choice((self.desktop.home / "listing", "/nosuch/listing",
                                              self.desktop.home / "again.log", "/dev/full")))
        self.program.key("Return")

    def find(self):
        self.program.key("ctrl+f", "ctrl+a")
        self.program.type(self.random.choice(("open", "e", "770", ".", "read.*[0-9]+", "C1 40", "zzz")))
        self.program.key(*self.random.choices(("Return", "F3", "shift+F3", "Down"), k=3), "Escape")

    def goToTime(self):
        self.program.key("ctrl+g")
        self.program.type(f"{self.random.randrange(25):02}:{self.random.randrange(60):02}")
        self.program.key("Return", "Escape")

    def rowMenu(self):
        self.program.key("Menu", *["Down"] * self.random.randint(1, 9), "Return", "Escape")

    def expanded(self):
        keys = ["Down", "Next", "End", "Home", "shift+Next", "ctrl+a", "ctrl+c", "Return"]
        window = self.shown().get(LINES)
        if window:
            self.program.activate(window)
            closes = self.random.random() < 0.3
            self.program.key(*["alt+F4"] if closes else self.random.choices(keys, k=5))

    def findings(self):
        window = self.shown().get(FINDINGS)
        if window:
            self.program.activate(window)
            self.program.key("Down", "Return", "Escape")

    def resize(self):
        self.program.xdotool("getactivewindow", "windowsize", self.random.randint(600, 1200),
                             self.random.randint(200, 1000), check=False)

    # The whole

    def step(self):
        actions, weights = zip(*self.actions)
        action, = self.random.choices(actions, weights)
        self.watch.doing = action.__name__
        print(time.strftime("%T"), action.__name__, file=self.messages, flush=True)
        self.program.activate(self.program.main)
        action()
        self.tidy()
        self.done += 1

    def rest(self):
        """Loads the short log alone, without filters, and waits until all else is freed."""
        self.watch.doing = "rest"
        self.open("Load...", self.logs[0])
        self.merged = 1
        self.pick("Filters", list(self.program.items["Filters"])[-1])
        before = 0
        while abs(before - self.watch.resident()) > MIB:
            before = self.watch.resident()
            time.sleep(2)
        return self.watch.resident(), self.watch.count("fd"), self.watch.count("task")

    def row(self, begin):
        """A row of the table. The figures of the watch begin anew."""
        memory, handles, threads = self.rest()
        watch, minutes = self.watch, (time.monotonic() - begin) / 60
        print(f"| {minutes:.0f} | {self.done} | {memory // MIB} | {watch.peak // MIB} | {handles} | "
              f"{threads} | {1000 * watch.slowest:.0f} ({watch.during}) | "
              f"{1000 * watch.slowestBus:.0f} |", flush=True)
        watch.clear()
        return memory, handles, threads

    def run(self, seconds):
        self.watch.start()
        begin = time.monotonic()
        print("| minute | commands | MiB at rest | MiB at most | handles | threads | "
              "longest without an event, ms | the machine's, ms |\n" + "| --- " * 8 + "|")
        rows = [self.row(begin)]
        for number in range(1, ROWS + 1):
            while time.monotonic() < begin + seconds * number / ROWS:
                self.step()
            rows.append(self.row(begin))
        self.pick("File", list(self.program.items["File"])[-1])
        self.watch.isEnding = True
        status = self.program.process.wait(60)
        print(f"ended with status {status}")
        memory, handles, threads = zip(*rows)
        half = len(rows) // 2
        grows = max(memory[half:]) > max(memory[:half]) + 64 * MIB
        leaks = handles[-1] > handles[0] or threads[-1] > threads[0]
        print(f"memory {'grows' if grows else 'is kept'}, handles {'leak' if leaks else 'are closed'}")
        return status == 0 and not grows and not leaks


def main():
    binaries, messages = pathlib.Path(sys.argv[1]).absolute(), open(sys.argv[2], "w")
    seconds = 3600 * float(sys.argv[3])
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 32)
    sys.stderr = os.fdopen(os.dup(2), "w")
    os.dup2(messages.fileno(), 2)  # for what the program says
    print(f"Seed {seed}, {seconds:.0f} s, at most {LIMIT // MIB} MiB of addresses.\n", flush=True)
    desktop = Desktop()
    try:
        desktop.start()
        walk = Walk(desktop, binaries, seed, messages)
        try:
            return 0 if walk.run(seconds) else 1
        except AssertionError as error:
            ended = walk.program.process.poll()
            subprocess.run(["import", "-window", "root", sys.argv[2] + ".png"], env=desktop.env)
            print(f"{walk.watch.doing}, after {walk.done} commands: {error}; "
                  f"the program {'runs' if ended is None else f'has ended with {ended}'}")
            return 1
    finally:
        desktop.close()


if __name__ == "__main__":
    sys.exit(main())
