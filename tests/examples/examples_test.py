#!/usr/bin/env python3
"""The examples of the documentation, run as a reader would run them.

Usage: examples_test.py EXAMPLES SAMPLES CAPTION LIBRARY THUMBNAIL   (their folder, the sample pictures, the C example as
a program, liblumbrix.so, the C++ example as a program)
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path


class Examples(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-examples-")
        self.folder = Path(self.temporary.name)

    def tearDown(self):
        self.temporary.cleanup()

    def test_caption_in_c(self):
        result = subprocess.run([self.caption, self.samples / "photo.jpg", "small.png", "By the lake"],
                                cwd=self.folder, capture_output=True, text=True, timeout=60)
        self.assertEqual(result.stderr, "")
        self.assertEqual(result.returncode, 0)
        self.assertIn("1600 by 1067 pixels", result.stdout)
        self.assertIn("Camera Manufacturer\tLumbrix", result.stdout)
        self.assertEqual([path.name for path in self.folder.iterdir()], ["small.png"])
        wrong = subprocess.run([self.caption, "none.jpg", "x.png", "x"], cwd=self.folder, capture_output=True, text=True)
        self.assertEqual(wrong.returncode, 1)
        self.assertEqual(wrong.stderr, "cannot read none.jpg: there is no such file (FileNotFound)\n")

    def test_contact_sheet_in_python(self):
        result = subprocess.run([sys.executable, self.examples / "contactsheet.py", self.library, self.samples,
                                 self.folder], capture_output=True, text=True, timeout=60)
        self.assertEqual(result.stderr, "")
        self.assertIn("photo.jpg: 2026:11:21 09:30:00", result.stdout)
        self.assertIn("stamp.png: no date", result.stdout)
        self.assertTrue((self.folder / "photo.jpg.jpg").read_bytes().startswith(b"\xff\xd8"))

    def test_thumbnail_in_cpp(self):
        with open(self.samples / "photo.jpg", "rb") as picture:
            result = subprocess.run([self.thumbnail], stdin=picture, capture_output=True, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        # The header of a PNG file: 120 pixels high, and as wide as 1600 by 1067 asks for.
        self.assertEqual(result.stdout[:24], b"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\xb4\0\0\0\x78")
        wrong = subprocess.run([self.thumbnail], input=b"no picture", capture_output=True, timeout=60)
        self.assertEqual((wrong.returncode, wrong.stdout), (1, b""))
        self.assertIn(b"cannot read the input: it is not a picture", wrong.stderr)

    def test_turned_in_memory_in_python(self):
        command = [sys.executable, self.examples / "inmemory.py", self.library]
        with open(self.samples / "photo.jpg", "rb") as picture:
            result = subprocess.run(command, stdin=picture, capture_output=True, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, b"1067 by 1600 pixels\n"))
        self.assertEqual(result.stdout[16:24], b"\0\0\x04\x2b\0\0\x06\x40")
        wrong = subprocess.run(command, input=b"", capture_output=True, timeout=60)
        self.assertEqual((wrong.returncode, wrong.stdout), (1, b""))
        self.assertIn(b"cannot read the input: it is not a picture", wrong.stderr)


if __name__ == "__main__":
    if len(sys.argv) != 6:
        sys.exit(__doc__)
    Examples.examples, Examples.samples = Path(sys.argv[1]), Path(sys.argv[2])
    Examples.caption, Examples.library, Examples.thumbnail = sys.argv[3:]
    unittest.main(argv=sys.argv[:1])
