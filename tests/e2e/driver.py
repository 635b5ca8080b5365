"""Runs the program in an X display of its own, works it with real keys and clicks, and reads what
it shows through the accessibility bus."""

import ctypes
import os
import shutil
import signal
import subprocess
import tempfile
import time

from gi.repository import Gio, GLib

ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE, COMPONENT = "org.a11y.atspi.Accessible", "org.a11y.atspi.Component"
PROPERTIES = "org.freedesktop.DBus.Properties"
ACTIVE, CHECKED, FOCUSED, SELECTED, SHOWING = 1, 4, 12, 23, 25  # bits of a state
# The second window is in a corner below the first one, so that it never takes its clicks.
WINDOW_RULES = """<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard>
<keybind key="A-F4"><action name="Close"/></keybind></keyboard><applications>
<application title="RAS Expanded Data Window"><layer>below</layer>
<position force="yes"><x>0</x><y>0</y></position></application></applications></openbox_config>"""
TIMEOUT = 10  # seconds until what must happen counts as failed


def until(condition, what, timeout=TIMEOUT):
    """Waits for a condition and returns what it gave; `what` may be a function that says more."""
    end = time.monotonic() + timeout
    while True:
        found = condition()
        if found:
            return found
        assert time.monotonic() < end, "not in time: " + (what() if callable(what) else what)
        time.sleep(0.01)


_LIBC = ctypes.CDLL(None)  # loaded early: it is called between fork and exec


def _dieWithParent():
    _LIBC.prctl(1, signal.SIGKILL)  # PR_SET_PDEATHSIG


class Desktop:
    """An X display with a window manager and an accessibility bus; everything ends in close()."""

    def __init__(self):
        _LIBC.prctl(36, 1)  # PR_SET_CHILD_SUBREAPER: what the bus starts is ours to end
        self.home, self.processes = tempfile.mkdtemp(prefix="e2e-"), []
        self.env = {"HOME": self.home, "XDG_RUNTIME_DIR": self.home, "PATH": os.environ["PATH"],
                    "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "xcb", "QT_ACCESSIBILITY": "1",
                    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        try:
            self._start()
        except BaseException:
            self.close()
            raise

    def _start(self):
        read, write = os.pipe()
        self.run("Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-noreset",
                 "-nolisten", "tcp", pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as pipe:
            self.env["DISPLAY"] = ":" + pipe.readline().strip()
        bus = self.run("dbus-daemon", "--session", "--nofork", "--print-address",
                       stdout=subprocess.PIPE)
        with bus.stdout as pipe:
            self.env["DBUS_SESSION_BUS_ADDRESS"] = pipe.readline().decode().strip()
        session = self._connect(self.env["DBUS_SESSION_BUS_ADDRESS"])
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    None, None, 0, 1000 * TIMEOUT, None).unpack()[0]
        self.bus = self._connect(address)
        rules = os.path.join(self.home, "rc.xml")
        with open(rules, "w") as file:
            file.write(WINDOW_RULES)
        self.run("openbox", "--config-file", rules, "--startup", "touch " + rules + ".done")
        until(lambda: os.path.exists(rules + ".done"), "window manager")

    @staticmethod
    def _connect(address):
        flags = Gio.DBusConnectionFlags
        return Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)

    def run(self, *command, **options):
        with open(os.path.join(self.home, "output"), "ab") as output:
            options = {"stdout": output, "stderr": output, **options}
            process = subprocess.Popen(command, env=self.env, stdin=subprocess.DEVNULL,
                                       preexec_fn=_dieWithParent, **options)
        self.processes.append(process)
        return process

    def xdotool(self, *arguments, check=True):
        done = subprocess.run(["xdotool", *map(str, arguments)], env=self.env, check=check,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        return done.stdout.decode()

    def output(self):
        with open(os.path.join(self.home, "output"), errors="replace") as output:
            return output.read()

    def close(self):
        for process in reversed(self.processes):
            process.kill()
            process.wait()
        while True:  # what they started has become ours
            with open(f"/proc/self/task/{os.getpid()}/children") as children:
                for child in map(int, children.read().split()):
                    os.kill(child, signal.SIGKILL)
            try:
                os.wait()
            except ChildProcessError:
                break
        shutil.rmtree(self.home, ignore_errors=True)


class Program:
    """The program under test. A node is a path on the accessibility bus."""

    def __init__(self, desktop, program, *arguments):
        self.desktop, self.clicks = desktop, 0
        registry = lambda: self._ask([(ROOT, ACCESSIBLE, "GetChildren", None)],
                                     "org.a11y.atspi.Registry")[0]
        known = {name for name, _ in registry()}
        self.process = desktop.run(program, *arguments)
        self.name = until(lambda: [name for name, _ in registry() if name not in known],
                          lambda: "start\n" + desktop.output())[0]
        self.main = until(lambda: self.window("RAS Log Browser"), "main window")
        bar, self.table, status = self.children(self.main)
        self.labels = self.children(status)[1:3]
        menus = self.children(bar)
        self.menus, self.items = dict(zip(self.names(menus), menus)), {}
        for title, menu in self.menus.items():
            items = self.children(self.children(menu)[0])
            self.items[title] = [item for item, name in zip(items, self.names(items)) if name]
        self.activate(self.main)

    # The accessibility tree

    def _ask(self, calls, name=None):
        """Makes all calls (path, interface, method, arguments) at once; None for a lost node."""
        answers = {}
        for number, (path, interface, method, arguments) in enumerate(calls):
            def done(bus, result, number=number):
                try:
                    answers[number] = bus.call_finish(result).unpack()[0]
                except GLib.Error:
                    answers[number] = None

            self.desktop.bus.call(name or self.name, path, interface, method, arguments, None,
                                  Gio.DBusCallFlags.NONE, 1000 * TIMEOUT, None, done)
        while len(answers) < len(calls):
            GLib.MainContext.default().iteration(True)
        return [answers[number] for number in range(len(calls))]

    def children(self, node):
        return [path for _, path in self._ask([(node, ACCESSIBLE, "GetChildren", None)])[0] or []]

    def names(self, nodes):
        which = GLib.Variant("(ss)", (ACCESSIBLE, "Name"))
        return self._ask([(node, PROPERTIES, "Get", which) for node in nodes])

    def roles(self, nodes):
        return self._ask([(node, ACCESSIBLE, "GetRoleName", None) for node in nodes])

    def states(self, nodes, state):
        answers = self._ask([(node, ACCESSIBLE, "GetState", None) for node in nodes])
        return [bool(answer and answer[0] >> state & 1) for answer in answers]

    def isActive(self, node):
        return self.states([node], ACTIVE)[0]

    def find(self, top, role, name=None):
        """All nodes below a node that have the role, and the name if one is given."""
        found, level = [], [top]
        while level:
            level = [child for node in level for child in self.children(node)]
            found += [node for node, its in zip(level, self.roles(level)) if its == role]
        if name is not None:
            found = [node for node, its in zip(found, self.names(found)) if its == name]
        return found

    def windows(self):
        nodes = self.children(ROOT)
        nodes = [node for node, shows in zip(nodes, self.states(nodes, SHOWING)) if shows]
        return dict(zip(self.names(nodes), nodes))

    def window(self, title):
        return self.windows().get(title)

    # What the program shows

    def headings(self):
        columns = self._property("NColumns")
        return self.names(self.children(self.table)[1:columns + 1])

    def _property(self, name):
        which = GLib.Variant("(ss)", ("org.a11y.atspi.Table", name))
        return self._ask([(self.table, PROPERTIES, "Get", which)])[0]

    def cells(self):
        width = self._property("NColumns") + 1
        nodes = self.children(self.table)
        return [nodes[at + 1:at + width] for at in range(width, len(nodes), width)]

    def rows(self):
        """The texts of each row."""
        cells = self.cells()
        names = iter(self.names([cell for row in cells for cell in row]))
        return [tuple(next(names) for _ in row) for row in cells]

    def selected(self):
        """The numbers of the rows that are selected."""
        states = self.states([row[0] for row in self.cells()], SELECTED)
        return [number for number, state in enumerate(states) if state]

    def cursor(self):
        states = self.states([row[0] for row in self.cells()], FOCUSED)
        return states.index(True) if True in states else None

    def checks(self, menu):
        """The numbers of the items that have a check mark."""
        states = self.states(self.items[menu], CHECKED)
        return [number for number, state in enumerate(states) if state]

    def status(self):
        return self.names(self.labels)

    def lines(self):
        window = self.window("RAS Expanded Data Window")
        return None if window is None else self.names(self.children(self.children(window)[0]))

    # Keys and clicks

    def key(self, *keys):
        self.desktop.xdotool("key", "--delay", 1, *keys)

    def type(self, text):
        self.desktop.xdotool("type", "--delay", 1, text)

    def text(self, node):
        span = GLib.Variant("(ii)", (0, -1))
        return self._ask([(node, "org.a11y.atspi.Text", "GetText", span)])[0]

    def click(self, node, modifier=None, times=1):
        press = ["click", "--repeat", times, "--delay", 10, 1]
        if modifier:
            press = ["keydown", modifier, *press, "keyup", modifier]
        self.desktop.xdotool("mousemove", *self.place(node), *press)

    def place(self, node):
        extents = GLib.Variant("(u)", (0,))
        x, y, _, height = self._ask([(node, COMPONENT, "GetExtents", extents)])[0]
        # Away from the last clicks: one on a menu item and one on the row below it, shortly after
        # another, would count as a double click.
        self.clicks += 1
        return x + (5, 14, 23)[self.clicks % 3], y + height // 2

    def drag(self, node, target):
        start, end = self.place(node), self.place(target)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        for step in range(1, 6):  # a drag takes several moves to be seen as one
            between = (a + (b - a) * step // 5 for a, b in zip(start, end))
            self.desktop.xdotool("mousemove", *between)
        self.desktop.xdotool("mouseup", 1)

    def activate(self, node):
        """Raises a window and gives it the keyboard."""
        title = self.names([node])[0]

        def isActive():
            if self.isActive(node):
                return True
            self.desktop.xdotool("search", "--onlyvisible", "--name", f"^{title}$",
                                 "windowactivate", check=False)

        until(isActive, "activation of " + title)

    def pick(self, menu, number):
        """Calls a command of the main window by clicks."""
        self.activate(self.main)
        self.click(self.menus[menu])
        node = self.items[menu][number]
        until(lambda: self.states([node], SHOWING)[0], "menu " + menu)
        self.click(node)

    def dialog(self, title):
        """Waits for a dialog to be ready for keys."""
        node = until(lambda: self.window(title), "dialog " + title)
        until(lambda: self.isActive(node), "focus of " + title)
        return node

    def button(self, dialog, name):
        self.click(self.find(dialog, "push button", name)[0])

    def end(self, title):
        until(lambda: self.window(title) is None, "end of " + title)
