"""What the tools that are compared are told to do for each kind of work."""

import shutil
from pathlib import Path
from typing import NamedTuple

COMMANDS = ("vips", "gm", "ours")  # each run is a process of its own
WARM = ("sharp", "ours (warm)")  # one process does all runs

# What a tool cannot do at all: the extensions of its targets.
CANNOT = {"vips": {".gif", ".bmp"}, "gm": set(), "sharp": {".bmp"}}


class Work(NamedTuple):
    verb: str  # convert, height, thumb or rotate (by 90 degrees clockwise)
    number: int = 0  # of pixels for height and thumb

    def __str__(self):
        return f"{self.verb}={self.number}" if self.number else self.verb


def vips(bench, work, source, target):
    if work.verb in ("height", "thumb"):
        return ["vipsthumbnail", source, "--size", f"x{work.number}", "-o", target]
    if work.verb == "rotate":
        return ["vips", "rot", source, target, "d90"]
    return ["vips", "copy", source, target + ("[compression=lzw]" if target.endswith(".tif") else "")]


def gm(bench, work, source, target):
    option = {"rotate": ["-rotate", "90"], "convert": []}.get(work.verb, ["-resize", f"x{work.number}"])
    compression = ["-compress", "LZW"] if target.endswith(".tif") else []
    return ["gm", "convert", source, *option, *compression, target]


def ours(bench, work, source, target):
    arguments = {"convert": ["convert", source, target],
                 "height": ["resize", source, target, work.number],
                 "thumb": ["thumb", source, work.number, target],
                 "rotate": ["rotate", source, target, 90]}
    return [bench.lumbrix, *arguments[work.verb]]


def sharp(bench, work, source, target):
    return ["node", Path(__file__).parent / "sharp.mjs", bench.modules, work, source, target]


def ours_warm(bench, work, source, target):
    return [bench.library, work, source, target]


COMMAND_OF = {"vips": vips, "gm": gm, "ours": ours, "sharp": sharp, "ours (warm)": ours_warm}


def is_there(bench, tool):
    """Whether a tool is installed."""
    if tool == "sharp":
        return shutil.which("node") is not None and (bench.modules / "node_modules/sharp").exists()
    return tool.startswith("ours") or shutil.which(tool) is not None


def able(bench, tools, target):
    """Those of the tools that are installed and can write such a target."""
    return [tool for tool in tools if is_there(bench, tool) and Path(target).suffix not in CANNOT.get(tool, ())]
