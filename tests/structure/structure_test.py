#!/usr/bin/env python3
"""Reads the includes of all sources and what is linked, and fails on an arrow between rooms that must not be.

Usage: structure_test.py ROOT
"""

import os
import re
import sys
import tempfile
import unittest
import unittest.mock
from pathlib import Path

ROOMS = ["app", "mainwindow", "annotate", "freeedit", "draw", "desktop", "batch", "imaging/gdiplus", "imaging/exports",
         "imaging", "imaginglibrary", "toolkit", "platform", "base", "cli"]
WINDOWS = {"mainwindow", "annotate", "freeedit", "draw", "desktop"}
ENGINE = {"imaging", "imaging/exports", "platform"}

# Which rooms the files of a room may include, besides their own.
MAY_KNOW = {
    "app": WINDOWS | {"batch", "toolkit"} | ENGINE,
    **{window: WINDOWS | {"batch", "toolkit"} | ENGINE for window in WINDOWS},
    "batch": {"imaging", "imaging/exports", "platform", "toolkit"},
    "imaging": {"imaging/gdiplus", "platform"},
    "imaging/exports": {"imaging", "platform"},
    "imaging/gdiplus": {"platform"},
    "toolkit": {"platform"},
    "platform": set(),
    "cli": {"imaging/exports"},
}
# What single files may include besides: icons need windows, so no door of the engine offers them.
FILE_MAY_KNOW = {"cli/icon_windows.cpp": {"draw/iconcommand.h", "draw/iconrules.h"}}
# What everybody may use, but for the imaging library, which knows nobody.
MAY_KNOW = {"base": set(), "imaginglibrary": set(), **{room: known | {"base"} for room, known in MAY_KNOW.items()}}
# The bindings hold the loaded imaging library, so a program that linked them would hold another one beside the engine's.
BINDINGS = re.compile(r"\blumbrix_(?:bindings|engine)\b|gdiplus/bindings\.cpp")
MAY_HAVE_BINDINGS = ("imaging", "imaging/exports", "imaging/gdiplus", "tests/imaging")
WINDOWS_HEADERS = re.compile(r"(windows|win\w+|comm\w+|sh[el]\w+|ole\w*|obj\w+|unknwn|richedit|mmsystem)\.h", re.IGNORECASE)
MAY_INCLUDE_WINDOWS = WINDOWS | {"app", "toolkit"}
LONGEST_FILE = 500
MAY_BE_LONGER = "imaging/exports/lumbrix.h"  # callers have one file to read
ENDINGS = (".cpp", ".cc", ".cxx", ".c", ".h", ".hh", ".hpp", ".inl")
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def room_of(path):
    return next((room for room in ROOMS if path.startswith(room + "/")), None)


def files(root, endings):
    """The names of the project's files. What is made lies in out, where other tests come and go meanwhile."""
    names = []
    for folder, folders, found in os.walk(root):
        if Path(folder) == Path(root):
            folders[:] = [name for name in folders if name not in ("out", ".git")]
        names += [str((Path(folder) / name).relative_to(root)) for name in found if name.endswith(endings)]
    return names


def sources(root):
    return files(root, ENDINGS)


def build_files(root):
    return files(root, ("CMakeLists.txt", ".cmake"))


def folder_of(name):
    return name.rpartition("/")[0]


def faults_of_links(root):
    """One sentence per build file outside the engine that names the bindings, or what is made of them."""
    faults = []
    for name in build_files(root):
        text = re.sub(r"#.*", "", (root / name).read_text())
        if folder_of(name) not in MAY_HAVE_BINDINGS:
            faults += [f"{name} names {target}" for target in sorted(set(BINDINGS.findall(text)))]
    return faults


def faults_of(root):
    """One sentence per fault found below a folder."""
    faults = faults_of_links(root)
    for name in sources(root):
        text = (root / name).read_text()
        room = room_of(name)
        if text.count("\n") > LONGEST_FILE and name != MAY_BE_LONGER:
            faults.append(f"{name} has more than {LONGEST_FILE} lines")
        if not text.startswith(("//", "/*")):
            faults.append(f"{name} does not begin with a sentence about what lives in it")
        included_names = INCLUDE.findall(text)
        has_bindings = any(included.startswith("imaging/gdiplus/") for included in included_names)
        if has_bindings and folder_of(name) not in MAY_HAVE_BINDINGS:
            faults.append(f"{name} includes the bindings")
        if room is None:
            continue
        for included in included_names:
            if ".." in included:
                faults.append(f"{name} includes {included}: paths begin at the root")
            if WINDOWS_HEADERS.fullmatch(included):
                if room not in MAY_INCLUDE_WINDOWS and not re.search(r"_windows\.(cpp|h)$", name):
                    faults.append(f"{name} includes <{included}>")
            target = room_of(included)
            if included in FILE_MAY_KNOW.get(name, ()):
                continue
            if target is not None and target != room and target not in MAY_KNOW[room]:
                faults.append(f"{name} includes {included}: {room} must not know {target}")
    return faults


class Structure(unittest.TestCase):
    root = None

    def test_only_allowed_arrows_are_drawn(self):
        self.assertEqual(faults_of(self.root), [])

    def test_many_files_are_read(self):
        self.assertGreater(len(sources(self.root)), 100)


class PlantedFaults(unittest.TestCase):
    """The check itself: each kind of fault is found in a tree made for it."""

    def faults(self, name, text):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
            return faults_of(Path(folder))

    def expect_fault(self, name, text, fault):
        self.assertEqual(self.faults(name, text), [fault])

    def test_clean_file_has_none(self):
        self.assertEqual(self.faults("imaging/a.cpp", '// A.\n#include "platform/files.h"\n#include <string>\n'), [])

    def test_engine_must_not_know_the_imaging_library(self):
        self.expect_fault("imaging/a.cpp", '// A.\n#include "imaginglibrary/core/status.h"\n',
                          "imaging/a.cpp includes imaginglibrary/core/status.h: imaging must not know imaginglibrary")

    def test_bindings_are_included_by_the_engine_alone(self):
        include = '// A.\n#include "imaging/gdiplus/bindings.h"\n'
        for name in ("imaging/a.cpp", "imaging/gdiplus/a.cpp", "tests/imaging/a.cpp"):
            self.assertEqual(self.faults(name, include), [])
        self.expect_fault("tests/freeedit/a.cpp", include, "tests/freeedit/a.cpp includes the bindings")
        self.expect_fault("examples/a.cpp", '// A.\n#include <imaging/gdiplus/flattypes.h>\n',
                          "examples/a.cpp includes the bindings")
        self.assertEqual(self.faults("freeedit/a.cpp", include),
                         ["freeedit/a.cpp includes the bindings",
                          "freeedit/a.cpp includes imaging/gdiplus/bindings.h: freeedit must not know imaging/gdiplus"])
        self.assertIn("app/a.cpp includes the bindings", self.faults("app/a.cpp", include))

    def test_bindings_are_linked_by_the_engine_alone(self):
        link = "target_link_libraries(a PRIVATE {})\n"
        for folder in ("imaging", "imaging/exports", "tests/imaging"):
            for target in ("lumbrix_bindings", "lumbrix_engine"):
                self.assertEqual(self.faults(f"{folder}/CMakeLists.txt", link.format(target)), [])
        self.expect_fault("freeedit/CMakeLists.txt", link.format("lumbrix_bindings"),
                          "freeedit/CMakeLists.txt names lumbrix_bindings")
        self.expect_fault("app/CMakeLists.txt", link.format("lumbrix lumbrix_engine"),
                          "app/CMakeLists.txt names lumbrix_engine")
        self.expect_fault("tests/windows/CMakeLists.txt", link.format("lumbrix_engine"),
                          "tests/windows/CMakeLists.txt names lumbrix_engine")
        self.expect_fault("CMakeLists.txt", link.format("lumbrix_engine"), "CMakeLists.txt names lumbrix_engine")
        self.expect_fault("draw/CMakeLists.txt", "add_library(d ../imaging/gdiplus/bindings.cpp)\n",
                          "draw/CMakeLists.txt names gdiplus/bindings.cpp")
        self.expect_fault("cmake/Lumbrix.cmake", link.format("lumbrix_engine"),
                          "cmake/Lumbrix.cmake names lumbrix_engine")
        self.assertEqual(self.faults("app/CMakeLists.txt", "# not lumbrix_engine\n" + link.format("lumbrix_engines")), [])

    def test_build_files_are_read(self):
        self.assertGreater(len(build_files(Path(__file__).resolve().parents[2])), 20)

    def test_folders_of_what_is_made_are_not_entered(self):
        scandir = os.scandir
        entered = set()

        def noting(folder):
            entered.add(Path(folder).name)
            return scandir(folder)

        with tempfile.TemporaryDirectory() as root:
            for name in ("out/build/a.cpp", ".git/a.cpp", "app/out/a.cpp"):
                (Path(root) / name).parent.mkdir(parents=True)
                (Path(root) / name).write_text("")
            with unittest.mock.patch("os.scandir", noting):
                self.assertEqual(sources(Path(root)), ["app/out/a.cpp"])
            self.assertEqual(entered, {Path(root).name, "app", "out"})

    def test_imaging_library_knows_nobody(self):
        self.expect_fault("imaginglibrary/core/a.h", '// A.\n#include "platform/text.h"\n',
                          "imaginglibrary/core/a.h includes platform/text.h: imaginglibrary must not know platform")

    def test_engine_must_not_know_what_stands_on_it(self):
        self.expect_fault("imaging/a.cpp", '// A.\n#include "batch/job.h"\n',
                          "imaging/a.cpp includes batch/job.h: imaging must not know batch")

    def test_command_line_knows_the_exports_only(self):
        self.expect_fault("cli/a.cpp", '// A.\n#include "imaging/convert.h"\n',
                          "cli/a.cpp includes imaging/convert.h: cli must not know imaging")

    def test_icons_are_known_to_one_file_of_the_command_line(self):
        include = '// A.\n#include "draw/iconcommand.h"\n'
        self.assertEqual(self.faults("cli/icon_windows.cpp", include), [])
        self.expect_fault("cli/icon_linux.cpp", include,
                          "cli/icon_linux.cpp includes draw/iconcommand.h: cli must not know draw")
        self.expect_fault("cli/icon_windows.cpp", '// A.\n#include "draw/iconmaker.h"\n',
                          "cli/icon_windows.cpp includes draw/iconmaker.h: cli must not know draw")

    def test_base_is_known_by_all_but_the_imaging_library_and_knows_nobody(self):
        for name in ("app/a.cpp", "imaging/a.cpp", "imaging/gdiplus/a.cpp", "platform/a.cpp", "cli/a.cpp"):
            self.assertEqual(self.faults(name, '// A.\n#include "base/numbers.h"\n'), [])
        self.expect_fault("imaginglibrary/core/a.h", '// A.\n#include "base/numbers.h"\n',
                          "imaginglibrary/core/a.h includes base/numbers.h: imaginglibrary must not know base")
        self.expect_fault("base/a.h", '// A.\n#include "platform/text.h"\n',
                          "base/a.h includes platform/text.h: base must not know platform")
        self.expect_fault("base/a.h", "// A.\n#include <windows.h>\n", "base/a.h includes <windows.h>")

    def test_toolkit_must_not_know_what_stands_on_it(self):
        self.expect_fault("toolkit/a.cpp", '// A.\n#include "batch/job.h"\n',
                          "toolkit/a.cpp includes batch/job.h: toolkit must not know batch")

    def test_windows_header_has_its_places(self):
        self.expect_fault("batch/a.cpp", "// A.\n#include <windows.h>\n", "batch/a.cpp includes <windows.h>")
        self.assertEqual(self.faults("platform/a_windows.cpp", "// A.\n#include <windows.h>\n"), [])
        self.assertEqual(self.faults("app/a.cpp", "// A.\n#include <windows.h>\n"), [])

    def test_other_spellings_are_seen_through(self):
        self.expect_fault("imaging/a.hpp", "// A.\n#include <imaginglibrary/core/status.h>\n",
                          "imaging/a.hpp includes imaginglibrary/core/status.h: imaging must not know imaginglibrary")
        self.expect_fault("imaging/a.h", '// A.\n#include "../imaginglibrary/core/status.h"\n',
                          "imaging/a.h includes ../imaginglibrary/core/status.h: paths begin at the root")
        self.expect_fault("imaging/a.h", '// A.\n#include "windows.h"\n', "imaging/a.h includes <windows.h>")
        self.expect_fault("imaging/a.h", "// A.\n#include <winuser.h>\n", "imaging/a.h includes <winuser.h>")

    def test_file_without_a_first_sentence(self):
        self.expect_fault("cli/a.cpp", "int a;\n",
                          "cli/a.cpp does not begin with a sentence about what lives in it")

    def test_file_beyond_its_room(self):
        self.expect_fault("cli/a.cpp", "// A.\n" + "int a;\n" * 500, "cli/a.cpp has more than 500 lines")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    Structure.root = Path(sys.argv[1])
    unittest.main(argv=sys.argv[:1])
