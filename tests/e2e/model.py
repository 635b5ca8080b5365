"""A model of what the program must show: logs, records, filters, containers and dumps."""

import itertools
import struct

TYPES = {0x03: "Error", 0x13: "Error", 0x05: "Trace", 0x15: "Trace", 0x2002: "Message",
         0x2003: "Message", 0x2027: "Message"}
POINTS = {1: "Entry", 2: "Exit", 3: "API Call", 4: "DEBUG"}
COLUMNS = ["Log Entry Type", "", "Time", "Date", "PID", "TID", "Major Error", "Minor Error",
           "Detect Point", "Detect Point Type", "Function"]
STARS = "*" * 93
EBCDIC = {0x50: "&", 0x5B: "$", 0x7B: "#", 0x7C: "@", 0xA1: "~", 0xC0: "{", 0xD0: "}", 0xDF: "\\",
          0xE1: "1", 0xFA: "|"}
for _first, _text in [(0x81, "abcdefghi"), (0x91, "jklmnopqr"), (0xA2, "stuvwxyz"),
                      (0xC1, "ABCDEFGHI"), (0xD1, "JKLMNOPQR"), (0xE2, "STUVWXYZ"),
                      (0xF0, "0123456789")]:
    EBCDIC.update(enumerate(_text, _first))


class Record:
    """One log entry. `when` is year, month, day, hour, minute, second and fraction; `blocks` are
    pairs of address and data, None for an entry too short to have any."""

    def __init__(self, code, when, pid, tid, major=0, minor=0, point=0, pointType=0, name="",
                 blocks=()):
        self.code, self.when, self.pid, self.tid, self.name = code, when, pid, tid, name
        self.kind, self.blocks = TYPES.get(code, "Unknown"), blocks
        isError, isTrace = self.kind == "Error", self.kind == "Trace"
        self.major, self.minor = (major, minor) if isError else (0, 0)
        self.point = point if isError or isTrace else 0
        if code == 0x2003:
            self.point = when[0] << 16 | when[1] << 8 | when[2]
        self.pointType = pointType if isError or isTrace else 0
        self.function = name.split("(")[0] if isError or isTrace else ""
        if code in (0x03, 0x05):
            self.function = name[:8]
        self.hour = (when[3] * 3600 + when[4] * 60 + when[5]) % 86400
        self.slot = self.number = None
        self.hasData, self.mark = blocks is not None, "" if blocks is None else "+"
        self.expanded = self.selected = self.dumped = False

    def bytes(self):
        year, month, day, hour, minute, second, fraction = self.when
        order = "<" if self.kind == "Unknown" or self.code == 0x2027 else ">"
        if self.code == 0x2003:
            header = bytes([*struct.pack(">HBB", year, month, day), fraction, second, minute, hour])
        else:
            header = bytes([day, month, *struct.pack(order + "H", year),
                            hour, minute, second, fraction])
        header += struct.pack(order + "II", self.pid, self.tid)
        if self.kind == "Error":
            header += struct.pack(">II", self.major, self.minor)
        if self.kind in ("Error", "Trace"):
            header += struct.pack(">II", self.point, self.pointType)
        header = (header + self.name.encode()).ljust(56, b"\0")
        data = b"".join(struct.pack(">HHI", len(data) + 8, 1, address) + data
                        for address, data in self.blocks or ())
        length = 8 + len(header) + len(data) if self.hasData else 8 + len(header) - 4
        # The last bytes of a header that the entry cuts off are read from the next entry.
        assert self.hasData or not header[-4:].strip(b"\0")
        prefix = struct.pack(">HHHH", length, 0, 4 + len(header), self.code)
        return prefix + header[:length - 8] + data

    def key(self):
        return *self.when, self.slot, self.number

    def time(self):
        return "%02d:%02d:%02d" % (self.hour // 3600, self.hour // 60 % 60, self.hour % 60)

    def cells(self):
        year, month, day = self.when[:3]
        numbers = [self.pid, self.tid, self.major, self.minor, self.point]
        return [self.kind, self.mark, self.time(), f"{month:02}-{day:02}-{year:04}",
                *map(str, numbers), POINTS.get(self.pointType, ""), self.function]

    def summary(self):
        year, month, day = self.when[:3]
        point, function = self.point, self.name
        if self.code == 0x2002:  # read as if it were an error: pieces of the name
            name = self.name.replace("(", "\0", 1).encode().ljust(40, b"\0")
            point = struct.unpack_from("<i", name, 8)[0]
            function = name[16:].split(b"\0")[0].decode()
        elif self.kind in ("Error", "Trace"):
            function = self.function
        else:
            return ["", ""]
        major, minor = (v - (v >> 31 << 32) for v in (self.major, self.minor))
        date = f"{month if 2 <= month <= 12 else 1:02}-{day:02}-{year % 100:02}"
        return [f"Time: {self.time():<14}   Pid: {self.pid:4}   Major Error: {major:4}   "
                f"Function: {function}",
                f"Date: {date:<14}   Tid: {self.tid:4}   Minor Error: {minor:4}   "
                f"Detect Point: {point:4}"]

    def dump(self):
        """The lines of all blocks; the addresses of the first dump have their bytes reversed."""
        lines = []
        for address, data in self.blocks or ():
            if not self.dumped:
                address = int.from_bytes(address.to_bytes(4, "little"), "big")
            skip, at = address % 16, address - address % 16
            while True:
                part, data = data[:16 - skip], data[16 - skip:]
                ascii = "." * skip + "".join(chr(b) if 0x20 <= b <= 0x7E else "." for b in part)
                other = "." * skip + "".join(EBCDIC.get(b, ".") for b in part)
                digits = ".. " * skip + "".join(f"{b:02X} " for b in part)
                lines.append(f"{at:08X}  {digits:<49}{ascii:<18}{other:<18}")
                skip, at = 0, at + 16 & 0xFFFFFFFF
                if not data:
                    break
            lines.append("")
        self.dumped = True
        return lines


def listing(records):
    """The text that Write log to disk gives for records."""
    return "".join("\n".join([*r.summary(), "", *r.dump(), "", STARS, "", ""]) for r in records)


def group(record):
    """Which item of the entry type filter decides."""
    trace, error = (2, 5, 6, 0x15, 0x1002), (1, 3, 4, 0x13, 0x1001)
    return 0 if record.code in trace else 1 if record.code in error else 2


KINDS = {  # in menu order: title of the dialog, value of a record, text of a value
    1: ("Entry Type", group, lambda v: ("TRC", "ERR", "MSG")[v]),
    2: ("Time", lambda r: r.hour,
        lambda v: "%02d:%02d:%02d" % (v // 3600, v // 60 % 60, v % 60)),
    3: ("Date", lambda r: r.when[:3], lambda v: "%02d-%02d-%02d" % (v[1], v[2], v[0] % 100)),
    4: ("PID", lambda r: r.pid, str),
    5: ("TID", lambda r: r.tid, str),
    6: ("Major Error", lambda r: r.major, str),
    7: ("Minor Error", lambda r: r.minor, str),
    8: ("Detect Point", lambda r: r.point, str),
    9: ("Function", lambda r: r.function, lambda v: v or "(no name)"),
}


class Filter:
    def __init__(self, kind, values, accepted):
        self.kind, self.values, self.accepted = kind, values, accepted
        self.passed, self.rejected = [], []

    def run(self, source, isFirst):
        if not isFirst:  # into the result of the filter before, and for good
            source.extend(self.rejected)
        value = KINDS[self.kind][1]
        self.passed = [r for r in source if value(r) in self.accepted]
        self.rejected = [r for r in source if value(r) not in self.accepted]


class Browser:
    def __init__(self):
        self.logs, self.records, self.rows, self.parked, self.chain = {}, [], [], [], []
        self.hiddenColumns, self.checks = set(), set()
        self.expanded, self.window = [], False  # pairs of record and lines; is the window shown?

    # Loading

    def load(self, name, records):
        if name not in self.logs.values():
            for slot in list(self.logs):
                self.unload(slot)
            self.merge(name, records)

    def merge(self, name, records):
        if name in self.logs.values():
            return
        slot = next(s for s in range(100) if s not in self.logs)
        self.logs[slot] = name
        for number, record in enumerate(records):
            record.slot, record.number = slot, number
        self.records += records
        if not self.chain:
            self.showAll()
            return
        self.run(0)
        wasEmpty, result = not self.rows, self.chain[-1].passed
        for number, record in enumerate(result):
            if record.slot == slot:
                record.number = number
                self.put(record)
        if result and not wasEmpty:
            self.sort()

    def unload(self, slot):
        del self.logs[slot]
        for record in self.records:
            self.collapse(record)
        for some in [self.records, self.rows, self.parked,
                     *(s for f in self.chain for s in (f.passed, f.rejected))]:
            some[:] = [record for record in some if record.slot != slot]

    def showAll(self):
        for number, record in enumerate(self.records):
            record.number = number
            self.put(record)
        if self.records:
            self.sort()

    def put(self, record):
        if record not in self.rows:
            self.rows.append(record)

    def sort(self):
        self.rows.sort(key=Record.key)

    def settleTies(self, shown):
        """Takes the order of records that no key tells apart from the rows shown."""
        columns = self.columns()
        for at, texts in enumerate(shown[:len(self.rows)]):
            key = self.rows[at].key()
            for record in itertools.takewhile(lambda r: r.key() == key, self.rows[at:]):
                if tuple(record.cells()[c] for c in columns) == texts:
                    self.rows.remove(record)
                    self.rows.insert(at, record)
                    break

    def columns(self):
        return [c for c in range(len(COLUMNS)) if c not in self.hiddenColumns]

    # Filters

    def installed(self, kind):
        return next((f for f in self.chain if f.kind == kind), None)

    def offer(self, kind):
        """The values that the dialog of a kind lists, and those of them that are selected."""
        old = self.installed(kind)
        values = {0, 1, 2} if kind == 1 else set(map(KINDS[kind][1], self.records))
        values |= old.values if old else set()
        return sorted(values), old.accepted & values if old else values

    def accept(self, kind, chosen):
        values, _ = self.offer(kind)
        if kind == 1 and len(chosen) == 3:
            return self.delete(kind)
        if not values:
            return self.cancel(kind)
        new, old = Filter(kind, set(values), set(chosen)), self.installed(kind)
        at = self.chain.index(old) if old else len(self.chain)
        self.chain[at:at + 1] = [new]
        self.run(at)
        self.rows.clear()
        for record in self.chain[-1].passed:
            self.put(record)
        self.sort()
        self.checks.add(kind)

    def run(self, start):
        for at, each in enumerate(self.chain[start:], start):
            each.run(self.chain[at - 1].passed if at else self.records, at == 0)

    def delete(self, kind):
        old = self.installed(kind)
        if old:
            self.chain.remove(old)
            for record in old.rejected:
                self.put(record)
        self.cancel(kind)

    def cancel(self, kind):
        self.checks.discard(kind)
        if 2 <= kind <= 8:
            self.sort()

    def removeFilters(self):
        for each in self.chain:
            for record in each.rejected:
                self.put(record)
        self.chain.clear()
        for record in self.rows:
            if record.selected:
                self.collapse(record)
        self.rows.clear()
        self.showAll()
        self.checks.clear()

    # Selection, expansion and display

    def select(self, choice):
        for at, record in enumerate(self.rows):
            record.selected = bool(choice(at, record))

    def expand(self, record):
        if not record.hasData:
            record.mark = " "
        elif not record.expanded:
            at = next((i for i, (r, _) in enumerate(self.expanded) if r.number > record.number),
                      len(self.expanded))
            lines = [*record.summary(), " ", *record.dump(), " ", STARS, " "]
            self.expanded.insert(at, (record, lines))
            record.expanded, record.mark, self.window = True, "-", True

    def collapse(self, record):
        if not record.hasData:
            record.mark = " "
        elif record.expanded:
            self.expanded = [(r, lines) for r, lines in self.expanded if r is not record]
            record.expanded, record.mark = False, "+"

    def open(self, record):
        if record.hasData:
            (self.collapse if record.expanded else self.expand)(record)

    def closeWindow(self):
        self.window = False
        for record in self.records:
            self.collapse(record)

    def park(self, which, collapses=True):
        for record in [r for r in self.rows if which(r)]:
            self.rows.remove(record)
            if record not in self.parked:
                self.parked.append(record)
            if collapses:
                self.collapse(record)

    def displayAll(self):
        mixes = bool(self.rows and self.parked)
        for record in self.parked:
            self.put(record)
        self.parked.clear()
        if mixes:
            self.sort()

    # What is shown

    def view(self):
        return {"headings": [COLUMNS[c] for c in self.columns()], "columns": self.columns(),
                "rows": [tuple(r.cells()[c] for c in self.columns()) for r in self.rows],
                "selected": [at for at, r in enumerate(self.rows) if r.selected],
                "filters": sorted(kind - 1 for kind in self.checks),
                "status": [f"Records shown: {len(self.rows)} of {len(self.records)}",
                           f"Logs: {len(self.logs)}"],
                "lines": [x for _, lines in self.expanded for x in lines] if self.window else None}
