"""Takes the pictures of the manual: screenshots.py [--check] BIN

Beside each picture stands a list of the texts that its windows give to assistive tools. With --check
no picture is taken: the lists are compared with the program as it is."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

sys.dont_write_bytecode = True  # the sources stay clean
PROJECT = pathlib.Path(__file__).absolute().parents[1]
sys.path.append(str(PROJECT / "tests/e2e"))

from gi.repository import Gio, GLib

import driver
from driver import ACCESSIBLE, COMPONENT, PROPERTIES, SHOWING, Desktop, Program, until

PICTURES = PROJECT / "docs/pictures"
DOCUMENTS = PROJECT / "docs/manual.md", PROJECT / "README.md"
MAIN, LINES = "RAS Log Browser", "RAS Expanded Data Window"
TITLE, EDGE = 19, 1  # pixels of a window's frame
# Of a list or table only the headings and the first items are looked at: a row is no text of ours.
HEADINGS, ITEMS = 12, 1
# Colours of a dark desktop, as KDE's settings give them.
DARK = {"Window": ("49,54,59", "239,240,241"), "View": ("35,38,41", "239,240,241"),
        "Button": ("60,66,72", "239,240,241"), "Selection": ("61,174,233", "252,252,252"),
        "Tooltip": ("49,54,59", "239,240,241")}


class Pictures:
    """Compares the lists or writes them, and takes the pictures."""

    def __init__(self, isCheck):
        self.isCheck, self.names, self.stale = isCheck, [], []

    def take(self, program, name, nodes, areas, items=()):
        """Takes a picture of some rectangles of the screen, one below the other if there are
        several, with what `nodes` and the menu `items` say as its list."""
        self.names.append(name)
        texts = [text for node in nodes for text in self.texts(program, node)]
        texts += [f"menu item: {text}" for text in program.names(items) if text]
        texts = "".join(text.replace(str(program.desktop.home), "~") + "\n" for text in texts)
        path = PICTURES / f"{name}.txt"
        if self.isCheck:
            self.compare(path, texts)
            return
        path.write_text(texts)
        parts = []
        for x, y, width, height in areas:
            parts += ["(", "screen:", "-crop", f"{width}x{height}+{x}+{y}", "+repage", ")"]
        picture = path.with_suffix(".png")
        screen = program.desktop.home / "screen.png"
        env = program.desktop.env
        subprocess.run(["import", "-window", "root", screen], env=env, check=True)
        parts = [screen if part == "screen:" else part for part in parts]
        subprocess.run(["convert", *parts, "-append", "-strip", "+dither", "-colors", "64", picture],
                       check=True)
        subprocess.run(["optipng", "-quiet", "-strip", "all", picture], check=True)

    def texts(self, program, node, depth=0):
        role, = program._ask([node], ACCESSIBLE, "GetRoleName")
        name, = program.names([node])
        if role == "text":
            name = f"{name} = {program.text(node)}"
        if name and role not in ("filler", "panel"):
            yield f"{role}: {name}"
        most = {"table": HEADINGS, "list": ITEMS, "tree": 0, "menu": 0, "combo box": 0}
        children = program.children(node)[:most.get(role, 1000)]
        for child, isShown in zip(children, program.states(children, SHOWING)):
            if isShown:
                yield from self.texts(program, child, depth + 1)

    def compare(self, path, texts):
        known = path.read_text() if path.exists() else ""
        if known != texts:
            self.stale.append(path.stem)
            changed = [f"-{text}" for text in known.splitlines() if text not in texts.splitlines()]
            changed += [f"+{text}" for text in texts.splitlines() if text not in known.splitlines()]
            print(f"{path.stem} is not what the program shows now:", *changed, sep="\n  ")

    def finish(self):
        """What is shown nowhere, or is a picture of nothing, is stale, too."""
        used = set()
        for document in DOCUMENTS:
            used |= set(re.findall(r"pictures/([a-z-]+)\.png", document.read_text()))
        stored = {path.stem for path in PICTURES.iterdir()}
        for name in sorted(used ^ {*self.names} | stored ^ {*self.names}):
            self.stale.append(name)
            print(f"{name}: a picture that is not taken, not stored, or in no document")
        return 1 if self.stale else 0


class Tour:
    def __init__(self, desktop, binaries, pictures):
        self.desktop, self.binaries, self.pictures = desktop, binaries, pictures
        self.home = desktop.home / "logs"
        self.home.mkdir()
        shutil.copy(PROJECT / "samples/demo.log", self.home / "demo.log")
        self.sample("second.log", 300, 11)
        self.sample("large.log", 4_000, 3)
        damaged = bytearray((self.home / "demo.log").read_bytes())
        at = 0
        for number in range(216):
            if number in (5, 90, 170):
                damaged[at + 4:at + 6] = (2, 88)  # the length of the header
            at += int.from_bytes(damaged[at:at + 2], "big")
        (self.home / "damaged.log").write_bytes(damaged[:40_000])

    def sample(self, name, entries, seed):
        subprocess.run([self.binaries / "raslog", "sample", "-n", str(entries), "--seed", str(seed),
                        "-o", self.home / name], check=True)

    # Working the program

    def start(self, log, width=1000, height=560):
        self.program = p = Program(self.desktop, self.binaries / "ras-log-browser", self.home / log)
        self.place(p.main, 10, 30, width, height)
        self.bar, = (node for node in p.children(p.main)
                     if p._ask([node], ACCESSIBLE, "GetRoleName") == ["status bar"])
        self.says("Logs: 1")

    def stop(self):
        self.program.process.kill()
        self.program.process.wait()

    def extents(self, *nodes):
        """The rectangle around nodes."""
        all_ = self.program._ask(nodes, COMPONENT, "GetExtents", GLib.Variant("(u)", (0,)))
        left, top = min(x for x, _, _, _ in all_), min(y for _, y, _, _ in all_)
        right, bottom = max(x + w for x, _, w, _ in all_), max(y + h for _, y, _, h in all_)
        return left, top, right - left, bottom - top

    def framed(self, *nodes):
        x, y, width, height = self.extents(*nodes)
        return x - EDGE, y - TITLE, width + 2 * EDGE, height + TITLE + EDGE

    def place(self, node, x, y, width, height):
        title, = self.program.names([node])
        def done():
            self.program.xdotool("search", "--onlyvisible", "--name", f"^{title}$", "windowsize",
                                 width, height, "windowmove", x, y, check=False)
            return self.extents(node)[2:] == (width, height)
        until(done, "size of " + title)

    # Qt asks the accessibility bus about each key but those of shortcuts, which come before the keys
    # that were pressed shortly before them. So what keys do is waited for before a shortcut's.
    def keys(self, *keys, window=None):
        self.program.activate(window or self.program.main)
        self.program.key(*keys)

    def says(self, text):
        status = lambda: " ".join(self.program.names(self.program.children(self.bar)))
        until(lambda: text in status(), lambda: f"{text}: {status()}")

    def shoot(self, name, *nodes):
        """A picture of windows, the main one unless others are named."""
        nodes = nodes or [self.program.main]
        self.pictures.take(self.program, name, nodes, [self.framed(*nodes)])

    def pick(self, menu, item):
        self.program.activate(self.program.main)
        items = self.program.items[menu]
        self.program.pick(menu, next(name for name in items if name.startswith(item)))

    def dialog(self, menu, item):
        before = {*self.program.children(driver.ROOT)}
        self.pick(menu, item)
        def opened():
            new = [node for node in self.program.children(driver.ROOT) if node not in before]
            return [node for node, isShown in zip(new, self.program.states(new, SHOWING)) if isShown]
        node, = until(opened, f"dialog of {item}")
        until(lambda: self.program.states([node], driver.ACTIVE)[0], "focus of " + item)
        return node

    def popup(self, window):
        """Opens the context menu of a window by its key, and gives its items: the one that the
        keyboard goes to leads to all."""
        p, focused = self.program, []
        registry = "org.a11y.atspi.Registry"
        wanted = GLib.Variant("(sass)", ("object:state-changed:focused", [], ""))
        p.desktop.bus.call_sync(registry, "/org/a11y/atspi/registry", registry, "RegisterEvent",
                                wanted, None, Gio.DBusCallFlags.NONE, -1, None)
        subscription = p.desktop.bus.signal_subscribe(
            p.name, "org.a11y.atspi.Event.Object", "StateChanged", None, "focused",
            Gio.DBusSignalFlags.NONE, lambda *event: focused.append(event[2]))
        self.keys("Menu", window=window)
        def items():
            p.key("Down")
            time.sleep(0.2)
            while GLib.MainContext.default().iteration(False):
                pass
            roles = p._ask(focused, ACCESSIBLE, "GetRoleName")
            return [node for node, role in zip(focused, roles) if role == "menu item"]
        item = until(items, "menu")[-1]
        p.key("Home")
        p.desktop.bus.signal_unsubscribe(subscription)
        parent = p._ask([item], PROPERTIES, "Get", GLib.Variant("(ss)", (ACCESSIBLE, "Parent")))
        return p.children(parent[0][1])

    # The pictures, in the order in which they are taken

    def all(self):
        self.first()
        self.menus()
        self.dialogs()
        self.filters()
        self.narrowed()
        self.found()
        self.stop()
        self.rows()
        self.damage()
        self.progress()
        self.looks()

    def first(self):
        """A log, two of its rows expanded."""
        self.start("demo.log")
        self.keys("Home", *["Down"] * 5, "Return", "Down", "Return")
        lines = until(lambda: self.program.window(LINES), "expanded data")
        self.place(lines, 10, 616, 1000, 300)
        self.keys("Up")
        self.says("entry 4")
        self.shoot("program", self.program.main, lines)
        self.shoot("main")
        self.keys("Home", *["Down"] * 6, *["shift+Down"] * 3, window=lines)
        self.shoot("expanded", lines)
        items = self.popup(lines)
        self.pictures.take(self.program, "expanded-menu", [lines],
                           [self.framed(lines, *items)], items)
        self.program.key("Escape")
        self.keys("ctrl+f", window=lines)
        self.program.type("device")
        time.sleep(1)
        self.shoot("expanded-find", lines)
        self.keys("alt+F4", window=lines)

    def menus(self):
        p = self.program
        for title in p.menus:
            p.activate(p.main)
            p.click(p.menus[title])
            items = list(p.items[title].values())
            until(lambda: p.states(items[:1], SHOWING)[0], "menu " + title)
            self.pictures.take(p, "menu-" + title.lower(), [], [self.extents(p.menus[title], *items)],
                               items)
            for _ in range(2):  # the first closes the menu, the second leaves the menu bar
                p.key("Escape")
                until(lambda: not p.states(items[:1], SHOWING)[0], "end of menu " + title)
                time.sleep(0.3)

    def dialogs(self):
        load = self.dialog("File", "Load")
        self.shoot("load", load)
        self.program.key("Escape")
        merge = self.dialog("File", "Merge")
        self.program.type(self.home / "second.log")
        time.sleep(1)
        self.program.key("Tab")  # closes the list of names that begin like this one
        time.sleep(1)
        self.shoot("merge", merge)
        self.program.click(*self.program.find(merge, "push button", "Merge"))
        self.says("Logs: 2")
        self.keys("Home", "Down", "Down", "Down")
        self.shoot("merged")
        self.shoot("unload", self.dialog("File", "Unload"))
        self.program.key("Down", "Return")
        self.says("Logs: 1")
        write = self.dialog("File", "Write")
        self.program.type(self.home / "demo.txt")
        self.shoot("write", write)
        self.program.key("Return")
        self.says("Written")

    def filters(self):
        for item in [name for name in self.program.items["Filters"] if name.endswith("...")]:
            dialog = self.dialog("Filters", item)
            self.program.key("Home", "shift+Down")
            self.shoot("filter-" + item[:-3].lower().replace(" ", "-"), dialog)
            self.program.key("Escape")
            until(lambda: not self.program.states([dialog], SHOWING)[0], "end of " + item)

    def narrowed(self):
        """A filter, some rows parked, and several selected."""
        self.dialog("Filters", "Entry types")
        self.program.key("Home", "shift+Down", "Return")
        self.says("Filters:")
        self.keys("slash", "Home", *["shift+Down"] * 9)
        self.pick("Display", "Display only non-selected")
        self.keys("Home", *["shift+Down"] * 4)
        self.says("Parked:")
        self.shoot("narrowed")
        self.pick("Filters", "Remove")
        self.says("300 of 300")

    def found(self):
        p = self.program
        self.place(p.main, 10, 30, 1000, 420)
        self.keys("Home")
        time.sleep(1)
        p.key("ctrl+f")
        p.type("queue")
        time.sleep(1)
        self.shoot("find")
        p.key("ctrl+a", "Tab", "Down", "Down", "shift+Tab")
        p.type("queue(")
        time.sleep(1)
        self.shoot("find-problem")
        self.keys("Escape")
        time.sleep(1)
        p.key("ctrl+g")
        p.type("08:00:10")
        self.shoot("time")
        p.key("Return", "Escape")

    def rows(self):
        """What rows have beside their cells."""
        self.start("demo.log", 770, 600)
        p = self.program
        for number, (steps, entry) in enumerate(((3, "entry 2"), (5, "entry 7"))):
            self.keys(*["Home"] * (number == 0), *["Down"] * steps)
            self.says(entry)
            p.key("ctrl+F2")
            self.says(f"Marks: {number + 1}")
        self.keys(*["Down"] * 4)
        self.says("entry 11")
        items = self.popup(p.main)
        self.pictures.take(p, "row-menu", [p.main], [self.framed(p.main, *items)], items)
        p.key("Escape")
        time.sleep(1)
        self.keys("F2")
        self.says("went on")
        self.place(p.main, 10, 30, 770, 420)
        self.shoot("marks")
        self.stop()
        self.start("large.log", 770, 600)
        self.keys("ctrl+f")
        self.program.type("FreeTime")
        time.sleep(2)
        self.program.key("ctrl+F2")
        self.shoot("overview")
        self.stop()

    def damage(self):
        self.start("damaged.log")
        button, = (node for node in self.program.children(self.bar)
                   if self.program.names([node])[0].startswith("Findings"))
        before = self.program.window("Findings")
        assert not before
        self.program.click(button)
        window = until(lambda: self.program.window("Findings"), "findings")
        self.place(window, 60, 380, 900, 180)
        self.program.key("Down", "Return")
        self.says("damaged.log, entry")
        self.shoot("findings", self.program.main, window)
        self.stop()

    def progress(self):
        """A listing that nobody reads is never complete."""
        self.start("large.log", 1000, 300)
        os.mkfifo(self.home / "pipe")
        with open(os.open(self.home / "pipe", os.O_RDWR)):
            self.dialog("File", "Write")
            self.program.type(self.home / "pipe")
            self.program.key("Return")
            time.sleep(2)
            self.shoot("progress")
        self.stop()

    def looks(self):
        """Another language, and a dark desktop."""
        env = self.desktop.env
        self.desktop.env = {**env, "LC_ALL": "de_DE.UTF-8", "LOCPATH": self.desktop.home}
        self.start("demo.log", 1000, 420)
        self.keys("Home", "Down", "Down")
        self.shoot("german")
        self.stop()
        self.desktop.env = {**env, "XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}
        settings = "".join(f"[Colors:{part}]\nBackgroundNormal={back}\nForegroundNormal={fore}\n"
                           for part, (back, fore) in DARK.items())
        folder = self.desktop.home / ".config"
        folder.mkdir(exist_ok=True)
        (folder / "kdeglobals").write_text(settings)
        self.start("demo.log", 1000, 420)
        self.keys("Home", "Down", "Down")
        self.shoot("dark")
        self.stop()


def main():
    isCheck = sys.argv[1] == "--check"
    binaries = pathlib.Path(sys.argv[-1]).absolute()
    # Pictures show the folder's name.
    home = None if isCheck else pathlib.Path("/tmp/operator")
    PICTURES.mkdir(exist_ok=True)
    if home:
        home.mkdir(mode=0o700)
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", home / "de_DE.UTF-8"], check=True)
    pictures, desktop = Pictures(isCheck), Desktop(home)
    try:
        desktop.start()
        Tour(desktop, binaries, pictures).all()
    except AssertionError:
        subprocess.run(["import", "-window", "root", binaries.parent / "screen.png"],
                       env=desktop.env, check=False)
        raise
    finally:
        desktop.close()
    return pictures.finish()


if __name__ == "__main__":
    sys.exit(main())
