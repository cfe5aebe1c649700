#!/usr/bin/env python3
"""The Debian packages, installed into a bare Debian and used there as by a new user. Needs root rights.

Usage: packages_test.py PACKAGES SOURCES ROOT   (the folder of the packages, the project, and a root that tools/bare-root
made; the packages are installed into a copy of it)
"""

import shutil
import subprocess
import sys
import unittest
from pathlib import Path

EXAMPLES = "/usr/share/doc/liblumbrix-dev/examples"


class Packages(unittest.TestCase):
    """One root for all, in the order of their names."""

    @classmethod
    def setUpClass(cls):
        cls.root = cls.bare.with_name("root-in-use")
        cls.remove_root()
        subprocess.run(["cp", "-a", "--reflink=auto", cls.bare, cls.root], check=True)
        (cls.root / "packages").mkdir()
        for package in cls.packages.glob("*.deb"):
            shutil.copy(package, cls.root / "packages")
        (cls.root / "pictures").mkdir()
        for sample in ("photo.jpg", "stamp.png"):
            shutil.copy(cls.sources / "samples" / sample, cls.root / "pictures")

    @classmethod
    def tearDownClass(cls):
        # What was fetched need not be fetched again.
        for package in (cls.root / "var/cache/apt/archives").glob("*.deb"):
            shutil.copy(package, cls.bare / "var/cache/apt/archives")
        cls.remove_root()

    @classmethod
    def remove_root(cls):
        if cls.root.exists():
            shutil.rmtree(cls.root)

    def inside(self, *words, folder="/pictures", timeout=120):
        environment = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C.UTF-8", "HOME": "/root",
                       "DEBIAN_FRONTEND": "noninteractive", "MANPAGER": "cat"}
        # What is mounted there is gone with the process.
        return subprocess.run(["unshare", "--mount", "sh", "-c", 'mount -t proc proc "$0/proc" && exec chroot "$0" "$@"',
                               self.root, "sh", "-c", 'cd "$0" && exec "$@"', folder, *words],
                              env=environment, capture_output=True, text=True, timeout=timeout)

    def install(self, *names):
        words = [str(file).removeprefix(str(self.root)) for name in names if name.endswith("_")
                 for file in (self.root / "packages").glob(name + "*.deb")]
        words += [name for name in names if not name.endswith("_")]
        result = self.inside("apt-get", "install", "-y", "--no-install-recommends", *words, timeout=600)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def expect_done(self, *words, folder="/pictures"):
        result = self.inside(*words, folder=folder)
        self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)
        return result.stdout

    def test_1_command_line_converts(self):
        self.install("lumbrix_", "liblumbrix0_")
        self.expect_done("lumbrix-cli", "convert", "photo.jpg", "photo.gif")
        self.assertEqual((self.root / "pictures/photo.gif").read_bytes()[:3], b"GIF")
        self.assertEqual(self.expect_done("lumbrix-cli", "size", "photo.gif"), "1600 x 1067\n")

    def test_2_program_without_wine_tells_what_it_needs(self):
        result = self.inside("lumbrix")
        self.assertEqual(result.returncode, 1)
        self.assertIn("wine32", result.stderr)
        self.assertTrue((self.root / "usr/lib/lumbrix/lumbrix.exe").read_bytes().startswith(b"MZ"))

    def test_3_desktop_entry_names_what_is_there(self):
        entry = dict(line.split("=", 1) for line in
                     (self.root / "usr/share/applications/lumbrix.desktop").read_text().splitlines() if "=" in line)
        self.assertTrue((self.root / "usr/bin" / entry["Exec"]).exists())
        self.assertTrue((self.root / f"usr/share/icons/hicolor/48x48/apps/{entry['Icon']}.png").exists())
        self.assertEqual(entry["TryExec"], "wine")

    def test_4_manual_opens(self):
        self.install("man-db")
        for page, line in (("lumbrix-cli", "convert SOURCE TARGET"), ("lumbrix", "WINEPREFIX")):
            result = self.inside("man", page)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertIn(line, " ".join(result.stdout.split()))

    def test_4_shells_find_the_completion(self):
        for file in ("bash-completion/completions/lumbrix-cli", "zsh/vendor-completions/_lumbrix-cli",
                     "fish/vendor_completions.d/lumbrix-cli.fish"):
            self.assertIn("folder", (self.root / "usr/share" / file).read_text())

    def test_5_example_compiles_through_pkg_config(self):
        self.install("liblumbrix-dev_", "fonts-liberation", "gcc", "libc6-dev", "pkg-config")
        self.expect_done("sh", "-c", f"cc -Wall -Werror {EXAMPLES}/caption.c $(pkg-config --cflags --libs lumbrix) -o caption")
        self.assertIn("1600 by 1067 pixels", self.expect_done("./caption", "photo.jpg", "small.png", "By the lake"))
        self.assertEqual((self.root / "pictures/small.png").read_bytes()[:4], b"\x89PNG")

    def test_6_example_compiles_through_cmake(self):
        self.install("cmake", "make")
        self.expect_done("cmake", "-S", EXAMPLES, "-B", "/build")
        self.expect_done("cmake", "--build", "/build")
        self.assertIn("1600 by 1067 pixels", self.expect_done("/build/caption", "photo.jpg", "other.png", "By the lake"))

    def test_7_nothing_stays_behind(self):
        result = self.inside("apt-get", "purge", "-y", "lumbrix", "liblumbrix0", "liblumbrix-dev")
        self.assertEqual(result.returncode, 0, result.stderr)
        found = self.inside("find", "/usr", "/etc", "/var/lib", "-name", "*lumbrix*")
        self.assertEqual(found.stdout, "")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    Packages.packages, Packages.sources, Packages.bare = (Path(word).resolve() for word in sys.argv[1:4])
    unittest.main(argv=sys.argv[:1], failfast=True, verbosity=2)
