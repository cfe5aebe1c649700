#!/usr/bin/env python3
"""Kills processes at random moments of their writing, and looks at what they leave: the old file or the new one, whole.

Usage: kill_test.py LUMBRIX_CLI KEEPWRITING SAMPLES [--count N] [--seed S] [--only NAME...]
                    [--runner tools/wine-run]

With a runner the programs are those for Windows.
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
from contextlib import contextmanager
from pathlib import Path

SCRATCH = re.compile(r"(\.imaging-\d+|IMG[0-9A-F]+|\d+)\.tmp", re.IGNORECASE)
PAGE = 4096
EARLIEST = 0.7  # of the time in which Wine starts a program: before that there is nothing to kill
TEXT = r"\d(x{100}|x{200})/end"
SETTINGS = re.compile(r'# Settings of Lumbrix\n\n\[HKEY_CURRENT_USER\\SOFTWARE\\LumbrixKeepWriting\]\n("Delete" = 1:( [0-9A-F]{2}){3006}\n)?')
LIST = re.compile(r"(%s\r\n)*" % TEXT)
COPIES = {b"1" * 300000, b"2" * 300000}


class Programs:
    """How the two programs are run."""

    def __init__(self, cli, keepwriting, runner):
        self.cli, self.keepwriting = [*runner, cli], [*runner, keepwriting]
        self.on_windows = bool(runner)
        self.start = 0 if not runner else self.fastest([*self.cli, "--version"])  # seconds

    @contextmanager
    def kept_warm(self):
        """Wine takes seconds to begin where no program that uses windows is running, so one waits for its input."""
        if not self.on_windows:
            yield
            return
        with subprocess.Popen([*self.cli, "convert", "-", "--to", "png", "-"], stdin=subprocess.PIPE,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL):
            yield

    def words(self, words):
        """Paths as the program names them."""
        return [f"Z:{word}" if self.on_windows and isinstance(word, Path) else str(word) for word in words]

    def convert(self, *words):
        return [*self.cli, *self.words(words)]

    def keep_writing(self, *words):
        return [*self.keepwriting, *self.words(words)]

    def source(self, samples, folder):
        """The picture to work on, a small one where a process starts more slowly than it works."""
        source = folder / "photo.jpg"
        if self.on_windows:
            subprocess.run(self.convert("resize", (samples / "photo.jpg").resolve(), source, "300"), check=True)
        else:
            shutil.copy(samples / "photo.jpg", source)
        return source

    @staticmethod
    def fastest(command, prepare=lambda: None):
        times = []
        for _ in range(3):
            prepare()
            start = time.monotonic()
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
            times.append(time.monotonic() - start)
        return min(times)


class Subject:
    """Something that is killed: its command in a folder, and what may stand there afterwards. `finish` is the next start
    of it, which is let to its end; `judge` is asked behind either."""

    def __init__(self, name, command, prepare, judge, finish=None):
        self.name, self.command, self.prepare, self.judge = name, command, prepare, judge
        self.finish = finish


def names_in(folder):
    return {str(path.relative_to(folder)) for path in Path(folder).rglob("*") if path.is_file()}


def left_over(folder, known):
    """The scratch files among what is there; anything else that is not known is a fault."""
    strangers = names_in(folder) - set(known)
    scratch = {name for name in strangers if SCRATCH.fullmatch(Path(name).name)}
    assert strangers == scratch, f"left behind: {sorted(strangers - scratch)}"
    return len(scratch)


def judge_in_time(subject, folder):
    """Wine's server, which deletes what a process was not to leave behind, hears of its end a little later."""
    end = time.monotonic() + 3
    while subject.judge(folder) and time.monotonic() < end:
        time.sleep(0.02)
    return subject.judge(folder)


def kill_once(subject, folder, seconds):
    subject.prepare(folder)
    process = subprocess.Popen(subject.command(folder), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(seconds)
    process.send_signal(signal.SIGKILL)
    was_killed = process.wait() == -signal.SIGKILL
    left = judge_in_time(subject, folder)
    if subject.finish:
        subject.finish(folder)
        subject.judge(folder)
    return was_killed, left


def run_to_its_end(command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    assert done.returncode == 0, f"the next start fails: {done.stdout.decode(errors='replace')}"
    return done.stdout.decode()


def writes(programs, source, name, words, target, old=b"old"):
    """A command that writes one file: it is old or new afterwards. Without an old one it is not there or new."""
    def command(folder):
        return programs.convert(*words(folder))

    with tempfile.TemporaryDirectory() as made:
        shutil.copy(source, made)
        written = Path(made) / target
        duration = programs.fastest(command(Path(made)), lambda: written.unlink(missing_ok=True))
        new = written.read_bytes()

    def prepare(folder):
        shutil.copy(source, folder)
        if old is not None:
            (folder / target).write_bytes(old)

    def judge(folder):
        found = (folder / target).read_bytes() if (folder / target).exists() else None
        assert found in (old, new), f"{target} is neither the old nor the new one"
        return left_over(folder, {"photo.jpg", target})

    def finish(folder):
        if old is None:
            (folder / target).unlink(missing_ok=True)  # of which there must be none
        run_to_its_end(command(folder))
        assert (folder / target).read_bytes() == new, "the next start does not write it"

    return Subject(name, command, prepare, judge, finish), duration


def converts_a_folder(programs, source):
    names = [f"{i}.jpg" for i in range(4)]
    with tempfile.TemporaryDirectory() as made:
        target = Path(made) / "new.bmp"
        duration = programs.fastest(programs.convert("convert", source, target))
        new = target.read_bytes()

    def prepare(folder):
        for part in ("in", "out"):
            (folder / part).mkdir()
        for name in names:
            shutil.copy(source, folder / "in" / name)
            (folder / "out" / name).with_suffix(".bmp").write_bytes(b"old")

    def contents(folder):
        return {(folder / "out" / name).with_suffix(".bmp").read_bytes() for name in names}

    def judge(folder):
        assert contents(folder) <= {b"old", new}, "a target is neither old nor new"
        return left_over(folder, {f"in/{name}" for name in names} | {f"out/{Path(name).stem}.bmp" for name in names})

    def command(folder):
        return programs.convert("folder", folder / "in", folder / "out", "bmp", "--jobs", "2")

    def finish(folder):
        run_to_its_end(command(folder))
        assert contents(folder) == {new}, "the next start does not write them all"

    return Subject("folder", command, prepare, judge, finish), programs.start + 2 * (duration - programs.start)


def is_list(content):
    """A kill may cut a write short, but only where it crosses a page of the system."""
    lines = content if len(content) % PAGE else content[:content.rfind(b"\n") + 1]
    return LIST.fullmatch(lines.decode())


def own_file(programs, kind, name, is_whole, others=(), finish=None):
    def prepare(folder):
        for other, content in others:
            (folder / other).write_bytes(content)

    def judge(folder):
        file = folder / name
        if file.exists():
            assert is_whole(file.read_bytes()), f"{name} is not whole"
        return left_over(folder, {name} | {other for other, _ in others})

    return Subject(kind, lambda folder: programs.keep_writing(kind, folder), prepare, judge, finish)


def settings(programs):
    def is_whole(folder):
        value = run_to_its_end(programs.keep_writing("read-settings", folder))
        assert re.fullmatch(f"({TEXT})?", value), f"the setting is not whole: {value}"

    if programs.on_windows:  # where they are no file
        return own_file(programs, "settings", "none", lambda content: False, finish=is_whole)
    return own_file(programs, "settings", "lumbrix/settings", lambda content: SETTINGS.fullmatch(content.decode()))


def clean_up_list(programs):
    def finish(folder):
        run_to_its_end(programs.keep_writing("sweep-list", folder))
        assert not names_in(folder), "the next start leaves the list"

    return own_file(programs, "list", "CleanUp.txt", is_list, finish=finish)


def all_subjects(programs, source):
    save, save_time = writes(programs, source, "save", lambda f: ["convert", f / "photo.jpg", f / "new.png"], "new.png")
    date, date_time = writes(programs, source, "date", lambda f: ["date", f / "photo.jpg", "2024:01:02 03:04:05"],
                             "photo_stamped.jpg", old=None)
    icon, icon_time = writes(programs, source, "icon", lambda f: ["icon", f / "photo.jpg", f / "new.ico"], "new.ico")
    while_writing = programs.start + 0.05
    return [(save, save_time), (date, date_time), (icon, icon_time), converts_a_folder(programs, source),
            (settings(programs), while_writing), (clean_up_list(programs), while_writing),
            (own_file(programs, "copy", "copy", lambda b: b in COPIES,
                      (("one", b"1" * 300000), ("two", b"2" * 300000))), while_writing)]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("cli", type=Path)
    parser.add_argument("keepwriting", type=Path)
    parser.add_argument("samples", type=Path)
    parser.add_argument("--count", type=int, default=70)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--runner", nargs="+", default=[])
    parser.add_argument("--only", nargs="+", help="the names of what is killed")
    options = parser.parse_args()
    chance = random.Random(options.seed)
    programs = Programs(options.cli, options.keepwriting, options.runner)
    killed, scratch, faults = Counter(), Counter(), []
    with programs.kept_warm(), tempfile.TemporaryDirectory() as made:
        subjects = [(subject, duration)
                    for subject, duration in all_subjects(programs, programs.source(options.samples, Path(made)))
                    if not options.only or subject.name in options.only]
        for number in range(options.count):
            subject, duration = subjects[number % len(subjects)]
            with tempfile.TemporaryDirectory() as folder:
                try:
                    seconds = chance.uniform(EARLIEST * programs.start, duration)
                    was_killed, left = kill_once(subject, Path(folder), seconds)
                    killed[subject.name] += was_killed
                    scratch[subject.name] += left
                except AssertionError as error:
                    faults.append(f"{subject.name}, number {number}: {error}")
    print(f"seed {options.seed}: {options.count} processes, {sum(killed.values())} killed {dict(killed)}, "
          f"{sum(scratch.values())} scratch files left {dict(+scratch)}, {len(faults)} faults")
    for fault in faults:
        print(fault)
    # Between naming a file, or keeping it, and renaming it a kill leaves it under its name of the meantime. That is a
    # matter of microseconds, but under Wine of a good part of a small copy.
    few = 2 + options.count // 25
    if programs.on_windows:
        few += (killed["copy"] + 2) // 4
    return 1 if faults or sum(scratch.values()) > few or not sum(killed.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
