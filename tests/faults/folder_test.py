#!/usr/bin/env python3
"""Converts a folder with eight jobs while its files vanish, change and are locked, and looks at what came of it.

Usage: folder_test.py LUMBRIX_CLI [--count N] [--seed S]
"""

import argparse
import fcntl
import json
import os
import random
import struct
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path


def bmp(width, height, color):
    row = (bytes(color) * width).ljust((3 * width + 3) // 4 * 4, b"\0")
    pixels = row * height
    head = struct.pack("<2sIHHIIiiHHIIiiII", b"BM", 54 + len(pixels), 0, 0, 54, 40, width, height, 1, 24, 0,
                       len(pixels), 2835, 2835, 0, 0)
    return head + pixels


WHOLE = bmp(60, 40, (10, 200, 30))
OTHER = bmp(50, 50, (200, 10, 30))


class Troublemaker(threading.Thread):
    """Deletes files, replaces them, cuts them short and locks them, until it is told to stop."""

    def __init__(self, files, seed):
        super().__init__()
        self.files, self.chance, self.stopped, self.deeds = files, random.Random(seed), threading.Event(), 0

    def run(self):
        while not self.stopped.is_set():
            file = self.chance.choice(self.files)
            try:
                self.chance.choice((self.delete, self.replace, self.cut, self.lock))(file)
                self.deeds += 1
            except FileNotFoundError:
                pass
            time.sleep(0.0005)

    def delete(self, file):
        file.unlink()

    def replace(self, file):
        beside = file.with_suffix(".new")
        beside.write_bytes(OTHER)
        beside.rename(file)

    def cut(self, file):
        os.truncate(file, self.chance.randrange(len(WHOLE)))

    def lock(self, file):
        with open(file, "r+b") as held:
            fcntl.lockf(held, fcntl.LOCK_EX | fcntl.LOCK_NB)
            time.sleep(0.002)


def convert(cli, source, target, files, seed):
    trouble = Troublemaker(files, seed)
    trouble.start()
    try:
        return subprocess.run([cli, "folder", source, target, "png", "--jobs", "8", "--json", "--quiet"],
                              capture_output=True, text=True, timeout=3600), trouble
    finally:
        trouble.stopped.set()
        trouble.join()


def sizes(cli, file):
    return subprocess.run([cli, "size", file], capture_output=True, text=True).stdout.strip()


def judge(cli, run, target, count, chance):
    """Sentences about what is wrong."""
    if run.returncode not in (0, 1):
        return [f"ended with {run.returncode}: {run.stderr[-300:]}"], {}
    report = json.loads(run.stdout)
    fates = {Path(file["target"]).name: file for file in report["files"]}
    there = {path.name for path in target.iterdir()}
    written = {name for name, file in fates.items() if file["status"] == "written"}
    faults = [f"{name} was said to be written" for name in written - there]
    faults += [f"{name} was left behind" for name in there - written]
    faults += [f"{name} failed without a message" for name, file in fates.items()
               if file["status"] == "failed" and not file.get("message")]
    if (run.returncode == 0) != (report["failed"] == 0) or len(fates) > count:
        faults.append(f"status {run.returncode} with {report['failed']} failures of {len(fates)}")
    for name in chance.sample(sorted(written), min(50, len(written))):
        if sizes(cli, target / name) not in ("60 x 40", "50 x 50"):
            faults.append(f"{name} is no whole picture")
    return faults, report


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("cli", type=Path)
    parser.add_argument("--count", type=int, default=400)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        source, target = Path(folder) / "in", Path(folder) / "out"
        source.mkdir()
        target.mkdir()
        files = [source / f"{number:05}.bmp" for number in range(options.count)]
        for file in files:
            file.write_bytes(WHOLE)
        run, trouble = convert(options.cli, source, target, files, options.seed)
        faults, report = judge(options.cli, run, target, options.count, random.Random(options.seed))
        print(f"seed {options.seed}: {options.count} files, {trouble.deeds} disturbances, "
              f"{report.get('written')} written, {report.get('failed')} failed, {len(faults)} faults")
        print("\n".join(faults[:20]))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
