#!/usr/bin/env python3
"""Holds the headers and the finished libraries against the one list of exported names.

Usage: exports_list_test.py ROOT LIBRARY IMAGING [OBJDUMP PROGRAM]   (ROOT of the sources, the engine and the imaging
library; on Windows OBJDUMP reads them, and PROGRAM is lumbrix.exe)
"""

import re
import subprocess
import sys
import unittest
from pathlib import Path

ROW = re.compile(r"(\w+) (\d+) (public|internal)")
DECLARATION = re.compile(r"LUMBRIX_EXPORT\s+[\w\s*]+?LUMBRIX_CALL\s+(\w+)\(([^)]*)\);")


def listed(root):
    """The rows of the list: name, bytes of arguments, for whom."""
    lines = (root / "imaging/exports/exports.txt").read_text().splitlines()
    rows = [ROW.fullmatch(line) for line in lines if not line.startswith("#")]
    assert all(rows), "a line of the list is not a row"
    return {row[1]: (int(row[2]), row[3]) for row in rows}


def declared(root, header):
    """The names that a header declares, with the bytes of their arguments on a system of 32 bits: 4 for each."""
    text = (root / "imaging/exports" / header).read_text()
    return {name: 0 if arguments.strip() == "void" else 4 * len(arguments.split(","))
            for name, arguments in DECLARATION.findall(text)}


class ExportsList(unittest.TestCase):
    def names(self, audience):
        return {name for name, row in listed(self.root).items() if row[1] in audience}

    def test_headers_declare_what_is_listed(self):
        for header, audience in (("lumbrix.h", "public"), ("internal.h", "internal")):
            expected = {name: row[0] for name, row in listed(self.root).items() if row[1] == audience}
            self.assertEqual(declared(self.root, header), expected)
        self.assertGreater(len(self.names("public")), 35)

    def test_library_exports_what_is_listed_and_nothing_else(self):
        # On Windows the program takes its own doors from there too.
        audience = ("public", "internal") if self.program else ("public",)
        self.assertEqual(self.exports_of(self.library), self.names(audience))

    def test_library_tells_its_version_by_its_soname(self):
        if self.program:
            self.skipTest("libraries have sonames on Linux only")
        text = subprocess.run(["objdump", "-p", self.library], capture_output=True, text=True, check=True).stdout
        self.assertEqual(re.findall(r"^\s*SONAME\s+(\S+)$", text, re.MULTILINE), ["liblumbrix.so.0"])

    def test_imaging_library_exports_its_flat_functions_and_nothing_else(self):
        sources = (self.root / "imaginglibrary/flat").glob("*.cpp")
        defined = {name for source in sources
                   for name in re.findall(r"^FLAT_EXPORT \w+ FLAT_CALL (\w+)\(", source.read_text(), re.MULTILINE)}
        self.assertEqual(self.exports_of(self.imaging), defined)
        self.assertIn("GdiplusStartup", defined)

    def test_program_forwards_what_is_public(self):
        if not self.program:
            self.skipTest("the program is there on Windows only")
        self.assertEqual(self.exports_of(self.program), self.names("public"))

    def exports_of(self, file):
        if self.objdump:
            text = subprocess.run([self.objdump, "-p", file], capture_output=True, text=True, check=True).stdout
            table = text[text.index("[Ordinal/Name Pointer] Table"):]
            return set(re.findall(r"^\s*\[\s*\d+\]\s+(\w+)\s*$", table, re.MULTILINE))
        text = subprocess.run(["nm", "-D", "--defined-only", file], capture_output=True, text=True, check=True).stdout
        return {line.split()[2] for line in text.splitlines()}


if __name__ == "__main__":
    if len(sys.argv) not in (4, 6):
        sys.exit(__doc__)
    ExportsList.root = Path(sys.argv[1])
    ExportsList.library, ExportsList.imaging = sys.argv[2:4]
    ExportsList.objdump, ExportsList.program = sys.argv[4:] if len(sys.argv) == 6 else (None, None)
    unittest.main(argv=sys.argv[:1])
