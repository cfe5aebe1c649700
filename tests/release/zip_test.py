#!/usr/bin/env python3
"""The zip file for Windows: what is in it, and its programs opened from where it was unpacked, under Wine.

Usage: zip_test.py ZIP ROOT   (the file; the project, whose tools run Windows programs)
"""

import os
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

OURS = "gdiplus=n,b;mscoree=;mshtml=;winemenubuilder.exe="
WINES_OWN = "gdiplus=b;mscoree=;mshtml=;winemenubuilder.exe="


class Zip(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-zip-")
        self.folder = Path(self.temporary.name)
        with zipfile.ZipFile(self.zip) as archive:
            archive.extractall(self.folder)
        self.unpacked = self.folder / self.zip.stem

    def tearDown(self):
        self.temporary.cleanup()

    def run_with(self, library, *words, timeout=120):
        return subprocess.run(words, cwd=self.folder, env=os.environ | {"WINEDLLOVERRIDES": library},
                              capture_output=True, text=True, timeout=timeout)

    def test_has_one_folder_with_programs_and_texts(self):
        self.assertEqual(os.listdir(self.folder), [self.zip.stem])
        names = {str(path.relative_to(self.unpacked)) for path in self.unpacked.rglob("*") if path.is_file()}
        self.assertEqual({name for name in names if not name.startswith(("docs/", "x64/"))},
                         {"lumbrix.exe", "lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll", "include/lumbrix.h",
                          "lib/liblumbrix.dll.a", "README.md", "CHANGELOG.md", "LICENSE.txt", "THIRD-PARTY-NOTICES.txt"})
        self.assertIn("docs/examples/caption.c", names)

    def test_notices_have_the_terms_of_each_library(self):
        text = (self.unpacked / "THIRD-PARTY-NOTICES.txt").read_text()
        for words in ("based in part on the work of the Independent JPEG Group", "Copyright (C)2009-",
                      "PNG Reference Library License version 2", "Silicon Graphics", "Eric S. Raymond",
                      "Jean-loup Gailly", "GCC RUNTIME LIBRARY EXCEPTION", "winpthreads"):
            self.assertIn(words, text)

    def test_nothing_in_it_tells_where_it_was_built(self):
        for path in self.unpacked.glob("*.???"):
            self.assertNotIn(str(self.root).encode(), path.read_bytes(), path)

    def convert(self, library, source, target):
        return self.run_with(library, self.root / "tools/wine-run", self.unpacked / "lumbrix-cli.exe", "convert",
                             source, target)

    def test_command_line_works_with_either_imaging_library(self):
        for library in (OURS, WINES_OWN):
            result = self.convert(library, self.root / "samples/photo.jpg", "new.bmp")
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertTrue((self.folder / "new.bmp").read_bytes().startswith(b"BM"))
            (self.folder / "new.bmp").unlink()

    def test_our_imaging_library_is_the_one_beside_the_program(self):
        broken_off = self.folder / "short.jpg"
        broken_off.write_bytes((self.root / "samples/photo.jpg").read_bytes()[:100000])
        result = self.convert(OURS, broken_off, "new.bmp")
        self.assertEqual(result.returncode, 0)
        self.assertIn("damaged", result.stderr)
        self.assertEqual(self.convert(WINES_OWN, broken_off, "other.bmp").returncode, 1)

    def test_main_window_converts_with_either_imaging_library(self):
        for library in (OURS, WINES_OWN):
            result = self.run_with(library, self.root / "tools/demonstrate", self.folder / "shown", self.unpacked,
                                   timeout=300)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertTrue((self.folder / "shown/photo.png").read_bytes().startswith(b"\x89PNG"))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Zip.zip, Zip.root = (Path(word).resolve() for word in sys.argv[1:3])
    unittest.main(argv=sys.argv[:1])
