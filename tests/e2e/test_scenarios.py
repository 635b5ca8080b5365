#!/usr/bin/python3
"""Works every command of the program by mouse and by keyboard, as users do, and compares what it
shows. The first argument is the program; tests to run may follow, such as Commands.testByMouse."""

import os
import re
import select
import shutil
import struct
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True  # the sources stay clean

from driver import SELECTED, SHOWING, TIMEOUT, Desktop, Program, until

PROGRAM = os.path.abspath(sys.argv[1])
WINDOW = "RAS Expanded Data Window"
HEADINGS = ["Log Entry Type", "", "Time", "Date", "PID", "TID", "Major Error", "Minor Error",
            "Detect Point", "Detect Point Type", "Function"]
# The key of each menu, and the keys of its items from top to bottom; one item has none.
KEYS = {"File": ("alt+f", "lmuwx"), "Edit": ("alt+e", "sdr"), "Filters": ("alt+i", "etdpimnofr"),
        "Columns": ("alt+c", "extdpim.oyf"), "Expansion": ("alt+x", "euxpslnc"),
        "Display": ("alt+d", "asnex")}
ERROR, TRACE, MESSAGE = 0x13, 0x15, 0x2027


def entry(code, day, hour, pid, tid, major=0, minor=0, point=0, name="", data=None):
    """The bytes of a log entry; without data it is too short to have any."""
    header = struct.pack("<BBH4BII" if code == MESSAGE else ">BBH4BII", day, 11, 2026, hour, 30, 15,
                         0, pid, tid)
    header += struct.pack(">II", major, minor) * (code == ERROR)
    header += struct.pack(">II", point, 1) * (code != MESSAGE)
    body = (header + name.encode()).ljust(56, b"\0")
    # The address reads the same backwards, for the first dump of a record reverses its bytes.
    body = body[:52] if data is None else body + struct.pack(">HHI", 8 + len(data), 1, 0x10000010)
    body += data or b""
    return struct.pack(">HHHH", 8 + len(body), 0, 60, code) + body


# The TID is the number by which the tests know an entry.
LOGS = {"a.log": [entry(ERROR, 20, 10, 7, 1, 2, 5, 300, "Open(int)", b"\xC1A\x00~\xF0"),
                  entry(TRACE, 21, 8, 8, 2, point=200, name="Close", data=b"data"),
                  entry(ERROR, 21, 9, 7, 3, 9, 0, 300, "Open", b""),
                  entry(MESSAGE, 21, 10, 9, 4)],
        "b.log": [entry(TRACE, 21, 8, 6, 5, name="Wait", data=b"more")],
        # Its listing is larger than a pipe takes.
        "big.log": [entry(ERROR, 21, 8, 1, 6, data=bytes(30000))]}
FIRST_ROW = ["Error", "+", "10:30:15", "11-20-2026", "7", "1", "2", "5", "300", "Entry", "Open"]
FIRST_DUMP = f"10000010  {'C1 41 00 7E F0':<49}{'.A.~.':<18}{'A...0':<18}"

# What is done, and what is then shown: each row's number, its mark, and "*" if it is selected;
# after "|" the numbers in the expanded-data window, if it is there.
STEPS = [
    ("click 2", "1+ 2+* 3+ 4"), ("ctrl 4", "1+ 2+* 3+ 4*"),
    ("Edit/Reverse selections", "1+* 2+ 3+* 4"), ("Edit/Deselect all", "1+ 2+ 3+ 4"),
    ("Edit/Select all", "1+* 2+* 3+* 4*"), ("key ctrl+backslash", "1+ 2+ 3+ 4"),
    ("key slash", "1+* 2+* 3+* 4*"), ("click 4", "1+ 2+ 3+ 4*"),
    ("shift 3", "1+ 2+ 3+* 4*"), ("key Home", "1+* 2+ 3+ 4"),
    ("key Return", "1-* 2+ 3+ 4 | 1"), ("key Return", "1+* 2+ 3+ 4 |"),
    ("double 3", "1+ 2+ 3-* 4 | 3"), ("drop 2", "1+ 2-* 3- 4 | 2 3"),
    ("close", "1+ 2+* 3+ 4"), ("Expansion/Expand", "1+ 2-* 3+ 4 | 2"),
    ("Expansion/Expand non-selected", "1- 2-* 3- 4 | 1 2 3"),
    ("Expansion/Unexpand selected", "1- 2+* 3- 4 | 1 3"),
    ("Expansion/Expand selected", "1- 2-* 3- 4 | 1 2 3"),
    ("Expansion/Unexpand non-selected", "1+ 2-* 3+ 4 | 2"), ("Expansion/Unexpand", "1+ 2+* 3+ 4 |"),
    ("Expansion/Expand all", "1- 2-* 3- 4 | 1 2 3"), ("Expansion/Unexpand all", "1+ 2+* 3+ 4 |"),
    ("double 3", "1+ 2+ 3-* 4 | 3"), ("ctrl 1", "1+* 2+ 3-* 4 | 3"),
    ("Display/Display only expanded", "3-* | 3"), ("Display/Display all", "1+* 2+ 3-* 4 | 3"),
    ("Display/Display only non-expanded", "1+* 2+ 4 |"), ("Display/Display only selected", "1+* |"),
    ("Display/Display all", "1+* 2+ 3+* 4 |"), ("Display/Display only non-selected", "2+ 4 |"),
    ("Display/Display all", "1+* 2+ 3+* 4 |"), ("close", "1+* 2+ 3+* 4"),
    ("key ctrl+backslash", "1+ 2+ 3+ 4"),
]

# Item, dialog, name and texts of its list, and the rows that the first of the texts lets pass.
FILTERS = [
    ("Entry types", "Entry Type", "Select the entry types", "TRC,ERR,MSG", "2+"),
    ("Times", "Time", "Define the time range", "08:30:15,09:30:15,10:30:15", "2+"),
    ("Dates", "Date", "Define the dates", "11-20-26,11-21-26", "1+"),
    ("PIDs", "PID", "Define the process IDs", "7,8,9", "1+ 3+"),
    ("TIDs", "TID", "Define the terminal IDs", "1,2,3,4", "1+"),
    ("Major errors", "Major Error", "Define the major errors", "0,2,9", "2+ 4"),
    ("Minor errors", "Minor Error", "Define the minor errors", "0,5", "2+ 3+ 4"),
    ("Detect points", "Detect Point", "Define the detect points", "0,200,300", "4"),
    ("Functions", "Function", "Select the functions", "(no name),Close,Open", "4"),
]


class Commands(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop()
        cls.path = cls.desktop.home.joinpath
        cls.addClassCleanup(cls.desktop.close)
        cls.desktop.start()
        for name, entries in LOGS.items():
            cls.path(name).write_bytes(b"".join(entries))

    def start(self, byMouse, *arguments):
        p = self.program = Program(self.desktop, PROGRAM, *arguments)
        self.addCleanup(lambda: (p.process.kill(), p.process.wait()))
        self.byMouse, self.done = byMouse, []
        return p

    # What is done

    def do(self, action):
        """Picks an item, such as "File/Exit", or does another action with a row or a key."""
        p, (verb, _, what) = self.program, action.partition(" ")
        self.done.append(action)
        p.activate(p.window(WINDOW) if verb == "close" else p.main)
        if "/" in action:
            menu, item = action.split("/")
            opening, keys = KEYS[menu]
            at = list(p.items[menu]).index(item)
            if self.byMouse:
                p.pick(menu, item)
            else:
                p.key(opening, *(keys[at] if keys[at] != "." else ["Down"] * at + ["Return"]))
        elif verb in ("key", "close"):
            p.key(what or "alt+F4")
        else:
            row, = [cells[0] for cells in p.rows() if p.names(cells)[5] == what]
            if verb == "drop":
                p.drag(row, *p.find(p.window(WINDOW), "list", WINDOW))
            else:
                p.click(row, verb if verb in ("ctrl", "shift") else None, 1 + (verb == "double"))

    def dialog(self, action, title):
        self.do(action)
        return self.program.dialog(title)

    def listDialog(self, action, title, prompt, texts, selected):
        """Opens a dialog with a list. Returns it and the items of the list."""
        dialog, p = self.dialog(action, title), self.program
        box, = p.find(dialog, "list", prompt)
        items = p.children(box)
        self.assertEqual(p.names(items), texts)
        self.selects(items, selected)
        return dialog, items

    def press(self, dialog, button, *keys):
        """Presses a button of a dialog, or keys that do the same."""
        if self.byMouse or not keys:
            self.program.click(*self.program.find(dialog, "push button", button))
        else:
            self.program.key(*keys)

    def end(self, dialog, button, *keys):
        self.press(dialog, button, *keys)
        self.same(lambda: self.program.states([dialog], SHOWING), [False])

    def open(self, button, title, name):
        self.end(self.dialog(f"File/{button}...", title), "Cancel", "Escape")
        dialog = self.dialog(f"File/{button}...", title)
        self.program.type(self.path(name))
        if self.byMouse:
            self.program.key("Tab")  # closes the list of names that begin like this one
        self.end(dialog, button, "Return")

    # What is shown

    def same(self, read, wanted):
        """Waits until what is read is what is wanted."""
        p = self.program
        until(lambda: p.process.poll() is not None or read() == wanted,
              lambda: f"{read()}\nwanted {wanted}\nafter {', '.join(self.done)}")
        assert p.process.poll() is None, f"the program has ended after {', '.join(self.done)}"

    def lines(self):
        window = self.program.window(WINDOW)
        return self.program.names(self.program.find(window, "list item")) if window else None

    def view(self):
        p, rows, lines = self.program, self.program.rows(), self.lines()
        cells = zip(p.names([row[5] for row in rows]), p.names([row[1] for row in rows]),
                    p.states([row[0] for row in rows], SELECTED))
        shown = [tid + mark.strip() + "*" * isSelected for tid, mark, isSelected in cells]
        expanded = ["|", *re.findall(r"Tid: +(\d+)", "\n".join(lines or []))]
        return " ".join(shown + expanded * (lines is not None))

    def shows(self, wanted):
        self.same(self.view, wanted)

    def says(self, *texts):
        self.same(lambda: [text for text in texts if text in self.program.status()], [*texts])

    def selects(self, items, wanted):
        """Waits until the items of these numbers are selected."""
        self.same(lambda: self.program.states(items, SELECTED),
                  [number in wanted for number in range(len(items))])

    # The commands of the menus

    def filters(self):
        p = self.program
        for name, title, prompt, texts, passed in FILTERS:
            texts = texts.split(",")
            opened = lambda *wanted: self.listDialog(
                f"Filters/{name}...", f"{title} Filter Data Entry", f"{prompt} to be displayed",
                texts, wanted)
            dialog, items = opened(*range(len(texts)))
            self.press(dialog, "Deselect All", "End")
            self.selects(items, [] if self.byMouse else [len(texts) - 1])
            p.click(items[0], "ctrl") if self.byMouse else p.key("Home")
            self.selects(items, [0])
            self.end(dialog, "OK", "Return")
            self.shows(passed)
            self.same(lambda: p.checks("Filters"), [name + "..."])
            self.end(opened(0)[0], "Cancel", "Escape")
            self.same(lambda: p.checks("Filters"), [])
            self.says(f"{len(passed.split())} of 4")
            dialog, items = opened(0)
            self.press(dialog, "Select All", "ctrl+a")
            self.selects(items, range(len(texts)))
            self.end(dialog, "Delete Filter", *["Tab"] * 4, "space")
            self.says("4 of 4")
            self.do("Filters/Remove all filters")
            self.shows("1+ 2+ 3+ 4")

    def find(self):
        """Goes from match to match, and to a time, by keys."""
        for keys, text, said, wanted in ((["Home", "ctrl+f"], "open", "1 of 2", "1+* 2+ 3+ 4"),
                                         (["Return"], "", "2 of 2", "1+ 2+ 3+* 4"),
                                         (["F3"], "", "continued from the top", "1+* 2+ 3+ 4")):
            self.program.key(*keys)
            self.program.type(text)
            self.says(said)
            self.shows(wanted)
        self.program.key("Escape", "ctrl+g")
        self.program.type("11-21-2026 08:30")
        self.program.key("Return")
        self.shows("1+ 2+* 3+ 4")
        self.program.key("Escape", "ctrl+backslash")
        self.shows("1+ 2+ 3+ 4")

    def columns(self):
        p, items, hidden = self.program, list(self.program.items["Columns"]), set()
        for item in [*items, "PID"]:
            self.do("Columns/" + item)
            hidden ^= {item}
            for read, names in ((p.headings, HEADINGS), (lambda: p.checks("Columns"), items)):
                self.same(read, [name for name, its in zip(names, items) if its not in hidden])

    def listing(self):
        """Writes a listing, its name put into the dialog from the clipboard."""
        p, path = self.program, self.path("listing")
        for *ending, keys in (["Cancel", ["ctrl+a", "ctrl+c", "alt+F4", "Escape", "End"]],
                              ["Write", "Return", ["ctrl+v"]]):
            dialog = self.dialog("File/Write log to disk...", "Write log to disk")
            field, = p.find(dialog, "text", "Enter a name for the output file")
            if "Cancel" in ending:
                p.type(path)
            p.key(*keys)  # only buttons end the dialog
            self.same(lambda: p.text(field), str(path))
            self.assertFalse(path.exists())
            self.end(dialog, *ending)
            self.do("key ctrl+Insert")
        self.says("Written: 5 records", str(path))
        texts = [text for text in path.read_text().split("\n") if text.strip(" *")]
        path.unlink()
        self.assertEqual(texts, [text for text in self.lines() if text.strip(" *")])
        self.assertIn(FIRST_DUMP, texts)

    def unload(self):
        for ending, wanted in ((["Cancel"], "1- 2- 5- 3- 4 | 1 2 3 5"),
                               (["Unload", "Return"], "1+ 2+ 3+ 4 |")):
            dialog, items = self.listDialog("File/Unload...", "Unload Log File",
                                            "Select a log file to unload",
                                            [str(self.path(name)) for name in LOGS][:2], [0])
            self.program.click(items[1]) if self.byMouse else self.program.key("Down")
            self.selects(items, [1])
            self.end(dialog, *ending)
            self.shows(wanted)

    def work(self, byMouse):
        p = self.start(byMouse)
        self.open("Load", "Select a log to Load", "a.log")
        self.shows("1+ 2+ 3+ 4")
        self.assertEqual((p.headings(), p.names(p.rows()[0])), (HEADINGS, FIRST_ROW))
        for action, wanted in STEPS:
            self.do(action)
            self.shows(wanted)
        self.find()
        self.filters()
        self.open("Merge", "Select a log file to merge in", "b.log")
        self.shows("1+ 2+ 5+ 3+ 4")
        self.says("5 of 5", "Logs: 2")
        self.do("Expansion/Expand all")
        self.shows("1- 2- 5- 3- 4 | 1 2 3 5")
        self.listing()
        self.unload()
        self.columns()
        self.do("File/Exit")
        self.assertEqual(p.process.wait(TIMEOUT), 0)
        every = {f"{menu}/{item}" for menu, items in p.items.items() for item in items if item}
        self.assertEqual(every - {*self.done}, set(), "not picked")

    def testByMouse(self):
        self.work(True)

    def testByKeyboard(self):
        self.work(False)

    def testSurvivesAPipeThatClosesAndEndsWithItsCloseBox(self):
        p, pipe = self.start(False, self.path("big.log"), self.path("a.log")), self.path("pipe")
        self.shows("6+")  # of two arguments the first counts
        os.mkfifo(pipe)
        reader = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
        dialog = self.dialog("File/Write log to disk...", "Write log to disk")
        p.type(pipe)
        self.end(dialog, "Write", "Return")
        until(lambda: select.select([reader], [], [], 0)[0] and os.read(reader, 1), "listing")
        os.close(reader)
        self.says(f"Not written: {pipe}")
        self.do("key alt+F4")
        self.assertEqual(p.process.wait(TIMEOUT), 0)

    def testTheStartIsGivenUpWithoutTexts(self):
        program = shutil.copy(PROGRAM, self.path("alone"))
        process = self.desktop.run(program)
        search = ["xdotool", "search", "--onlyvisible", "--name", "^RAS Log Browser$"]
        until(lambda: subprocess.run([*search, "windowactivate", "--sync", "key", "Escape"],
                                     env=self.desktop.env, check=False, capture_output=True)
              and process.poll() is not None, "end after Cancel")
        self.assertEqual(process.returncode, 0)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=2)
