#!/usr/bin/env python3
"""The page of the manual and the completion of shells: whether they know all that --help knows, and work.

Usage: documents_test.py CLI MAKER BUILD   (the program, what makes the documents, and the build whose folders man and
                                            completion they lie in)
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

    def plain_manual(self):
        """Its text without what sets letters apart; the lines' own requests stay."""
        text = self.manual.read_text()
        for escape, plain in (("\\fB", ""), ("\\fI", ""), ("\\fR", ""), ("\\-", "-"), ("\\&", ""), ("\\e", "\\")):
            text = text.replace(escape, plain)
        return text

    def test_manual_has_every_command_and_option(self):
        text = self.plain_manual()
        for command in self.commands():
            self.assertIn(f"\n.SS {command}\nlumbrix-cli {command} ", text)
            for spellings in self.options(command):
                self.assertRegex(text, rf"\n\.TP\n{re.escape(', '.join(spellings))}( |\n)")

    def test_manual_has_the_examples_and_exit_statuses(self):
        text = " ".join(self.plain_manual().split())
        for example in re.findall(r"^  (lumbrix-cli .*)\n      ", self.help("convert").partition("Examples:")[2], re.MULTILINE):
            self.assertIn(example, text)
        self.assertIn("130 interrupted", text)

    def sentence(self, text):
        return text[0].upper() + text[1:] + ".\n"

    def test_manual_tells_what_the_help_tells(self):
        text = self.plain_manual()
        for command in self.commands():
            usage = self.help(command).removeprefix("Usage:\n").partition("\n\n")[0].splitlines()
            calls = [line[2:].removesuffix(" [OPTIONS]") for line in usage if line.startswith("  lumbrix-cli")]
            told = [self.sentence(line.strip()) for line in usage if not line.startswith("  lumbrix-cli")]
            self.assertIn(f".SS {command}\n" + "\n.br\n".join(calls) + "\n.PP\n" + ".PP\n".join(told), text)
            for entry in re.findall(r"^ +((?:-[a-zA-Z], )?--[a-z-]+(?: [A-Zx]+)?)  +(.*)$", self.help(command), re.MULTILINE):
                self.assertIn(f".TP\n{entry[0]}\n{self.sentence(entry[1])}", text)
            for words, purpose in re.findall(r"^  (lumbrix-cli .*)\n      (.*)$",
                                             self.help(command).partition("Examples:")[2], re.MULTILINE):
                self.assertIn(f".TP\n{words}\n{self.sentence(purpose)}", text)
        notes = text.partition(".SH NOTES\n")[2].partition(".SH")[0]
        self.assertGreater(notes.count("\n.PP\n"), 5)
        for note in notes.removesuffix(".PP\n").split("\n.PP\n"):
            self.assertIn(" ".join(note.split()), " ".join(self.help().split()))

    def test_manual_is_written_like_others(self):
        text = self.manual.read_text()
        version = subprocess.run([self.cli, "--version"], capture_output=True, text=True, check=True).stdout.split()[-1]
        self.assertTrue(text.startswith(f'.TH LUMBRIX-CLI 1 "" "Lumbrix {version}" "User Commands"\n.nh\n.SH NAME\n'))
        self.assertIn("\n.TP\n\\fB\\-t\\fR, \\fB\\-\\-to\\fR \\fIFORMAT\\fR\n"
                      "The format to write (that of each target's extension).\n", text)
        self.assertIn("\n.TP\n\\fB\\-V\\fR, \\fB\\-\\-version\\fR\nPrint the version.\n", text)
        self.assertIn("\nFor convert, thumb, resize, crop, rotate, annotate, stamp, folder.\n", text)
        sections = re.findall(r"^\.SH (.*)$", text, re.MULTILINE)
        self.assertEqual(sections, ["NAME", "SYNOPSIS", "DESCRIPTION", "COMMANDS", "OPTIONS", "EXAMPLES", "NOTES",
                                    "EXIT STATUS", "SEE ALSO"])

    def test_manual_is_formatted_without_a_warning(self):
        result = subprocess.run(["groff", "-man", "-ww", "-Tutf8", "-Kutf8", self.manual], capture_output=True, text=True,
                                env=UTF8)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("lumbrix-cli", result.stdout)

    # ---- bash ----

    def complete(self, *words, compopt=":"):
        """What bash would offer for the last word of a call."""
        script = (f'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); compopt() {{ {compopt}; }}; _lumbrix_cli; '
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

    def test_bash_knows_where_files_are_meant(self):
        def asked(option):
            return self.complete("convert", option, "", compopt='echo "$@"')
        self.assertEqual(asked("--list"), ["-o", "default"])
        self.assertEqual(asked("--jobs"), ["+o", "bashdefault", "+o", "default"])
        self.assertEqual(asked("-o"), ["-o", "filenames"])
        self.assertEqual(asked("--quiet"), [])

    def test_bash_knows_what_stands_without_a_command(self):
        for word in ("help", "-h", "--help", "-V", "--version"):
            self.assertIn(word, self.complete(""))
        self.assertNotIn("help", self.complete("help", ""))

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
        self.type_into(["bash", "--norc", "--noprofile", "-i"], f"source {self.bash}", line, wanted)

    def type_into(self, shell, start, line, wanted):
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(self.folder)
            os.execvpe(shell[0], shell, UTF8 | {"PS1": "$ ", "INPUTRC": "/dev/null"})
        os.write(terminal, f"{start}; echo rea''dy\n".encode())
        self.read_until(terminal, "ready\r\n(.|\r)*\\$ ")
        os.write(terminal, line.encode())
        self.read_until(terminal, re.escape(wanted))
        os.write(terminal, b"\x15exit\n")
        os.close(terminal)
        os.waitpid(process, 0)

    def read_until(self, terminal, pattern):
        shown = ""
        end = time.monotonic() + 20
        while not re.search(pattern, shown) and time.monotonic() < end:
            if select.select([terminal], [], [], 0.2)[0]:
                shown += os.read(terminal, 4096).decode(errors="replace").replace("\a", "")
        self.assertRegex(shown, pattern)

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

    def test_zsh_is_told_what_each_option_takes(self):
        block = self.zsh.read_text().partition("\n    convert)\n")[2].partition(";;")[0]
        indent = " " * 12
        into = "[write one file for each SOURCE into FOLDER, which is made where it is missing]:FOLDER:_files -/' \\\n"
        to = "[the format to write (that of each target'\\''s extension)]:FORMAT:(bmp jpg jpeg gif tif tiff png)' \\\n"
        self.assertTrue(block.startswith("        _arguments -s -S \\\n" + indent + "'(-h --help)-h[print the help on the "
                                         "command]' \\\n" + indent + "'(-h --help)--help["))
        self.assertIn(f"{indent}'(-o --into)-o+{into}{indent}'(-o --into)--into={into}", block)
        self.assertIn(f"{indent}'(-t --to)-t+{to}{indent}'(-t --to)--to={to}", block)
        self.assertIn(f"{indent}'(--list)--list=[read names of sources from FILE, one a line, from the standard input where "
                      "it is -]:FILE:_files' \\\n", block)
        self.assertIn("'(--quality)--quality=[of JPEG, from 1 (small) to 100 (good) (75)]:N:' \\\n", block)
        self.assertIn(f"{indent}'(-q --quiet)-q[print errors only]' \\\n{indent}'(-q --quiet)--quiet[print errors only]' \\\n",
                      block)
        self.assertTrue(block.endswith("            '*:file:_files'\n        "))
        self.assertIn("\n        'rotate:turn clockwise by 0, 90, 180 or 270 degrees, then flip\\: h (left to right), v, hv or "
                      "vh'\n", self.zsh.read_text())

    def test_zsh_completes_what_is_typed(self):
        (self.folder / "small").mkdir()

        def type_into_zsh(line, wanted):
            self.type_into(["zsh", "-f", "-i"], f"fpath=({self.zsh.parent} $fpath); autoload -U compinit; compinit -u -D",
                           line, wanted)
        type_into_zsh("lumbrix-cli con\t", "convert ")
        type_into_zsh("lumbrix-cli folder --rec\t", "recursive ")
        type_into_zsh("lumbrix-cli convert a --into sm\t", "small/")
        type_into_zsh("lumbrix-cli convert a --to pn\t", "png ")
        type_into_zsh("lumbrix-cli help sta\t", "stamp ")

    def test_fish_reads_it(self):
        subprocess.run(["fish", "--no-execute", self.fish], check=True)

    def complete_in_fish(self, line):
        script = f"source {self.fish}; complete -C '{line}'"
        result = subprocess.run(["fish", "--no-config", "-c", script], capture_output=True, text=True, check=True, cwd=self.folder)
        return result.stdout.splitlines()

    def test_fish_completes(self):
        (self.folder / "pn.jpg").touch()
        (self.folder / "pn").mkdir()
        self.assertEqual(self.complete_in_fish("lumbrix-cli con"), ["convert\tconvert a picture"])
        self.assertEqual(self.complete_in_fish("lumbrix-cli hel"), ["help\tprint the help"])
        self.assertEqual(self.complete_in_fish("lumbrix-cli --v"), ["--version\tprint the version"])
        self.assertEqual(self.complete_in_fish("lumbrix-cli convert --he"), ["--help\tprint the help"])
        self.assertEqual(self.complete_in_fish("lumbrix-cli folder --rec"), 
                         ["--recursive\tsearch the subfolders too, and keep their layout"])
        self.assertEqual(self.complete_in_fish("lumbrix-cli convert --rec"), [])
        self.assertEqual(self.complete_in_fish("lumbrix-cli convert --to pn"),
                         ["png\tthe format to write (that of each target's extension)"])
        self.assertEqual([line.split("\t")[0] for line in self.complete_in_fish("lumbrix-cli convert --into pn")], ["pn/"])
        self.assertEqual([line.split("\t")[0] for line in self.complete_in_fish("lumbrix-cli convert -o pn")], ["pn/"])
        self.assertEqual([line.split("\t")[0] for line in self.complete_in_fish("lumbrix-cli convert --list pn")], ["pn.jpg", "pn/"])
        self.assertEqual(self.complete_in_fish("lumbrix-cli convert --jobs pn"), [])

    # ---- what makes them ----

    def make(self, *words):
        return subprocess.run([self.maker, *words], capture_output=True, text=True)

    def test_maker_writes_all_of_them(self):
        self.assertEqual(self.make(self.folder / "new").returncode, 0)
        for file in (self.manual, self.bash, self.zsh, self.fish):
            self.assertEqual((self.folder / "new" / file.relative_to(self.build)).read_bytes(), file.read_bytes())

    def test_maker_wants_one_folder(self):
        for words in ((), (self.folder, self.folder)):
            result = self.make(*words)
            self.assertEqual((result.returncode, result.stderr), (2, "usage: lumbrix-documents FOLDER\n"))

    def test_maker_tells_what_it_cannot_write(self):
        fish = self.folder / "completion/lumbrix-cli.fish"
        fish.parent.mkdir()
        fish.symlink_to("/dev/full")
        result = self.make(self.folder)
        self.assertEqual((result.returncode, result.stderr), (1, f"cannot write {fish}\n"))


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    Documents.cli, Documents.maker, Documents.build = sys.argv[1], sys.argv[2], Path(sys.argv[3])
    unittest.main(argv=sys.argv[:1])
