#!/usr/bin/env python3
"""Every block of metadata through every operation, tag by tag as ExifTool reads both files.

Usage: blocks_test.py SAMPLES LUMBRIX_CLI   (the folder of sample pictures, the command line to test)
"""

import hashlib
import json
import struct
import subprocess
import sys
import unittest
from pathlib import Path

import exif_test
from exif_test import ExifTool, Fixture, faults_of

BYTE, ASCII, SHORT, LONG, RATIONAL, UNDEFINED = 1, 2, 3, 4, 5, 7

WIDTH, HEIGHT = 64, 48
OPERATIONS = {
    "convert": (["convert"], (WIDTH, HEIGHT)),
    "resize": (["resize", "24", "--no-auto-orient"], (32, 24)),
    "crop": (["crop", "3", "4", "20", "30"], (20, 30)),
    "rotate": (["rotate", "90"], (HEIGHT, WIDTH)),
    "annotate": (["annotate", "5", "5", "text"], (WIDTH, HEIGHT)),
}

# Groups of ExifTool that each format keeps. Those of GPS and the like have a group of their own.
EXIF = ["IFD0", "ExifIFD", "GPS", "InteropIFD", "Canon"]
XMP = ["XMP-dc", "XMP-exif", "XMP-photoshop"]
KEPT = {
    "jpg": EXIF + XMP + ["IPTC", "Photoshop", "ICC-header", "ICC_Profile"],
    "tiff": EXIF + XMP + ["IPTC", "Photoshop", "ICC-header", "ICC_Profile"],
    "png": EXIF + XMP + ["IPTC", "Photoshop", "ICC-header", "ICC_Profile"],
    "gif": XMP,
    "bmp": [],
}
# What tells where something stands, or belongs to one format's own description of its pixels.
LAYOUT = {"ThumbnailOffset", "ThumbnailLength", "ExifByteOrder", "ImageWidth", "ImageHeight", "BitsPerSample", "Compression",
          "PhotometricInterpretation", "StripOffsets", "SamplesPerPixel", "RowsPerStrip", "StripByteCounts",
          "PlanarConfiguration", "Predictor", "ExtraSamples", "SubfileType", "T4Options", "HasExtendedXMP", "Gamma",
          "SRGBRendering", "FillOrder", "PageNumber"}
# What is true of another picture only once it is set anew, or gone.
SIZES = {"ExifIFD:ExifImageWidth", "ExifIFD:ExifImageHeight"}
# In TIFF files it gives way to the comment beside it.
BLANK_COMMENT = "ExifIFD:UserComment"
# TIFF files have IPTC data as bytes, as the standard of XMP says; ExifTool expects numbers of four bytes.
NO_FAULTS = ["Non-standard format (undef) for IFD0 0x83bb IPTC-NAA"]
SMALL_COPIES = {"Photoshop:PhotoshopThumbnail"}


class Directory:
    """Entries of an EXIF directory; a value of more than four bytes goes to the end of the block."""

    def __init__(self, order):
        self.order = order
        self.entries = []

    def add(self, tag, kind, values):
        pack = {SHORT: "H", LONG: "L"}
        if kind in pack:
            data = struct.pack(f"{self.order}{len(values)}{pack[kind]}", *values)
        elif kind == RATIONAL:
            data = struct.pack(f"{self.order}{len(values)}L", *values)
        else:
            data = values
        count = len(values) // 2 if kind == RATIONAL else len(values)
        self.entries.append((tag, kind, count, data))
        return self

    def size(self):
        return 2 + 12 * len(self.entries) + 4

    def place(self, start, following=0):
        """The directory and its values, as they stand from `start` on."""
        head = struct.pack(self.order + "H", len(self.entries))
        values = b""
        for tag, kind, count, data in sorted(self.entries):
            head += struct.pack(self.order + "HHL", tag, kind, count)
            if len(data) <= 4:
                head += data.ljust(4, b"\0")
            else:
                head += struct.pack(self.order + "L", start + self.size() + len(values))
                values += data + b"\0" * (len(data) % 2)
        return head + struct.pack(self.order + "L", following) + values


def makers_note(order, start):
    """A note whose offsets count from the start of the block."""
    note = Directory(order)
    note.add(0x0006, ASCII, b"IMG:Sample camera JPEG\0").add(0x0007, ASCII, b"Firmware Version 1.0\0")
    note.add(0x0009, ASCII, b"A. Painter, somewhere\0")
    return note.place(start)


def exif_block(order, thumbnail):
    """Values of every directory, with tags that two of them share, a blank comment and a maker's note."""
    note_at = 0x300
    note = makers_note(order, note_at)
    gps_at, interop_at, exif_at, ifd1_at = 0x500, 0x580, 0x180, 0x600
    gps = Directory(order).add(0x0000, BYTE, b"\2\3\0\0").add(0x0001, ASCII, b"N\0").add(0x000B, RATIONAL, [5, 2])
    gps.add(0x0002, RATIONAL, [51, 1, 30, 1, 0, 1])
    interop = Directory(order).add(0x0001, ASCII, b"R98\0").add(0x0002, UNDEFINED, b"0100")
    exif = Directory(order).add(0x829A, RATIONAL, [1, 250]).add(0x9000, UNDEFINED, b"0230")
    exif.add(0x9286, UNDEFINED, b"ASCII\0\0\0" + b" " * 20).add(0xA002, LONG, [WIDTH]).add(0xA003, LONG, [HEIGHT])
    exif.add(0xA005, LONG, [interop_at]).add(0xA434, ASCII, b"Sample lens\0")
    main = Directory(order).add(0x000B, ASCII, b"a robot\0").add(0x010F, ASCII, b"Canon\0")
    main.add(0x0110, ASCII, b"Sample camera\0").add(0x0112, SHORT, [6]).add(0x011A, RATIONAL, [300, 1])
    main.add(0x011B, RATIONAL, [300, 1]).add(0x0128, SHORT, [2]).add(0x0132, ASCII, b"2026:11:21 09:30:00\0")
    main.add(0x013B, ASCII, b"A. Painter\0").add(0x8769, LONG, [exif_at]).add(0x8825, LONG, [gps_at])
    ifd1 = Directory(order).add(0x0103, SHORT, [6]).add(0x010F, ASCII, b"Small Canon\0")
    ifd1.add(0x0132, ASCII, b"2026:11:21 09:31:00\0").add(0x0201, LONG, [0x700]).add(0x0202, LONG, [len(thumbnail)])
    # The note's value is put where the block has it, so its entry points there.
    exif_bytes = bytearray(exif.add(0x927C, UNDEFINED, note).place(exif_at))
    entry = exif_bytes.index(struct.pack(order + "HHL", 0x927C, UNDEFINED, len(note)))
    exif_bytes[entry + 8:entry + 12] = struct.pack(order + "L", note_at)
    mark = b"II*\0\x08\0\0\0" if order == "<" else b"MM\0*\0\0\0\x08"
    block = bytearray(0x700)
    for at, data in [(0, mark), (8, main.place(8, ifd1_at)), (exif_at, exif_bytes[:note_at - exif_at]), (note_at, note),
                     (gps_at, gps.place(gps_at)), (interop_at, interop.place(interop_at)),
                     (ifd1_at, ifd1.place(ifd1_at))]:
        block[at:at + len(data)] = data
    return bytes(block) + thumbnail


def segment(marker, content):
    return struct.pack(">BBH", 0xFF, marker, len(content) + 2) + content


def packet(descriptions):
    return ('<?xpacket begin="\ufeff" id="W5M0MpCehiHzreSzNTczkc9d"?><x:xmpmeta xmlns:x="adobe:ns:meta/">'
            '<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">' + descriptions +
            '</rdf:RDF></x:xmpmeta><?xpacket end="w"?>').encode()


def xmp_segments():
    """A packet with a title, and one of 90,000 bytes that it names."""
    extended = packet('<rdf:Description rdf:about="" xmlns:photoshop="http://ns.adobe.com/photoshop/1.0/"><photoshop:History>'
                      + "what was done " * 6400 + "</photoshop:History></rdf:Description>")
    digest = hashlib.md5(extended).hexdigest().upper().encode()
    main = packet('<rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/" '
                  'xmlns:exif="http://ns.adobe.com/exif/1.0/" xmlns:xmpNote="http://ns.adobe.com/xmp/note/" '
                  'exif:PixelXDimension="64" dc:format="image/jpeg" xmpNote:HasExtendedXMP="' + digest.decode() + '">'
                  '<dc:creator><rdf:Seq><rdf:li>A. Painter</rdf:li></rdf:Seq></dc:creator></rdf:Description>')
    segments = segment(0xE1, b"http://ns.adobe.com/xap/1.0/\0" + main)
    for at in range(0, len(extended), 65000):
        head = digest + struct.pack(">LL", len(extended), at)
        segments += segment(0xE1, b"http://ns.adobe.com/xmp/extension/\0" + head + extended[at:at + 65000])
    return segments


def resource(number, data):
    return b"8BIM" + struct.pack(">HHL", number, 0, len(data)) + data + b"\0" * (len(data) % 2)


def photoshop_segment(thumbnail):
    iptc = b"".join(struct.pack(">BBBH", 0x1C, 2, number, len(text)) + text
                    for number, text in [(5, b"a title"), (80, b"A. Painter"), (25, b"one"), (25, b"two")])
    small = struct.pack(">LLLLLLHH", 1, 16, 12, 48, 576, len(thumbnail), 24, 1) + thumbnail
    resources = resource(0x040A, b"\1") + resource(0x0404, iptc) + resource(0x040C, small)
    return segment(0xED, b"Photoshop 3.0\0" + resources + resource(0x03ED, struct.pack(">LHHLHH", 300 << 16, 1, 1, 300 << 16, 1, 1)))


def profile(space=b"RGB "):
    text = b"text\0\0\0\0nobody's\0\0\0\0"
    header = bytearray(144)
    for at, data in [(0, struct.pack(">L", 144 + len(text))), (8, b"\2"), (12, b"mntr"), (16, space), (20, b"XYZ "), (36, b"acsp"),
                     (68, b"\0\0\xF6\xD6\0\1\0\0\0\0\xD3\x2D"),
                     (128, struct.pack(">L4sLL", 1, b"cprt", 144, len(text)))]:
        header[at:at + len(data)] = data
    return segment(0xE2, b"ICC_PROFILE\0\1\1" + bytes(header) + text)


def index_of_pictures():
    """An MPF index, whose further pictures no copy has."""
    return segment(0xE2, b"MPF\0II*\0\x08\0\0\0" + Directory("<").add(0xB000, UNDEFINED, b"0100").place(8))


def tags_of(path):
    tags = json.loads(exif_test.exiftool("-j", "-G1", "-n", "-u", "-b", path))[0]
    return {name: value for name, value in tags.items()
            if ":" in name and name.split(":")[1] not in LAYOUT and not name.startswith(("System", "File"))}


class EveryBlock(Fixture):
    def make_jpeg(self, order="<"):
        plain = self.folder / "plain.jpg"
        small = self.folder / "small.jpg"
        for name, size in [(plain, f"{WIDTH}x{HEIGHT}"), (small, "16x12")]:
            subprocess.run(["/usr/bin/convert", "-size", size, "gradient:red-blue", "-strip", name], check=True)
        bare = plain.read_bytes()
        behind_jfif = 4 + struct.unpack(">H", bare[4:6])[0] if bare[2:4] == b"\xFF\xE0" else 2
        jfif = bytearray(bare[:behind_jfif])
        jfif[13] = 0  # no unit: it says nothing of the resolution
        thumbnail = small.read_bytes()
        source = self.folder / f"source-{'II' if order == '<' else 'MM'}.jpg"
        source.write_bytes(bytes(jfif) + segment(0xE1, b"Exif\0\0" + exif_block(order, thumbnail)) + xmp_segments() +
                           photoshop_segment(thumbnail) + profile() + index_of_pictures() +
                           segment(0xFE, b"a comment") + bare[behind_jfif:])
        return source

    def convert_to(self, ending, source):
        target = self.folder / f"copy-{source.stem}.{ending}"
        self.run_operation("convert", source, target)
        return target

    def run_operation(self, name, source, target):
        command, *rest = OPERATIONS[name][0]
        subprocess.run([self.program, command, source, target, *rest], check=True, timeout=60)

    def compare(self, source, target, operation):
        expected, found = tags_of(source), tags_of(target)
        is_same = operation == "convert"
        kept = KEPT[target.suffix[1:]]
        for name, value in expected.items():
            if name.split(":")[0] not in kept or (name in SMALL_COPIES and not is_same):
                continue
            if name == BLANK_COMMENT and "tiff" in target.name:
                continue
            if name in SIZES:
                value = OPERATIONS[operation][1][0 if name.endswith("Width") else 1]
            self.assertEqual(found.get(name), value, f"{name} in {target.name}")
        for name in SMALL_COPIES if not is_same else ():
            self.assertNotIn(name, found, target.name)

    def test_source_has_every_block(self):
        groups = {name.split(":")[0] for name in tags_of(self.make_jpeg())}
        self.assertEqual({*KEPT["jpg"], "IFD1", "MPF0"} - groups, set())

    def test_tags_come_over_through_every_operation(self):
        for order in "<>":
            source = self.make_jpeg(order)
            for name in OPERATIONS:
                for ending in KEPT:
                    target = self.folder / f"{name}-{source.stem}.{ending}"
                    self.run_operation(name, source, target)
                    self.compare(source, target, name)

    def test_tags_come_back_from_every_format(self):
        source = self.make_jpeg(">")
        for between in ("jpg", "tiff", "png"):
            middle = self.folder / f"middle.{between}"
            self.run_operation("convert", source, middle)
            for ending in ("jpg", "tiff", "png"):
                target = self.folder / f"{between}-back.{ending}"
                self.run_operation("convert", middle, target)
                self.compare(source, target, "convert")

    def test_block_of_exif_is_copied_byte_for_byte(self):
        for order in "<>":
            source = self.make_jpeg(order)
            block = exif_test.exiftool("-b", "-Exif", source)
            self.assertGreater(len(block), 0x700)
            self.assertEqual(exif_test.exiftool("-b", "-Exif", self.convert_to("jpg", source)), block)
            # PNG has no other place for IPTC data and image resources.
            without = self.folder / "without.jpg"
            subprocess.run(["exiftool", "-q", "-Photoshop:all=", "-o", without, source], check=True)
            block = exif_test.exiftool("-b", "-Exif", without)
            self.assertEqual(exif_test.exiftool("-b", "-Exif", self.convert_to("png", without)), block)
            without.unlink()

    def test_thumbnail_stays_with_its_picture_alone(self):
        source = self.make_jpeg()
        for name in OPERATIONS:
            target = self.folder / f"{name}.jpg"
            self.run_operation(name, source, target)
            thumbnail = exif_test.exiftool("-b", "-IFD1:ThumbnailImage", target)
            self.assertEqual(bool(thumbnail), name == "convert", name)
            first = {tag: value for tag, value in tags_of(target).items() if tag.startswith("IFD1:")}
            self.assertEqual("IFD1:Make" in first, name == "convert", name)

    def test_resolution_of_exif_is_that_of_every_format(self):
        source = self.make_jpeg()
        for ending, tag, expected in [("png", "PixelsPerUnitX", 11811), ("bmp", "PixelsPerMeterX", 11811),
                                      ("jpg", "JFIF:XResolution", 300), ("tiff", "IFD0:XResolution", 300)]:
            target = self.folder / f"resolution.{ending}"
            self.run_operation("convert", source, target)
            self.assertEqual(float(exif_test.exiftool("-n", "-s3", f"-{tag}", target)), expected, ending)

    def test_comment_beside_a_blank_one_of_exif_is_kept(self):
        source = self.make_jpeg()
        for ending, tag in [("jpg", "Comment"), ("png", "Comment"), ("gif", "Comment"), ("tiff", "UserComment")]:
            target = self.folder / f"comment.{ending}"
            self.run_operation("convert", source, target)
            self.assertEqual(exif_test.exiftool("-s3", f"-{tag}", target).decode().strip(), "a comment", ending)

    def test_profile_of_grey_goes_with_grey_alone(self):
        grey = self.folder / "grey.jpg"
        subprocess.run(["/usr/bin/convert", "-size", "8x8", "gradient:", "-colorspace", "gray", "-strip", grey], check=True)
        bare = grey.read_bytes()
        for space, endings in [(b"GRAY", ["tiff"]), (b"CMYK", [])]:
            grey.write_bytes(bare[:2] + profile(space) + bare[2:])
            for ending in ("jpg", "tiff", "png"):
                target = self.convert_to(ending, grey)
                found = exif_test.exiftool("-s3", "-ColorSpaceData", target).decode().strip()
                self.assertEqual(found, space.decode() if ending in endings else "", f"{space} in {ending}")

    def test_index_of_pictures_that_are_gone_is_gone(self):
        target = self.folder / "target.jpg"
        self.run_operation("convert", self.make_jpeg(), target)
        self.assertNotIn(b"MPF\0", target.read_bytes())

    def test_nothing_is_wrong_with_what_is_written(self):
        source = self.make_jpeg()
        known = faults_of(source) + NO_FAULTS
        for name in OPERATIONS:
            for ending in ("jpg", "tiff", "png", "gif"):
                target = self.folder / f"faults-{name}.{ending}"
                self.run_operation(name, source, target)
                self.assertEqual([fault for fault in faults_of(target) if fault not in known], [], target.name)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Fixture.samples, Fixture.program = Path(sys.argv[1]), sys.argv[2]
    exif_test.exiftool = ExifTool()
    try:
        unittest.main(argv=sys.argv[:1])
    finally:
        exif_test.exiftool.close()
