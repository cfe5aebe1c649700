"""Turns a picture to the right and makes a PNG of it, all in memory.

python3 inmemory.py LIBRARY <photo.jpg >turned.png
    LIBRARY is liblumbrix.so (on Windows lumbrix.dll, with ctypes.WinDLL and ctypes.WINFUNCTYPE).
"""

import ctypes
import io
import sys
from ctypes import POINTER, c_char, c_char_p, c_int32, c_size_t, c_uint32, c_void_p

Progress = ctypes.CFUNCTYPE(c_int32, c_void_p, c_uint32, c_uint32)
Reader = ctypes.CFUNCTYPE(c_int32, c_void_p, c_void_p, c_uint32)
Writer = ctypes.CFUNCTYPE(c_int32, c_void_p, c_void_p, c_uint32)


class Sized(ctypes.Structure):
    """A struct that begins with its own size."""

    def __init__(self, **fields):
        super().__init__(size=ctypes.sizeof(self), **fields)


class Input(Sized):
    _fields_ = [("size", c_uint32), ("data", c_void_p), ("length", c_size_t), ("read", Reader), ("context", c_void_p)]


class Output(Sized):
    _fields_ = [("size", c_uint32), ("write", Writer), ("context", c_void_p), ("data", c_void_p), ("length", c_size_t)]


class Job(Sized):
    # A later version of the library may know more fields; by the size it sees that these are all.
    _fields_ = [("size", c_uint32), ("format", c_char_p), ("strict", c_int32), ("keep_existing", c_int32),
                ("only_shrink", c_int32), ("auto_orient", c_int32), ("strip", c_int32), ("keep_profile", c_int32),
                ("background", c_char_p), ("compression", c_char_p), ("quality", c_int32), ("progress", Progress),
                ("context", c_void_p), ("status", c_int32), ("written", c_int32), ("damaged", c_int32),
                ("width", c_int32), ("height", c_int32), ("message", c_char * 1024),
                ("input", POINTER(Input)), ("output", POINTER(Output)), ("utf8", c_int32)]


class Turn(Sized):
    _fields_ = [("size", c_uint32), ("angle", c_int32), ("flip", c_char_p)]


def turned(lumbrix, source, angle):
    """The picture of a file object, turned, as bytes of a PNG file, and its size."""

    @Reader
    def read(_context, buffer, count):
        piece = source.read(count)
        ctypes.memmove(buffer, piece, len(piece))
        return len(piece)

    result = io.BytesIO()

    @Writer
    def write(_context, data, count):
        result.write(ctypes.string_at(data, count))
        return 1

    job = Job(format=b"png", input=ctypes.pointer(Input(read=read)), output=ctypes.pointer(Output(write=write)))
    if lumbrix.lumbrix_rotate(None, None, ctypes.byref(Turn(angle=angle)), ctypes.byref(job)) != 0:
        raise ValueError(job.message.decode(errors="replace"))
    return result.getvalue(), (job.width, job.height)


def main(library):
    lumbrix = ctypes.CDLL(library)
    lumbrix.LoadImagingLibrary()
    try:
        picture, size = turned(lumbrix, sys.stdin.buffer, 90)
    except ValueError as error:
        sys.exit(str(error))
    finally:
        lumbrix.UnloadImagingLibrary()
    sys.stdout.buffer.write(picture)
    print("%d by %d pixels" % size, file=sys.stderr)


if __name__ == "__main__":
    main(*sys.argv[1:])
