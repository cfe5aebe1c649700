#!/usr/bin/env python3
"""Icon files as independent programs read them.

Usage: iconreaders_test.py WRITEICON   (the program that writes the icon)
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CONVERT = "/usr/bin/convert"
IDENTIFY = "/usr/bin/identify"
ICOTOOL = "/usr/bin/icotool"
SIDE = 32


def expected_pixel(x, y):
    """Red, green, blue, alpha; what is transparent may have any colour."""
    if (y == 0 and x >= 3) or (y == SIDE - 1 and x == 0):
        return None
    return (8 * x, 8 * y, 16 if x < y else 200, 255)


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


class Readers(unittest.TestCase):
    writer = None

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-icon-")
        self.icon = Path(self.temporary.name) / "picture.ico"
        subprocess.run([self.writer, self.icon], check=True)

    def tearDown(self):
        self.temporary.cleanup()

    def expect_pixels(self, pixels):
        self.assertEqual(len(pixels), SIDE * SIDE * 4)
        for y in range(SIDE):
            for x in range(SIDE):
                place = 4 * (SIDE * y + x)
                pixel, expected = tuple(pixels[place:place + 4]), expected_pixel(x, y)
                if expected is None:
                    self.assertEqual(pixel[3], 0, f"({x}, {y})")
                else:
                    self.assertEqual(pixel, expected, f"({x}, {y})")

    def test_imagemagick_sees_one_picture_of_its_size(self):
        self.assertEqual(output_of(IDENTIFY, "-format", "%m %w %h %n\n", self.icon), b"ICO 32 32 1\n")

    def test_imagemagick_sees_colours_and_transparency(self):
        self.expect_pixels(output_of(CONVERT, self.icon, "-depth", "8", "rgba:-"))

    def test_icotool_lists_one_icon_of_its_size_and_depth(self):
        self.assertEqual(output_of(ICOTOOL, "--list", self.icon).split(),
                         b"--icon --index=1 --width=32 --height=32 --bit-depth=24 --palette-size=1".split())

    def test_icotool_sees_colours_and_transparency(self):
        extracted = Path(self.temporary.name) / "extracted.png"
        subprocess.run([ICOTOOL, "--extract", "--output", extracted, self.icon], check=True)
        self.expect_pixels(output_of(CONVERT, extracted, "-depth", "8", "rgba:-"))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    Readers.writer = sys.argv[1]
    unittest.main(argv=sys.argv[:1])
