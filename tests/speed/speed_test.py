#!/usr/bin/env python3
"""Nothing became twice as slow as it was, compared with the codec libraries alone in the same run.

Usage: speed_test.py LIMIT PROGRAMS LUMBRIX_CLI   (the script that measures, the folder of the programs that it needs)
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path


class Speed(unittest.TestCase):
    limit = None
    programs = None
    lumbrix = None

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-speed-")
        self.folder = Path(self.temporary.name)

    def tearDown(self):
        self.temporary.cleanup()

    def check(self, lumbrix, *rows):
        return subprocess.run([sys.executable, "-B", self.limit, "--check", "--folder", self.folder, "--programs",
                               self.programs, "--lumbrix", lumbrix, *rows], capture_output=True, text=True)

    def stand_in(self, *lines):
        """A program in the place of ours."""
        path = self.folder / "stand-in"
        path.write_text("\n".join(["#!/bin/sh -e", *lines]) + "\n")
        path.chmod(0o755)
        return path

    def test_nothing_is_twice_as_slow_as_it_was(self):
        result = self.check(self.lumbrix)
        print(result.stdout, flush=True)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertGreaterEqual(result.stdout.count(" of at most "), 11)

    def test_what_takes_three_times_as_long_is_found(self):
        thrice = self.stand_in(*[f'"{self.lumbrix}" "$@"'] * 3)
        result = self.check(thrice, "jpg-jpg", "rotate-90")
        self.assertEqual(result.returncode, 1, result.stdout + result.stderr)
        self.assertIn("too slow: jpg-jpg, rotate-90\n", result.stdout)

    def test_what_fails_is_not_fast(self):
        result = self.check(self.stand_in("exit 1"), "jpg-bmp")
        self.assertEqual(result.returncode, 1)
        self.assertIn("jpg-bmp: ours failed", result.stderr)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    Speed.limit, Speed.programs, Speed.lumbrix = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
