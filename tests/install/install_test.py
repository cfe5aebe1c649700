#!/usr/bin/env python3
"""What is installed: which files, and whether they can be used from where they lie.

Usage: install_test.py CMAKE BUILD COMPILER SOURCES [TOOLCHAIN RUNNER]   (cmake, a finished build, its C compiler, the
project, and for Windows the toolchain file and what runs its programs)
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LINUX = {
    "runtime": {"bin/lumbrix-cli", "lib/liblumbrix.so.0", "lib/liblumbrix.so.VERSION", "lib/lumbrix/liblumbriximaging.so",
                "share/man/man1/lumbrix-cli.1", "share/bash-completion/completions/lumbrix-cli",
                "share/zsh/vendor-completions/_lumbrix-cli", "share/fish/vendor_completions.d/lumbrix-cli.fish"},
    "development": {"include/lumbrix.h", "lib/liblumbrix.so", "lib/pkgconfig/lumbrix.pc"},
}
WINDOWS = {
    "runtime": {"bin/lumbrix.exe", "bin/lumbrix-cli.exe", "bin/lumbrix.dll", "bin/gdiplus.dll"},
    "development": {"include/lumbrix.h", "lib/liblumbrix.dll.a", "lib/pkgconfig/lumbrix.pc"},
}
PACKAGE = {f"lib/cmake/lumbrix/lumbrix{part}.cmake" for part in ("Config", "ConfigVersion", "Targets", "Targets-release")}



class Install(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-install-")
        self.folder = Path(self.temporary.name)
        self.prefix = self.folder / "prefix"
        version = re.search(r"project\(lumbrix VERSION (\S+)", (self.sources / "CMakeLists.txt").read_text())[1]
        expected = WINDOWS if self.runner else LINUX
        self.expected = {"runtime": {name.replace("VERSION", version) for name in expected["runtime"]},
                         "development": expected["development"] | PACKAGE}
        self.ending = ".exe" if self.runner else ""

    def tearDown(self):
        self.temporary.cleanup()

    def install(self, *components):
        for component in components:
            subprocess.run([self.cmake, "--install", self.build, "--prefix", self.prefix, "--component", component],
                           check=True, capture_output=True, timeout=60)

    def files(self):
        return {str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*") if path.is_file()}

    def run_program(self, *words):
        # Nothing but where the files lie may help to find them.
        environment = {name: value for name, value in os.environ.items() if name != "LD_LIBRARY_PATH"}
        return subprocess.run([*self.runner, *words], cwd=self.folder, env=environment, capture_output=True, text=True,
                              timeout=90)

    def compile_example(self, program, *options):
        place = [] if self.runner else [f"-Wl,-rpath,{self.prefix / 'lib'}"]
        return subprocess.run([self.compiler, "-std=c11", "-Wall", "-Wextra", "-Werror",
                               self.sources / "docs/examples/caption.c", *options, *place, "-o", program],
                              capture_output=True, text=True, timeout=60)

    def options_of_pkg_config(self):
        environment = os.environ | {"PKG_CONFIG_LIBDIR": str(self.prefix / "lib/pkgconfig")}
        result = subprocess.run(["pkg-config", "--cflags", "--libs", "lumbrix >= 1.5", "lumbrix < 2"], env=environment,
                                capture_output=True, text=True, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout.split()

    def expect_caption(self, program):
        result = self.run_program(program, self.sources / "samples/photo.jpg", "small.png", "By the lake")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("1600 by 1067 pixels", result.stdout)
        self.assertTrue((self.folder / "small.png").read_bytes().startswith(b"\x89PNG"))

    def cmake_build(self, folder):
        toolchain = [f"--toolchain={self.toolchain}"] if self.toolchain else []
        for words in (["-S", self.sources / "docs/examples", "-B", folder, "-G", "Ninja", *toolchain,
                       f"-Dlumbrix_DIR={self.prefix / 'lib/cmake/lumbrix'}"], ["--build", folder]):
            result = subprocess.run([self.cmake, *words], capture_output=True, text=True, timeout=60)
            self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def test_each_component_has_its_files(self):
        self.install("runtime")
        self.assertEqual(self.files(), self.expected["runtime"])
        self.install("development")
        self.assertEqual(self.files(), self.expected["runtime"] | self.expected["development"])

    def test_there_are_no_further_components(self):
        subprocess.run([self.cmake, "--install", self.build, "--prefix", self.prefix], check=True, capture_output=True)
        self.assertEqual(self.files(), self.expected["runtime"] | self.expected["development"])

    def test_c_example_compiles_and_runs_against_it(self):
        self.install("runtime", "development")
        program = self.prefix / "bin" / f"caption{self.ending}"
        compiled = self.compile_example(program, "-I", self.prefix / "include", "-L", self.prefix / "lib", "-llumbrix")
        self.assertEqual((compiled.returncode, compiled.stderr), (0, ""))
        self.expect_caption(program)

    def test_pkg_config_knows_where_it_lies(self):
        self.install("runtime", "development")
        self.prefix = self.prefix.rename(self.folder / "elsewhere")
        program = self.prefix / "bin" / f"caption{self.ending}"
        compiled = self.compile_example(program, *self.options_of_pkg_config())
        self.assertEqual((compiled.returncode, compiled.stderr), (0, ""))
        self.expect_caption(program)

    def test_cmake_knows_where_it_lies(self):
        self.install("runtime", "development")
        self.prefix = self.prefix.rename(self.folder / "elsewhere")
        self.cmake_build(self.folder / "build")
        # Windows looks for libraries beside the program.
        program = self.prefix / "bin" / f"caption{self.ending}"
        if self.runner:
            (self.folder / "build/caption.exe").rename(program)
        else:
            program = self.folder / "build/caption"
        self.expect_caption(program)

    def test_command_line_works_from_wherever_the_prefix_is_moved(self):
        self.install("runtime")
        moved = self.folder / "elsewhere"
        self.prefix.rename(moved)
        result = self.run_program(moved / "bin" / f"lumbrix-cli{self.ending}", "convert",
                                  self.sources / "samples/stamp.png", "stamp.bmp")
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertTrue((self.folder / "stamp.bmp").read_bytes().startswith(b"BM"))


if __name__ == "__main__":
    if len(sys.argv) not in (5, 7):
        sys.exit(__doc__)
    Install.cmake, Install.build, Install.compiler = sys.argv[1:4]
    Install.sources = Path(sys.argv[4])
    Install.toolchain = sys.argv[5] if len(sys.argv) > 5 else None
    Install.runner = sys.argv[6:]
    unittest.main(argv=sys.argv[:1])
