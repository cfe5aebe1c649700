#!/usr/bin/env python3
"""Kills processes at random moments of their writing, and looks at what they leave: the old file or the new one, whole.

Usage: kill_test.py LUMBRIX_CLI KEEPWRITING SAMPLES [--count N] [--seed S]
"""

import argparse
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from collections import Counter
from pathlib import Path

SCRATCH = re.compile(r"(\.imaging-\d+|IMG[0-9A-F]+)\.tmp")
PAGE = 4096
TEXT = r"\dx{100}/end"
SETTINGS = re.compile(r'# Settings of Lumbrix\n\n\[HKEY_CURRENT_USER\\SOFTWARE\\Lumbrix\]\n("Delete" = 1:( [0-9A-F]{2}){3006}\n)?')
LIST = re.compile(r"(%s\r\n)*" % TEXT)
COPIES = {b"1" * 300000, b"2" * 300000}


class Subject:
    """Something that is killed: its command in a folder, and what may stand there afterwards."""

    def __init__(self, name, command, prepare, judge):
        self.name, self.command, self.prepare, self.judge = name, command, prepare, judge


def names_in(folder):
    return {str(path.relative_to(folder)) for path in Path(folder).rglob("*") if path.is_file()}


def left_over(folder, known):
    """The scratch files among what is there; anything else that is not known is a fault."""
    strangers = names_in(folder) - set(known)
    scratch = {name for name in strangers if SCRATCH.fullmatch(Path(name).name)}
    assert strangers == scratch, f"left behind: {sorted(strangers - scratch)}"
    return len(scratch)


def kill_once(subject, folder, seconds):
    subject.prepare(folder)
    process = subprocess.Popen(subject.command(folder), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(seconds)
    process.send_signal(signal.SIGKILL)
    was_killed = process.wait() == -signal.SIGKILL
    return was_killed, subject.judge(folder)


def shortest_time(command, target):
    """In seconds, of three runs without the target."""
    times = []
    for _ in range(3):
        target.unlink(missing_ok=True)
        start = time.monotonic()
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        times.append(time.monotonic() - start)
    return min(times)


def writes(cli, samples, name, words, target, old=b"old"):
    """A command that writes one file: it is old or new afterwards. Without an old one it is not there or new."""
    with tempfile.TemporaryDirectory() as made:
        shutil.copy(samples / "photo.jpg", made)
        duration = shortest_time([cli, *words(Path(made))], Path(made) / target)
        new = (Path(made) / target).read_bytes()

    def prepare(folder):
        shutil.copy(samples / "photo.jpg", folder)
        if old is not None:
            (folder / target).write_bytes(old)

    def judge(folder):
        found = (folder / target).read_bytes() if (folder / target).exists() else None
        assert found in (old, new), f"{target} is neither the old nor the new one"
        return left_over(folder, {"photo.jpg", target})

    return Subject(name, lambda folder: [cli, *words(folder)], prepare, judge), duration


def converts_a_folder(cli, samples):
    names = [f"{i}.jpg" for i in range(4)]
    with tempfile.TemporaryDirectory() as made:
        target = Path(made) / "new.bmp"
        duration = shortest_time([cli, "convert", samples / "photo.jpg", target], target)
        new = target.read_bytes()

    def prepare(folder):
        for part in ("in", "out"):
            (folder / part).mkdir()
        for name in names:
            shutil.copy(samples / "photo.jpg", folder / "in" / name)
            (folder / "out" / name).with_suffix(".bmp").write_bytes(b"old")

    def judge(folder):
        targets = [(folder / "out" / name).with_suffix(".bmp") for name in names]
        assert all(target.read_bytes() in (b"old", new) for target in targets), "a target is neither old nor new"
        return left_over(folder, {f"in/{name}" for name in names} | {str(t.relative_to(folder)) for t in targets})

    return Subject("folder", lambda folder: [cli, "folder", folder / "in", folder / "out", "bmp", "--jobs", "2"],
                   prepare, judge), 2 * duration


def is_list(content):
    """A kill may cut a write short, but only where it crosses a page of the system."""
    lines = content if len(content) % PAGE else content[:content.rfind(b"\n") + 1]
    return LIST.fullmatch(lines.decode())


def own_file(keepwriting, kind, name, is_whole, others=()):
    def prepare(folder):
        for other, content in others:
            (folder / other).write_bytes(content)

    def judge(folder):
        file = folder / name
        if file.exists():
            assert is_whole(file.read_bytes()), f"{name} is not whole"
        return left_over(folder, {name} | {other for other, _ in others})

    return Subject(kind, lambda folder: [keepwriting, kind, folder], prepare, judge)


def all_subjects(cli, keepwriting, samples):
    save, save_time = writes(cli, samples, "save", lambda f: ["convert", f / "photo.jpg", f / "new.png"], "new.png")
    date, date_time = writes(cli, samples, "date", lambda f: ["date", f / "photo.jpg", "2024:01:02 03:04:05"],
                             "photo_stamped.jpg", old=None)
    icon, icon_time = writes(cli, samples, "icon", lambda f: ["icon", f / "photo.jpg", f / "new.ico"], "new.ico")
    return [(save, save_time), (date, date_time), (icon, icon_time), converts_a_folder(cli, samples),
            (own_file(keepwriting, "settings", "lumbrix/settings", lambda b: SETTINGS.fullmatch(b.decode())), 0.05),
            (own_file(keepwriting, "list", "CleanUp.txt", is_list), 0.05),
            (own_file(keepwriting, "copy", "copy", lambda b: b in COPIES,
                      (("one", b"1" * 300000), ("two", b"2" * 300000))), 0.05)]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("cli", type=Path)
    parser.add_argument("keepwriting", type=Path)
    parser.add_argument("samples", type=Path)
    parser.add_argument("--count", type=int, default=70)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    options = parser.parse_args()
    chance = random.Random(options.seed)
    subjects = all_subjects(options.cli, options.keepwriting, options.samples)
    killed, scratch, faults = Counter(), Counter(), []
    for number in range(options.count):
        subject, duration = subjects[number % len(subjects)]
        with tempfile.TemporaryDirectory() as folder:
            try:
                was_killed, left = kill_once(subject, Path(folder), chance.uniform(0, duration))
                killed[subject.name] += was_killed
                scratch[subject.name] += left
            except AssertionError as error:
                faults.append(f"{subject.name}, number {number}: {error}")
    print(f"seed {options.seed}: {options.count} processes, {sum(killed.values())} killed {dict(killed)}, "
          f"{sum(scratch.values())} scratch files left {dict(+scratch)}, {len(faults)} faults")
    for fault in faults:
        print(fault)
    # Between naming a file and renaming it a kill leaves it under its name of the meantime, which is a matter of
    # microseconds.
    few = 1 + options.count // 50
    return 1 if faults or sum(scratch.values()) > few or not sum(killed.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
