#!/usr/bin/env python3
"""The 64-bit library and command line in the zip file for Windows, used under Wine.

Usage: zip64_test.py ZIP ROOT   (the file; the project, whose tools run Windows programs)
"""

import os
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

AMD64 = b"\x64\x86"


class Zip64(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-zip64-")
        self.folder = Path(self.temporary.name)
        with zipfile.ZipFile(self.zip) as archive:
            archive.extractall(self.folder)
        self.unpacked = self.folder / self.zip.stem
        self.x64 = self.unpacked / "x64"

    def tearDown(self):
        self.temporary.cleanup()

    def run_program(self, *words):
        return subprocess.run([self.root / "tools/wine-run", *words], cwd=self.folder,
                              env=os.environ | {"LUMBRIX_WINEARCH": "win64"}, capture_output=True, text=True, timeout=180)

    def test_all_are_of_64_bits(self):
        self.assertEqual(set(os.listdir(self.x64)), {"lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll", "liblumbrix.dll.a"})
        for name in ("lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll"):
            data = (self.x64 / name).read_bytes()
            header = int.from_bytes(data[0x3C:0x40], "little")
            self.assertEqual(data[header:header + 6], b"PE\0\0" + AMD64, name)

    def test_command_line_converts_and_tells_of_damage(self):
        broken_off = self.folder / "short.jpg"
        broken_off.write_bytes((self.root / "samples/photo.jpg").read_bytes()[:100000])
        for source, words in ((self.root / "samples/photo.jpg", ""), (broken_off, "damaged")):
            result = self.run_program(self.x64 / "lumbrix-cli.exe", "convert", source, "new.png")
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertIn(words, result.stderr)
            self.assertTrue((self.folder / "new.png").read_bytes().startswith(b"\x89PNG"))

    def test_example_in_c_links_with_it(self):
        program = self.x64 / "caption.exe"
        compiled = subprocess.run(["x86_64-w64-mingw32-gcc-posix", "-Wall", "-Wextra", "-Werror",
                                   self.unpacked / "docs/examples/caption.c", "-I", self.unpacked / "include", "-L", self.x64,
                                   "-llumbrix", "-o", program], capture_output=True, text=True, timeout=60)
        self.assertEqual((compiled.returncode, compiled.stderr), (0, ""))
        result = self.run_program(program, self.root / "samples/photo.jpg", "small.png", "By the lake")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("1600 by 1067 pixels", result.stdout)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Zip64.zip, Zip64.root = (Path(word).resolve() for word in sys.argv[1:3])
    unittest.main(argv=sys.argv[:1])
