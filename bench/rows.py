"""The kinds of work that are compared: on what, and how fast we want to be."""

import math
from typing import NamedTuple

from tools import Work


class Row(NamedTuple):
    name: str
    megapixels: float
    source: str
    extension: str  # of the target
    work: Work
    wanted: float  # times as fast as the best peer
    mebibytes: float = None  # the most that our command may take


class FolderRow(NamedTuple):
    name: str
    megapixels: float
    count: int
    batch: int  # pictures for each process of a peer
    wanted: float


CONVERT = Work("convert")
ROWS = [
    Row("jpg-png", 6, "photograph.jpg", "png", CONVERT, 3),
    Row("png-jpg", 6, "photograph.png", "jpg", CONVERT, 1.5),
    Row("jpg-gif", 6, "photograph.jpg", "gif", CONVERT, 5),
    Row("jpg-tif", 6, "photograph.jpg", "tif", CONVERT, 2),
    Row("jpg-bmp", 6, "photograph.jpg", "bmp", CONVERT, 2.5),
    Row("bmp-png", 6, "photograph.bmp", "png", CONVERT, 3),
    Row("screen-bmp-png", 6, "screenshot.bmp", "png", CONVERT, 3),
    Row("screen-png-jpg", 6, "screenshot.png", "jpg", CONVERT, 1.5),
    Row("palette-bmp-png", 6, "palette.bmp", "png", CONVERT, 3),
    Row("palette-png-gif", 6, "palette.png", "gif", CONVERT, 3),
    Row("resize-1000", 6, "photograph.jpg", "jpg", Work("height", 1000), 1.3),
    Row("thumb-100", 6, "photograph.jpg", "jpg", Work("thumb", 100), 2),
    Row("rotate-90", 6, "photograph.jpg", "jpg", Work("rotate"), 1.5),
    Row("24-jpg-png", 24, "photograph.jpg", "png", CONVERT, 4),
    Row("24-jpg-gif", 24, "photograph.jpg", "gif", CONVERT, 5),
    Row("24-resize-2000", 24, "photograph.jpg", "jpg", Work("height", 2000), 1.3, 32),
    Row("24-png-gif", 24, "photograph.png", "gif", CONVERT, 3),
    Row("24-bmp-png", 24, "photograph.bmp", "png", CONVERT, 3),
    Row("24-tif-png", 24, "photograph.tif", "png", CONVERT, 3),
    Row("100-resize-2000", 100, "photograph.jpg", "jpg", Work("height", 2000), 1.3, 64),
    FolderRow("folder", 0.5, 200, 1, 2),
    FolderRow("folder-batches", 0.5, 200, 25, 2),
]


def scaled(row, megapixels):
    """The same row on pictures of another size; a height stays the same part of theirs, but for thumbnails. What memory
    is wanted holds no more."""
    height = row.work.number
    if row.work.verb == "height":
        height = round(height * math.sqrt(megapixels / row.megapixels))
    return row._replace(megapixels=megapixels, work=row.work._replace(number=height), mebibytes=None)
