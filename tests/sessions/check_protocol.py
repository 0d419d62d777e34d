"""Checks how the scripted host takes lines: good ones, bad ones, and what it says of the world outside."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from run_session import Mismatch, compare
from session_program import DEADLINE, PROGRAM, SOURCES, SessionProgram

A3 = "resources/models/corvane-a3.ppd"
DOCUMENT = "resources/samples/picture.pdf"
BUNDLE = pathlib.Path(PROGRAM).parent.parent / "PlugIns" / "CVInkQuality12.plugin"
OTHER_VERSION = os.environ.get("CV_OTHER_VERSION_BUNDLE", "")  # a bundle of another interface version

NOT_COMMANDS = (
    b"not JSON", b"{", b'{"do":"host"', b'{"do":"host"}}', b"[]", b"42", b"null", b'"host"', b"{}", b'{"do":5}',
    b'{"do":null}', b'{"do":"dance"}', b'{"do":"Host"}', b'{"do":""}', b"\xff\xfe", b'{"do":"\xe9"}',
    b'{"do":"host"}\x00', b"// host", b"{'do':'host'}", b"[" * 100000,
)

# Each with the word that its error must hold. The print panel is shown, the colour panel's view is not made.
BAD_COMMANDS = (
    ({"do": "host", "colour": 1}, "colour"),
    ({"do": "host", "session": 5}, "session"),
    ({"do": "host", "session": "nobody"}, "nobody"),
    ({"do": "show", "panel": "print", "session": "Main"}, "Main"),
    ({"do": "show"}, "panel"),
    ({"do": "show", "panel": 5}, "panel"),
    ({"do": "show", "panel": "paper"}, "paper"),
    ({"do": "show", "panel": "plugin"}, "plugin"),
    ({"do": "choose", "panel": "print", "control": "mediaTypePopup"}, "choice"),
    ({"do": "choose", "panel": "print", "control": "noSuchPopup", "choice": "Plain"}, "noSuchPopup"),
    ({"do": "choose", "panel": "print", "control": "mediaTypePopup", "choice": "plain"}, "plain"),
    ({"do": "choose", "panel": "print", "control": "mediaTypePopup", "choice": "Plain Paper"}, "Plain Paper"),
    ({"do": "choose", "panel": "print", "control": "mediaTypePopup", "choice": "PlainDuplex"}, "PlainDuplex"),
    ({"do": "choose", "panel": "print", "control": "advancedTableView", "choice": "Nowhere"}, "Nowhere"),
    ({"do": "choose", "panel": "print", "control": "mediaTypeLabel", "choice": "Plain"}, "mediaTypeLabel"),
    ({"do": "choose", "panel": "print", "control": "mirrorButton", "choice": "ON"}, "mirrorButton"),
    ({"do": "choose", "panel": "color", "control": "ditherPopup", "choice": "Dither"}, "view"),
    ({"do": "check", "panel": "print", "control": "mirrorButton"}, "on"),
    ({"do": "check", "panel": "print", "control": "mirrorButton", "on": 1}, "on"),
    ({"do": "check", "panel": "print", "control": "mediaTypePopup", "on": True}, "mediaTypePopup"),
    ({"do": "check", "panel": "print", "control": "vertLineAlignQT22Button", "on": True}, "hidden"),
    ({"do": "press", "panel": "print", "control": "mirrorButton"}, "mirrorButton"),
    ({"do": "press", "panel": "print", "control": "nowhere"}, "nowhere"),
    ({"do": "press", "panel": "print", "control": "envAlertOKButton"}, "envAlertOKButton"),
    ({"do": "adjust", "panel": "print", "control": "mediaTypePopup", "value": 1}, "mediaTypePopup"),
    ({"do": "adjust", "panel": "color", "control": "brightnessField", "value": "1"}, "value"),
    ({"do": "mark", "option": "CVNoSuch", "choice": "ON"}, "CVNoSuch"),
    ({"do": "mark", "option": "cvmediatype", "choice": "Plain"}, "cvmediatype"),
    ({"do": "mark", "option": "CVMediaType", "choice": "plain"}, "plain"),
    ({"do": "mark", "option": "CVMediaType", "choice": None}, "choice"),
    ({"do": "mark", "option": "PageSize", "choice": "A5"}, "paper"),
    ({"do": "paper"}, "paper"),
    ({"do": "paper", "paper": "A4"}, "paper"),
    ({"do": "paper", "paper": {"name": 5}}, "name"),
    ({"do": "paper", "paper": {"nome": "A4"}}, "nome"),
    ({"do": "paper", "paper": {"name": "A5"}, "mapped": 5}, "mapped"),
    ({"do": "setting", "key": "a"}, "value"),
    ({"do": "setting", "key": "a", "value": [1]}, "setting"),
    ({"do": "setting", "key": "a", "value": {}}, "setting"),
    ({"do": "settings", "value": []}, "value"),
    ({"do": "settings", "value": {"a": [1]}}, "a"),
    ({"do": "refuse", "options": {"CVMediaType": "Plain"}}, "CVMediaType"),
    ({"do": "refuse", "options": {"CVMediaType": False}}, "CVMediaType"),
    ({"do": "refuse", "options": {"CVMediaType": [5]}}, "CVMediaType"),
    ({"do": "raise", "options": {"CVMediaType": "loudly"}}, "CVMediaType"),
    ({"do": "raise", "options": []}, "options"),
    ({"do": "answers", "alerts": [5]}, "button"),
    ({"do": "answers", "alerts": [{"button": []}]}, "button"),
    ({"do": "answers", "alerts": [{"button": 1.5}]}, "button"),
    ({"do": "answers", "alerts": [{"suppress": "yes"}]}, "suppress"),
    ({"do": "answers", "alerts": [{"bottun": 0}]}, "bottun"),
    ({"do": "window"}, "height"),
    ({"do": "window", "height": "800"}, "height"),
    ({"do": "notify"}, "name"),
    ({"do": "notify", "name": "A", "info": 5}, "info"),
    ({"do": "notify", "name": "A", "from": "nobody"}, "from"),
    ({"do": "notify", "name": "A", "from": {"menu": [5]}}, "from"),
    ({"do": "print", "copies": 0}, "copies"),
    ({"do": "print", "copies": 1.5}, "copies"),
    ({"do": "print", "copies": 10000}, "copies"),
    ({"do": "print", "to": 5}, "to"),
    ({"do": "print", "to": {"server": "x"}}, "queue"),
    ({"do": "print", "to": {"server": "x", "queue": "y", "z": 1}}, "z"),
    ({"do": "print", "file": "no/such/file.pdf"}, "no/such/file.pdf"),
    ({"do": "print", "file": "resources"}, "resources"),
    ({"do": "preview", "panel": "print"}, "preview"),
    ({"do": "preview", "panel": "color", "file": "/no/such/folder/x.png"}, "/no/such/folder/x.png"),
    ({"do": "send", "panel": "print", "message": "dance"}, "dance"),
    ({"do": "send", "panel": "print", "message": "allowedQuality:", "arguments": ["Plain", "Plain"]},
     "allowedQuality:"),
    ({"do": "send", "panel": "print", "message": "determineKey:", "arguments": ["CVMediaType"]}, "determineKey:"),
    ({"do": "send", "panel": "print", "message": "determineKey:", "arguments": [{"control": "none"}]}, "none"),
    ({"do": "send", "panel": "color", "message": "printSettingsNotified:", "arguments": [5]},
     "printSettingsNotified:"),
    ({"do": "send", "panel": "plugin", "message": "dance"}, "dance"),
    ({"do": "send", "panel": "color", "message": "applyColorMatrixFilter:code:",
      "arguments": [{"picture": "other"}, 0]}, "refImage"),
    ({"do": "ask", "text": 5, "message": "isKindOfPlainPaper"}, "text"),
    ({"do": "ask", "text": "Plain", "message": "isPlain"}, "isPlain"),
    ({"do": "transform", "name": "NoSuch", "value": 1}, "NoSuch"),
    ({"do": "put", "panel": "print"}, "put"),
    ({"do": "put", "panel": "print", "field": "ppd", "value": 1}, "ppd"),
    ({"do": "put", "panel": "print", "field": "imageModeFlag", "value": "1"}, "imageModeFlag"),
    ({"do": "put", "panel": "print", "field": "imageModeFlag", "value": -1}, "imageModeFlag"),
    ({"do": "put", "panel": "print", "field": "imageModeFlag", "value": 4294967296}, "imageModeFlag"),
    ({"do": "put", "panel": "print", "field": "outputBin", "value": "Plain"}, "key"),
    ({"do": "put", "panel": "print", "field": "paperName", "key": "x", "value": "A4"}, "paperName"),
    ({"do": "put", "panel": "print", "field": "paperName", "value": 5}, "paperName"),
    ({"do": "put", "panel": "color", "field": "effectContent", "key": "CVRed", "value": 5}, "effectContent"),
    ({"do": "put", "panel": "print", "control": "mediaTypePopup", "choice": "None such"}, "mediaTypePopup"),
    ({"do": "put", "panel": "print", "control": "mediaTypePopup", "choice": "Glossy", "state": 1}, "mediaTypePopup"),
    ({"do": "put", "panel": "print", "control": "mirrorButton", "state": 2}, "state"),
    ({"do": "put", "panel": "print", "control": "mirrorButton", "number": 2}, "mirrorButton"),
    ({"do": "open"}, "ppd"),
    ({"do": "open", "ppd": A3, "ppdText": "x"}, "ppd"),
    ({"do": "open", "ppd": 5}, "ppd"),
    ({"do": "open", "ppd": "no/such.ppd"}, "no/such.ppd"),
    ({"do": "open", "ppd": "resources/models"}, "resources/models"),
    ({"do": "open", "ppd": "/dev/null"}, "/dev/null"),
    ({"do": "open", "ppdText": ""}, "PPD"),
    ({"do": "open", "ppdText": "a picture"}, "PPD"),
    ({"do": "open", "ppdText": '*PPD-Adobe: "4.3"\n*NickName: "a quote that never ends'}, "PPD"),
    ({"do": "open", "ppd": A3, "mark": {"CVNoSuch": "ON"}}, "CVNoSuch"),
    ({"do": "open", "ppd": A3, "mark": {"CVMediaType": "Cardboard"}}, "Cardboard"),
    ({"do": "open", "ppd": A3, "mark": {"CVMediaType": 5}}, "mark"),
    ({"do": "open", "ppd": A3, "settings": {"a": []}}, "a"),
    ({"do": "open", "ppd": A3, "paper": {"name": "A4", "breadth": 5}}, "breadth"),
    ({"do": "open", "ppd": A3, "languages": "en"}, "languages"),
    ({"do": "open", "ppd": A3, "languages": [5]}, "languages"),
    ({"do": "open", "ppd": A3, "localize": "no"}, "localize"),
    ({"do": "open", "ppd": A3, "strings": {"Model": 5}}, "strings"),
    ({"do": "open", "ppd": A3, "defaults": 5}, "defaults"),
    ({"do": "open", "ppd": A3, "defaults": "everybody"}, "defaults"),
    ({"do": "open", "ppd": A3, "window": "wide"}, "window"),
    ({"do": "open", "ppd": A3, "lacks": [5]}, "lacks"),
    ({"do": "open", "ppd": A3, "refuse": {"CVMediaType": 5}}, "CVMediaType"),
    ({"do": "open", "ppd": A3, "type": 5}, "type"),
    ({"do": "open", "ppd": A3, "bundle": "/no/such.plugin"}, "/no/such.plugin"),
    ({"do": "open", "ppd": A3, "info": [5]}, "info"),
)


class Protocol(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="protocol-")))
        self.folder.chmod(0o755)
        self.program = self.enterContext(SessionProgram())

    def open(self, **members):
        self.good("open", ppd=A3, languages=["en"], **members)

    def good(self, do, **members):
        answer = self.program.answer(do, **members)
        self.assertIs(answer["ok"], True, answer)
        self.assertNotIn("error", answer)
        return answer

    def bad(self, answer, word=""):
        self.assertIs(answer["ok"], False, answer)
        self.assertEqual(set(answer), {"ok", "error"})
        self.assertRegex(answer["error"], r"\A\S[^\n]*\.\Z")  # a sentence on one line
        self.assertIn(word, answer["error"])

    def snapshot(self):
        """Everything that the session tells of itself; what happened since is empty when nothing did."""
        return [self.good("host"), *(self.good("state", panel=panel) for panel in ("print", "color"))]

    def test_lines_that_are_no_commands_change_nothing(self):
        self.open()
        self.good("show", panel="print")
        self.snapshot()
        before = self.snapshot()
        for line in NOT_COMMANDS:
            with self.subTest(line=line[:40]):
                self.bad(self.program.answer_to_line(line))
                self.assertEqual(self.snapshot(), before)

    def test_bad_commands_change_nothing(self):
        self.open()
        self.good("show", panel="print")
        self.snapshot()
        before = self.snapshot()
        for command, word in BAD_COMMANDS:
            with self.subTest(command=command):
                self.bad(self.program.answer(**command), word)
                self.assertEqual(self.snapshot(), before)

    def test_without_a_session_every_command_of_one_is_an_error(self):
        commands = {
            "view": {"panel": "print"}, "show": {"panel": "print"}, "hide": {"panel": "print"},
            "choose": {"panel": "print", "control": "mediaTypePopup", "choice": "Plain"},
            "check": {"panel": "print", "control": "mirrorButton", "on": True},
            "press": {"panel": "print", "control": "helpButton"},
            "adjust": {"panel": "color", "control": "redField", "value": 1},
            "mark": {"option": "CVMediaType", "choice": "Plain"}, "paper": {"paper": None},
            "setting": {"key": "a", "value": "b"}, "settings": {"value": None}, "refuse": {"options": {}},
            "raise": {"options": {}}, "answers": {"alerts": []}, "window": {"height": 1},
            "tracking": {"panel": "print"}, "close": {}, "notify": {"name": "A"}, "save": {"panel": "print"},
            "restore": {"panel": "print"}, "summary": {"panel": "print"}, "help": {"panel": "print"}, "print": {},
            "state": {"panel": "print"}, "host": {}, "preview": {"panel": "color"},
            "send": {"panel": "print", "message": "willShow"}, "put": {"panel": "print", "field": "paperName",
                                                                      "value": "A4"},
        }
        for do, members in commands.items():
            with self.subTest(do=do):
                self.bad(self.program.answer(do, **members), "main")
        self.open()

    def test_empty_lines_and_comments_are_skipped(self):
        text = b'\n   \n\r\n# {"do":"open"}\n  # too\n{"do":"ask","text":"A4","message":"isKindOfLandscapePaper"}'
        finished = subprocess.run([PROGRAM], input=text, capture_output=True, timeout=DEADLINE, check=True)
        self.assertEqual(finished.stdout, b'{"ok":true,"result":true}\n')

    def test_lines_may_end_as_on_other_systems(self):
        self.assertTrue(self.program.answer_to_line(b'{"do":"open","ppd":"%s"}\r' % A3.encode())["ok"])

    def test_the_end_of_input_ends_the_session(self):
        self.open()
        self.assertEqual(self.program.end(), (0, ""))

    def test_errors_do_not_end_the_session_unless_it_is_strict(self):
        lines = b'{"do":"dance"}\n{"do":"ask","text":"A4","message":"isKindOfLandscapePaper"}\n{"do":"dance"}\n'
        for arguments, status, answers in (((), 0, [False, True, False]), (("--strict",), 1, [False])):
            with self.subTest(arguments=arguments):
                run = subprocess.run([PROGRAM, *arguments], input=lines, capture_output=True, timeout=DEADLINE)
                self.assertEqual([json.loads(line)["ok"] for line in run.stdout.splitlines()], answers)
                self.assertEqual(run.returncode, status)
        run = subprocess.run([PROGRAM, "--strict"], input=lines.splitlines()[1], capture_output=True, timeout=DEADLINE)
        self.assertEqual((run.returncode, json.loads(run.stdout)), (0, {"ok": True, "result": True}))

    def test_a_very_long_line_is_an_error(self):
        self.bad(self.program.answer_to_line(b'{"do":"ask","text":"' + b"x" * (9 << 20) + b'"}'))
        self.open()

    def test_ppds_that_cannot_be_used(self):
        whole = (SOURCES / A3).read_bytes()
        fifo = self.folder / "fifo.ppd"
        os.mkfifo(fifo)
        files = {
            "empty.ppd": b"",
            "truncated.ppd": whole[:400],
            "large.ppd": whole + b"*% padding\n" * (400 * 1024),
            "picture.ppd": (SOURCES / DOCUMENT).read_bytes(),
            "no_options.ppd": whole.partition(b"*UIConstraints")[0],
            "zeros.ppd": bytes(100000),
        }
        for name, content in files.items():
            (self.folder / name).write_bytes(content)
        self.open()
        for path in (fifo, self.folder, self.folder / "missing.ppd", *(self.folder / name for name in files)):
            with self.subTest(path=path.name):
                self.bad(self.program.answer("open", ppd=str(path)), path.name)
        self.good("show", panel="print")

    def test_a_ppd_of_four_megabytes_is_opened_and_not_one_byte_more(self):
        whole = (SOURCES / A3).read_bytes()
        at_most = self.folder / "at_most.ppd"
        comment = b"*% padding\n"
        padded = whole + comment * (((4 << 20) - len(whole)) // len(comment))
        at_most.write_bytes(padded + b"\n" * ((4 << 20) - len(padded)))
        self.good("open", ppd=str(at_most))
        with at_most.open("ab") as file:
            file.write(b"\n")
        self.bad(self.program.answer("open", ppd=str(at_most)), "at_most.ppd")

    def test_a_ppd_without_the_panels_options_has_panels_without_keys(self):
        text = '*PPD-Adobe: "4.3"\n*FormatVersion: "4.3"\n*FileVersion: "1.0"\n*LanguageVersion: English\n'
        text += '*LanguageEncoding: ISOLatin1\n*PCFileName: "T.PPD"\n*Product: "(T)"\n*Manufacturer: "T"\n'
        text += '*ModelName: "T"\n*ShortNickName: "T"\n*NickName: "T"\n*PSVersion: "(3010) 1"\n'
        text += '*OpenUI *Other/Other: PickOne\n*DefaultOther: A\n*Other A/A: ""\n*CloseUI: *Other\n'
        panels = self.good("open", ppdText=text)["panels"]
        self.assertEqual([panel["keys"] for panel in panels], [[], []])
        self.good("show", panel="print")
        self.good("show", panel="color")

    def test_a_second_open_ends_the_session_before_it(self):
        self.open()
        self.good("show", panel="print")
        self.good("mark", option="CVReverse", choice="ON")
        self.open()
        state = self.good("state", panel="print")["state"]
        self.assertFalse(state["popupInited"])
        self.assertEqual(self.good("host")["host"]["marks"]["CVReverse"], "OFF")

    def test_bundles(self):
        broken = {
            "missing.plugin": None,
            "no_info.plugin": {},
            "no_json.plugin": {"Info.json": b"{"},
            "no_executable.plugin": {"Info.json": b"{}"},
            "no_object.plugin": {"Info.json": b'{"CFBundleExecutable":"x.so"}'},
            "text.plugin": {"Info.json": b'{"CFBundleExecutable":"x.so"}', "x.so": b"no shared object"},
        }
        paths = [OTHER_VERSION] if OTHER_VERSION else []
        for name, files in broken.items():
            paths.append(str(self.folder / name))
            if files is not None:
                (self.folder / name).mkdir()
                for file, content in files.items():
                    (self.folder / name / file).write_bytes(content)
        for path in paths:
            with self.subTest(path=path):
                self.bad(self.program.answer("open", ppd=A3, bundle=path), path)
                with SessionProgram(["--bundle", path]) as program:
                    self.bad(program.answer("open", ppd=A3), path)
                    self.assertTrue(program.answer("open", ppd=A3, bundle=str(BUNDLE))["ok"])
        self.open()

    def test_a_bundle_that_stands_elsewhere(self):
        elsewhere = self.folder / "Elsewhere.plugin"
        shutil.copytree(BUNDLE, elsewhere)
        with SessionProgram(["--bundle", str(elsewhere)]) as program:
            self.assertTrue(program.answer("open", ppd=A3, languages=["en"])["ok"])
            self.assertTrue(program.answer("show", panel="print")["ok"])
            # Its help books would stand in the folder above the one that holds it.
            self.assertEqual(program.answer("help", panel="print"), {"ok": True, "help": True, "opened": None})

    def test_unknown_letters_on_the_command_line(self):
        for arguments in (["--loud"], ["file.jsonl"], ["--bundle"]):
            run = subprocess.run([PROGRAM, *arguments], input=b"", capture_output=True, timeout=DEADLINE)
            self.assertNotEqual(run.returncode, 0)
            self.assertIn(b"Usage:", run.stderr)
            self.assertEqual(run.stdout, b"")

    def test_an_output_that_is_full_is_told(self):
        for arguments, commands in ((["--help"], b""), (["--version"], b""), ([], b'{"do": "state"}\n' * 3)):
            with open("/dev/full", "wb") as full:
                run = subprocess.run([PROGRAM, *arguments], input=commands, stdout=full, stderr=subprocess.PIPE,
                                     timeout=DEADLINE)
            self.assertEqual(run.returncode, 1)
            self.assertIn(b"Standard output cannot be written", run.stderr)

    def test_destinations_that_cannot_be_used(self):
        self.open()
        occupied = self.folder / "occupied"
        occupied.write_text("a file, not a folder")
        for destination in (
            str(occupied),
            str(occupied / "below"),
            "/proc/nowhere",
            "",
            {"server": "127.0.0.1:1", "queue": "Recorder"},
            {"server": str(self.folder / "no.socket"), "queue": "Recorder"},
            {"server": str(occupied), "queue": "Recorder"},
            {"server": "", "queue": ""},
        ):
            with self.subTest(destination=destination):
                self.bad(self.program.answer("print", file=DOCUMENT, to=destination))
        answer = self.good("print", file=DOCUMENT, to=str(self.folder / "made" / "for it"))
        self.assertTrue(pathlib.Path(answer["job"]).is_file())

    def test_documents_that_are_no_files(self):
        self.open()
        fifo = self.folder / "fifo.pdf"
        os.mkfifo(fifo)
        for path in (fifo, self.folder, "/dev/zero", ""):
            with self.subTest(path=str(path)):
                self.bad(self.program.answer("print", file=str(path), to=str(self.folder / "out")))
        self.assertFalse((self.folder / "out").exists())

    @unittest.skipIf(os.geteuid() != 0, "only root can start the program as another user")
    def test_files_that_a_plain_user_may_not_read_change_nothing(self):
        secret = self.folder / "secret.pdf"
        secret.write_bytes(b"%PDF-1.4\n")
        secret.chmod(0o600)
        with SessionProgram(user="nobody") as program:
            self.assertTrue(program.answer("open", ppd=A3, languages=["en"])["ok"])
            program.answer("host")
            before = program.answer("host")
            self.bad(program.answer("open", ppd=str(secret)), "secret.pdf")
            self.bad(program.answer("print", file=str(secret), to=str(self.folder)), "secret.pdf")
            self.assertEqual(program.answer("host"), before)

    @unittest.skipIf(os.geteuid() != 0, "only root can start the program as another user")
    def test_a_folder_in_which_a_plain_user_may_not_write(self):
        with SessionProgram(user="nobody") as program:
            self.assertTrue(program.answer("open", ppd=A3)["ok"])
            self.bad(program.answer("print", file=DOCUMENT, to=str(self.folder)), str(self.folder))
            self.assertTrue(program.answer("host")["ok"])
        self.assertEqual(list(self.folder.iterdir()), [])


class Patterns(unittest.TestCase):
    """The comparison that recorded sessions rely on."""

    def test_what_holds(self):
        compare({"a": 1, "b": [1, {"c": None}]}, {"b": [1, {}]})
        compare([], [])
        compare(0.1, 0.1)

    def test_what_does_not_hold(self):
        for actual, pattern in (({}, {"a": None}), ([1], []), ([], {}), ([1, 2], [2, 1]), (1, True), (0, False),
                                ("1", 1), (None, False), ({"a": [{"b": 1}]}, {"a": [{"b": 2}]})):
            with self.subTest(actual=actual, pattern=pattern), self.assertRaises(Mismatch):
                compare(actual, pattern)


if __name__ == "__main__":
    unittest.main()
