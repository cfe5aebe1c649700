#!/usr/bin/env python3
"""Puts a finished Windows build into a zip file, the same bytes from the same files.

Usage: windowszip.py SOURCES BUILD ARTIFACTS CODECS EPOCH ZIP   (the project; the finished build; where its programs and
libraries lie; the codecs it was linked with; the time that all files get, in seconds since 1970; the file to write)

All that is in it lies in one folder, named like the file.
"""

import sys
import time
import zipfile
from pathlib import Path

from notices import notices

PROGRAMS = ("lumbrix.exe", "lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll")


def contents(sources, build, artifacts, codecs):
    """What is in it: bytes by name."""
    files = {name: (artifacts / name).read_bytes() for name in PROGRAMS}
    files["include/lumbrix.h"] = (artifacts / "lumbrix.h").read_bytes()
    files["lib/liblumbrix.dll.a"] = (artifacts / "liblumbrix.dll.a").read_bytes()
    for name in ("README.md", "CHANGELOG.md"):
        files[name] = (sources / name).read_bytes()
    files["LICENSE.txt"] = (sources / "LICENSE").read_bytes()
    files["THIRD-PARTY-NOTICES.txt"] = notices(build, artifacts, codecs).encode()
    for path in (sources / "docs").rglob("*"):
        if path.is_file():
            files[str(path.relative_to(sources))] = path.read_bytes()
    return files


def write(files, epoch, target):
    moment = time.gmtime(epoch)[:6]
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for name in sorted(files):
            entry = zipfile.ZipInfo(f"{target.stem}/{name}", moment)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3
            entry.external_attr = (0o100755 if name.endswith((".exe", ".dll")) else 0o100644) << 16
            archive.writestr(entry, files[name])


if __name__ == "__main__":
    if len(sys.argv) != 7:
        sys.exit(__doc__)
    write(contents(*map(Path, sys.argv[1:5])), int(sys.argv[5]), Path(sys.argv[6]))
