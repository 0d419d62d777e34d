"""The main job from end to end: a printer is opened, both panels are shown, options of each kind are changed, one
change is refused, the summary is read, and the job goes to a folder and to a queue whose filter writes down what it
is given.

As root, `--plain-user` runs the server and the session as a plain user.
"""

import json
import os
import pathlib
import pwd
import sys
import tempfile
import unittest

from print_server import A3, PrintServer, USER, booleans_without_case, parse_options, sent_by_us
from session_program import SOURCES, SessionProgram

DOCUMENT = SOURCES / "resources" / "samples" / "picture.pdf"


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
            arguments, data = self.server.record_of(answer["job"])
            self.assertEqual(data, DOCUMENT.read_bytes())
            received = sent_by_us(parse_options(arguments["options"]))
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
        arguments, _ = self.server.record_of(answer["job"])
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
