#!/usr/bin/env python3
"""The third-party notices, made from maps of a linker that are written here.

Usage: notices_test.py ROOT   (the project)
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

MINGW = "/usr/lib/gcc/i686-w64-mingw32/12-posix/../../../../i686-w64-mingw32/lib"
BEHIND = "\nDiscarded input sections\n\nLOAD CODECS/windows/lib/libtiff.a\n"


class Notices(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-notices-")
        self.folder = Path(self.temporary.name).resolve()
        self.codecs = self.folder / "codecs"
        for text in ("libpng1.6/LICENSE", "libjpeg-turbo/LICENSE.md", "libjpeg-turbo/README.ijg", "tiff/LICENSE.md"):
            path = self.codecs / "source" / text
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(f"the terms in {text}\n")
        (self.folder / "build/linked").mkdir(parents=True)
        (self.folder / "build/CMakeCache.txt").write_text(f"LUMBRIX_OUTPUT:PATH={self.folder}/artifacts\n")

    def tearDown(self):
        self.temporary.cleanup()

    def link(self, name, *members):
        text = "Archive member included to satisfy reference by file (symbol)\n\n" + "\n".join(members) + BEHIND
        (self.folder / "build/linked" / name).write_text(text.replace("CODECS", str(self.codecs)))

    def write(self):
        file = self.folder / "NOTICES"
        result = subprocess.run([sys.executable, self.root / "packaging/notices.py", self.codecs, file,
                                 self.folder / "build"], capture_output=True, text=True)
        return result, file.read_text() if file.exists() else ""

    def test_have_the_terms_of_what_was_linked_and_of_nothing_else(self):
        self.link("a.map", "CODECS/windows/lib/libpng16.a(png.c.obj)")
        result, text = self.write()
        self.assertEqual(result.stderr, "")
        self.assertIn("the terms in libpng1.6/LICENSE", text)
        self.assertNotIn("tiff", text)

    def test_read_all_maps(self):
        self.link("a.map", "CODECS/windows/lib/libpng16.a(png.c.obj)")
        self.link("b.map", "CODECS/windows/lib/libjpeg.a(jcapimin.c.obj)")
        text = self.write()[1]
        self.assertLess(text.index("README.ijg"), text.index("libpng1.6/LICENSE"))
        self.assertIn("Independent JPEG Group", text)

    def test_of_a_library_that_nobody_knows_are_an_error(self):
        for name in (f"{MINGW}/../lib64/libnew.a", "/opt/libpng16.a", "CODECS/windows/lib/libnew.a"):
            self.link("a.map", f"{name}(new.o)")
            result, text = self.write()
            self.assertNotEqual(result.returncode, 0)
            self.assertIn("there is no notice for it", result.stderr)
            self.assertEqual(text, "")

    def test_of_an_object_that_nobody_knows_are_an_error(self):
        self.link("a.map")
        with (self.folder / "build/linked/a.map").open("a") as file:
            file.write("LOAD /opt/new.o\n")
        self.assertIn("/opt/new.o was linked", self.write()[0].stderr)

    def test_pass_over_our_own_files(self):
        self.link("a.map", "batch/libbatch.a(job.obj)", f"{self.folder}/artifacts/liblumbrix.dll.a(lumbrixs00.o)",
                  "CODECS/windows/lib/libpng16.a(png.c.obj)")
        self.assertEqual(self.write()[0].stderr, "")

    def test_without_maps_are_an_error(self):
        self.assertIn("the linker wrote down nothing", self.write()[0].stderr)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    Notices.root = Path(sys.argv[1]).resolve()
    unittest.main(argv=sys.argv[:1])
