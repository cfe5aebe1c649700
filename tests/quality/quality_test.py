#!/usr/bin/env python3
"""Resized pictures against those of an independent program with the same kernel.

Usage: quality_test.py SAMPLES LUMBRIX_CLI   (the folder of sample pictures, the command line to test)
"""

import math
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CONVERT = "/usr/bin/convert"
COMPARE = "/usr/bin/compare"


def write_zone_plate(path, side):
    """Rings that come closer and closer, up to one a pixel: whatever is skipped shows as new rings."""
    with open(path, "wb") as file:
        file.write(b"P6 %d %d 255\n" % (side, side))
        for y in range(side):
            for x in range(side):
                distance = (x - side / 2) ** 2 + (y - side / 2) ** 2
                file.write(bytes([int(127.5 + 127.5 * math.cos(math.pi * distance / side))] * 3))


class Quality(unittest.TestCase):
    samples = None
    program = None

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-quality-")
        self.folder = Path(self.temporary.name)

    def tearDown(self):
        self.temporary.cleanup()

    def expect_like(self, source, size, kernel, decibels):
        """The PSNR between our picture of this size and the other program's."""
        ours, theirs = self.folder / "ours.png", self.folder / "theirs.png"
        subprocess.run([self.program, "resize", source, ours, size.split("x")[1]], check=True)
        subprocess.run([CONVERT, source, "-strip", "-filter", kernel, "-resize", f"{size}!", theirs], check=True)
        result = subprocess.run([COMPARE, "-metric", "PSNR", ours, theirs, "null:"], capture_output=True, text=True)
        psnr = math.inf if result.stderr.startswith("inf") else float(re.match(r"[\d.]+", result.stderr)[0])
        self.assertGreater(psnr, decibels)

    def make_text(self):
        """Small text on white, which loses most by careless shrinking."""
        paper, page = self.folder / "paper.png", self.folder / "page.png"
        subprocess.run([CONVERT, "-size", "600x200", "xc:white", "PNG24:" + str(paper)], check=True)
        text = "\n".join(["The quick brown fox jumps over the lazy dog 0123456789"] * 4)
        subprocess.run([self.program, "annotate", paper, page, "5", "5", text, "--size", "20"], check=True)
        return page

    def test_photograph_made_small(self):
        """A JPEG is decoded at an eighth, a quarter or half its size, which is as fast as it is coarse."""
        self.expect_like(self.samples / "photo.jpg", "150x100", "Lanczos", 43)
        self.expect_like(self.samples / "photo.jpg", "390x260", "Lanczos", 42)
        self.expect_like(self.samples / "photo.jpg", "600x400", "Lanczos", 47)

    def test_photograph_made_small_from_all_its_pixels(self):
        whole = self.folder / "whole.png"
        subprocess.run([CONVERT, self.samples / "photo.jpg", "-strip", whole], check=True)
        self.expect_like(whole, "150x100", "Lanczos", 50)
        self.expect_like(whole, "600x400", "Lanczos", 50)

    def test_zone_plate_shows_no_rings_that_are_not_there(self):
        plate = self.folder / "plate.ppm"
        write_zone_plate(plate, 400)
        subprocess.run([CONVERT, plate, self.folder / "plate.png"], check=True)
        self.expect_like(self.folder / "plate.png", "150x150", "Lanczos", 48)
        self.expect_like(self.folder / "plate.png", "100x100", "Lanczos", 48)

    def test_text_made_small(self):
        self.expect_like(self.make_text(), "300x100", "Lanczos", 42)

    def test_photograph_enlarged(self):
        small = self.folder / "small.png"
        subprocess.run([self.program, "resize", self.samples / "photo.jpg", small, "200"], check=True)
        self.expect_like(small, "900x600", "Catrom", 48)
        self.expect_like(small, "900x600", "Lanczos", 42)

    def test_soft_borders_made_small(self):
        self.expect_like(self.samples / "stamp.png", "60x60", "Lanczos", 42)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Quality.samples, Quality.program = Path(sys.argv[1]), sys.argv[2]
    unittest.main(argv=sys.argv[:1])
