#!/usr/bin/env python3
"""Compares what raslog makes of logs with an independent reading of the format, and has other
programs read it."""

import csv
import datetime
import fnmatch
import io
import json
import os
import pty
import random
import struct
import subprocess
import sys
import tempfile
import unittest

RASLOG = os.path.abspath(sys.argv[1]) if len(sys.argv) > 1 else "raslog"
ENVIRONMENT = dict(os.environ, LC_ALL="C", TERM="xterm")

KINDS = {3: "Error", 0x13: "Error", 5: "Trace", 0x15: "Trace"}
KINDS.update(dict.fromkeys([*range(0x2002, 0x2006), 0x2022, *range(0x2025, 0x2029)], "Message"))
# Which 32-bit numbers a header has, and where its name stands.
NUMBERS = {3: range(16, 36, 4), 0x13: range(16, 36, 4), 5: range(16, 28, 4), 0x15: range(16, 28, 4),
           0x2002: range(16, 24, 4), 0x2003: range(8, 24, 4), 0x2004: range(8, 24, 4),
           0x2005: range(8, 20, 4), 0x2022: range(8, 32, 4), 0x2025: range(8, 24, 4),
           0x2026: range(8, 24, 4)}
NAMES = {3: 40, 0x13: 40, 5: 32, 0x15: 32, 0x2002: 24}
DETECT_POINTS = {3: 32, 0x13: 32, 5: 24, 0x15: 24, 0x2003: 8, 0x2004: 8}
POINT_TYPES = ["", "Entry", "Exit", "API Call", "DEBUG"]


def half(data, offset):
    return int.from_bytes((data[offset:offset + 2] + b"\0\0")[:2], "big")


def blocks_of(data, length, data_offset, entry):
    """The number of blocks, as the reader counts them, and what is there of each."""
    count, offset = 0, data_offset
    while len(entry) >= 8 and offset < min(length, len(entry)):
        count += 1
        if offset + 4 > len(entry) or half(entry, offset) == 0:
            break
        offset += half(entry, offset)
    blocks, rest = [], data
    for _ in range(count):
        size = half(rest, 0)
        address = int.from_bytes((rest[4:8] + bytes(4))[:4], "big")
        blocks.append({"address": address, "bytes": rest[8:size].hex()})
        rest = rest[size:]
    return blocks


def time_of(year, month, day, hour, minute, second):
    try:
        date = datetime.datetime(year, month, day)
    except ValueError:
        return None
    seconds = (hour * 3600 + minute * 60 + second) % 86400
    return (date + datetime.timedelta(seconds=seconds)).isoformat()


def fields_of(header, kind, name_offset):
    def word(offset):
        return struct.unpack_from("<I", header, offset - 4)[0]

    code = struct.unpack_from("<H", header, 2)[0]
    day, month, year, *time = struct.unpack_from("<BBHBBBB", header, 4)
    error, named = kind == "Error", kind in ("Error", "Trace")
    point_type = struct.unpack_from(">I", header, (36 if error else 28) - 4)[0] if named else 0
    name = bytes(header[name_offset - 4:]).split(b"\0")[0] if named else b""
    return {
        "code": code, "type": kind, "time": time_of(year, month, day, *time[:3]),
        "year": year, "month": month, "day": day, "hour": time[0], "minute": time[1],
        "second": time[2], "fraction": time[3], "pid": word(16), "tid": word(20),
        "major_error": word(24) if error else 0, "minor_error": word(28) if error else 0,
        "detect_point": word(DETECT_POINTS[code]) if code in DETECT_POINTS else 0,
        "detect_point_type": POINT_TYPES[point_type] if point_type < 5 else "",
        "function": name.decode("latin-1")}


def decode(log, name):
    """The entries of a log as `raslog export --data` has them, and whether each can be expanded."""
    header, start, entries = bytearray(256), 0, []
    while start < len(log):
        entry = log[start:]
        length, header_length, code = half(entry, 0), half(entry, 4), half(entry, 6)
        header[:4] = struct.pack("<HH", header_length, code)
        own = entry[8:min(header_length, 256) + 4]
        header[4:4 + len(own)] = own
        if code in NAMES:
            header[6:8] = header[7], header[6]
        for offset in NUMBERS.get(code, []):
            header[offset - 4:offset] = header[offset - 4:offset][::-1]
        if code in NAMES:
            at = NAMES[code] - 4
            cut = header.find(b"(", at, 254)
            header[at + 8 if code in (3, 5) else cut if cut >= 0 else 254] = 0
        data_offset = header_length + 4
        data = entry[data_offset:length]
        blocks = blocks_of(data, length, data_offset, entry)
        entries.append(({"log": name, "entry": len(entries), "offset": start,
                         **fields_of(header, KINDS.get(code, "Unknown"), NAMES.get(code, 0)),
                         "data_length": len(data), "blocks": len(blocks), "data": blocks},
                        length >= data_offset))
        if len(entry) < max(8, data_offset, length) or length < 8:
            break
        if half(entry, 0) >= data_offset and blocks and ends_in_block(entry, length, data_offset):
            break
        start += length
    return entries


def ends_in_block(entry, length, offset):
    """The file ends inside the first bytes of the last block."""
    while offset < length and offset + 4 <= len(entry) and half(entry, offset):
        offset += half(entry, offset)
    return offset < length and offset + 4 > len(entry)


def random_log(seed, damaged):
    rng, log, codes = random.Random(seed), b"", [*KINDS, 1]
    for i in range(600):
        code = rng.choice(codes)
        header = bytearray(rng.randbytes(200))
        second = max(0, i - (rng.randrange(9) if rng.random() < .1 else 0))
        header[:8] = struct.pack(">BBHBBBB", 21, 11, 2026, 23 + second // 3600, second // 60 % 60,
                                 second % 60, rng.randrange(256))
        if rng.random() < .7:
            header[36 - 8:40 - 8] = header[28 - 8:32 - 8] = struct.pack(">I", rng.randrange(6))
        name = bytes(rng.choices(b"abcXYZ=,\"' \xe4\x9b\n\x1b\x7f", k=rng.randrange(30)))
        if code in NAMES:
            end = NAMES[code] - 8
            header = header[:end] + name + rng.choice([b"(int)\0", b"\0"])
        elif rng.random() < .5:
            header = header[:24]
        if damaged and rng.random() < .3:
            header = header[:rng.randrange(len(header))]
        data = b"".join(struct.pack(">HHI", 8 + size, 0, rng.getrandbits(32)) + rng.randbytes(size)
                        for size in rng.choices(range(40), k=rng.randrange(3)))
        if damaged and rng.random() < .1:
            data += struct.pack(">HHI", rng.choice([0, 1, 5, 99]), 0, 7)
        length, header_length = 8 + len(header) + len(data), 4 + len(header)
        if damaged and rng.random() < .02:
            header_length = rng.choice([0, 3, length + 1, length + 30])
        log += struct.pack(">HHHH", length, i, header_length, code) + header + data
    return log[:-rng.randrange(1, 12)] if damaged else log


def in_time_order(entries):
    keys = ["year", "month", "day", "hour", "minute", "second", "fraction"]
    return sorted(entries, key=lambda entry: [entry[0][key] for key in keys])


def run(*arguments, status=0, **options):
    result = subprocess.run([RASLOG, *arguments], capture_output=True, env=ENVIRONMENT, check=False,
                            **options)
    if status is not None and result.returncode != status:
        raise AssertionError(f"{arguments}: {result.returncode}: {result.stderr}")
    return result.stdout


class ExportTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        os.chdir(folder.name)
        self.addCleanup(os.chdir, "/")
        self.logs = {}
        for number in range(12):
            name = f"{number}\udcff\u00e4.log" if number == 3 else f"{number}.log"
            self.logs[name] = random_log(number, number % 4 != 0)
            with open(name, "wb") as file:
                file.write(self.logs[name])

    def expected(self, names):
        return [entry for name in names
                for entry in decode(self.logs[name], name.replace("\udcff", "\ufffd"))]

    def test_exports_are_what_the_logs_hold(self):
        for names in [[name] for name in self.logs] + [list(self.logs)]:
            for order in ("file", "time"):
                entries = self.expected(names)
                entries = in_time_order(entries) if order == "time" else entries
                entries = [entry for entry, _ in entries]
                options = ["--order", order, "--data", *names]
                lines = run("export", "--format", "jsonl", *options, status=None).splitlines()
                self.assertEqual(len(lines), len(entries))
                for line, entry in zip(lines, entries):
                    self.assertEqual(list(json.loads(line).items()), list(entry.items()))
                text = run("export", "--format", "csv", *options, status=None).decode()
                table = list(csv.DictReader(io.StringIO(text, newline=""), strict=True))
                self.assertEqual(table, [as_csv(entry) for entry in entries])

    def test_an_extract_reads_as_its_logs_did(self):
        for names in [[name] for name in self.logs] + [list(self.logs)]:
            run("extract", "-o", "all", *names, status=None)
            with open("all", "rb") as file:
                copied = decode(file.read(), "all")
            self.assertEqual([without_place(*entry) for entry in copied],
                             [without_place(*entry) for entry in in_time_order(
                                 self.expected(names))])
            self.assertEqual(run("rows", "all", status=None), run("rows", *names, status=None))
        # What is there of a prefix that the file ends in makes no block of data.
        with open("cut", "wb") as file:
            file.write(b"\0\x4f\0\0\0")
        run("extract", "-o", "all", "cut", status=1)
        self.assertEqual(run("list", "all", status=None), run("list", "cut", status=1))
        # A log in which each entry has all of its header and the order is that of time stays as it is.
        run("extract", "-o", "sorted", "0.log")
        run("extract", "-o", "again", "sorted")
        with open("sorted", "rb") as first, open("again", "rb") as second:
            self.assertEqual(first.read(), second.read())

    def test_rows_are_those_of_the_window_in_one_line_each(self):
        entries = in_time_order(self.expected(["1.log", "3\udcff\u00e4.log"]))
        names = ["1.log", "3\udcff\u00e4.log"]
        rows = run("rows", "--with-log", "--columns", "pid,mark,type,time,function", *names,
                   status=1)
        lines = rows.decode().split("\n")
        self.assertEqual(lines[0].split(), ["Log", "Entry", "Offset", "PID", "Log", "Entry", "Type",
                                            "Time", "Function"])
        for line, (entry, expandable) in zip(lines[1:-1], entries, strict=True):
            second = (entry["hour"] * 60 + entry["minute"]) * 60 + entry["second"]
            expected = [entry["log"].replace("\ufffd", r"\xFF").ljust(len(r"3\xFFä.log")),
                        str(entry["entry"]).rjust(10), str(entry["offset"]).rjust(12),
                        str(entry["pid"]).rjust(10), "+" if expandable else " ",
                        entry["type"].ljust(14),
                        f"{second // 3600 % 24:02}:{second // 60 % 60:02}:{second % 60:02}",
                        "".join(map(shown, entry["function"]))]
            self.assertEqual(line, "  ".join(expected))
        rows = run("rows", *names, status=1).decode().split("\n")
        for count in (1, 7):
            for option, selected in [("--tail", rows[-1 - count:]), ("--first", rows[1:count + 1] + [""])]:
                self.assertEqual(run("rows", option, str(count), *names,
                                     status=None).decode().split("\n"), rows[:1] + selected)
        for command in ("rows", "list", "export --format csv", "extract -o x", "summary"):
            run(*command.split(), "--function", "no such", "0.log", status=1)
        self.assertEqual(run("export", "--format", "jsonl", "-n", "2", "0.log"),
                         b"".join(run("export", "--format", "jsonl", "0.log").splitlines(True)[:2]))
        wanted = [i for i, (entry, _) in enumerate(entries) if entry["type"] == "Unknown"]
        around = {row for i in wanted for row in range(i - 2, i + 3) if 0 <= row < len(entries)}
        text = run("rows", "--context", "2", "--type", "unknown", *names, status=1).decode()
        self.assertEqual([line[0] == ">" for line in text.split("\n")[1:-1] if line != "--"],
                         [i in wanted for i in sorted(around)])
        self.assertEqual(run("rows", "--count", "--type", "unknown", *names, status=1),
                         b"%d\n" % len(wanted))

    def test_options_select_what_they_say(self):
        rng, names = random.Random(3), list(self.logs)
        entries = [entry for entry, _ in self.expected(names)]
        errors, traces = {1, 3, 4, 0x13, 0x1001}, {2, 5, 6, 0x15, 0x1002}

        def type_of(entry):
            code = entry["code"]
            return ["unknown"] * (entry["type"] == "Unknown") + [
                "error" if code in errors else "trace" if code in traces else "message"]

        def moment(end):
            """A time as an option has it, and whether an entry is not before it, or not after."""
            second, form = rng.randrange(86400), rng.randrange(3)
            day = (2026, 11, rng.choice([20, 21, 21, 21, 22]))
            text = f"{second // 3600:02}:{second // 60 % 60:02}" + f":{second % 60:02}" * (form != 0)
            second = second if form else second // 60 * 60 + (59 if end else 0)
            if form == 2:
                text = "%d-%02d-%02d" % day + rng.choice("T ") + text
            if rng.random() < .2:
                text, form, second = "%d-%02d-%02d" % day, 2, 86399 if end else 0
            limit = (day if form == 2 else None, second)

            def key(entry):
                own = (entry["hour"] * 60 + entry["minute"]) * 60 + entry["second"]
                date = (entry["year"], entry["month"], entry["day"])
                return (date if form == 2 else None, own % 86400)
            return text, limit, (lambda e: key(e) <= limit) if end else (lambda e: key(e) >= limit)

        def times():
            first, last = moment(False), moment(True)
            options = [("--from", first[0]), ("--to", last[0])]
            over = first[1][0] is None and last[1][0] is None and last[1] < first[1]
            both = [first[2], last[2]]
            return options, lambda e: (any if over else all)(test(e) for test in both)

        def numbers(option, key):
            pool = [entry[key] for entry in entries]
            ranges = [sorted(rng.choices(pool, k=2)) for _ in range(rng.randrange(1, 3))]
            ranges.append([rng.choice(pool)] * 2)
            form = rng.choice(["%d", "0x%x", "0X%X"])
            text = ",".join(form % a + (f"-{b}" if a != b else "") for a, b in ranges)
            return [(option, text)], lambda e: any(a <= e[key] <= b for a, b in ranges)

        def function():
            name = rng.choice(entries)["function"].translate({ord(c): "?" for c in "[]*\\"})
            glob = name[:rng.randrange(4)] + rng.choice(["*", "?*", "[a-cZ]*", "[!a-c]*", "", "[]"])
            fold = rng.random() < .5
            tested = glob.lower() if fold else glob
            return ([("--function", glob)] + [("-i",)] * fold, lambda e: fnmatch.fnmatchcase(
                e["function"].lower() if fold else e["function"], tested.replace("[]", "[[]]")))

        def points():
            chosen = rng.sample(POINT_TYPES, 2)
            return ([("--detect-point-type",
                      ",".join((name or "none").lower().replace(" ", "-") for name in chosen))],
                    lambda e: e["detect_point_type"] in chosen)

        def kinds():
            chosen = rng.sample(["error", "trace", "message", "unknown"], rng.randrange(1, 3))
            return [("--type", ",".join(chosen))], lambda e: set(chosen) & set(type_of(e))

        def data():
            some = rng.choice([block["bytes"] for e in entries for block in e["data"]
                               if len(block["bytes"]) > 8])[:4]
            return ([("--match-bytes", some)], lambda e: any(
                some in [block["bytes"][i:i + 4] for i in range(0, len(block["bytes"]), 2)]
                for block in e["data"]))

        makers = [times, function, points, kinds, data] + [
            lambda o=option, k=key: numbers(o, k) for option, key in
            [("--pid", "pid"), ("--tid", "tid"), ("--major", "major_error"),
             ("--minor", "minor_error"), ("--detect-point", "detect_point")]]
        found = set()
        for step in range(60):
            made = [make() for make in rng.sample(makers, 1 + step % 2)]
            options = [word for parts, _ in made for option in parts for word in option]
            invert = rng.random() < .3
            wanted = [(e["log"], e["entry"]) for e in entries
                      if all(test(e) for _, test in made) != invert]
            most = rng.choice([None, 1, 5, len(wanted) + 1])
            options += ["--invert"] * invert + (["-n", str(most)] if most else [])
            lines = run("export", "--format", "jsonl", "--order", "file", *options, *names,
                        status=None).splitlines()
            got = [(e["log"], e["entry"]) for e in map(json.loads, lines)]
            self.assertEqual(got, wanted[:most], options)
            found.add(len(wanted))
            if most is None:
                self.assertEqual(run("rows", "--count", *options, *names, status=None),
                                 b"%d\n" % len(wanted))
        self.assertGreater(len(found), 20)

    def test_a_summary_counts_what_the_logs_hold(self):
        summary = json.loads(run("summary", "--json", "--top", "1000", *self.logs, status=1))
        for shown_log, name in zip(summary["logs"], self.logs, strict=True):
            self.assert_summary(shown_log, self.expected([name]))
        self.assert_summary(summary["all"], self.expected(self.logs))

    def assert_summary(self, summary, entries):
        entries = [entry for entry, _ in entries]
        times = sorted(datetime.datetime.fromisoformat(entry["time"]) for entry in entries
                       if entry["time"])
        self.assertEqual(summary["entries"], len(entries))
        for kind, count in summary["types"].items():
            self.assertEqual(count, sum(entry["type"] == kind for entry in entries))
        self.assertEqual([summary["first"], summary["last"]],
                         [times[0].isoformat(), times[-1].isoformat()])
        gaps = [int((later - earlier).total_seconds()) for earlier, later in zip(times, times[1:])]
        self.assertEqual(summary["largest_gap"]["seconds"], max(gaps))
        minutes = [time.replace(second=0) for time in times]
        self.assertEqual(summary["busiest_minute"]["entries"], max(map(minutes.count, minutes)))
        self.assertEqual(sum(bar["entries"] for bar in summary["histogram"]), len(times))
        for name, key in [("pids", "pid"), ("functions", "function")]:
            values = [entry[key] for entry in entries if entry[key] != ""]
            self.assertEqual(summary[name]["different"], len(set(values)))
            counts = {value: values.count(value) for value in set(values)}
            top = sorted(counts.items(), key=lambda item: (-item[1], item[0]))
            self.assertEqual([(one["value"], one["entries"]) for one in summary[name]["top"]],
                             top[:1000])

    def test_a_summary_of_too_many_values_says_what_it_lacks(self):
        rng = random.Random(5)
        seconds = [*range(70000), *range(170000, 200000), *[30000] * 50]
        rng.shuffle(seconds)
        start, log = datetime.datetime(2026, 11, 21), b""
        for i, second in enumerate(seconds):
            time = start + datetime.timedelta(seconds=second)
            log += struct.pack(">HHHHBBHBBBBII", 24, 0, 20, 0x2002, time.day, time.month, time.year,
                               time.hour, time.minute, time.second, 0, 7 if i % 3 == 0 else i, 0)
        with open("many", "wb") as file:
            file.write(log)
        summary = json.loads(run("summary", "--json", "many"))["all"]
        pids, often = summary["pids"], len(range(0, len(seconds), 3))
        self.assertEqual(pids["top"][0]["value"], 7)
        self.assertGreater(pids["missing"], 0)
        self.assertLessEqual(pids["top"][0]["entries"], often)
        self.assertGreaterEqual(pids["top"][0]["entries"] + pids["missing"], often)
        self.assertEqual(summary["largest_gap"], {"seconds": 100001, "exact": True,
                                                  "after": "2026-11-21T19:26:39"})
        self.assertEqual(summary["busiest_minute"], {"from": "2026-11-21T08:20:00", "entries": 110,
                                                     "exact": True})
        self.assertEqual(sum(bar["entries"] for bar in summary["histogram"]), len(seconds))

    def test_no_bar_of_a_summary_begins_before_the_year_1(self):
        with open("long", "wb") as file:
            for year in (1, 40):
                file.write(struct.pack(">HHHHBBHIII", 24, 0, 20, 0x2002, 1, 1, year, 0, 0, 0))
        bars = json.loads(run("summary", "--json", "long"))["all"]["histogram"]
        self.assertEqual(bars[0]["from"], "0001-01-01T00:00:00")
        self.assertEqual([bars[0]["entries"], bars[-1]["entries"]], [1, 1])

    def test_other_programs_read_the_exports(self):
        run("export", "--format", "csv", "--data", "-o", "all.csv", "0.log", "1.log", status=None)
        run("export", "--format", "jsonl", "--data", "-o", "all.jsonl", "0.log", "1.log",
            status=None)
        errors = sum(entry["type"] == "Error" for entry, _ in self.expected(["0.log", "1.log"]))
        select = "SELECT count(*) FROM entries WHERE type = 'Error'"
        for command in (["sqlite3", ":memory:", ".import --csv all.csv entries", select],
                        ["jq", "-s", 'map(select(.type == "Error")) | length', "all.jsonl"]):
            self.assertEqual(subprocess.check_output(command), b"%d\n" % errors)

    def on_terminal(self, command, **settings):
        """What a command prints on a terminal."""
        controller, terminal = pty.openpty()
        environment = {key: ENVIRONMENT[key] for key in ENVIRONMENT if key != "NO_COLOR"}
        with subprocess.Popen([RASLOG, *command, "3\udcff\u00e4.log"], stdout=terminal,
                              stderr=subprocess.DEVNULL, env=dict(environment, **settings)):
            os.close(terminal)
            text = b""
            try:
                while piece := os.read(controller, 1 << 16):
                    text += piece
            except OSError:
                pass  # the end of a terminal
            os.close(controller)
        return text

    def test_texts_cannot_harm_a_terminal_or_a_spreadsheet(self):
        for command in (["export", "--format", "jsonl"], ["export", "--format", "csv"], ["rows"],
                        ["summary"], ["summary", "--json"]):
            text = self.on_terminal(command, NO_COLOR="1")
            self.assertTrue(text.endswith(b"\r\n"), text)
            for harm in (b"\x1b", b"\x7f", b"\xff", b"\xc2\x9b"):
                self.assertNotIn(harm, text, command)
        for settings, colored in [({}, True), ({"NO_COLOR": ""}, True), ({"TERM": "dumb"}, False),
                                  ({"TERM": ""}, False), ({"NO_COLOR": "0"}, False)]:
            self.assertEqual(b"\x1b[31mError" in self.on_terminal(["rows"], **settings), colored)
        self.assertIn(b"\x1b[31mError", run("rows", "--color", "always", "0.log"))
        self.assertNotIn(b"\x1b", run("rows", "0.log"))
        safe = run("export", "--format", "csv", "--csv-safe", "0.log").decode()
        for row in csv.DictReader(io.StringIO(safe, newline="")):
            self.assertNotIn(row["function"][:1], list("=+-@\t\r\n"))
        self.assertIn("'=", safe)

    def test_the_shell_completes_and_corrects(self):
        for words, expected in [("raslog ro", "compopt +o default rows"), ("raslog rows --ord", "--order"),
                                ("raslog export --format ''", "jsonl csv"),
                                ("raslog rows --order = f", "file"),
                                ("raslog list --type error,t", "compopt -o nospace error,trace"),
                                ("raslog rows --pid ''", "compopt +o default"),
                                ("raslog completion z", "compopt +o default zsh")]:
            script = (f"PATH={os.path.dirname(RASLOG)}:$PATH; source <(raslog completion bash)\n"
                      f"COMP_WORDS=({words}) COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))\n"
                      "compopt() { echo -n compopt $* ''; }; _raslog; echo ${COMPREPLY[@]}")
            self.assertEqual(subprocess.check_output(["bash", "-c", script], text=True).strip(),
                             expected)
        for shell, parts in [("fish", [" rows' -s o -l output -r -F -d 'File", " rows' -l tail -x -d '",
                                       " rows' -l order -x -a 'time file' -d '",
                                       " rows' -l count -d '", " completion' -f -a 'bash zsh fish'"]),
                             ("zsh", ["'*-o[File to write, - for standard output]:file:_files'",
                                      "a terminal, unless NO_COLOR is set]:value:(auto always never)'",
                                      "'*--tail=[Only the last of them\\: --tail 10]:value: '",
                                      "'*--count[Print only how many entries there are]'"])]:
            script = run("completion", shell).decode()
            for part in parts:
                self.assertIn(part, script)
        for words, meant in [("row", "; did you mean 'rows'?"), ("exp", "; did you mean 'export'?"),
                             ("complxtxxn", "; did you mean 'completion'?"), ("xyz", ""),
                             ("complxxxxn", ""), ("help rows", ""),
                             ("--odrer file rows 0.log", "; did you mean 'raslog rows --order'?"), ("comlpetoin", "; did you mean 'completion'?"),
                             ("export --fromat csv 0.log", "; did you mean '--format'?")]:
            result = subprocess.run([RASLOG, *words.split()], capture_output=True, text=True,
                                    check=False)
            self.assertEqual(result.returncode, 2)
            self.assertIn(f"'{meant}\nRun ", result.stderr)


def as_csv(entry):
    row = {key: "" if value is None else str(value) for key, value in entry.items()}
    row["data"] = " ".join(f"{block['address']}:{block['bytes']}" for block in entry["data"])
    return row


def without_place(entry, expandable):
    dropped = ("log", "entry", "offset")
    return {key: value for key, value in entry.items() if key not in dropped}, expandable


def shown(character):
    return character if character.isprintable() or character in "\xa0\xad" else "".join(
        f"\\x{byte:02X}" for byte in character.encode())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
