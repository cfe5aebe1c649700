#!/usr/bin/env python3
"""Property items through conversions, judged by ExifTool's reading of both files.

Usage: exif_test.py SAMPLES LUMBRIX_CLI   (the folder of sample pictures, the command line to test)
"""

import json
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TARGETS = ["jpg", "tiff", "png"]

# Written into a copy of the sample: one field of every directory and of every type that cameras use.
FIELDS = {
    "IFD0:Artist": "A. Painter",
    "IFD0:Orientation": 6,
    "IFD0:Rating": 4,
    "ExifIFD:ExposureTime": 0.004,
    "ExifIFD:FNumber": 5.6,
    "ExifIFD:ISO": 200,
    "ExifIFD:DateTimeOriginal": "2026:11:21 09:29:58",
    "ExifIFD:ExposureCompensation": -0.5,
    "ExifIFD:LensModel": "Sample lens",
    "ExifIFD:UserComment": "a remark",
    "GPS:GPSLatitudeRef": "N",
    "GPS:GPSLatitude": 51.5,
    "GPS:GPSAltitude": 23.5,
    "InteropIFD:InteropIndex": "R98",
}

# One command of each kind that draws or moves pixels.
EDITS = {
    "resized": ["resize", "100", "--no-auto-orient"],
    "rotated": ["rotate", "90", "h"],
    "cropped": ["crop", "10", "20", "300", "200"],
    "annotated": ["annotate", "10", "10", "text"],
}

# The file's own: made by whoever writes it.
LAYOUT = {"ThumbnailOffset", "ExifByteOrder"}
DIRECTORIES = ["IFD0", "ExifIFD", "GPS", "InteropIFD"]


class ExifTool:
    """One process for all questions, for starting it takes longer than answering."""

    READY = b"{ready}\n"

    def __init__(self):
        self.process = subprocess.Popen(["exiftool", "-stay_open", "True", "-@", "-"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def __call__(self, *arguments):
        self.process.stdin.write("".join(f"{argument}\n" for argument in (*arguments, "-execute")).encode())
        self.process.stdin.flush()
        answer = b""
        while not answer.endswith(self.READY):
            piece = self.process.stdout.read1()
            if not piece:
                raise RuntimeError("ExifTool ended")
            answer += piece
        return answer[:-len(self.READY)]

    def close(self):
        self.process.communicate(b"-stay_open\nFalse\n", timeout=20)


def fields_of(path, directories=DIRECTORIES):
    """Every field of these directories as ExifTool reads it, numbers not spelled out."""
    groups = [f"-{directory}:all" for directory in directories]
    fields = json.loads(exiftool("-j", "-G1", "-n", "-u", *groups, path))[0]
    del fields["SourceFile"]
    return {name: value for name, value in fields.items() if name.split(":")[1] not in LAYOUT}


def faults_of(path):
    """What ExifTool finds wrong with a file's structure; which fields it has is the source's business."""
    lines = exiftool("-validate", "-warning", "-error", "-a", "-s3", path).decode().splitlines()[1:]
    return [line for line in lines if not line.startswith(("[minor]", "Missing required"))]


class Fixture(unittest.TestCase):
    """A temporary folder, and the program that is tested."""

    samples = None
    program = None

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-properties-")
        self.folder = Path(self.temporary.name)

    def tearDown(self):
        self.temporary.cleanup()


class Properties(Fixture):
    def convert(self, source, name):
        target = self.folder / name
        subprocess.run([self.program, "convert", source, target], check=True, timeout=60)
        self.assertEqual(faults_of(target), [], name)
        return target

    def make_source(self):
        source = self.folder / "source.jpg"
        shutil.copy(self.samples / "photo.jpg", source)
        thumbnail = self.folder / "thumbnail.jpg"
        subprocess.run(["/usr/bin/convert", source, "-resize", "160x", thumbnail], check=True)
        exiftool("-n", *(f"-{name}={value}" for name, value in FIELDS.items()), f"-ThumbnailImage<={thumbnail}",
                 source)
        for name, value in FIELDS.items():
            self.assertEqual(fields_of(source)[name], value)
        return source

    def expect_fields(self, target, expected):
        fields = fields_of(target)
        for name, value in expected.items():
            self.assertEqual(fields.get(name), value, name)

    def test_sample_keeps_its_camera(self):
        for target in TARGETS:
            fields = fields_of(self.convert(self.samples / "photo.jpg", f"sample.{target}"))
            self.assertEqual(fields["IFD0:Make"], "Lumbrix")
            self.assertEqual(fields["IFD0:Model"], "Sample camera")
            self.assertEqual(fields["IFD0:ModifyDate"], "2026:11:21 09:30:00")

    def test_every_directory_comes_over(self):
        source = self.make_source()
        expected = fields_of(source)
        for target in TARGETS:
            self.expect_fields(self.convert(source, f"first.{target}"), expected)

    def test_every_way_back_comes_over(self):
        source = self.make_source()
        expected = fields_of(source)
        for between in TARGETS:
            middle = self.convert(source, f"between.{between}")
            for target in TARGETS:
                self.expect_fields(self.convert(middle, f"{between}-then.{target}"), expected)

    def test_jpeg_keeps_the_thumbnail(self):
        source = self.make_source()
        target = self.convert(source, "target.jpg")
        thumbnail = exiftool("-b", "-ThumbnailImage", source)
        self.assertTrue(thumbnail)
        self.assertEqual(exiftool("-b", "-ThumbnailImage", target), thumbnail)
        self.assertEqual(fields_of(target, ["IFD1"]), fields_of(source, ["IFD1"]))

    def test_edited_copies_keep_every_field(self):
        source = self.make_source()
        expected = fields_of(source)
        for target in TARGETS:
            for name, arguments in EDITS.items():
                edited = self.folder / f"{name}.{target}"
                command, *rest = arguments
                subprocess.run([self.program, command, source, edited, *rest], check=True, timeout=60)
                self.assertEqual(faults_of(edited), [], edited.name)
                self.expect_fields(edited, expected)

    def test_date_stamp_changes_the_date_alone(self):
        source = self.make_source()
        printed = subprocess.run([self.program, "date", source, "2001:02:03 04:05:06"], check=True, capture_output=True,
                                 text=True, timeout=60).stdout.strip()
        stamped = self.folder / "source_stamped.jpg"
        self.assertEqual(Path(printed), stamped)
        self.assertEqual(faults_of(stamped), [])
        self.expect_fields(stamped, {**fields_of(source), "IFD0:ModifyDate": "2001:02:03 04:05:06"})

    def test_comments_come_over(self):
        source = self.folder / "commented.jpg"
        shutil.copy(self.samples / "photo.jpg", source)
        exiftool("-Comment=a comment", source)
        for target in ["jpg", "png", "gif"]:
            converted = self.convert(source, f"with-comment.{target}")
            self.assertEqual(exiftool("-s3", "-Comment", converted).decode().strip(), "a comment", target)

    def test_nothing_makes_no_exif(self):
        plain = self.folder / "plain.jpg"
        subprocess.run(["/usr/bin/convert", "-size", "8x8", "xc:red", "-strip", plain], check=True)
        for target in ["jpg", "png"]:
            self.assertEqual(fields_of(self.convert(plain, f"nothing.{target}")), {})


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Fixture.samples, Fixture.program = Path(sys.argv[1]), sys.argv[2]
    exiftool = ExifTool()
    try:
        unittest.main(argv=sys.argv[:1])
    finally:
        exiftool.close()
