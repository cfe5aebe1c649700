#!/usr/bin/env python3
"""Hands a header to doxygen with its plain comments in the form that doxygen reads.

Usage: comments.py HEADER

The comment before a declaration becomes its documentation, one behind a member or a value that of the member or value.
Procedures that follow each other without a line between them share the comment of the first. A procedure without any
ends this with an error.
"""

import re
import sys

NAME = re.compile(r"LUMBRIX_CALL\s+(\w+)\(")


def of_declarations(text):
    """Comments that begin in the first column, but for the separators; the first is the file's."""
    text = re.sub(r"\A/\* ", "/** \\\\file\n   ", text)
    return re.sub(r"^/\* (?!----)", "/** ", text, flags=re.MULTILINE)


def of_members(text):
    return re.sub(r"([,;{]|= -?\d+) +/\* (?!To be|What came)", r"\1 /**< ", text)


def shared(text):
    lines = []
    first = None
    for line in text.split("\n"):
        if line.startswith("LUMBRIX_EXPORT"):
            name = NAME.search(line)[1]
            if not lines[-1].endswith("*/"):
                if first is None:
                    sys.exit(f"{name} has no comment")
                lines.append(f"/** See {first}. */")
            else:
                first = name
        elif not line.strip():
            first = None
        lines.append(line)
    return "\n".join(lines)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], encoding="utf-8") as header:
        sys.stdout.write(shared(of_members(of_declarations(header.read()))))
