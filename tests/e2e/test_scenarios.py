#!/usr/bin/python3
"""Works the program as users do and compares what it shows with the model after every command."""

import argparse
import os
import random
import sys
import unittest

sys.dont_write_bytecode = True  # the sources stay clean

import driver
from driver import until
from model import KINDS, Browser, Record, listing

OPTIONS = argparse.Namespace()
WINDOW = "RAS Expanded Data Window"
# The key of each menu, and the keys of its items from top to bottom; one item has none.
KEYS = {"File": ("alt+f", "lmuwx"), "Edit": ("alt+e", "sdr"), "Filters": ("alt+i", "etdpimnofr"),
        "Columns": ("alt+c", "extdpim.oyf"), "Expansion": ("alt+x", "euxpslnc"),
        "Display": ("alt+d", "asnex")}


def randomLog(source, size):
    """Records with few different values, so that filters and equal times have something to do."""
    pick, records = source.choice, []
    for number in range(size):
        code = pick([0x13, 0x13, 0x15, 0x15, 0x03, 0x05, 0x2002, 0x2003, 0x2027, 0x0004])
        when = (pick([2025, 2026, 2026]), pick([1, 12]), pick([1, 31]), pick([8, 25]), 30,
                pick([15, 16]), pick([0, 0, 7]))
        blocks = [(source.getrandbits(32), source.randbytes(pick([0, 5, 16, 40])))
                  for _ in range(pick([0, 1, 2]))]
        records.append(Record(code, when, pick([1, 2, 3]), 100 + number, pick([2, 0x80000001]),
                              pick([0, 1]), pick([300, 301, 302]), pick(range(6)),
                              pick(["ProcessJob(int)", "Queue", "AcceptJobNow"]),
                              None if source.random() < 0.1 else blocks))
    return records


class Session:
    """The program and the model side by side: every operation is done to both."""

    def __init__(self, desktop):
        self.desktop, self.model, self.log, self.logs = desktop, Browser(), [], {}
        self.byMouse, self.program = False, driver.Program(desktop, OPTIONS.program)

    def write(self, name, make):
        """Writes a log of the records that `make` gives, new ones each time it is called."""
        path = os.path.join(self.desktop.home, name)
        with open(path, "wb") as file:
            file.write(b"".join(record.bytes() for record in make()))
        self.logs[path] = make
        return path

    def check(self):
        """Program and model must agree, now or in a moment."""
        p, wanted, shown = self.program, None, None

        def agree():
            nonlocal wanted, shown
            assert p.process.poll() is None, "the program has ended\n" + self.desktop.output()
            shown = {"headings": p.headings(), "columns": p.checks("Columns"), "rows": p.rows(),
                     "selected": p.selected(), "filters": p.checks("Filters"), "status": p.status(),
                     "lines": p.lines()}
            self.model.settleTies(shown["rows"])
            wanted = self.model.view()
            return shown == wanted

        def differences():
            parts = [f"{what}\n  shown  {shown[what]}\n  wanted {wanted[what]}" for what in wanted
                     if shown[what] != wanted[what]]
            return "\n".join(["agreement of", *parts, "after", *self.log])

        until(agree, differences)

    def do(self, *words):
        self.log.append(" ".join(map(str, words)))
        if OPTIONS.verbose:
            print(self.log[-1], flush=True)

    def menu(self, menu, key):
        opening, keys = KEYS[menu]
        if self.byMouse or key == ".":
            self.program.pick(menu, keys.index(key))
        else:
            self.keys(opening, key)

    def keys(self, *keys):
        self.program.activate(self.program.main)
        self.program.key(*keys)

    def dialog(self, menu, key, title):
        self.menu(menu, key)
        return self.program.dialog(title)

    def end(self, dialog, title, button, key=None):
        """Ends a dialog by a button, or by a key if there is one and keys are in use."""
        if key and not self.byMouse:
            self.program.key(key)
        else:
            self.program.button(dialog, button)
        self.program.end(title)

    # File

    def open(self, path, merge=False):
        self.do("merge" if merge else "load", os.path.basename(path))
        title = "Select a log file to merge in" if merge else "Select a log to Load"
        self.dialog("File", "m" if merge else "l", title)
        self.program.type(path)
        self.program.key("Return")
        self.program.end(title)
        (self.model.merge if merge else self.model.load)(path, self.logs[path]())

    def unload(self, slot):
        self.do("unload", slot)
        dialog = self.dialog("File", "u", "Unload Log File")
        items, slots = self.program.find(dialog, "list item"), sorted(self.model.logs)
        assert self.program.names(items) == [self.model.logs[s] for s in slots], self.log
        if slot is not None and self.byMouse:
            self.program.click(items[slots.index(slot)])
        elif slot is not None:
            self.program.key("Home", *["Down"] * slots.index(slot), "space")
        if slots:
            self.model.unload(slots[0] if slot is None else slot)  # the first is selected
        self.end(dialog, "Unload Log File", "Unload", "Return")

    def writeLog(self):
        self.do("write log to disk")
        path = os.path.join(self.desktop.home, "listing")
        dialog = self.dialog("File", "w", "Write log to disk")
        self.program.type(path)
        self.end(dialog, "Write log to disk", "Write", "Return")
        wanted = listing(self.model.records) if self.model.rows else None

        def read():
            if os.path.exists(path):
                with open(path) as file:
                    return file.read()

        until(lambda: read() == wanted, lambda: f"listing\n{read()}\nwanted\n{wanted}\n{self.log}")
        if wanted is not None:
            os.remove(path)

    def exit(self):
        self.menu("File", "x")
        assert self.program.process.wait(driver.TIMEOUT) == 0

    # Filters and columns

    def filter(self, kind, button, clicks=()):
        """Clicks buttons (texts) and Ctrl+clicks items (numbers) of a dialog, and ends it."""
        p, m, title = self.program, self.model, KINDS[kind][0] + " Filter Data Entry"
        dialog = self.dialog("Filters", KEYS["Filters"][1][kind - 1], title)
        items, (values, accepted) = p.find(dialog, "list item"), m.offer(kind)
        texts, accepted = [KINDS[kind][2](value) for value in values], set(accepted)
        assert p.names(items) == texts, (kind, p.names(items), texts, self.log)
        agree = lambda: p.states(items, driver.SELECTED) == [value in accepted for value in values]
        assert agree(), (kind, texts, accepted, self.log)
        for click in clicks:
            if isinstance(click, str):
                p.button(dialog, click)
                accepted = set(values) if click == "Select All" else set()
            elif click < len(values):
                p.click(items[click], "ctrl")
                accepted ^= {values[click]}
        until(agree, lambda: f"selection of {accepted} {self.log}")
        chosen = [text for text, value in zip(texts, values) if value in accepted]
        self.do("filter", title, chosen, "of", texts, button)
        self.end(dialog, title, button, "alt+o" if button == "OK" else None)
        if button == "OK":
            m.accept(kind, accepted)
        elif button == "Cancel":
            m.cancel(kind)
        else:
            m.delete(kind)

    def removeFilters(self):
        self.do("remove all filters")
        self.menu("Filters", "r")
        self.model.removeFilters()

    def toggleColumn(self, column):
        self.do("toggle column", column)
        self.menu("Columns", KEYS["Columns"][1][column])
        self.model.hiddenColumns ^= {column}

    # Selection, expansion and display

    def select(self, key):
        self.do("select", key)
        if len(key) == 1:
            self.menu("Edit", key)
        else:
            self.keys(key)
        if key != "ctrl+Insert":
            self.model.select({"slash": lambda at, r: True, "s": lambda at, r: True,
                               "r": lambda at, r: not r.selected}.get(key, lambda at, r: False))

    def click(self, row, modifier=None, times=1):
        self.do("click row", row, modifier, times)
        self.program.activate(self.program.main)
        self.program.click(self.program.cells()[row][0], modifier, times)
        if modifier == "ctrl":
            self.model.rows[row].selected ^= True
        else:
            self.model.select(lambda at, r: at == row)
        if times == 2:
            self.model.open(self.model.rows[row])

    def clickRange(self, first, last):
        self.click(first)
        self.do("Shift+click row", last)
        self.program.click(self.program.cells()[last][0], "shift")
        self.model.select(lambda at, r: min(first, last) <= at <= max(first, last))

    def drop(self, row):
        """Drags a row to the expanded-data window, and with it all others if it is selected."""
        self.do("drop row", row)
        m, p = self.model, self.program
        p.activate(p.main)
        p.drag(p.cells()[row][0], p.children(p.window(WINDOW))[0])
        if not m.rows[row].selected:
            m.select(lambda at, r: at == row)
        for record in m.rows:
            if record.selected and not record.expanded:
                m.open(record)

    def openByKey(self):
        at = self.program.cursor()
        self.do("Return in row", at)
        self.keys("Return")
        if at is not None:
            self.model.open(self.model.rows[at])

    def expand(self, key):
        at, m = self.program.cursor(), self.model
        self.do("expansion", key, "with cursor in row", at)
        self.menu("Expansion", key)
        which = [lambda r: at is not None and r is m.rows[at], lambda r: True,
                 lambda r: r.selected, lambda r: not r.selected]["euxpslnc".index(key) // 2]
        for record in filter(which, m.rows):
            (m.expand if key in "exsn" else m.collapse)(record)

    def display(self, key):
        self.do("display", key)
        self.menu("Display", key)
        if key == "a":
            self.model.displayAll()
        else:
            which = {"s": lambda r: not r.selected, "n": lambda r: r.selected,
                     "e": lambda r: not r.expanded, "x": lambda r: r.expanded}[key]
            self.model.park(which, collapses=key != "e")

    def closeWindow(self):
        self.do("close the expanded-data window")
        self.program.activate(self.program.window(WINDOW))
        self.program.key("alt+F4")
        self.model.closeWindow()

    def step(self, source):
        """One operation at random."""
        m, pick = self.model, source.choice
        self.byMouse = source.random() < 0.3
        rows, kinds = len(m.rows), [1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 9]
        free = [path for path in self.logs if path not in m.logs.values()]
        columns = [c for c in range(11) if c in m.hiddenColumns or len(m.hiddenColumns) < 10]
        paths = free if source.random() < 0.9 else [*self.logs]
        row = lambda: source.randrange(rows)
        clicks = lambda: pick([[], ["Select All"], ["Deselect All"]]) + source.sample(range(6), 2)
        operations = [
            lambda: self.filter(pick(kinds), pick(["OK"] * 5 + ["Delete Filter"] * 3 + ["Cancel"]),
                                pick([clicks(), []])),
            lambda: self.display(pick("aaasnex")),
            lambda: self.expand(pick("euxpslncsn")),
            lambda: self.select(pick(["s", "d", "r", "r", "slash", "ctrl+backslash",
                                      "ctrl+Insert"])),
            lambda: self.toggleColumn(pick(columns)),
            self.openByKey,
            pick([self.removeFilters, self.writeLog])]
        operations += operations[:1] * 4 + operations[1:3]
        if len(m.logs) < 3:
            operations += [lambda: self.open(pick(paths), bool(m.logs) and pick(range(9)) > 0)] * 2
        if m.logs:
            operations += [lambda: self.unload(pick([*m.logs, *m.logs, None]))]
        if rows:
            operations += [lambda: self.click(row(), "ctrl"),
                           lambda: self.click(row(), None, pick([1, 2])),
                           lambda: self.clickRange(row(), row())]
        if m.window:
            operations += [self.closeWindow] + [lambda: self.drop(row())] * bool(rows)
        pick(operations)()
        self.check()


class Scenarios(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = driver.Desktop()
        cls.addClassCleanup(cls.desktop.close)

    def setUp(self):
        self.session = Session(self.desktop)
        process = self.session.program.process
        self.addCleanup(lambda: (process.kill(), process.wait()))

    def logs(self, seed=1):
        return [self.session.write(f"{n}.log",
                                   lambda n=n, size=size: randomLog(random.Random(n), size))
                for n, size in enumerate([8, 8, 7, 0, 3], 10 * seed)]

    def run_(self, *operations):
        for operation, *arguments in operations:
            operation(*arguments)
            self.session.check()

    def testByKeyboard(self):
        s, p, logs = self.session, self.session.program, self.logs()
        self.run_((s.open, logs[0]), (s.open, logs[1], True), (s.openByKey,))
        p.activate(p.main)
        p.key("ctrl+Home", "Down", "shift+Down", "ctrl+Down")
        s.model.select(lambda at, r: at in (1, 2))
        s.check()
        self.assertEqual(p.cursor(), 3)
        self.run_((s.openByKey,), (s.select, "slash"), (s.select, "ctrl+backslash"),
                  (s.select, "r"), (s.expand, "x"), (s.expand, "u"), (s.display, "x"),
                  (s.display, "a"))
        s.dialog("Filters", "p", "PID Filter Data Entry")
        p.key("Home", "shift+Down", "Return")
        p.end("PID Filter Data Entry")
        s.model.accept(4, s.model.offer(4)[0][:2])
        s.check()
        self.run_((s.removeFilters,), (s.toggleColumn, 3), (s.toggleColumn, 3), (s.writeLog,),
                  (s.unload, 0))
        s.exit()

    def testByMouse(self):
        s, logs = self.session, self.logs()
        s.byMouse = True
        self.run_((s.open, logs[0]), (s.open, logs[1], True), (s.filter, 9, "OK", [1]),
                  (s.filter, 4, "OK", ["Deselect All", 0, 1]), (s.click, 2), (s.click, 0, "ctrl"),
                  (s.click, 1, None, 2), (s.expand, "n"), (s.display, "s"), (s.display, "a"),
                  (s.toggleColumn, 7), (s.writeLog,), (s.unload, 1), (s.closeWindow,))
        s.exit()

    def testChain(self):
        s, logs = self.session, self.logs()
        self.run_((s.open, logs[0]), (s.open, logs[2], True), (s.filter, 4, "OK", [0]),
                  (s.filter, 9, "OK", [1]), (s.filter, 8, "OK", [0]),
                  (s.filter, 4, "OK", ["Select All", 1]), (s.filter, 9, "Delete Filter"),
                  (s.filter, 6, "OK", [2]), (s.filter, 4, "Cancel"),
                  (s.open, logs[1], True), (s.filter, 1, "OK", [2]), (s.filter, 1, "OK", [2]),
                  (s.unload, 0), (s.filter, 4, "OK"), (s.filter, 2, "Delete Filter"),
                  (s.open, logs[3]), (s.filter, 8, "OK"), (s.open, logs[0]), (s.removeFilters,))

    def testExpandedData(self):
        s, p = self.session, self.session.program
        self.run_((s.open, s.write("one.log", lambda: [
            Record(0x13, (2026, 11, 21, 8, 30, 15, 0), 1, 2, 3, 4, 5, 1, "Go",
                   [(0x1003, b"\xC1A\x00~\xF0")]),
            Record(0x15, (2026, 11, 21, 8, 30, 16, 0), 1, 2),
            Record(0x15, (2026, 11, 21, 8, 30, 17, 0), 1, 2, blocks=None)])),
                  (s.display, "e"), (s.display, "a"), (s.click, 0, None, 2))
        first = f"03100000  {'C1 41 00 7E F0':<49}{'.A.~.':<18}{'A...0':<18}"
        later = f"00001000  {'.. .. .. C1 41 00 7E F0':<49}{'....A.~.':<18}{'...A...0':<18}"
        self.assertEqual(p.lines()[3], first)
        self.run_((s.closeWindow,), (s.click, 0, None, 2))
        self.assertEqual(p.lines()[3], later)
        self.run_((s.drop, 1), (s.select, "slash"), (s.expand, "u"), (s.drop, 0))

    def testDialogsAndClipboard(self):
        s, p = self.session, self.session.program
        self.run_((s.open, self.logs()[0]), (s.select, "slash"))
        for copies in (True, False):
            dialog = s.dialog("File", "w", "Write log to disk")
            p.key("alt+F4", "Escape")  # only its buttons end the dialog
            field = p.find(dialog, "text")[0]
            if copies:
                p.type("kept")
                p.key("ctrl+a", "ctrl+c", "End")
            else:
                p.key("ctrl+v")
            until(lambda: p.text(field) == "kept", lambda: "the text kept, not " + p.text(field))
            s.end(dialog, "Write log to disk", "Cancel")
            self.run_((s.select, "ctrl+Insert"), (s.select, "r"))

    def testWalk(self):
        self.logs(OPTIONS.seed)
        source = random.Random(OPTIONS.seed)
        for _ in range(OPTIONS.steps):
            self.session.step(source)
        self.session.exit()


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", help="the program under test")
    parser.add_argument("--seed", type=int, default=1, help="of the random walk and its logs")
    parser.add_argument("--steps", type=int, default=25, help="of the random walk")
    parser.add_argument("--verbose", action="store_true", help="print each operation")
    parser.add_argument("tests", nargs="*", help="such as Scenarios.testWalk; all if none is given")
    parser.parse_intermixed_args(namespace=OPTIONS)
    unittest.main(argv=[sys.argv[0], *OPTIONS.tests], verbosity=2)
