#!/usr/bin/env python3
"""The test images that come with the sources of the codec libraries, judged by ImageMagick's reading.

Usage: corpora_test.py SOURCES LUMBRIX_CLI   (the folder of unpacked sources, the command line to test)
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

# Folders below the sources, and which of their files are pictures of a format that is read.
CORPORA = {
    "libpng1.6/contrib/pngsuite": "*.png",
    "libpng1.6/contrib/pngsuite/interlaced": "*.png",
    "libpng1.6/contrib/testpngs": "*.png",
    "tiff/test/images": "*.tif*",
    "giflib/pic": "*.gif",
    "libjpeg-turbo/testimages": "*.[jb][pm][gp]",
}
HOSTILE = "libpng1.6/contrib/testpngs/crashers"

# How far a channel may be from ImageMagick's reading.
EXACT = 0
ROUNDING = 1  # 16 bits a channel, or a palette of such, reduced to 8: we take the nearest value, ImageMagick not always
LOSSY = 3     # two decoders of one lossy file round differently

NOT_READ = {
    "testorig12.jpg": "12 bits a channel",
    "test_float64_predictor2_be_lzw.tif": "floating point samples",
    "test_float64_predictor2_le_lzw.tif": "floating point samples",
}
NOT_COMPARED = {
    "logluv-3c-16b.tiff": "high dynamic range: every program maps it to the screen in its own way",
    "minisblack-2c-8b-alpha.tiff": "ImageMagick passes over its alpha",
}


def tolerance(path):
    if path.suffix == ".jpg" or "jpg" in path.name or path.name.startswith("ojpeg"):
        return LOSSY
    if ("16" in path.name and path.suffix != ".bmp") or path.name.startswith("palette-1c"):
        return ROUNDING
    return EXACT


def pixels_of(path, folder):
    """RGBA bytes as ImageMagick reads them, gamma left alone."""
    if path.name.startswith("ojpeg"):
        # ImageMagick misses the colour space of this old kind, so the tool of the format's own library goes first.
        subprocess.run(["tiff2rgba", path, folder / "plain.tif"], capture_output=True, check=True)
        path = folder / "plain.tif"
    options = ["-set", "colorspace", "sRGB"] if path.suffix == ".png" else ["-colorspace", "sRGB"]
    return subprocess.run(["/usr/bin/convert", f"{path}[0]", *options, "-depth", "8", "RGBA:-"],
                          capture_output=True).stdout


def greatest_difference(first, second, alpha_tolerance):
    """Of any channel; the colour of clear pixels does not count."""
    if first == second:
        return 0
    greatest = 0
    for i in range(0, len(first), 4):
        a, b = first[i:i + 4], second[i:i + 4]
        if a != b:
            is_clear = min(a[3], b[3]) <= alpha_tolerance
            channels = (3,) if is_clear else range(4)
            greatest = max(greatest, max(abs(a[c] - b[c]) for c in channels))
    return greatest


class Corpora(unittest.TestCase):
    sources = None
    program = None

    def convert(self, source, folder):
        target = Path(folder) / "converted.png"
        done = subprocess.run([self.program, "convert", source, target], capture_output=True, text=True, timeout=60)
        return done, target

    def check(self, path):
        with tempfile.TemporaryDirectory(prefix="lumbrix-corpora-") as folder:
            done, target = self.convert(path, folder)
            if path.name in NOT_READ:
                self.assertEqual(done.returncode, 1, f"refused for {NOT_READ[path.name]}")
                self.assertFalse(target.exists())
                return
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            if path.name in NOT_COMPARED:
                return
            expected, converted = pixels_of(path, Path(folder)), pixels_of(target, Path(folder))
            self.assertGreater(len(expected), 0, "ImageMagick reads it")
            self.assertEqual(len(converted), len(expected))
            allowed = tolerance(path)
            self.assertLessEqual(greatest_difference(converted, expected, 1 if allowed == ROUNDING else 0), allowed)

    def check_hostile(self, path):
        with tempfile.TemporaryDirectory(prefix="lumbrix-corpora-") as folder:
            done, target = self.convert(path, folder)
            self.assertIn(done.returncode, (0, 1))
            self.assertEqual(target.exists(), done.returncode == 0)


def add_tests(sources):
    for folder, pattern in CORPORA.items():
        found = sorted((sources / folder).glob(pattern))
        if not found:
            sys.exit(f"there are no {pattern} in {sources / folder}")
        for path in found:
            setattr(Corpora, f"test_{folder}/{path.name}", lambda self, path=path: self.check(path))
    for path in sorted((sources / HOSTILE).glob("*.png")):
        setattr(Corpora, f"test_hostile/{path.name}", lambda self, path=path: self.check_hostile(path))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Corpora.sources, Corpora.program = Path(sys.argv[1]), sys.argv[2]
    add_tests(Corpora.sources)
    unittest.main(argv=sys.argv[:1])
