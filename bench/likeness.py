"""How like two pictures are."""

import re
import subprocess


def decibels(one, other):
    """Signal to noise over all channels as text, "inf" for the same picture; None where they cannot be compared, for
    one is no picture or they are of different sizes. Needs gm."""
    told = subprocess.run(["gm", "compare", "-metric", "PSNR", one, other], capture_output=True, text=True)
    found = re.search(r"Total:\s*(\S+)", told.stdout)
    return found[1] if found and told.returncode == 0 else None
