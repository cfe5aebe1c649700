#!/usr/bin/env python3
"""Icons of the command line, judged by icotool and ImageMagick.

Usage: icons_test.py LUMBRIX_CLI SAMPLES
"""

import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SIZES = [16, 24, 32, 48, 64, 128, 256]


def output_of(*words):
    return subprocess.run([str(word) for word in words], capture_output=True, text=True, check=True, timeout=60).stdout


class Icons(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-icons-")
        self.folder = Path(self.temporary.name)
        self.icon = self.folder / "photo.ico"
        output_of(self.cli, "icon", self.samples / "photo.jpg", self.icon)

    def tearDown(self):
        self.temporary.cleanup()

    def test_icotool_finds_every_size(self):
        rows = output_of("icotool", "--list", self.icon).splitlines()
        found = [re.search(r"--width=(\d+) --height=(\d+) --bit-depth=(\d+)", row).groups() for row in rows]
        self.assertEqual(found, [(str(size), str(size), "32") for size in SIZES])
        self.assertTrue(all("--icon" in row and "--palette-size=0" in row for row in rows))

    def test_pictures_are_the_whole_photo_centred(self):
        output_of("icotool", "--extract", "--output", self.folder, self.icon)
        extracted = sorted(self.folder.glob("*.png"), key=lambda path: int(re.search(r"_(\d+)x", path.name)[1]))
        self.assertEqual(len(extracted), len(SIZES))
        for size, picture in zip(SIZES, extracted):
            # 1600 by 1067 pixels in a square.
            height = round(1067 * size / 1600)
            top = (size - height) // 2
            box = output_of("identify", "-format", "%@", picture)
            self.assertEqual(box, f"{size}x{height}+0+{top}", size)
            inside = self.folder / "inside.png"
            wanted = self.folder / "wanted.png"
            output_of("convert", picture, "-crop", f"{size}x{height}+0+{top}", "+repage", "-alpha", "off", inside)
            output_of("convert", self.samples / "photo.jpg", "-resize", f"{size}x{height}!", wanted)
            result = subprocess.run(["compare", "-metric", "PSNR", inside, wanted, "null:"], capture_output=True,
                                    text=True, timeout=60)
            self.assertGreater(float(result.stderr.split()[0]), 24, f"decibels at {size}")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Icons.cli, Icons.samples = Path(sys.argv[1]), Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
