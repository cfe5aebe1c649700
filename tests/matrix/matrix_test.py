#!/usr/bin/env python3
"""Every readable format to every written one, judged by ImageMagick's reading of both files.

Usage: matrix_test.py [--wine] COMMAND...   (the command is the convertlist program, with its launcher if it needs one)
"""

import math
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TARGETS = ["bmp", "jpg", "gif", "tiff", "png"]
HAS_ALPHA = {"png", "tiff"}

# Lossy targets are held against ImageMagick's own at the same settings: in dB of peak signal-to-noise ratio, how much
# worse ours may be.
MARGIN = 1

# Sources made by ImageMagick: name, arguments behind the picture, and the name that fixes the coder.
# The picture has a gradient, hard edges and, for the -alpha kinds, soft alpha.
SOURCES = {
    "bmp-1": (["-colors", "2", "-type", "bilevel"], "BMP3:{}.bmp"),
    "bmp-4": (["+dither", "-colors", "16", "-type", "palette"], "BMP3:{}.bmp"),
    "bmp-8": (["+dither", "-colors", "200", "-type", "palette"], "BMP3:{}.bmp"),
    "bmp-8-rle": (["+dither", "-colors", "200", "-type", "palette", "-compress", "RLE"], "BMP3:{}.bmp"),
    "bmp-24": (["-type", "TrueColor"], "BMP3:{}.bmp"),
    "bmp-os2": (["-type", "TrueColor"], "BMP2:{}.bmp"),
    "jpg-color": (["-quality", "92"], "JPEG:{}.jpg"),
    "jpg-grey": (["-colorspace", "Gray", "-quality", "92"], "JPEG:{}.jpg"),
    "jpg-progressive": (["-quality", "92", "-interlace", "JPEG"], "JPEG:{}.jpg"),
    "jpg-cmyk": (["-colorspace", "CMYK", "-quality", "95"], "JPEG:{}.jpg"),
    "png-grey": (["-colorspace", "Gray", "-depth", "8"], "PNG:{}.png"),
    "png-grey-16": (["-colorspace", "Gray", "-depth", "16"], "PNG:{}.png"),
    "png-palette": (["+dither", "-colors", "100"], "PNG8:{}.png"),
    "png-rgb": ([], "PNG24:{}.png"),
    "png-rgb-16": (["-depth", "16"], "PNG48:{}.png"),
    "png-interlaced": (["-interlace", "PNG"], "PNG24:{}.png"),
    "png-alpha": ([], "PNG32:{}.png"),
    "gif": (["+dither", "-colors", "128"], "GIF:{}.gif"),
    "gif-interlaced": (["+dither", "-colors", "128", "-interlace", "GIF"], "GIF:{}.gif"),
    "gif-transparent": (["-channel", "A", "-threshold", "50%", "+channel", "+dither", "-colors", "64"], "GIF:{}.gif"),
    "tiff-none": (["-compress", "None", "-depth", "8"], "TIFF:{}.tiff"),
    "tiff-lzw": (["-compress", "LZW", "-depth", "8"], "TIFF:{}.tiff"),
    "tiff-deflate": (["-compress", "Zip", "-depth", "8"], "TIFF:{}.tiff"),
    "tiff-packbits": (["-compress", "RLE", "-depth", "8"], "TIFF:{}.tiff"),
    "tiff-jpeg": (["-compress", "JPEG", "-quality", "95", "-depth", "8"], "TIFF:{}.tiff"),
    "tiff-16": (["-compress", "LZW", "-depth", "16"], "TIFF:{}.tiff"),
    "tiff-g4": (["-type", "bilevel", "-compress", "Group4"], "TIFF:{}.tiff"),
    "tiff-tiled": (["-define", "tiff:tile-geometry=32x32", "-depth", "8"], "TIFF:{}.tiff"),
    "tiff-alpha": (["-compress", "LZW", "-depth", "8"], "TIFF:{}.tiff"),
    "ico": ([], "ICO:{}.ico"),
}
# Made by ourselves, for ImageMagick writes no usable files of these kinds.
MADE_HERE = {"bmp-16": (0x7C00, 0x03E0, 0x001F), "bmp-16-565": (0xF800, 0x07E0, 0x001F)}
ALL_SOURCES = [*SOURCES, *MADE_HERE]
WITH_ALPHA = {"png-alpha", "tiff-alpha", "gif-transparent", "ico"}


def magick(*arguments):
    done = subprocess.run(["/usr/bin/convert", *map(str, arguments)], capture_output=True, check=True)
    return done.stdout


def read_rgba(path, over_white=False):
    """Size and RGBA bytes of a file as ImageMagick sees them."""
    # Gamma and profiles are left alone here as in the converter; a palette index or a CMYK value becomes plain sRGB.
    options = ["-background", "white", "-alpha", "remove"] if over_white else []
    size = subprocess.run(["/usr/bin/identify", "-format", "%w %h\n", f"{path}[0]"], capture_output=True, check=True)
    width, height = map(int, size.stdout.split()[:2])
    pixels = magick("-define", "png:preserve-iCCP=false", f"{path}[0]", "-colorspace", "sRGB", *options, "-depth", "8",
                    "RGBA:-")
    return (width, height), pixels


def write_16_bit_bmp(path, masks):
    """A gradient in 16-bit pixels with the given channel masks."""
    width, height = 67, 43
    rows = b""
    for y in range(height):
        row = struct.pack(f"<{width}H", *((x * 63 // 66 << 10 | y << 5 | (x + y) % 32) & sum(masks)
                                          for x in range(width)))
        rows += row + bytes(-len(row) % 4)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 16, 3, len(rows), 0, 0, 0, 0) + struct.pack("<3I", *masks)
    path.write_bytes(struct.pack("<2sIII", b"BM", 14 + len(info) + len(rows), 0, 14 + len(info)) + info + rows)


def psnr(first, second):
    total = 0
    for channel in range(3):
        total += sum((a - b) * (a - b) for a, b in zip(first[channel::4], second[channel::4]))
    mean = total / (len(first) / 4 * 3)
    return math.inf if mean == 0 else 10 * math.log10(255 * 255 / mean)


def hide_clear(pixels):
    """Clear pixels may have any colour."""
    hidden = bytearray(pixels)
    for i in range(0, len(hidden), 4):
        if hidden[i + 3] == 0:
            hidden[i:i + 3] = b"\0\0\0"
    return bytes(hidden)


def color_count(pixels):
    return len({pixels[i:i + 4] for i in range(0, len(pixels), 4)})


class Matrix(unittest.TestCase):
    command = []
    wine = False

    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-matrix-")
        cls.folder = Path(cls.temporary.name)
        cls.sources = {name: cls.make_source(name) for name in ALL_SOURCES}
        cls.convert_all()

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    @classmethod
    def make_source(cls, name):
        if name in MADE_HERE:
            write_16_bit_bmp(cls.folder / f"{name}.bmp", MADE_HERE[name])
            return cls.folder / f"{name}.bmp"
        arguments, pattern = SOURCES[name]
        target = pattern.format(cls.folder / name)
        picture = ["-size", "67x43", "gradient:#ff8000-#0040ff", "-fill", "#20c040", "-draw", "rectangle 9,7 30,25",
                   "-fill", "black", "-draw", "line 0,42 66,0"]
        if name in WITH_ALPHA:
            picture += ["(", "-size", "67x43", "radial-gradient:white-black", ")", "-alpha", "off",
                        "-compose", "CopyOpacity", "-composite"]
        else:
            picture += ["-alpha", "off"]
        magick(*picture, *arguments, target)
        return Path(target.split(":", 1)[1])

    @classmethod
    def target(cls, name, target):
        return cls.folder / f"{name}.out.{target}"

    @classmethod
    def convert_all(cls):
        def spelled(path):
            return "Z:" + str(path).replace("/", "\\") if cls.wine else str(path)

        pairs = [(name, target) for name in ALL_SOURCES for target in TARGETS]
        lines = "".join(f"{target}\t{spelled(cls.sources[name])}\t{spelled(cls.target(name, target))}\n"
                        for name, target in pairs)
        done = subprocess.run(cls.command, input=lines.encode(), capture_output=True, timeout=200, check=True)
        cls.statuses = dict(zip(pairs, map(int, done.stdout.split())))


# How far a channel may be from ImageMagick's reading where nothing is lost in between.
def tolerance(name, over_white):
    if "jp" in name:
        return 2  # two decoders of one lossy file round differently
    if "16" in name or over_white:
        return 1  # we round to the nearest value, ImageMagick's reduction of 16 bits and its blending do not always
    return 0


def greatest_difference(first, second):
    return max(abs(a - b) for a, b in zip(first, second))


def make_test(name, target):
    def test(self):
        self.assertEqual(self.statuses.get((name, target)), 0, "status of the conversion")
        source, written = self.sources[name], self.target(name, target)
        keeps_alpha = target in HAS_ALPHA or (target == "gif" and name in WITH_ALPHA)
        expected_size, expected = read_rgba(source, not keeps_alpha)
        size, pixels = read_rgba(written, not keeps_alpha)
        self.assertEqual(size, expected_size)
        expected, pixels = hide_clear(expected), hide_clear(pixels)
        if target == "gif" and name in WITH_ALPHA and name != "gif-transparent":
            self.assertEqual([alpha == 0 for alpha in pixels[3::4]], [alpha < 128 for alpha in expected[3::4]],
                             "holes stay holes")
        elif target == "jpg":
            theirs = self.folder / f"{name}.theirs.jpg"
            magick(f"{source}[0]", "-background", "white", "-alpha", "remove", "-colorspace", "sRGB", "-type",
                   "TrueColor", "-quality", "75", "-sampling-factor", "4:2:0", theirs)
            self.assertGreater(psnr(expected, pixels), psnr(expected, read_rgba(theirs, True)[1]) - MARGIN)
        elif target == "gif" and color_count(expected) > 256:
            theirs = self.folder / f"{name}.theirs.gif"
            magick(f"{source}[0]", "-dither", "FloydSteinberg", theirs)
            self.assertGreater(psnr(expected, pixels), psnr(expected, read_rgba(theirs, True)[1]) - MARGIN)
        else:
            self.assertLessEqual(greatest_difference(expected, pixels),
                                 tolerance(name, name in WITH_ALPHA and not keeps_alpha))
    return test


for source_name in ALL_SOURCES:
    for target_name in TARGETS:
        setattr(Matrix, f"test_{source_name}_to_{target_name}".replace("-", "_"), make_test(source_name, target_name))

if __name__ == "__main__":
    arguments = sys.argv[1:]
    if arguments and arguments[0] == "--wine":
        Matrix.wine = True
        arguments = arguments[1:]
    if not arguments:
        sys.exit(__doc__)
    Matrix.command = arguments
    unittest.main(argv=sys.argv[:1])
