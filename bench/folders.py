"""Many small pictures made small: what each tool is told to do for all of them."""

import shlex
import shutil
from pathlib import Path

from tools import Work, ours_warm, sharp

HEIGHT = 200


def make(bench, count):
    """A folder with so many copies of a photograph."""
    folder = bench.folder / f"{count}-pictures"
    folder.mkdir(exist_ok=True)
    for number in range(count):
        copy = folder / f"{number:03}.jpg"
        if not copy.exists():
            shutil.copy(bench.picture("photograph.jpg"), copy)
    return folder


def empty(folder):
    shutil.rmtree(folder, ignore_errors=True)
    Path(folder).mkdir()


def shared_out(source, batch, command):
    """`command` on two processors, so many pictures for each process of it; it gets their names behind it, and works in
    their folder, for gm adds all that they have of folders to that of its targets."""
    text = f"cd {shlex.quote(str(source))} && printf '%s\\0' *.jpg | xargs -0 -P2 -n{batch} {command}"
    return ["bash", "-c", text]


def commands_of(bench, source, targets, batch):
    """What to run, by tool; `targets` are the folders to write to. Peers get a process for every `batch` pictures."""
    each = {
        "vips": f"sh -c 'vipsthumbnail \"$@\" --size x{HEIGHT} -o {shlex.quote(targets['vips'])}/%s.jpg' -",
        "gm": f"gm mogrify -resize x{HEIGHT} -output-directory {shlex.quote(targets['gm'])}",
    }
    work = Work("height", HEIGHT)
    return {
        **{tool: shared_out(source, batch, each[tool]) for tool in each},
        "ours": [bench.lumbrix, "folder", source, targets["ours"], "jpg", HEIGHT, "--jobs", 2],
        "sharp": sharp(bench, work, source, targets["sharp"]),
        "ours (warm)": ours_warm(bench, work, source, targets["ours (warm)"]),
    }
