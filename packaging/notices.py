#!/usr/bin/env python3
"""Writes the notices of all that was linked into the Windows programs and libraries, from what the linker wrote down.

Usage: notices.py CODECS NOTICES BUILD…   (the folder of the codecs that tools/build-codecs made, the file to write, and the
finished builds)

Each library's terms are copied from its sources or from its Debian package. A library that is not known here is an
error, so nothing is linked without its notice.
"""

import re
import sys
from pathlib import Path

DOCUMENTS = "/usr/share/doc"

# Name, the files of it that the linker may take, its texts (those in CODECS without a slash in front), and what is to be
# said besides.
COMPONENTS = [
    ("libjpeg-turbo", r"CODECS/windows\d*/lib/libjpeg\.a",
     ["source/libjpeg-turbo/LICENSE.md", "source/libjpeg-turbo/README.ijg"],
     "This software is based in part on the work of the Independent JPEG Group."),
    ("libpng", r"CODECS/windows\d*/lib/libpng16\.a", ["source/libpng1.6/LICENSE"], ""),
    ("libtiff", r"CODECS/windows\d*/lib/libtiff\.a", ["source/tiff/LICENSE.md"], ""),
    ("giflib", r"CODECS/windows\d*/lib/libgif\.a",
     ["source/giflib/COPYING", "source/giflib/debian/copyright"], ""),
    ("zlib", r"/usr/[a-z0-9_]+-w64-mingw32/lib/libz\.a", [f"{DOCUMENTS}/libz-mingw-w64-dev/copyright"], ""),
    ("The libraries of GCC (libgcc, libstdc++)", r"/usr/lib/gcc/[a-z0-9_]+-w64-mingw32/[^/]+/[^/]+\.[ao]",
     [f"{DOCUMENTS}/gcc-mingw-w64-base/copyright"],
     "They are linked under the GCC Runtime Library Exception, whose text is below; it lets programs that are compiled\n"
     "with GCC be passed on under terms of their own."),
    ("The C library of mingw-w64, with winpthreads", r"/usr/[a-z0-9_]+-w64-mingw32/lib/[^/]+\.[ao]",
     [f"{DOCUMENTS}/mingw-w64-common/copyright"], ""),
]

HEAD = """THIRD-PARTY NOTICES

The programs and libraries of Lumbrix for Windows contain the following libraries, all linked statically. Lumbrix itself
is under the terms in the file LICENSE.txt.

"""


def linked(map_text):
    """The files that the linker took something from, in a map of its: archives with members in use, and objects."""
    archives = map_text.partition("\nDiscarded input sections")[0]
    names = set(re.findall(r"^(\S+\.a)\(\S+\)$", archives, re.MULTILINE))
    names |= set(re.findall(r"^LOAD (\S+\.o(?:bj)?)$", map_text, re.MULTILINE))
    return names


def component_of(name, codecs):
    """The row that a file belongs to. None where there is none."""
    for row in COMPONENTS:
        if re.fullmatch(row[1].replace("CODECS", re.escape(str(codecs))), name):
            return row
    return None


def artifacts_of(build):
    """Where the programs and libraries of a build lie, as its configuration tells."""
    cache = (build / "CMakeCache.txt").read_text()
    return Path(re.search(r"^LUMBRIX_OUTPUT:[A-Z]+=(.*)$", cache, re.MULTILINE)[1]).resolve()


def used_components(build, codecs):
    """The rows that a build uses."""
    maps = sorted((build / "linked").glob("*.map"))
    if not maps:
        sys.exit(f"notices: the linker wrote down nothing in {build}/linked")
    used = []
    for file in maps:
        for name in linked(file.read_text(errors="replace")):
            path = (build / name).resolve()
            if path.is_relative_to(build) or path.parent == artifacts_of(build):
                continue  # our own
            row = component_of(str(path), codecs)
            if row is None:
                sys.exit(f"notices: {file.name} tells that {path} was linked, and there is no notice for it")
            used.append(row)
    return used


def section(row, codecs):
    name, _, texts, remark = row
    line = "=" * 100
    parts = [f"{line}\n{name}\n{line}\n"]
    if remark:
        parts.append(remark + "\n")
    parts += [(codecs / text).read_text(encoding="utf-8", errors="replace").strip("\n") + "\n" for text in texts]
    return "\n".join(parts)


def notices(codecs, *builds):
    """The whole text for finished builds."""
    codecs = Path(codecs).resolve()
    used = [row for build in builds for row in used_components(Path(build).resolve(), codecs)]
    used = [row for row in COMPONENTS if row in used]
    contents = "".join(f"  - {row[0]}\n" for row in used)
    return HEAD + contents + "\n\n" + "\n\n".join(section(row, codecs) for row in used)


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    Path(sys.argv[2]).write_text(notices(sys.argv[1], *sys.argv[3:]), encoding="utf-8")
