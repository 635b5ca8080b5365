"""Asks GLib, as a file manager does, what type files are, with the description of RAS logs installed.

mime_check.py SHARE RASLOG: SHARE is a folder with mime/packages/ras-log-browser.xml, RASLOG the
program that makes logs."""

import os
import shutil
import subprocess
import sys
import tempfile

LOG = "application/x-ras-log"
TEXT_LOG = "text/x-log"


def typed(share):
    """Sets up the description beside the system's, and gives the function that asks."""
    folder = tempfile.mkdtemp()
    packages = os.path.join(folder, "mime", "packages")
    os.makedirs(packages)
    shutil.copy(os.path.join(share, "mime/packages/ras-log-browser.xml"), packages)
    os.environ["XDG_DATA_DIRS"] = folder + ":/usr/share"
    os.environ["XDG_DATA_HOME"] = folder
    subprocess.run(["update-mime-database", os.path.join(folder, "mime")], check=True)
    from gi.repository import Gio  # reads the environment when it is loaded

    def ask(name, data):
        kind, _ = Gio.content_type_guess(name, data[:16384])
        return Gio.content_type_get_mime_type(kind)

    return folder, ask


def cases(raslog):
    """What is asked: a name, the bytes, and the type expected."""
    for seed in range(1, 61):
        arguments = [raslog, "sample", "-n", "20", "--seed", str(seed), "-o", "-"]
        data = subprocess.run(arguments, check=True, stdout=subprocess.PIPE).stdout
        yield "some.log", data, LOG
        yield "cut.log", data[: 20 + seed], LOG
        yield "damaged.log", data[:100] + bytes(len(data)), LOG
        if data[6:8] in (b"\0\3", b"\0\x13", b"\0\5", b"\0\x15", b"\x20\2"):
            yield "without-a-suffix", data, LOG
    for text in ("2026-11-21 08:00:00 started\n" * 9, "Fehler: Größe\n", "\n", "#!x\n\n"):
        yield "text.log", text.encode(), TEXT_LOG
        yield "text.log", text.encode("latin-1"), TEXT_LOG
    yield "text", b"2026-11-21 08:00:00 started\n" * 9, "text/plain"
    yield "picture.png", b"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08", "image/png"


def main():
    folder, ask = typed(sys.argv[1])
    wrong = 0
    for name, data, expected in cases(sys.argv[2]):
        found = ask(name, data)
        if found != expected:
            wrong += 1
            print(f"{name}, {data[:16].hex(' ')}...: {found}, not {expected}")
    shutil.rmtree(folder)
    return wrong > 0


if __name__ == "__main__":
    sys.exit(main())
