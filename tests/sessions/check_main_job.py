"""The main job from end to end: a printer is opened, both panels are shown, options of each kind are changed, one
change is refused, the summary is read, and the job goes to a folder and to a queue whose filter writes down what it
is given.

The program PRIVATE_CUPSD starts the print server. As root, `--plain-user` runs the server and the session as a plain
user.
"""

import ctypes
import ctypes.util
import json
import os
import pathlib
import pwd
import subprocess
import sys
import tempfile
import threading
import unittest

from session_program import SOURCES, SessionProgram, as_user

A3 = "resources/models/corvane-a3.ppd"
DOCUMENT = SOURCES / "resources" / "samples" / "picture.pdf"
DEADLINE = 30  # seconds for a job to reach the filter
USER = "nobody" if "--plain-user" in sys.argv and os.geteuid() == 0 else None  # None: who runs this

# What a server adds to a job's options on its own.
SERVERS_OWN = {
    "date-time-at-creation", "date-time-at-processing", "document-name-supplied", "finishings",
    "job-originating-host-name", "job-uuid", "number-up", "print-color-mode", "time-at-creation", "time-at-processing",
}


class CupsOption(ctypes.Structure):
    _fields_ = [("name", ctypes.c_char_p), ("value", ctypes.c_char_p)]


def parse_options(text):
    """A filter's option text as filters parse it."""
    cups = ctypes.CDLL(ctypes.util.find_library("cups") or "libcups.so.2")
    options = ctypes.POINTER(CupsOption)()
    count = cups.cupsParseOptions(text.encode(), 0, ctypes.byref(options))
    parsed = {options[index].name.decode(): options[index].value.decode() for index in range(count)}
    cups.cupsFreeOptions(count, options)
    return parsed


def booleans_without_case(options):
    return {name: value.lower() if value.lower() in ("true", "false") else value for name, value in options.items()}


class PrintServer:
    """A print server with one queue of the sample printer. It ends with the input of the command beside it."""

    def __init__(self):
        command = [os.environ["PRIVATE_CUPSD"], "--ppd", str(SOURCES / A3), "--queue", "Corvane", "--", "cat"]
        pipes = dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.PIPE)
        self.process = subprocess.Popen(command, text=True, cwd="/", **pipes, **as_user(USER))
        self.places, told = {}, ""
        while "PRIVATE_CUPSD_RECORDS" not in self.places:
            line = self.process.stderr.readline()
            told += line
            if not line:
                raise AssertionError("there is no print server: " + told)
            name, _, value = line.strip().partition("=")
            self.places[name] = value

    def end(self):
        self.process.communicate(timeout=DEADLINE)


class MainJob(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = PrintServer()
        cls.addClassCleanup(cls.server.end)
        cls.places = cls.server.places

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="main-job-")))
        self.folder.chmod(0o777)
        self.program = self.enterContext(SessionProgram(user=USER))
        self.queue = {"server": self.places["PRIVATE_CUPSD_SOCKET"], "queue": self.places["PRIVATE_CUPSD_QUEUE"]}

    def do(self, command, **members):
        answer = self.program.answer(command, **members)
        self.assertIs(answer["ok"], True, answer)
        return answer

    def record_of(self, job):
        """The filter's arguments and the data that reached it. The arguments are complete as soon as they are there."""
        records = pathlib.Path(self.places["PRIVATE_CUPSD_RECORDS"])
        arguments = records / ("job-%d.arguments" % job)
        turn, left = threading.Event(), DEADLINE * 20
        while not arguments.exists() and left > 0:
            turn.wait(1 / 20)
            left -= 1
        self.assertTrue(arguments.exists(), "the job reached no filter")
        names = ("job", "user", "title", "copies", "options")
        words = arguments.read_bytes().decode().split("\0")[: len(names)]
        return dict(zip(names, words)), (records / ("job-%d.data" % job)).read_bytes()

    def change_an_option_of_each_kind(self):
        self.do("open", ppd=A3, languages=["en"])
        self.do("show", panel="print")
        self.do("show", panel="color")
        self.do("choose", panel="print", control="mediaTypePopup", choice="Glossy")
        self.do("choose", panel="print", control="advancedTableView", choice="Layout")
        self.do("check", panel="print", control="mirrorButton", on=True)
        self.do("choose", panel="color", control="colorMatchingMatrix", choice="Vivid")
        self.do("check", panel="color", control="colorEnhanceButton", on=True)
        self.do("adjust", panel="color", control="brightnessSlider", value=12)
        self.do("adjust", panel="color", control="redField", value=-4)
        self.do("check", panel="print", control="optionButton", on=True)
        # Two changes that the printer's constraints forbid now.
        self.do("host")
        self.do("choose", panel="print", control="paperFeedPopup", choice="Tray2")
        self.do("choose", panel="print", control="jpegPopup", choice="ON")
        refused = self.do("host")["host"]["refused"]
        self.assertEqual([(each["option"], each["with"]) for each in refused],
                         [("CVInputSlot", [["CVMediaType", "Glossy"]]), ("CVJpeg", [["MirrorPrint", "True"]])])
        for panel in ("print", "color"):
            self.do("save", panel=panel)

    # Worked out from the printer's defaults and the changes: glossy paper brings the quality for photos, printing in
    # one direction and diffusion; every other mark that a panel manages goes along as it stands.
    EXPECTED = {
        "CVMediaType": "Glossy", "CVResolution": "Photo", "CVColorPaperThick": "Regular", "CVInputSlot": "Tray1",
        "CVMonoColor": "Color", "CVSlowDrying": "OFF", "CVBiDir": "OFF", "MirrorPrint": "True", "CVReverse": "OFF",
        "CVJpeg": "OFF", "CVDuplexMode": "Standard", "CVVertLineAlignA3B4Ledger": "OFF",
        "CVVertLineAlignA4Letter": "OFF", "CVVertLineAlignOther": "OFF", "CVVertLineAlignDedicated": "OFF",
        "CVColorMatching": "Vivid", "CVColorEnhancement": "ON",
        "CVBrightness": "0", "CVContrast": "0", "CVRed": "0", "CVGreen": "0", "CVBlue": "0", "PageSize": "A4",
        "com.corvane.print.PrintSettings.CEV_Brightness": "12", "com.corvane.print.PrintSettings.CEV_Contrast": "0",
        "com.corvane.print.PrintSettings.CEV_Red": "-4", "com.corvane.print.PrintSettings.CEV_Green": "0",
        "com.corvane.print.PrintSettings.CEV_Blue": "0",
        "com.corvane.print.PrintSettings.Orientation": "Landscape",
        "com.corvane.print.PrintSettings.advancedItem": "true",
        "com.corvane.print.PrintSettings.advancedcolorItem": "false",
        # The colour panel's pop-up still showed the old pattern when the matching was chosen, and reading the panel's
        # controls marked it again.
        "CVHalfTonePattern": "Dither",
    }

    def test_the_summary_tells_what_was_chosen(self):
        self.change_an_option_of_each_kind()
        summary = self.do("summary", panel="print")["summary"]
        self.assertEqual(summary["order"][:3], ["Model", "Media Type", "Print Quality"])
        self.assertEqual(summary["entries"]["Model"], "Corvane XJ6510")
        self.assertEqual(summary["entries"]["Media Type"], "Other Glossy Paper")
        self.assertEqual(summary["entries"]["Print Quality"], "Photo")
        self.assertEqual(summary["entries"]["Mirror Printing"], "On")
        self.assertNotIn("Dedicated Media", summary["entries"])
        summary = self.do("summary", panel="color")["summary"]
        self.assertEqual(summary["order"], ["Color Matching", "Halftone Pattern", "Color Enhancement", "Brightness",
                                            "Contrast", "Red", "Green", "Blue"])
        self.assertEqual(summary["entries"]["Brightness"], 12)
        self.assertEqual(summary["entries"]["Color Matching"], "Vivid")

    def test_the_ticket_in_a_folder(self):
        self.change_an_option_of_each_kind()
        answer = self.do("print", file=str(DOCUMENT), to=str(self.folder / "out"), title="A picture", copies=3)
        self.assertEqual(answer["ticket"]["options"], self.EXPECTED)
        ticket = json.loads(pathlib.Path(answer["job"]).read_text(encoding="utf-8"))
        self.assertEqual(ticket["options"], self.EXPECTED)
        self.assertEqual((ticket["title"], ticket["copies"]), ("A picture", 3))
        self.assertEqual((self.folder / "out" / ticket["document"]).read_bytes(), DOCUMENT.read_bytes())

    def test_a_job_for_a_queue_arrives_as_its_ticket_says(self):
        self.change_an_option_of_each_kind()
        for destination in (self.queue, {**self.queue, "server": self.places["PRIVATE_CUPSD_ADDRESS"]}):
            answer = self.do("print", file=str(DOCUMENT), to=destination, title="A picture", copies=2)
            self.assertEqual(answer["ticket"]["options"], self.EXPECTED)
            arguments, data = self.record_of(answer["job"])
            self.assertEqual(data, DOCUMENT.read_bytes())
            received = parse_options(arguments["options"])
            received = {name: value for name, value in received.items() if name not in SERVERS_OWN}
            self.assertEqual(booleans_without_case(received), booleans_without_case(self.EXPECTED))
            self.assertEqual(arguments["title"], "A picture")
            self.assertEqual(arguments["copies"], "2")
            self.assertEqual(arguments["user"], USER or pwd.getpwuid(os.geteuid()).pw_name)

    def test_print_settings_of_every_kind_arrive(self):
        self.do("open", ppd=A3, languages=["en"], settings={"Text": "two words, \"quoted\"", "Whole": -7, "Half": 0.5,
                                                            "Yes": True, "No": False, "Japanese": "日本語"})
        self.do("paper", paper={"name": "Custom", "ppdName": None, "width": 300, "height": 500.5})
        answer = self.do("print", file=str(DOCUMENT), to=self.queue)
        options = answer["ticket"]["options"]
        self.assertEqual({name: options[name] for name in ("Text", "Whole", "Half", "Yes", "No", "PageSize")},
                         {"Text": "two words, \"quoted\"", "Whole": "-7", "Half": "0.5", "Yes": "true", "No": "false",
                          "PageSize": "Custom.300x500.5"})
        arguments, _ = self.record_of(answer["job"])
        received = parse_options(arguments["options"])
        self.assertEqual(booleans_without_case({name: received[name] for name in options}),
                         booleans_without_case(options))

    def test_a_job_that_the_user_stops_reaches_nothing(self):
        self.do("open", ppd=A3, languages=["en"])
        self.do("answers", alerts=[{"button": "Cancel"}])
        answer = self.do("print", file=str(DOCUMENT), to=str(self.folder / "out"))
        self.assertEqual(answer, {"ok": True, "go": False})
        self.assertFalse((self.folder / "out").exists())

    def test_a_queue_that_is_not_there(self):
        self.do("open", ppd=A3, languages=["en"])
        answer = self.program.answer("print", file=str(DOCUMENT), to={**self.queue, "queue": "Nowhere"})
        self.assertIs(answer["ok"], False)
        self.assertIn("Nowhere", answer["error"])
        self.do("print", file=str(DOCUMENT), to=self.queue)


if __name__ == "__main__":
    unittest.main(argv=[argument for argument in sys.argv if argument != "--plain-user"])
