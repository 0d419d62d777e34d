"""The Debian packages from end to end: they are made, checked, unpacked into an empty folder, and the folder is moved.
From there the main job runs as a plain user, and hosts of one's own are built against what is there.

CV_BUILD is the build folder, which has everything that is installed; CMAKE and CPACK are the commands.
"""

import json
import os
import pathlib
import pwd
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("CV_BUILD", SOURCES / "build"))
CMAKE, CPACK = os.environ.get("CMAKE", "cmake"), os.environ.get("CPACK", "cpack")
TINY_HOST = SOURCES / "tests" / "packaging" / "tiny_host"
DOCUMENT = SOURCES / "resources" / "samples" / "picture.pdf"
PACKAGES = ("corvane-print", "corvane-print-dev", "corvane-print-doc", "corvane-print-window")
DEADLINE = 300  # seconds


def run(*command, status=0, **others):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=DEADLINE,
                            check=False, **others)
    if status is not None and result.returncode != status:
        raise AssertionError(f"{command[0]} ended with {result.returncode}\n{result.stdout}{result.stderr}")
    return result


def plain_user():
    """What starts a process as a plain user with an environment of its own."""
    user = {}
    if os.geteuid() == 0:
        user = {"user": "nobody", "group": pwd.getpwnam("nobody").pw_gid, "extra_groups": []}
    return {"env": {"PATH": "/usr/bin:/bin", "LANG": "C.UTF-8", "HOME": "/nonexistent"}, "cwd": "/", **user}


def files_below(folder):
    return sorted(path for path in folder.rglob("*") if path.is_file() and not path.is_symlink())


def is_elf(path):
    with path.open("rb") as stream:
        return stream.read(4) == b"\x7fELF"


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="packages-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.folder.chmod(0o755)
        run(CPACK, "--config", BUILD / "CPackConfig.cmake", "-B", cls.folder / "made", cwd=cls.folder)
        cls.packages = {path.name.split("_")[0]: path for path in (cls.folder / "made").glob("*.deb")}
        # Everything as it is installed, then moved; and the first package without the others.
        for name in PACKAGES:
            run("dpkg-deb", "-x", cls.packages[name], cls.folder / "root")
        (cls.folder / "root" / "usr").rename(cls.folder / "moved")
        run("dpkg-deb", "-x", cls.packages["corvane-print"], cls.folder / "alone")
        cls.prefix, cls.alone = cls.folder / "moved", cls.folder / "alone" / "usr"
        cls.work = cls.folder / "work"
        cls.work.mkdir()
        cls.work.chmod(0o777)
        cls.document = pathlib.Path(shutil.copy(DOCUMENT, cls.work))  # where a plain user may read it

    def field(self, package, name):
        return run("dpkg-deb", "-f", self.packages[package], name).stdout.strip()

    # The packages.

    def test_are_these(self):
        self.assertEqual(sorted(self.packages), sorted(PACKAGES))

    def test_lintian_finds_no_error(self):
        result = run("lintian", "--fail-on", "error", "--allow-root", "--tag-display-limit", "0",
                     *self.packages.values(), status=None)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def test_qt_is_asked_for_by_the_window_alone(self):
        for package in ("corvane-print", "corvane-print-dev", "corvane-print-doc"):
            self.assertNotIn("qt", self.field(package, "Depends").lower())
        self.assertIn("libqt6widgets6", self.field("corvane-print-window", "Depends"))
        self.assertIn("libcups2", self.field("corvane-print", "Depends"))

    def test_packages_of_one_version_go_together(self):
        version = self.field("corvane-print", "Version")
        for package in ("corvane-print-window", "corvane-print-dev"):
            self.assertIn(f"corvane-print (= {version})", self.field(package, "Depends"))

    def test_no_file_is_in_two_packages(self):
        seen = {}
        for package in PACKAGES:
            for line in run("dpkg-deb", "-c", self.packages[package]).stdout.splitlines():
                path = line.split()[5]
                if not path.endswith("/"):
                    self.assertIsNone(seen.get(path), path)
                    seen[path] = package
        self.assertEqual(seen["./usr/lib/corvane-print/libcv_print_command.so"], "corvane-print")
        self.assertEqual(seen["./usr/lib/corvane-print/libcv_window.so"], "corvane-print-window")
        self.assertEqual(seen["./usr/lib/corvane-print/libcv_framework.so.0"], "corvane-print")
        self.assertEqual(seen["./usr/share/man/man1/corvane-print.1.gz"], "corvane-print")
        self.assertEqual(seen["./usr/share/applications/com.corvane.print.desktop"], "corvane-print-window")

    def test_no_file_names_the_folder_that_it_was_built_in(self):
        files = files_below(self.prefix)
        self.assertGreater(len(files), 100)
        for path in files:
            data = path.read_bytes()
            for folder in (SOURCES, BUILD):
                self.assertFalse(str(folder).encode() in data, f"{path} names {folder}")  # not all of its bytes

    def test_every_library_is_found_from_its_neighbour(self):
        for path in filter(is_elf, files_below(self.prefix)):
            for line in run("ldd", path).stdout.splitlines():
                self.assertNotIn("not found", line, path)
                if "libcv_" in line:
                    found = pathlib.Path(line.split("=>")[1].split()[0]).resolve()
                    self.assertTrue(found.is_relative_to(self.prefix.resolve()), line)

    # The main job, from the moved folder, as a plain user.

    def session(self, prefix, *commands):
        result = run(prefix / "bin" / "corvane-panel-session", "--strict", **plain_user(),
                     input="".join(json.dumps(command) + "\n" for command in commands))
        return [json.loads(line) for line in result.stdout.splitlines()]

    def test_the_scripted_host_prints_to_a_folder(self):
        for prefix in (self.prefix, self.alone):
            out = self.work / prefix.name
            answers = self.session(
                prefix,
                {"do": "open", "ppd": str(prefix / "share/corvane-print/models/corvane-a3.ppd"), "languages": ["ja"]},
                {"do": "show", "panel": "print"},
                {"do": "choose", "panel": "print", "control": "mediaTypePopup", "choice": "Glossy"},
                {"do": "help", "panel": "print"},
                {"do": "show", "panel": "color"},
                {"do": "preview", "panel": "color"},
                {"do": "print", "file": str(self.document), "to": str(out)})
            self.assertEqual([panel["title"] for panel in answers[0]["panels"]], ["印刷設定", "カラー設定"])
            self.assertTrue(answers[3]["opened"], "the help book")
            self.assertIsNotNone(answers[5]["source"], "a reference picture")
            ticket = json.loads((out / "ticket.json").read_text())
            self.assertEqual(ticket["options"]["CVResolution"], "Photo")
            self.assertEqual((out / ticket["document"]).read_bytes(), DOCUMENT.read_bytes())

    def test_the_print_command_shows_what_it_would_send(self):
        link = self.work / "lp"
        link.symlink_to(self.prefix / "bin" / "corvane-print")
        for program in (self.prefix / "bin" / "corvane-print", link):
            result = run(program, "--dry-run", "--json", "-o", "CVMediaType=Glossy", "--ppd",
                         self.prefix / "share" / "corvane-print" / "models" / "corvane-a3.ppd", **plain_user())
            self.assertEqual(json.loads(result.stdout)["options"]["CVResolution"], "Photo")

    def test_without_the_windows_package_one_line_says_what_to_install(self):
        user = plain_user()
        user["env"]["DISPLAY"] = ":99"
        result = run(self.alone / "bin" / "corvane-print", self.document, status=5, **user)
        self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)
        self.assertIn("install the package corvane-print-window", result.stderr)
        self.assertIn(str(self.alone / "lib" / "corvane-print" / "libcv_window.so"), result.stderr)

    def test_with_the_windows_package_the_module_is_loaded(self):
        user = plain_user()
        user["env"]["QT_QPA_PLATFORM"] = "none-of-this-name"
        result = run(self.prefix / "bin" / "corvane-print", self.document, status=None, **user)
        self.assertIn("none-of-this-name", result.stderr, "the module's own complaint about the platform")

    # Hosts of one's own.

    def assert_shows_both_panels(self, program):
        shown = run(program, **plain_user()).stdout
        self.assertEqual(re.findall(r"^panel: (.*)$", shown, re.M), ["Print Setting", "Color Setting"])
        self.assertIn("mediaTypePopup: Other Glossy Paper", shown)
        self.assertIn("resolutionPopup: Photo", shown)
        self.assertIn("marked: CVResolution=Photo", shown)
        self.assertIn("help: CVInkQuality12.help", shown)

    def test_a_host_is_built_by_cmake_against_an_installation_that_was_moved(self):
        run(CMAKE, "--install", BUILD, "--prefix", self.folder / "own")
        prefix = (self.folder / "own").rename(self.folder / "own moved")
        self.assertFalse((prefix / "share/doc/corvane-print/copyright").exists(), "a package's own file")
        run(CMAKE, "-S", TINY_HOST, "-B", self.folder / "tiny", "-DCMAKE_BUILD_TYPE=Debug",
            f"-DCMAKE_PREFIX_PATH={prefix}")
        run(CMAKE, "--build", self.folder / "tiny")
        self.assert_shows_both_panels(self.folder / "tiny" / "tiny_host")

    def pkg_config(self, *arguments):
        found = run("pkg-config", *arguments, "corvane-panels",
                    env={**os.environ, "PKG_CONFIG_PATH": str(self.prefix / "share" / "pkgconfig")})
        return found.stdout.split()

    def test_a_host_is_built_by_pkg_config_against_the_packages(self):
        program = self.work / "tiny_host"
        bundle, = self.pkg_config("--variable=bundle")
        models, = self.pkg_config("--variable=models")
        run("c++", "-std=c++20", f'-DTINY_HOST_BUNDLE="{bundle}"', f'-DTINY_HOST_PPD="{models}/corvane-a3.ppd"',
            *self.pkg_config("--cflags"), TINY_HOST / "tiny_host.cpp", *self.pkg_config("--libs"), "-o", program)
        self.assert_shows_both_panels(program)

    def test_every_header_is_complete_without_the_sources(self):
        headers = self.prefix / "include" / "corvane-panels"
        names = [str(path.relative_to(headers)) for path in files_below(headers)]
        self.assertGreater(len(names), 40)
        source = self.work / "headers.cpp"
        source.write_text("".join(f"#include <{name}>\n" for name in names))
        run("c++", "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", *self.pkg_config("--cflags"), source)


if __name__ == "__main__":
    unittest.main(argv=[*sys.argv, "-v"])
