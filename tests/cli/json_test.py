#!/usr/bin/env python3
"""What lumbrix-cli prints as JSON, read by another JSON reader.

Usage: json_test.py CLI SAMPLES
"""

import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

REPLACED = "\N{REPLACEMENT CHARACTER}"
# Every byte that a name may have, two by two: a control character, quotes, and whatever is no UTF-8.
NAMES = [bytes([first, second]) for first in (1, 0x22, 0x5C, 0x7F, 0xC3, 0xE2, 0xED, 0xF4, 0xFF)
         for second in range(1, 256) if second != 0x2F]


class Json(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-json-")
        self.folder = Path(self.temporary.name)
        (self.folder / "in").mkdir()

    def tearDown(self):
        self.temporary.cleanup()

    def copy(self, name):
        (self.folder / name).write_bytes((self.samples / "photo.jpg").read_bytes())

    def run_cli(self, *words, status=0):
        result = subprocess.run([self.cli, *words], cwd=self.folder, capture_output=True, timeout=60)
        self.assertEqual(result.returncode, status, result.stderr)
        self.errors = result.stderr.decode(errors="replace")
        self.assertEqual(result.stdout.count(b"\n"), 1)
        return json.loads(result.stdout.decode("utf-8"))

    def test_size_of_each_file(self):
        self.copy("a.jpg")
        self.assertEqual(self.run_cli("size", "--json", "a.jpg"), [{"file": "a.jpg", "width": 1600, "height": 1067}])
        both = self.run_cli("size", "none.jpg", "a.jpg", "--json", status=1)
        self.assertEqual(both, [{"file": "none.jpg", "message": "cannot read none.jpg: there is no such file"},
                                {"file": "a.jpg", "width": 1600, "height": 1067}])
        self.assertEqual(self.errors, "lumbrix-cli: cannot read none.jpg: there is no such file\n")

    def test_any_name_is_valid(self):
        for file in self.run_cli("size", "--json", *[os.fsdecode(name) for name in NAMES], status=1):
            self.assertIn("message", file)
        found = [file["file"] for file in self.run_cli("size", "--json", *[os.fsdecode(name) for name in NAMES], status=1)]
        self.assertEqual(len(found), len(NAMES))
        for name, shown in zip(NAMES, found):
            try:
                self.assertEqual(shown, name.decode())
            except UnicodeDecodeError:
                self.assertEqual(shown, "".join(part if ord(part) < 128 else REPLACED for part in name.decode("latin-1")))

    def test_properties(self):
        self.copy("a.jpg")
        result = self.run_cli("properties", "a.jpg", "--json")
        self.assertEqual(result["file"], "a.jpg")
        properties = {each["name"]: each["value"] for each in result["properties"]}
        self.assertEqual(properties["Camera Manufacturer"], "Lumbrix")
        self.assertEqual(properties["Orientation"], 1)

    def test_properties_that_are_texts_stay_texts(self):
        self.copy("a.jpg")
        subprocess.run(["exiftool", "-q", "-overwrite_original", "-Model=0500", "-Make=500", "-Copyright=007",
                        "-ImageDescription=a\"b\\c\td", self.folder / "a.jpg"], check=True)
        properties = {each["name"]: each["value"] for each in self.run_cli("properties", "a.jpg", "--json")["properties"]}
        self.assertEqual(properties["Camera Manufacturer"], "500")
        self.assertEqual(properties["Camera Type"], "0500")
        self.assertEqual(properties["33432"], "007")
        self.assertEqual(properties["270"], ["a\"b\\c", "d"])

    def test_picture_without_properties(self):
        self.copy("a.jpg")
        self.run_cli("convert", "a.jpg", "a.bmp", "--json")
        self.assertEqual(self.run_cli("properties", "a.bmp", "--json"), {"file": "a.bmp", "properties": []})

    def test_folder_run(self):
        self.copy("in/a.jpg")
        (self.folder / "in/b.png").write_bytes(b"Dear Sir or Madam")
        (self.folder / "in/notes.txt").write_bytes(b"")
        result = self.run_cli("folder", "in", "out", "png", "100", "--json", status=1)
        self.assertEqual(result["files"], [
            {"source": "in/a.jpg", "target": "out/a.png", "status": "written", "width": 150, "height": 100,
             "bytes": (self.folder / "out/a.png").stat().st_size},
            {"source": "in/b.png", "target": "out/b.png", "status": "failed", "message": self.errors[13:-1]}])
        del result["files"]
        self.assertEqual(result, {"failures": [], "written": 1, "skipped": 0, "failed": 1, "passed_over": 1,
                                  "not_reached": 0})

    def test_files_that_are_skipped_or_would_be_written(self):
        self.copy("in/a.jpg")
        self.copy("in/b.jpg")
        (self.folder / "out").mkdir()
        (self.folder / "out/a.png").write_bytes(b"old")
        result = self.run_cli("folder", "in", "out", "png", "--json", "--dry-run", "--skip")
        self.assertEqual([file["status"] for file in result["files"]], ["skipped", "would be written"])
        self.assertEqual((result["would_be_written"], result["skipped"]), (1, 1))
        self.assertNotIn("width", result["files"][1])

    def test_names_in_a_list_that_lead_away(self):
        (self.folder / "list").write_text("../x.jpg\n")
        result = self.run_cli("folder", "in", "out", "png", "--json", "--list", "list", status=1)
        self.assertEqual(result["failures"], ["cannot work on ../x.jpg: it does not lie in the source folder"])
        self.assertEqual(result["failed"], 1)

    def test_several_sources_and_a_single_one(self):
        self.copy("a.jpg")
        self.copy("\N{SNOWMAN} \"b\".jpg")
        result = self.run_cli("resize", "a.jpg", "\N{SNOWMAN} \"b\".jpg", "10", "--into", "out", "--json", "--verbose")
        self.assertEqual([file["target"] for file in result["files"]], ["out/a.jpg", "out/\N{SNOWMAN} \"b\".jpg"])
        self.assertEqual([(file["width"], file["height"]) for file in result["files"]], [(15, 10)] * 2)
        single = self.run_cli("crop", "a.jpg", "c.png", "1", "2", "3", "4", "--json")
        self.assertEqual((single["files"][0]["width"], single["files"][0]["height"], single["written"]), (3, 4, 1))
        failed = self.run_cli("convert", "none.jpg", "c.png", "--json", status=1)
        self.assertEqual(failed["files"][0]["status"], "failed")
        self.assertIn("none.jpg", self.errors)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Json.cli, Json.samples = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
