#!/usr/bin/env python3
"""Pictures turned as their orientation says, judged by ImageMagick, and metadata left out, judged by ExifTool.

Usage: wishes_test.py SAMPLES LUMBRIX_CLI   (the folder of sample pictures, the command line to test)
"""

import json
import subprocess
import sys
import unittest
from pathlib import Path

import blocks_test
import exif_test
from exif_test import ExifTool, faults_of

WIDTH, HEIGHT = 48, 32

# What ExifTool reads of any file of a format, without metadata: the format's own facts.
OWN_GROUPS = {"ExifTool", "System", "File", "JFIF", "PNG", "PNG-pHYs", "GIF", "IFD0", "Composite"}
OWN_TAGS_OF_TIFF = {"SubfileType", "ImageWidth", "ImageHeight", "BitsPerSample", "Compression",
                    "PhotometricInterpretation", "StripOffsets", "Orientation", "SamplesPerPixel", "RowsPerStrip",
                    "StripByteCounts", "XResolution", "YResolution", "PlanarConfiguration", "ResolutionUnit",
                    "Predictor", "ColorMap", "ExtraSamples"}
OWN_TAGS_OF_PNG = {"ImageWidth", "ImageHeight", "BitDepth", "ColorType", "Compression", "Filter", "Interlace",
                   "Palette", "Transparency", "SRGBRendering", "Gamma"}


def told_by(path):
    """The fields beyond those that a file of the format has anyway."""
    fields = json.loads(exif_test.exiftool("-j", "-G1", "-n", "-u", path))[0]
    del fields["SourceFile"]
    told = []
    for name in fields:
        group, tag = name.split(":")
        is_own = group in OWN_GROUPS and tag not in ("Comment", "CurrentIPTCDigest")
        if group == "IFD0":
            is_own = tag in OWN_TAGS_OF_TIFF and path.suffix == ".tiff"
        if group == "PNG":
            is_own = tag in OWN_TAGS_OF_PNG
        if not is_own:
            told.append(name)
    return told


class Wishes(exif_test.Fixture):
    def run_program(self, *arguments):
        subprocess.run([self.program, *map(str, arguments)], check=True, timeout=60)

    def magick(self, *arguments):
        return subprocess.run(["/usr/bin/convert", *map(str, arguments)], check=True, capture_output=True).stdout

    def make_turned(self, orientation):
        """Four corners of four colours, lossless, and the orientation with sizes in EXIF."""
        source = self.folder / f"turned{orientation}.tiff"
        self.magick("-size", f"{WIDTH // 2}x{HEIGHT // 2}", "xc:red", "xc:lime", "+append",
                    "(", "-size", f"{WIDTH * 3 // 4}x{HEIGHT // 2}", "xc:blue",
                    "-size", f"{WIDTH // 4}x{HEIGHT // 2}", "xc:yellow", "+append", ")", "-append", "-strip", source)
        exif_test.exiftool("-n", "-overwrite_original", f"-IFD0:Orientation={orientation}",
                           f"-ExifIFD:ExifImageWidth={WIDTH}", f"-ExifIFD:ExifImageHeight={HEIGHT}",
                           f"-XMP-tiff:Orientation={orientation}", "-XMP-tiff:Make=maker", source)
        return source

    def expect_shown_alike(self, target, expected, percent):
        """That a target shows what the expected picture does, at this size, however exactly it was made smaller."""
        least = 70 if percent == 100 else 30
        width, height = (int(side) * percent // 100 for side in
                         self.magick(expected, "-format", "%w %h", "info:").split())
        self.assertEqual(self.magick(target, "-format", "%w %h", "info:").decode(), f"{width} {height}", target)
        small = self.folder / "small.png"
        self.magick(expected, "-filter", "box", "-resize", f"{width}x{height}!", small)
        compared = subprocess.run(["/usr/bin/compare", "-quiet", "-metric", "PSNR", target, small, "null:"], capture_output=True)
        decibels = compared.stderr.decode().split()[0]
        self.assertTrue(decibels in ("inf", "0") or float(decibels) > least, f"{target}: {decibels}")

    def expect_upright(self, target, expected, percent=100, tags=True):
        self.expect_shown_alike(target, expected, percent)
        fields = json.loads(exif_test.exiftool("-j", "-G1", "-n", target))[0]
        self.assertNotIn("XMP-tiff:Orientation", fields)
        self.assertEqual(fields.get("IFD0:Orientation", 1), 1, target)
        if tags:
            sides = self.magick(target, "-format", "%w %h", "info:").decode().split()
            self.assertEqual([str(fields[f"ExifIFD:ExifImage{side}"]) for side in ("Width", "Height")], sides)
            self.assertEqual(fields["XMP-tiff:Make"], "maker")
        self.assertEqual([fault for fault in faults_of(target) if fault not in blocks_test.NO_FAULTS], [], target)

    def test_every_orientation_through_every_command(self):
        for orientation in range(1, 9):
            source = self.make_turned(orientation)
            expected = self.folder / "expected.png"
            self.magick(source, "-auto-orient", expected)
            width, height = map(int, self.magick(expected, "-format", "%w %h", "info:").split())
            for ending in ("png", "tiff"):
                target = self.folder / f"target.{ending}"
                self.run_program("convert", source, target, "--auto-orient")
                self.expect_upright(target, expected)
                self.run_program("resize", source, target, height // 2)
                self.expect_upright(target, expected, percent=50)
                self.run_program("resize", source, target, "--fit", "100x100", "--only-shrink")
                self.expect_upright(target, expected)
                self.run_program("thumb", source, height // 2, target)
                self.expect_upright(target, expected, percent=50, tags=False)
                self.run_program("crop", source, target, 0, 0, width, height, "--auto-orient")
                self.expect_upright(target, expected)
                self.run_program("rotate", source, target, 180, "hv", "--auto-orient")
                self.expect_upright(target, expected)
                self.run_program("annotate", source, target, 0, 0, " ", "--auto-orient")
                self.expect_upright(target, expected)
                self.run_program("stamp", source, target, 200, 200, source, "--auto-orient")
                self.expect_upright(target, expected)

    def test_strip_leaves_nothing(self):
        source = blocks_test.EveryBlock.make_jpeg(self)
        self.assertGreater(len(told_by(source)), 20)
        for command in ("convert", "resize", "crop", "rotate", "annotate"):
            for ending in ("jpg", "tiff", "png", "gif"):
                target = self.folder / f"{command}.{ending}"
                name, *rest = blocks_test.OPERATIONS[command][0]
                self.run_program(name, source, target, *rest, "--strip")
                self.assertEqual(told_by(target), [], target.name)

    def test_strip_keeps_profile_and_resolution(self):
        source = blocks_test.EveryBlock.make_jpeg(self)
        for ending in ("jpg", "tiff", "png"):
            target = self.folder / f"profiled.{ending}"
            self.run_program("convert", source, target, "--strip", "--keep-profile")
            groups = {name.split(":")[0] for name in told_by(target)}
            self.assertTrue(groups <= {"ICC-header", "ICC_Profile", "PNG"} and "ICC-header" in groups, groups)
        exif_test.exiftool("-overwrite_original", "-JFIF:XResolution=300", "-JFIF:YResolution=300",
                           "-JFIF:ResolutionUnit=inches", source)
        for ending in ("jpg", "tiff"):
            target = self.folder / f"fine.{ending}"
            self.run_program("convert", source, target, "--strip")
            self.assertEqual(exif_test.exiftool("-s3", "-n", "-XResolution", target).decode().strip(), "300", ending)

    def test_background_is_blended_exactly(self):
        source = self.folder / "alpha.png"
        self.magick("-size", "64x256", "gradient:red-blue", "(", "-size", "256x64", "gradient:white-black", "-rotate",
                    "90", ")", "-alpha", "off", "-compose", "copy-opacity", "-composite", "-depth", "8", source)
        pixels = self.magick(source, "-depth", "8", "rgba:-")
        self.assertGreater(len(set(pixels[3::4])), 60)
        background = (0x30, 0x80, 0xC0)
        expected = bytes((pixels[at + i] * pixels[at + 3] + background[i] * (255 - pixels[at + 3]) + 127) // 255
                         for at in range(0, len(pixels), 4) for i in range(3))
        for ending in ("png", "tiff", "bmp"):
            target = self.folder / f"over.{ending}"
            self.run_program("convert", source, target, "--background", "3080c0")
            self.assertEqual(self.magick(target, "-depth", "8", "rgb:-"), expected, ending)
            self.assertIn(self.magick(target, "-format", "%A", "info:").decode(), ("False", "Undefined"), ending)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    exif_test.Fixture.samples, exif_test.Fixture.program = Path(sys.argv[1]), sys.argv[2]
    exif_test.exiftool = ExifTool()
    try:
        unittest.main(argv=sys.argv[:1])
    finally:
        exif_test.exiftool.close()
