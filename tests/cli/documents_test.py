#!/usr/bin/env python3
"""The page of the manual and the completion of shells: whether they know all that --help knows, and work.

Usage: documents_test.py CLI BUILD   (the program, and the build whose folders man and completion they lie in)
"""

import os
import pty
import re
import select
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

UTF8 = os.environ | {"LC_ALL": "C.UTF-8", "TERM": "dumb"}


class Documents(unittest.TestCase):
    def setUp(self):
        self.manual = self.build / "man/lumbrix-cli.1"
        self.bash = self.build / "completion/lumbrix-cli"
        self.zsh = self.build / "completion/_lumbrix-cli"
        self.fish = self.build / "completion/lumbrix-cli.fish"
        self.temporary = tempfile.TemporaryDirectory(prefix="lumbrix-documents-")
        self.folder = Path(self.temporary.name)

    def tearDown(self):
        self.temporary.cleanup()

    def help(self, *words):
        return subprocess.run([self.cli, *words, "--help"], capture_output=True, text=True, check=True).stdout

    def commands(self):
        before_options = self.help().partition("\n\n")[2].partition("\n\n")[0]
        commands = list(dict.fromkeys(re.findall(r"^  ([a-z]+) [A-Z]", before_options, re.MULTILINE)))
        self.assertGreater(len(commands), 10)
        return commands

    def options(self, command):
        """The spellings of its options, a tuple for each."""
        found = re.findall(r"^ +(?:(-[a-zA-Z]), )?(--[a-z-]+)(?: [A-Zx]+)?  ", self.help(command), re.MULTILINE)
        return [tuple(filter(None, spellings)) for spellings in found]

    def test_options_of_a_command_are_seen(self):
        self.assertIn(("-j", "--jobs"), self.options("convert"))
        self.assertIn(("--strict",), self.options("date"))
        self.assertEqual(self.options("icon"), [("--sizes",), ("--strict",), ("--classic",)])

    def test_help_on_everything_has_every_option(self):
        text = self.help()
        for command in self.commands():
            for spellings in self.options(command):
                self.assertRegex(text, rf"\n +{re.escape(', '.join(spellings))} ")

    # ---- the manual ----

    def test_manual_has_every_command_and_option(self):
        text = self.manual.read_text().replace("\\-", "-").replace("\\fR", "").replace("\\fB", "")
        for command in self.commands():
            self.assertIn(f"\n.SS {command}\nlumbrix-cli {command} ", text)
            for spellings in self.options(command):
                self.assertRegex(text, rf"\n\.TP\n{re.escape(', '.join(spellings))}( |\n)")

    def test_manual_has_the_examples_and_exit_statuses(self):
        text = " ".join(self.manual.read_text().replace("\\-", "-").split())
        for example in re.findall(r"^  (lumbrix-cli .*)\n      ", self.help("convert").partition("Examples:")[2], re.MULTILINE):
            self.assertIn(example, text)
        self.assertIn("130 interrupted", text)

    def test_manual_is_formatted_without_a_warning(self):
        result = subprocess.run(["groff", "-man", "-ww", "-Tutf8", "-Kutf8", self.manual], capture_output=True, text=True,
                                env=UTF8)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("lumbrix-cli", result.stdout)

    # ---- bash ----

    def complete(self, *words):
        """What bash would offer for the last word of a call."""
        script = ('source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); compopt() { :; }; _lumbrix_cli; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        result = subprocess.run(["bash", "--norc", "-c", script, "bash", self.bash, "lumbrix-cli", *words],
                                cwd=self.folder, capture_output=True, text=True, env=UTF8)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout.split()

    def test_bash_knows_commands(self):
        for command in self.commands():
            self.assertIn(command, self.complete(""))
            self.assertIn(command, self.complete("help", ""))
        self.assertEqual(self.complete("con"), ["convert"])
        self.assertEqual(self.complete("help", "st"), ["stamp"])

    def test_bash_knows_options(self):
        for command in self.commands():
            offered = self.complete(command, "a.jpg", "-")
            expected = {"-h", "--help"} | {each for spellings in self.options(command) for each in spellings}
            self.assertEqual(set(offered), expected, command)
        self.assertEqual(self.complete("folder", "--rec"), ["--recursive"])
        self.assertEqual(self.complete("convert", "--rec"), [])

    def test_bash_knows_values(self):
        self.assertEqual(self.complete("convert", "--to", "ti"), ["tif", "tiff"])
        self.assertEqual(self.complete("convert", "-t", "p"), ["png"])
        self.assertEqual(self.complete("convert", "--to", "=", "p"), ["png"])
        self.assertIn("png", self.complete("convert", "--to", "="))
        self.assertIn("group4", self.complete("convert", "--compression", ""))
        self.assertEqual(self.complete("convert", "--jobs", "-"), [])

    def test_bash_knows_folders(self):
        (self.folder / "small one").mkdir()
        (self.folder / "smaller.jpg").touch()
        script = ('source "$1"; COMP_WORDS=(lumbrix-cli convert --into sm); COMP_CWORD=3; compopt() { :; }; _lumbrix_cli; '
                  'printf "<%s>" "${COMPREPLY[@]}"')
        result = subprocess.run(["bash", "--norc", "-c", script, "bash", self.bash], cwd=self.folder, capture_output=True,
                                text=True)
        self.assertEqual(result.stdout, "<small one>")

    def type_into_bash(self, line, wanted):
        """What an interactive bash shows when a line is typed."""
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(self.folder)
            os.execvpe("bash", ["bash", "--norc", "--noprofile", "-i"], UTF8 | {"PS1": "$ ", "INPUTRC": "/dev/null"})
        os.write(terminal, f"source {self.bash}; echo rea''dy\n".encode())
        shown = self.read_until(terminal, "\nready\r\n")
        os.write(terminal, line.encode())
        shown = self.read_until(terminal, wanted)
        os.write(terminal, b"\x15exit\n")
        os.close(terminal)
        os.waitpid(process, 0)
        return shown

    def read_until(self, terminal, wanted):
        shown = ""
        end = time.monotonic() + 20
        while wanted not in shown and time.monotonic() < end:
            if select.select([terminal], [], [], 0.2)[0]:
                shown += os.read(terminal, 4096).decode(errors="replace")
        self.assertIn(wanted, shown)
        return shown

    def test_bash_completes_what_is_typed(self):
        (self.folder / "picture.jpg").touch()
        (self.folder / "small").mkdir()
        self.type_into_bash("lumbrix-cli con\t", "lumbrix-cli convert ")
        self.type_into_bash("lumbrix-cli folder --rec\t", "lumbrix-cli folder --recursive ")
        self.type_into_bash("lumbrix-cli convert pic\t", "lumbrix-cli convert picture.jpg ")
        self.type_into_bash("lumbrix-cli convert a --into sm\t", "--into small/")
        self.type_into_bash("lumbrix-cli convert a --to=pn\t", "--to=png ")

    # ---- zsh and fish ----

    def test_zsh_has_every_command_and_option(self):
        text = self.zsh.read_text()
        for command in self.commands():
            self.assertRegex(text, rf"\n +'{command}:")
            block = text.partition(f"\n    {command})\n")[2].partition(";;")[0]
            for spelling in (each for spellings in self.options(command) for each in spellings):
                self.assertRegex(block, rf"\){re.escape(spelling)}[+=]?\[")

    def test_fish_has_every_command_and_option(self):
        text = self.fish.read_text()
        for command in self.commands():
            self.assertIn(f" -a {command} -d ", text)
            lines = [line for line in text.splitlines() if f"__fish_seen_subcommand_from {command}'" in line]
            for spellings in self.options(command):
                name = spellings[-1][2:]
                letter = f" -s {spellings[0][1]}" if len(spellings) > 1 else ""
                self.assertTrue(any(f"'{letter} -l {name} " in line for line in lines), name)

    def test_zsh_reads_it(self):
        subprocess.run(["zsh", "-n", self.zsh], check=True)

    def test_fish_reads_it(self):
        subprocess.run(["fish", "--no-execute", self.fish], check=True)

    def test_fish_completes(self):
        script = f"source {self.fish}; complete -C 'lumbrix-cli con'; complete -C 'lumbrix-cli folder --rec'"
        result = subprocess.run(["fish", "--no-config", "-c", script], capture_output=True, text=True, check=True, cwd=self.folder)
        self.assertIn("convert\tconvert a picture", result.stdout)
        self.assertIn("--recursive\t", result.stdout)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Documents.cli, Documents.build = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
