#!/usr/bin/env python3
"""Pictures drawn through three points against those of an independent program.

Usage: points_test.py SAMPLES IMAGING_LIBRARY   (the folder of sample pictures, the imaging library to test)
"""

import ctypes
import math
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CONVERT = "/usr/bin/convert"
RGB_24 = 0x00021808
BICUBIC = 4
HIGH_QUALITY = 2
BMP_ENCODER = bytes.fromhex("00f47c55041ad3119a730000f81ef32e")


class Point(ctypes.Structure):
    _fields_ = [("x", ctypes.c_int32), ("y", ctypes.c_int32)]


class StartupInput(ctypes.Structure):
    _fields_ = [("version", ctypes.c_uint32), ("callback", ctypes.c_void_p),
                ("suppress_thread", ctypes.c_int32), ("suppress_codecs", ctypes.c_int32)]


class Library:
    """The flat functions that are needed here; every status but Ok is an error."""

    def __init__(self, path):
        self.library = ctypes.CDLL(str(path))
        self.call("GdiplusStartup", ctypes.byref(ctypes.c_size_t()), ctypes.byref(StartupInput(1)), None)

    def call(self, name, *arguments):
        status = getattr(self.library, name)(*arguments)
        if status != 0:
            raise RuntimeError(f"{name}: status {status}")

    def handle(self, name, *arguments):
        """What a function gives back through its last argument."""
        result = ctypes.c_void_p()
        self.call(name, *arguments, ctypes.byref(result))
        return result

    def load(self, path):
        return self.handle("GdipLoadImageFromFile", str(path).encode("utf-16-le") + b"\0\0")

    def draw(self, path, points, size, target):
        """The picture on black, written as a bitmap file."""
        image = self.load(path)
        surface = self.handle("GdipCreateBitmapFromScan0", *size, 0, RGB_24, None)
        graphics = self.handle("GdipGetImageGraphicsContext", surface)
        self.call("GdipSetInterpolationMode", graphics, BICUBIC)
        self.call("GdipSetSmoothingMode", graphics, HIGH_QUALITY)
        self.call("GdipDrawImagePointsI", graphics, image, (Point * 3)(*points), 3)
        self.call("GdipDeleteGraphics", graphics)
        self.call("GdipSaveImageToFile", surface, str(target).encode("utf-16-le") + b"\0\0", BMP_ENCODER, None)
        self.call("GdipDisposeImage", surface)
        self.call("GdipDisposeImage", image)


def moved(point, angle, stretch, pan):
    """Stretched, turned anticlockwise on the screen, moved; whole at every step, ties to even."""
    sine, cosine = math.sin(math.radians(angle)), math.cos(math.radians(angle))
    x, y = round(point[0] * stretch), round(point[1] * stretch)
    return (round(cosine * x + sine * y) + pan[0], round(cosine * y - sine * x) + pan[1])


def pixels_of(path, size):
    """Rows of red, green, blue bytes."""
    command = [CONVERT, path, "-depth", "8", "rgb:-"]
    pixels = subprocess.run(command, check=True, capture_output=True).stdout
    assert len(pixels) == size[0] * size[1] * 3
    return pixels


def inner_pixels(points, size, margin):
    """Where pixels lie whose middles are `margin` within the parallelogram."""
    (x0, y0), (x1, y1), (x2, y2) = points
    ax, ay, bx, by = x1 - x0, y1 - y0, x2 - x0, y2 - y0
    area = ax * by - ay * bx
    margin_a = margin * math.hypot(bx, by) / abs(area)
    margin_b = margin * math.hypot(ax, ay) / abs(area)
    for y in range(size[1]):
        for x in range(size[0]):
            dx, dy = x + 0.5 - x0, y + 0.5 - y0
            a, b = (dx * by - dy * bx) / area, (ax * dy - ay * dx) / area
            if margin_a <= a <= 1 - margin_a and margin_b <= b <= 1 - margin_b:
                yield y * size[0] + x


def decibels(ours, theirs, places):
    squares = count = 0
    for place in places:
        for i in range(3 * place, 3 * place + 3):
            squares += (ours[i] - theirs[i]) ** 2
            count += 1
    assert count > 1000
    return math.inf if squares == 0 else 10 * math.log10(255 * 255 * count / squares)


class DrawnThroughPoints(unittest.TestCase):
    samples = None
    library = None

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-points-")
        self.folder = Path(self.temporary.name)

    def tearDown(self):
        self.temporary.cleanup()

    def compare(self, source, source_size, angle, stretch, size, make_theirs):
        """The PSNR within the parallelogram, two pixels from its borders."""
        width, height = source_size
        middle = moved((width / 2, height / 2), angle, stretch, (0, 0))
        pan = (size[0] // 2 - middle[0], size[1] // 2 - middle[1])
        points = [moved(corner, angle, stretch, pan) for corner in ((0, 0), (width, 0), (0, height))]
        ours, theirs = self.folder / "ours.bmp", self.folder / "theirs.png"
        self.library.draw(source, points, size, ours)
        make_theirs(points, theirs)
        places = list(inner_pixels(points, size, 2))
        result = decibels(pixels_of(ours, size), pixels_of(theirs, size), places)
        print(f"{Path(source).name} at {angle} degrees x {stretch}: {result:.1f} dB over {len(places)} pixels")
        return result

    def distort(self, source, source_size, size):
        width, height = source_size

        def make(points, target):
            pairs = zip(((0, 0), (width, 0), (0, height)), points)
            mapping = " ".join(f"{a},{b} {x},{y}" for (a, b), (x, y) in pairs)
            subprocess.run([CONVERT, source, "-virtual-pixel", "edge", "-define",
                            f"distort:viewport={size[0]}x{size[1]}+0+0", "-distort", "affine", mapping, "-alpha", "off",
                            target], check=True)
        return make

    def test_photograph_at_every_angle_and_size(self):
        source = self.samples / "photo.jpg"
        identify = subprocess.run(["/usr/bin/identify", "-format", "%w %h", source], check=True, capture_output=True)
        source_size = tuple(map(int, identify.stdout.split()))
        size = (420, 360)
        for angle in (0, 30, 45, 90, -120):
            for stretch in (0.25, 1, 5):
                with self.subTest(angle=angle, stretch=stretch):
                    make = self.distort(source, source_size, size)
                    self.assertGreater(self.compare(source, source_size, angle, stretch, size, make), 42)

    def test_zone_plate_shows_no_rings_that_are_not_there(self):
        """Against the plate made small by a wide kernel, upright; turned plates are compared behind that."""
        side = 800
        plate = self.folder / "plate.png"
        portable = self.folder / "plate.pgm"
        with open(portable, "wb") as file:
            file.write(b"P5 %d %d 255\n" % (side, side))
            for y in range(side):
                file.write(bytes(int(127.5 + 127.5 * math.cos(math.pi * ((x - side / 2) ** 2 + (y - side / 2) ** 2) / side))
                                 for x in range(side)))
        subprocess.run([CONVERT, portable, "PNG24:" + str(plate)], check=True)
        for stretch in (0.25, 0.4):
            small = round(side * stretch)
            for angle in (0, 45, 90, -120):
                size = (small * 3 // 2, small * 3 // 2)

                def make(points, target):
                    reduced = self.folder / "reduced.png"
                    subprocess.run([CONVERT, plate, "-filter", "Lanczos", "-resize", f"{small}x{small}!", reduced],
                                   check=True)
                    self.turn(reduced, small, points, size, target)
                with self.subTest(angle=angle, stretch=stretch):
                    self.assertGreater(self.compare(plate, (side, side), angle, stretch, size, make), 30)

    def turn(self, source, side, points, size, target):
        """A picture turned without being made smaller, by the other program's interpolation."""
        pairs = zip(((0, 0), (side, 0), (0, side)), points)
        mapping = " ".join(f"{a},{b} {x},{y}" for (a, b), (x, y) in pairs)
        subprocess.run([CONVERT, source, "-virtual-pixel", "edge", "-interpolate", "catrom", "-filter", "point",
                        "-define", f"distort:viewport={size[0]}x{size[1]}+0+0", "-distort", "affine", mapping, "-alpha",
                        "off", target], check=True)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    DrawnThroughPoints.samples, DrawnThroughPoints.library = Path(sys.argv[1]), Library(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
