"""What the measuring scripts share: where things lie, the pictures, and running commands."""

import argparse
import math
import statistics
import subprocess
import sys
from pathlib import Path
from typing import NamedTuple

ROOT = Path(__file__).resolve().parent.parent
FOLDER = ROOT / "out/bench"
PROGRAMS = ROOT / "out/build/linux/bench"
LUMBRIX = ROOT / "out/linux/lumbrix-cli"


class Run(NamedTuple):
    seconds: float
    processor: float  # seconds
    mebibytes: float  # at its peak


class Bench:
    """The pictures of one size in a folder, and the programs that make and measure."""

    def __init__(self, megapixels, folder=FOLDER, programs=PROGRAMS, lumbrix=LUMBRIX):
        self.megapixels = megapixels
        self.height = round(math.sqrt(megapixels * 1e6 / 1.5))
        self.folder = Path(folder) / f"{megapixels:g}"
        self.folder.mkdir(parents=True, exist_ok=True)
        self.bare = Path(programs) / "limit_bench"
        self.lumbrix = Path(lumbrix)
        self._measured = Path(programs) / "measured"
        self._pictures = Path(programs) / "bench_pictures"
        missing = [path.name for path in (self.bare, self.lumbrix, self._measured, self._pictures) if not path.exists()]
        if missing:
            sys.exit(f"bench: not built: {', '.join(missing)}; ninja -C out/build/linux limit_bench measured "
                     "bench_pictures library_bench lumbrix-cli")

    def picture(self, name):
        """The path of "photograph.jpg" or "screenshot.bmp", which is made where it is not there. JPEG has quality 88,
        TIFF no compression."""
        path = self.folder / name
        if not path.exists():
            plain = self.folder / f"{path.stem}.ppm"
            if not plain.exists():
                subprocess.run([self._pictures, path.stem, str(self.megapixels), plain], check=True)
            unfinished = self.folder / f"unfinished-{name}"
            subprocess.run([self.bare, plain, unfinished, "quality=88", "plain"], check=True)
            unfinished.rename(path)
        return str(path)

    def run(self, command):
        """One run of a command, None where it failed."""
        line = subprocess.run([self._measured, *map(str, command)], capture_output=True, text=True, check=True).stdout
        seconds, processor, kibibytes, status = line.split()
        return Run(float(seconds), float(processor), int(kibibytes) / 1024) if status == "0" else None

    def take_turns(self, commands, runs):
        """Runs the commands in turns: a dictionary of name and (command, target) becomes one of name and list of runs.
        The first turn warms up. What fails is left out. Every target is written anew."""
        results = {name: [] for name in commands}
        for turn in range(runs + 1):
            for name, (command, target) in commands.items():
                remove(target)
                if name in results and (result := self.run(command)) is None:
                    del results[name]
                elif name in results and turn > 0:
                    results[name].append(result)
        return results


def remove(path):
    Path(path).unlink(missing_ok=True)


def median(runs, what="seconds"):
    return statistics.median(getattr(run, what) for run in runs)


def parser(description, megapixels, runs):
    options = argparse.ArgumentParser(description=description, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--runs", type=int, default=runs, help=f"the median of so many ({runs})")
    options.add_argument("--megapixels", type=float, default=megapixels, help=f"of the pictures ({megapixels})")
    options.add_argument("rows", nargs="*", metavar="ROW")
    return options


def chosen(rows, names):
    """The rows that were named, all where none was; each row begins with its name."""
    known = [row[0] for row in rows]
    if unknown := sorted(set(names) - set(known)):
        sys.exit(f"bench: no such row: {', '.join(unknown)}; there are {', '.join(known)}")
    return [row for row in rows if not names or row[0] in names]
