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
        self.modules = FOLDER
        self.library = Path(programs) / "library_bench"
        self.bare = Path(programs) / "limit_bench"
        self.lumbrix = Path(lumbrix)
        self._measured = Path(programs) / "measured"
        self._pictures = Path(programs) / "bench_pictures"
        self.require(self.bare, self.lumbrix, self._measured, self._pictures)

    def require(self, *programs):
        """Ends the program unless all of these are built."""
        if missing := [path.name for path in programs if not path.exists()]:
            sys.exit(f"bench: not built: {', '.join(missing)}; ninja -C out/build/linux {' '.join(missing)}")

    def picture(self, name):
        """The path of a picture by its name, such as "screenshot.bmp", which is made where it is not there. JPEG has
        quality 88, TIFF no compression. "palette" is the screenshot with a palette of 256 colours."""
        path = self.folder / name
        if not path.exists():
            unfinished = self.folder / f"unfinished-{name}"
            if path.stem == "palette":
                source = self.picture("screenshot.bmp" if name == "palette.gif" else "palette.gif")
                subprocess.run([self.lumbrix, "convert", source, unfinished], check=True)
            else:
                subprocess.run([self.bare, self._plain(path.stem), unfinished, "quality=88", "plain"], check=True)
            unfinished.rename(path)
        return str(path)

    def _plain(self, kind):
        path = self.folder / f"{kind}.ppm"
        if not path.exists():
            unfinished = self.folder / f"unfinished-{kind}.ppm"
            subprocess.run([self._pictures, kind, str(self.megapixels), unfinished], check=True)
            unfinished.rename(path)
        return path

    def run(self, command):
        """One run of a command, None where it failed."""
        line = subprocess.run([self._measured, *map(str, command)], capture_output=True, text=True, check=True).stdout
        seconds, processor, kibibytes, status = line.split()
        return Run(float(seconds), float(processor), int(kibibytes) / 1024) if status == "0" else None


class Command:
    """A command that is started anew for each run; `prepare` is called before, and not measured."""

    def __init__(self, bench, command, prepare):
        self._bench, self._command, self._prepare = bench, command, prepare

    def run(self):
        self._prepare()
        return self._bench.run(self._command)

    def close(self):
        pass


class Warm:
    """A process that does its work once for every line that it is sent, and answers with the seconds that it took."""

    def __init__(self, command, prepare):
        self._prepare = prepare
        self._process = subprocess.Popen([str(part) for part in command], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                         stderr=subprocess.DEVNULL, text=True)

    def run(self):
        self._prepare()
        try:
            self._process.stdin.write("\n")
            self._process.stdin.flush()
        except BrokenPipeError:
            return None
        line = self._process.stdout.readline()
        return Run(float(line), None, None) if line else None

    def close(self):
        self._process.communicate()


def take_turns(runners, runs):
    """Lets all run in turns: a dictionary of name and runner becomes one of name and list of runs. The first turn warms
    up. One that fails is left out."""
    results = {name: [] for name in runners}
    for turn in range(runs + 1):
        for name in list(results):
            result = runners[name].run()
            if result is None:
                del results[name]
            elif turn > 0:
                results[name].append(result)
    for runner in runners.values():
        runner.close()
    return results


def remove(path):
    Path(path).unlink(missing_ok=True)


def median(runs, what="seconds"):
    return statistics.median(getattr(run, what) for run in runs)


def parser(description, runs):
    options = argparse.ArgumentParser(description=description, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--runs", type=int, default=runs, help=f"the median of so many ({runs})")
    options.add_argument("rows", nargs="*", metavar="ROW")
    return options


def chosen(rows, names):
    """The rows that were named, all where none was; each row begins with its name."""
    known = [row[0] for row in rows]
    if unknown := sorted(set(names) - set(known)):
        sys.exit(f"bench: no such row: {', '.join(unknown)}; there are {', '.join(known)}")
    return [row for row in rows if not names or row[0] in names]
