"""Turns every picture of a folder into a thumbnail, and prints when each was taken.

python3 contactsheet.py LIBRARY FOLDER THUMBNAILS
    LIBRARY is liblumbrix.so (on Windows lumbrix.dll, with a 32-bit Python and ctypes.WinDLL).
"""

import ctypes
import sys
from pathlib import Path


def load(path):
    lumbrix = ctypes.CDLL(path)
    lumbrix.ConvertImageToThumbJpeg.argtypes = [ctypes.c_char_p, ctypes.c_int32, ctypes.c_char_p]
    lumbrix.ConvertImageToThumbJpeg.restype = ctypes.c_int32
    lumbrix.GetImageDateTime.argtypes = [ctypes.c_char_p]
    lumbrix.GetImageDateTime.restype = ctypes.c_void_p  # kept as an address, for it must be given back
    lumbrix.lumbrix_free.argtypes = [ctypes.c_void_p]
    lumbrix.lumbrix_free.restype = None
    lumbrix.LoadImagingLibrary()
    return lumbrix


def date_of(lumbrix, picture):
    text = lumbrix.GetImageDateTime(str(picture).encode())
    try:
        return ctypes.string_at(text).decode(errors="replace") if text else ""
    finally:
        lumbrix.lumbrix_free(text)


def main(library, folder, thumbnails):
    lumbrix = load(library)
    for picture in sorted(Path(folder).iterdir()):
        target = Path(thumbnails) / f"{picture.name}.jpg"
        result = lumbrix.ConvertImageToThumbJpeg(str(picture).encode(), 120, str(target).encode())
        print(f"{picture.name}: {date_of(lumbrix, picture) or 'no date'}" if result == 0 else f"{picture.name}: {result}")


if __name__ == "__main__":
    main(*sys.argv[1:])
