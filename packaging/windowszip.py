#!/usr/bin/env python3
"""Puts a finished Windows build into a zip file, the same bytes from the same files.

Usage: windowszip.py SOURCES CODECS EPOCH ZIP BUILD [BUILD64]   (the project; the codecs that it was linked with; the time
that all files get, in seconds since 1970; the file to write; the finished build, and one of 64 bits)

All that is in it lies in one folder, named like the file.
"""

import sys
import time
import zipfile
from pathlib import Path

from notices import artifacts_of, notices

PROGRAMS = ("lumbrix.exe", "lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll")
# Those of 64 bits lie in a folder of their own; the program is there with 32 alone.
PROGRAMS64 = ("lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll")
IMPORTS = "liblumbrix.dll.a"


def contents(sources, codecs, build, build64=None):
    """What is in it: bytes by name."""
    artifacts = artifacts_of(build)
    files = {name: (artifacts / name).read_bytes() for name in PROGRAMS}
    files["include/lumbrix.h"] = (artifacts / "lumbrix.h").read_bytes()
    files[f"lib/{IMPORTS}"] = (artifacts / IMPORTS).read_bytes()
    if build64:
        for name in (*PROGRAMS64, IMPORTS):
            files[f"x64/{name}"] = (artifacts_of(build64) / name).read_bytes()
    for name in ("README.md", "CHANGELOG.md"):
        files[name] = (sources / name).read_bytes()
    files["LICENSE.txt"] = (sources / "LICENSE").read_bytes()
    files["THIRD-PARTY-NOTICES.txt"] = notices(codecs, *filter(None, (build, build64))).encode()
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
    if len(sys.argv) not in (6, 7):
        sys.exit(__doc__)
    sources, codecs, epoch, target, *builds = sys.argv[1:]
    write(contents(Path(sources), codecs, *map(Path, builds)), int(epoch), Path(target))
