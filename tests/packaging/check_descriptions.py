"""What shells and desktops are told of the programs: manual pages, completions, the desktop's entry and its icon. The
checkers are those of their formats; the options are held against the programs' own help.
"""

import itertools
import os
import pathlib
import re
import struct
import subprocess
import sys
import unittest
import xml.etree.ElementTree

SOURCES = pathlib.Path(__file__).resolve().parents[2]
PROGRAMS = pathlib.Path(os.environ.get("CV_PROGRAMS", SOURCES / "build" / "bin"))
NAMES = ("corvane-print", "corvane-panel-session")
PACKAGING = SOURCES / "packaging"
DESKTOP = PACKAGING / "desktop"
LANG = "{http://www.w3.org/XML/1998/namespace}lang"
TOLD = ("name", "summary", "p", "li", "keyword")   # what a component says in words
OPTION = re.compile(r"(?<![\w-])(--[a-z][a-z-]+|-[A-Za-z])(?![\w-])")


def run(*command, **others):
    return subprocess.run(command, capture_output=True, text=True, timeout=120, check=False, **others)


def help_of(program):
    return run(PROGRAMS / program, "--help").stdout


def manual(program):
    return (SOURCES / "docs" / "man" / (program + ".1")).read_text()


def plain_manual(program):
    """The page as it is shown, without line breaks that the width made."""
    shown = run("man", "--local-file", str(SOURCES / "docs" / "man" / (program + ".1")),
                env={**os.environ, "MANWIDTH": "1000", "MAN_KEEP_FORMATTING": "", "LC_ALL": "C.UTF-8"}).stdout
    return shown.replace("\u2010", "-").replace("\u2212", "-")


def described_options(program):
    """Those that begin an entry of the manual page's section OPTIONS."""
    section = re.search(r"^OPTIONS$(.*?)^\S", plain_manual(program), re.M | re.S).group(1)
    options = set()
    for entry in re.findall(r"^ {7}(-.*)$", section, re.M):
        options |= set(OPTION.findall(re.split(r" {2,}", entry)[0]))
    return options


class Checkers(unittest.TestCase):
    def assert_content(self, *command, **others):
        result = run(*command, **others)
        self.assertEqual((result.returncode, result.stdout + result.stderr), (0, ""), command)

    def test_the_desktops_entry(self):
        self.assert_content("desktop-file-validate", str(DESKTOP / "com.corvane.print.desktop"))

    def test_the_components_description(self):
        result = run("appstreamcli", "validate", "--no-net", "--no-color", str(DESKTOP / "com.corvane.print.metainfo.xml"))
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_manual_pages(self):
        for program in NAMES:
            page = str(SOURCES / "docs" / "man" / (program + ".1"))
            result = run("man", "--warnings", "--encoding=UTF-8", "--local-file", "-Tutf8", "-Z", page,
                         env={**os.environ, "LC_ALL": "C.UTF-8", "MANROFFSEQ": ""})
            self.assertEqual((result.returncode, result.stderr), (0, ""), page)
            self.assertIn(program + " - ", run("lexgrog", page).stdout)

    def test_completions(self):
        for program in NAMES:
            self.assert_content("bash", "-n", f"{PACKAGING}/completions/{program}.bash")
            self.assert_content("zsh", "-n", f"{PACKAGING}/completions/_{program}")
            self.assert_content("fish", "--no-execute", f"{PACKAGING}/completions/{program}.fish")


class OneList(unittest.TestCase):
    """Every list of options is the program's own."""

    def test_help_tells_options(self):
        self.assertGreater(len(OPTION.findall(help_of("corvane-print"))), 20)
        self.assertEqual(set(OPTION.findall(help_of("corvane-panel-session"))),
                         {"--strict", "--bundle", "--help", "--version"})

    def test_manual_pages_describe_every_option_and_no_other(self):
        for program in NAMES:
            with self.subTest(program):
                self.assertEqual(described_options(program), set(OPTION.findall(help_of(program))))

    def test_bash_completes_every_option_and_no_other(self):
        for program in NAMES:
            with self.subTest(program):
                script = (f'source {PACKAGING}/completions/{program}.bash; COMP_WORDS=({program} -); COMP_CWORD=1; '
                          f'_{program.replace("-", "_")}; printf "%s\\n" "${{COMPREPLY[@]}}"')
                offered = run("bash", "-c", script)
                self.assertEqual(set(offered.stdout.split()), set(OPTION.findall(help_of(program))), offered.stderr)

    def test_zsh_and_fish_complete_every_option_and_no_other(self):
        for program in NAMES:
            with self.subTest(program):
                zsh = re.findall(r"^  '(?:\([^)]*\))?\*?(--?[A-Za-z-]+)\[", (PACKAGING / "completions" / f"_{program}").read_text(), re.M)
                self.assertEqual(set(zsh), set(OPTION.findall(help_of(program))))
                offered = run("fish", "--no-config", "-c",
                              f"source {PACKAGING}/completions/{program}.fish; complete -C '{program} -'; complete -C '{program} --'",
                              env={**os.environ, "HOME": "/nonexistent"}).stdout
                fish = {line.split("\t")[0] for line in offered.splitlines()}
                self.assertEqual(fish, set(OPTION.findall(help_of(program))))

    def test_the_manual_page_tells_every_exit_status(self):
        section = re.search(r"^EXIT STATUS$(.*?)^\S", plain_manual("corvane-print"), re.M | re.S).group(1)
        told = re.findall(r"^ {7}(\d)\s", section, re.M)
        self.assertEqual(told, re.findall(r"(?:: |, |\n)(\d) ", help_of("corvane-print").split("Exit status")[1]))

    def test_the_manual_page_names_every_command_of_the_scripted_host(self):
        source = (SOURCES / "host" / "script" / "script_host.cpp").read_text()
        commands = re.findall(r'^    \{"(\w+)", &ScriptHost::', source, re.M)
        self.assertGreater(len(commands), 25)
        section = manual("corvane-panel-session").split(".SH COMMANDS")[1].split(".PP")[0]
        named = re.findall(r"^\.BR? ([a-z]\w*)(?: ,)?$", section, re.M)
        self.assertEqual(sorted(named), sorted(commands))


class OneVersion(unittest.TestCase):
    def test_every_description_is_of_the_programs_version(self):
        version = run(PROGRAMS / "corvane-print", "--version").stdout.split()[-1]
        for program in NAMES:
            self.assertIn(f'"corvane-print {version}"', manual(program).splitlines()[0])
        self.assertTrue((PACKAGING / "debian" / "changelog").read_text().startswith(f"corvane-print ({version}-"))
        release = xml.etree.ElementTree.parse(DESKTOP / "com.corvane.print.metainfo.xml").find("releases/release")
        self.assertEqual(release.get("version"), version)


class Languages(unittest.TestCase):
    """Desktops and shops of programs are told in every language that the panels speak."""

    LANGUAGES = sorted(path.stem for path in (SOURCES / "resources" / "texts").glob("*.po") if path.stem != "en")

    def assert_translated(self, what, english, texts):
        """texts: language and text, in the order of the file."""
        self.assertEqual(sorted(language for language, _ in texts), self.LANGUAGES, what)
        for language, text in texts:
            self.assertTrue(text.strip(), f"{what}, {language}")
            self.assertNotEqual(text, english, f"{what}, {language}")

    def test_the_desktops_entry_speaks_every_language(self):
        lines = (DESKTOP / "com.corvane.print.desktop").read_text(encoding="utf-8").splitlines()
        for key in ("Name", "GenericName", "Comment", "Keywords"):
            with self.subTest(key):
                english = [line.partition("=")[2] for line in lines if line.startswith(key + "=")]
                self.assertEqual(len(english), 1)
                pattern = re.compile(rf"{key}\[(\w+)\]=(.*)")
                self.assert_translated(key, english[0], [match.groups() for match in map(pattern.fullmatch, lines) if match])

    def test_the_components_description_speaks_every_language(self):
        root = xml.etree.ElementTree.parse(DESKTOP / "com.corvane.print.metainfo.xml").getroot()
        told = set()
        for parent in root.iter():
            texts = [child for child in parent if child.tag in TOLD]
            for index, child in enumerate(texts):
                if child.get(LANG) is not None:
                    continue
                told.add(child.tag)
                after = list(itertools.takewhile(lambda other: other.get(LANG) is not None, texts[index + 1:]))
                with self.subTest(child.tag, text=child.text.strip()):
                    self.assertEqual({other.tag for other in after}, {child.tag})
                    self.assert_translated(child.tag, child.text.strip(),
                                           [(other.get(LANG), (other.text or "").strip()) for other in after])
        self.assertEqual(told, set(TOLD))


class Icon(unittest.TestCase):
    def test_is_square_and_drawn_in_both_sizes(self):
        root = xml.etree.ElementTree.parse(DESKTOP / "com.corvane.print.svg").getroot()
        self.assertEqual(root.get("viewBox"), "0 0 128 128")
        for size in (48, 128):
            data = (DESKTOP / f"com.corvane.print-{size}.png").read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual(struct.unpack(">II", data[16:24]), (size, size))


if __name__ == "__main__":
    unittest.main(argv=[*sys.argv, "-v"])
