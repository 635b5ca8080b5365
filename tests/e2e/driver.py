"""Works the program with real keys and clicks, and reads it through the accessibility bus."""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

from gi.repository import Gio, GLib

ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE, COMPONENT = "org.a11y.atspi.Accessible", "org.a11y.atspi.Component"
TEXT, PROPERTIES = "org.a11y.atspi.Text", "org.freedesktop.DBus.Properties"
ACTIVE, CHECKED, SELECTED, SHOWING = 1, 4, 23, 25  # bits of a state
BUS = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
       | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
# The second window is in a corner below the first one, so that it never takes its clicks.
WINDOW_RULES = """<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard><keybind key="A-F4">
<action name="Close"/></keybind></keyboard><applications><application
title="RAS Expanded Data Window"><layer>below</layer>
<position force="yes"><x>0</x><y>0</y></position></application></applications></openbox_config>"""
TIMEOUT = 60  # seconds until what must happen counts as failed


def until(condition, what):
    """Waits for a condition and returns what it gave; `what` may be a function that says more."""
    end = time.monotonic() + TIMEOUT
    while True:
        if found := condition():
            return found
        assert time.monotonic() < end, "not in time: " + (what() if callable(what) else what)
        time.sleep(0.01)


class Desktop:
    """An X display with a window manager and an accessibility bus; everything ends in close()."""

    def __init__(self, home=None):
        """`home` is a new folder for what the program finds and writes, removed at the end."""
        self.home, self.processes = pathlib.Path(home or tempfile.mkdtemp(prefix="e2e-")), []
        self.env = {"HOME": self.home, "XDG_RUNTIME_DIR": self.home, "PATH": os.environ["PATH"],
                    "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "xcb", "QT_ACCESSIBILITY": "1",
                    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def start(self):
        read, write = os.pipe()
        # Without keys that repeat, as they would where a busy machine holds them down for long.
        self.run("Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-noreset", "-r",
                 "-nolisten", "tcp", pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as pipe:
            self.env["DISPLAY"] = ":" + pipe.readline().strip()
        with self.run("dbus-daemon", "--session", "--nofork", "--print-address",
                      stdout=subprocess.PIPE).stdout as pipe:
            address = self.env["DBUS_SESSION_BUS_ADDRESS"] = pipe.readline().decode().strip()
        connect = lambda address: Gio.DBusConnection.new_for_address_sync(address, BUS, None, None)
        self.bus = connect(connect(address).call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0,
            1000 * TIMEOUT, None).unpack()[0])
        rules, ready = self.home / "rc.xml", self.home / "ready"
        rules.write_text(WINDOW_RULES)
        self.run("openbox", "--config-file", rules, "--startup", f"touch {ready}")
        until(ready.exists, "window manager")

    def run(self, *command, **options):
        # In a session of its own, so that close() ends what it has started, too.
        command = ["setpriv", "--pdeathsig", "KILL", *command]
        options = {"stderr": subprocess.DEVNULL, **options}
        self.processes.append(subprocess.Popen(command, env=self.env, cwd=self.home,
                                               start_new_session=True, **options))
        return self.processes[-1]

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
        shutil.rmtree(self.home, ignore_errors=True)


class Program:
    """The program under test. A node is a path on the accessibility bus."""

    def __init__(self, desktop, program, *arguments):
        self.desktop, self.clicks, self.name = desktop, 0, "org.a11y.atspi.Registry"
        programs = lambda: self._ask([ROOT], ACCESSIBLE, "GetChildren")[0]
        known = {name for name, _ in programs()}
        self.process = desktop.run(program, *arguments, stderr=None)
        self.name, = until(lambda: [name for name, _ in programs() if name not in known], "start")
        self.main = until(lambda: self.window("RAS Log Browser"), "main window")
        self.table, = self.find(self.main, "table")
        menus = self.children(*self.find(self.main, "menu bar"))
        self.menus, self.items = dict(zip(self.names(menus), menus)), {}
        for title, menu in self.menus.items():
            items = self.find(menu, "menu item")
            self.items[title] = dict(zip(self.names(items), items))

    # What it shows

    def _ask(self, nodes, interface, method, arguments=None):
        """What a method gives for each node, asked of all at once; None for a lost node."""
        answers = {}
        for node in nodes:
            def done(bus, result, node=node):
                try:
                    answers[node] = bus.call_finish(result).unpack()[0]
                except GLib.Error:
                    answers[node] = None

            self.desktop.bus.call(self.name, node, interface, method, arguments, None,
                                  Gio.DBusCallFlags.NONE, 1000 * TIMEOUT, None, done)
        while len(answers) < len({*nodes}):
            GLib.MainContext.default().iteration(True)
        return [answers[node] for node in nodes]

    def children(self, *nodes):
        answers = self._ask(nodes, ACCESSIBLE, "GetChildren")
        return [path for answer in answers for _, path in answer or []]

    def names(self, nodes):
        which = GLib.Variant("(ss)", (ACCESSIBLE, "Name"))
        return [name or "" for name in self._ask(nodes, PROPERTIES, "Get", which)]

    def states(self, nodes, state):
        answers = self._ask(nodes, ACCESSIBLE, "GetState")
        return [bool(answer and answer[0] >> state & 1) for answer in answers]

    def text(self, node):
        return self._ask([node], TEXT, "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def find(self, top, role, name=None):
        """All nodes below a node that have the role, and the name if one is given; none below
        one that has it, for a table has many."""
        found, level = [], self.children(top)
        while level:
            roles = self._ask(level, ACCESSIBLE, "GetRoleName")
            found += [node for node, its in zip(level, roles) if its == role]
            level = self.children(*(node for node, its in zip(level, roles) if its != role))
        return [node for node, its in zip(found, self.names(found)) if name in (None, its)]

    def window(self, title):
        nodes = self.children(ROOT)
        shown = [node for node, shows in zip(nodes, self.states(nodes, SHOWING)) if shows]
        return dict(zip(self.names(shown), shown)).get(title)

    def headings(self):
        return self.names(self.find(self.table, "column header"))

    def rows(self):
        """The cells of each row, while no column is hidden."""
        nodes, width = self.children(self.table), 12  # a header and eleven columns
        return [nodes[at + 1:at + width] for at in range(width, len(nodes), width)]

    def checks(self, menu):
        """The names of the items that have a check mark."""
        states = self.states(self.items[menu].values(), CHECKED)
        return [name for name, isChecked in zip(self.items[menu], states) if isChecked]

    def status(self):
        return " ".join(self.names(self.find(self.main, "label")))

    # Keys and clicks

    def xdotool(self, *arguments, check=True):
        subprocess.run(["xdotool", *map(str, arguments)], env=self.desktop.env, check=check,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def key(self, *keys):
        self.xdotool("key", "--delay", 1, *keys)

    def type(self, text):
        self.xdotool("type", "--delay", 1, text)

    def click(self, node, modifier=None, times=1):
        press = ["click", "--repeat", times, "--delay", 10, 1]
        if modifier:
            press = ["keydown", modifier, *press, "keyup", modifier]
        self.xdotool("mousemove", *self.place(node), *press)

    def place(self, node):
        x, y, _, height = self._ask([node], COMPONENT, "GetExtents", GLib.Variant("(u)", (0,)))[0]
        # Away from the last clicks: one on a menu item and one on the row below it, shortly after
        # another, would count as a double click.
        self.clicks += 1
        return x + (5, 14, 23)[self.clicks % 3], y + height // 2

    def drag(self, node, target):
        start, end = self.place(node), self.place(target)
        self.xdotool("mousemove", *start, "mousedown", 1)
        for step in range(1, 6):  # a drag takes several moves to be seen as one
            self.xdotool("mousemove", *(a + (b - a) * step // 5 for a, b in zip(start, end)))
        self.xdotool("mouseup", 1)

    def activate(self, node):
        """Raises a window and gives it the keyboard."""
        title, = self.names([node])
        search = "search", "--onlyvisible", "--name", f"^{title}$", "windowactivate"
        until(lambda: self.states([node], ACTIVE)[0] or self.xdotool(*search, check=False),
              "activation of " + title)

    def pick(self, menu, item):
        """Calls a command of the main window by clicks."""
        self.click(self.menus[menu])
        node = self.items[menu][item]
        until(lambda: self.states([node], SHOWING)[0], "menu " + menu)
        self.click(node)
        until(lambda: not self.states([node], SHOWING)[0], "end of menu " + menu)

    def dialog(self, title):
        """Waits for a dialog to be ready for keys."""
        node = until(lambda: self.window(title), "dialog " + title)
        until(lambda: self.states([node], ACTIVE)[0], "focus of " + title)
        return node
