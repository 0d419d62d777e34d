"""Compares the panels, step by step, with the second description of their rules in the expected_*.py files.

Each test walks a dialog through a cross product of states and compares, after every step, everything that the host was
asked, told and shown, its marks and print settings, and the state of both panels.
"""

import functools
import itertools
import random
import unittest

from expected_dialog import Dialog
from sample_ppd import read_sample
from session_program import SessionProgram

MODELS = ("corvane-a3", "corvane-a4", "corvane-office", "corvane-mirror")
MEDIA = ("Plain", "Inkjet", "CorvaneQT20Matte", "CorvaneGlossy", "CorvaneGlossyR", "Glossy", "Transparencies")
# Beside an ordinary one: envelope, postcard, borderless, borderless postcard.
PAPERS = ("A4", "Env10", "EnvChou3", "Postcard", "A4.Fullbleed", "CvHagaki_B")
CUSTOM = {"name": "Custom", "ppdName": None, "width": 400, "height": 700}
COLOR_SETTINGS = "AP_ColorMatchingMode"


class Walk:
    """A dialog of the program and its expectation, side by side."""

    def __init__(self, test, program, model, shown=("print", "color"), **members):
        self.test, self.program, self.steps = test, program, []
        members.setdefault("languages", ["en"])
        self.expected = Dialog(read_sample(model, members["languages"][0]), **members)
        self.run("open", ppd="resources/models/%s.ppd" % model, localize=False, **members)
        for panel in shown:
            self.show(panel)

    def run(self, do, **members):
        self.steps.append({"do": do, **members})
        answer = self.program.answer(do, **members)
        self.compare(answer["ok"], True, "the answer " + str(answer))
        self.compare_states()
        return answer

    def user(self, operation, do, **members):
        """A user's action, which may be impossible."""
        possible = operation(**members)
        self.steps.append({"do": do, **members})
        answer = self.program.answer(do, **members)
        self.compare(answer["ok"], possible, "whether the user can do this")
        self.compare_states()
        return possible

    def show(self, panel):
        self.expected.show(panel)
        self.run("show", panel=panel)

    def hide_and_show_again(self):
        for panel in ("color", "print"):
            self.expected.hide(panel)
            self.run("hide", panel=panel)
            self.show(panel)

    def restore(self, panel):
        self.expected.restore(panel)
        self.run("restore", panel=panel)

    def save(self, panel):
        self.expected.save(panel)
        self.run("save", panel=panel)

    def summary(self, panel):
        self.expected.summary(panel)
        self.run("summary", panel=panel)

    def choose(self, control, choice, panel="print"):
        return self.user(self.expected.choose, "choose", panel=panel, control=control, choice=choice)

    def check(self, control, on, panel="print"):
        return self.user(self.expected.check, "check", panel=panel, control=control, on=on)

    def mark(self, option, choice):
        self.expected.mark(option, choice)
        self.run("mark", option=option, choice=choice)

    def paper(self, paper, **mapped):
        size = self.expected.ppd_paper(paper) if isinstance(paper, str) else paper
        self.expected.change_paper(size, **mapped)
        self.run("paper", paper=size, **mapped)

    def setting(self, key, value):
        self.expected.set_setting(key, value)
        self.run("setting", key=key, value=value)

    def refuse(self, **options):
        self.expected.refuse(options)
        self.run("refuse", options=options)

    def print_job(self):
        goes = self.expected.print_job()
        answer = self.run("print")
        self.compare(answer["go"], goes, "whether the job goes")
        if goes:
            self.compare(answer["ticket"]["options"], self.expected.job_options(), "the ticket's options")

    def output_changed(self):
        """What a dialog does after fax or colour matching changed: save, restore and show the shown panels."""
        for operation in (self.save, self.restore, self.show):
            for panel in ("print", "color"):
                operation(panel)

    def possible_steps(self):
        """Lists of steps, of one kind each."""
        bind = functools.partial
        options = self.expected.ppd.options
        users = [
            [bind(self.choose, outlet, choice, panel.name) for choice in options[key].choices]
            for panel in self.expected.panels.values()
            for key, outlet in panel.outlets.items()
            if key in options and not outlet.endswith("Button")
        ]
        boxes = [
            bind(self.check, outlet, on, panel.name)
            for panel in self.expected.panels.values()
            for key, outlet in panel.outlets.items()
            for on in (True, False)
            if key in options and outlet.endswith("Button")
        ]
        marks = [
            [bind(self.mark, option, choice) for choice in options[option].choices]
            for option in ("CVMediaType", "CVResolution", "CVMonoColor", "Duplex", "CVOutput", "CVHalfTonePattern")
            if option in options
        ]
        papers = [bind(self.paper, paper) for paper in (*PAPERS, CUSTOM, "A3.Fullbleed", "A4")
                  if not isinstance(paper, str) or paper in self.expected.ppd.sizes]
        modes = [bind(self.setting, COLOR_SETTINGS, mode) for mode in (None, "AP_ApplicationColorMatching")]
        host = [
            bind(operation, panel)
            for operation in (self.show, self.save, self.restore, self.summary)
            for panel in ("print", "color")
        ]
        refusals = [bind(self.refuse), bind(self.refuse), bind(self.refuse, CVMediaType=["Glossy", "Plain"]),
                    bind(self.refuse, CVBiDir=True, CVResolution=["Photo"])]
        return [*users, boxes, boxes, *marks, papers, papers, modes, host, host, refusals, [self.print_job]]

    def compare(self, actual, expected, what):
        if actual != expected:
            steps = "\n".join(str(step) for step in self.steps)
            self.test.maxDiff = None
            self.test.assertEqual(actual, expected, "\nThis differs: %s. The steps:\n%s" % (what, steps))

    def compare_states(self):
        host, expected = self.program.answer("host")["host"], self.expected
        self.compare(host["asked"], expected.asked, "what the host was asked")
        self.compare(host["posted"], expected.posted, "what the panels posted")
        self.compare([[each["how"], each["message"]] for each in host["alerts"]], expected.alerts, "the alerts")
        self.compare(host["marks"], expected.marks, "the marks")
        self.compare(host["settings"], expected.settings, "the print settings")
        self.compare(host["defaults"], expected.defaults, "the suppressed alerts")
        expected.asked, expected.posted, expected.alerts = [], [], []
        for name, panel in expected.panels.items():
            state = self.program.answer("state", panel=name)["state"]
            self.compare(state["outputBin"], panel.bin, "the pending values of " + name)
            self.compare(hex(state["imageModeFlag"]), hex(panel.flags), "the flags of " + name)
            self.compare(state["paperName"], panel.paper, "the paper of " + name)
            for key, control in panel.controls.items():
                words = control.in_words()
                shown = state["controls"][panel.outlets[key]]
                shown = {member: shown[member] for member in words}
                for item in shown.get("items", ()):
                    item.pop("picture", None)
                self.compare(shown, words, panel.outlets[key])


class PrintRules(unittest.TestCase):
    def setUp(self):
        self.program = self.enterContext(SessionProgram())

    def walk(self, model="corvane-a3", **members):
        return Walk(self, self.program, model, **members)

    def test_each_media_type_from_each_other(self):
        for model in MODELS:
            walk = self.walk(model)
            for one, other in itertools.product(MEDIA, repeat=2):
                walk.choose("mediaTypePopup", one)
                walk.choose("mediaTypePopup", other)

    def test_each_media_type_from_each_other_marked_from_outside(self):
        for media in ("HagakiAtena", "HagakiUra", "PlainDuplex", *MEDIA):
            for shown in ((), ("print",), ("color",), ("print", "color")):
                walk = self.walk(shown=shown)
                walk.mark("CVMediaType", media)
                walk.mark("CVMediaType", "Plain")

    def test_each_media_type_in_japanese(self):
        """The texts of the two postcard papers do not begin as they do in English, so both are listed."""
        postcards = ("HagakiAtena", "HagakiUra")
        for model in MODELS:
            walk = self.walk(model, languages=["ja"])
            for one, other in itertools.product((*MEDIA, *postcards), repeat=2):
                self.assertTrue(walk.choose("mediaTypePopup", one))
                self.assertTrue(walk.choose("mediaTypePopup", other))
            for media in postcards:
                walk.choose("mediaTypePopup", media)
                for quality in ("PlainFast", "High", "Best", "Fast", "Photo"):
                    walk.choose("resolutionPopup", quality)
                for on in (True, False):
                    walk.check("slowDryButton", on)
                    walk.check("vertLineAlignQT22Button", on)
                for thickness in ("Env", "Regular"):
                    walk.choose("paperThickPopup", thickness)
                walk.paper("CvHagaki_B")
                walk.print_job()
                walk.paper("A4")

    def test_each_quality_on_each_media_type(self):
        for model, media in itertools.product(MODELS, MEDIA):
            walk = self.walk(model)
            walk.choose("mediaTypePopup", media)
            offered = [item["keyword"] for item in walk.expected.print.controls["CVResolution"].items]
            self.assertTrue(offered)
            for one, other in itertools.product(offered, repeat=2):
                walk.choose("resolutionPopup", one)
                walk.choose("resolutionPopup", other)
            for missing in {"PlainFast", "High", "Normal", "Photo"} - set(offered):
                self.assertFalse(walk.choose("resolutionPopup", missing))

    def test_colour_mode_on_each_media_type(self):
        for model, media in itertools.product(MODELS, MEDIA):
            walk = self.walk(model)
            walk.choose("mediaTypePopup", media)
            for mode in ("Mono", "Mono", "Color"):
                walk.choose("monoColorPopup", mode)

    def test_each_thickness_on_each_paper_and_media_type(self):
        for model in MODELS:
            for paper, media in itertools.product((*PAPERS, CUSTOM), ("Plain", "Glossy", "Inkjet")):
                walk = self.walk(model)
                walk.choose("mediaTypePopup", media)
                walk.paper(paper)
                for thickness in ("Env", "Regular", "Env"):
                    walk.choose("paperThickPopup", thickness)
                walk.summary("print")
                walk.print_job()

    def test_each_paper_after_each_other(self):
        for model in MODELS:
            papers = [*PAPERS, CUSTOM] + (["A3.Fullbleed"] if model != "corvane-a4" else [])
            walk = self.walk(model)
            for one, other in itertools.product(papers, repeat=2):
                walk.paper(one)
                walk.paper(other)

    def test_each_paper_with_each_media_type(self):
        for model, paper in itertools.product(MODELS, (*PAPERS, CUSTOM)):
            for media in MEDIA:
                walk = self.walk(model)
                walk.choose("mediaTypePopup", media)
                walk.paper(paper)
                walk.choose("mediaTypePopup", "Inkjet")
                walk.choose("mediaTypePopup", "Transparencies")
                walk.save("print")
                walk.print_job()
                walk.paper("A4")

    def test_papers_before_the_panels_are_shown(self):
        for paper in (*PAPERS, CUSTOM, "A3.Fullbleed"):
            for marks in ({}, {"CVColorPaperThick": "Env"}, {"CVMediaType": "Transparencies"},
                          {"CVResolution": "PlainFast"}, {"CVBiDir": "OFF"}):
                walk = self.walk(shown=(), mark=marks)
                walk.paper(paper)
                walk.restore("print")
                walk.show("print")

    def test_a_dialog_that_opens_with_a_paper(self):
        for paper in (*PAPERS, "A3.Fullbleed", "Letter"):
            walk = self.walk(shown=(), mark={"PageSize": paper})
            walk.print_job()
            walk.show("print")
            walk.print_job()

    def test_two_sided_printing_turned_on_and_off_on_each_media_type(self):
        for model in ("corvane-a3", "corvane-office", "corvane-mirror"):
            for media, shown in itertools.product(MEDIA, ((), ("print",), ("print", "color"))):
                walk = self.walk(model, shown=shown, mark={} if shown else {"CVMediaType": media})
                if shown:
                    walk.choose("mediaTypePopup", media)
                for duplex in ("DuplexNoTumble", "DuplexTumble", "None", "DuplexTumble"):
                    walk.mark("Duplex", duplex)
                    walk.save("print")
                    walk.summary("print")
                walk.print_job()

    def test_media_and_quality_while_two_sided(self):
        walk = self.walk()
        walk.mark("Duplex", "DuplexNoTumble")
        for media in MEDIA:
            walk.choose("mediaTypePopup", media)
            for quality in ("PlainFast", "High", "Best", "Photo"):
                walk.choose("resolutionPopup", quality)
            walk.restore("print")

    def test_fax_and_application_colour_matching_on_each_media_type(self):
        for model, media in itertools.product(MODELS, MEDIA):
            walk = self.walk(model)
            walk.choose("mediaTypePopup", media)
            if "CVOutput" in walk.expected.ppd.options:
                walk.mark("CVOutput", "FAX")
                walk.output_changed()
                walk.choose("mediaTypePopup", "Plain")  # a control that fax output greys
                walk.print_job()
                walk.mark("CVOutput", "None")
                walk.output_changed()
            for mode in ("AP_ApplicationColorMatching", "AP_VendorColorMatching", "Other", None):
                walk.setting(COLOR_SETTINGS, mode)
                walk.output_changed()
                walk.choose("mediaTypePopup", media)
            walk.print_job()

    def test_construction_from_marks_and_print_settings(self):
        marks = (
            {"CVMediaType": "Glossy"},
            {"CVMediaType": "HagakiUra", "CVResolution": "Fast"},
            {"CVMediaType": "HagakiAtena", "CVSlowDrying": "ON"},
            {"CVMediaType": "PlainDuplex"},
            {"CVMediaType": "Inkjet", "CVResolution": "PlainFast"},
            {"CVMonoColor": "Mono", "CVHalfTonePattern": "Diffusion"},
            {"Duplex": "DuplexTumble"},
            {"CVOutput": "FAX", "CVMediaType": "Transparencies", "CVResolution": "Normal"},
            {"CVMediaType": None, "CVResolution": None, "CVMonoColor": None},
        )
        settings = (
            {},
            {"CVMonoColor": "Mono", "CVHalfTonePattern": "Diffusion"},
            {"CVMonoColor": "Color", "CVHalfTonePattern": "Dither"},
            {COLOR_SETTINGS: "AP_ApplicationColorMatching"},
            {"com.apple.print.PageToPaperMappingMediaName": "EnvDL"},
        )
        for mark, setting in itertools.product(marks, settings):
            walk = self.walk(mark=mark, settings=setting)
            walk.hide_and_show_again()
            walk.print_job()

    def test_check_boxes_and_the_colour_panel_on_each_media_type(self):
        for model, media in itertools.product(MODELS, MEDIA):
            walk = self.walk(model)
            walk.choose("mediaTypePopup", media)
            for box in ("slowDryButton", "biDirButton", "mirrorButton", "reverseButton", "vertLineAlignA3Button",
                        "vertLineAlignQT22Button"):
                for on in (True, False):
                    walk.check(box, on)
            for control, choice in (("ditherPopup", "Diffusion"), ("colorMatchingMatrix", "Vivid"),
                                    ("ditherPopup", "Dither")):
                walk.choose(control, choice, panel="color")
            for on in (True, False):
                walk.check("colorEnhanceButton", on, panel="color")

    def test_constraints_of_the_printer(self):
        walk = self.walk()
        for source, media in itertools.product(("Tray2", "Manual", "Tray1"), MEDIA):
            walk.choose("paperFeedPopup", source)
            walk.choose("mediaTypePopup", media)
        for jpeg, mirror in itertools.product(("ON", "OFF"), (True, False)):
            walk.choose("jpegPopup", jpeg)
            walk.check("mirrorButton", mirror)

    def test_refusals_of_each_option_that_the_media_type_moves(self):
        options = ("CVMediaType", "CVResolution", "CVBiDir", "CVHalfTonePattern", "CVMonoColor", "CVSlowDrying")
        for refused, media in itertools.product(options, MEDIA):
            walk = self.walk()
            walk.choose("mediaTypePopup", "Inkjet")
            walk.refuse(**{refused: True})
            walk.choose("mediaTypePopup", media)
            walk.choose("monoColorPopup", "Mono")
            walk.paper("A4.Fullbleed")
            walk.mark("Duplex", "DuplexNoTumble")
            walk.restore("print")
            walk.restore("color")
            walk.print_job()

    def test_scaled_jobs_follow_the_paper_they_are_mapped_to(self):
        walk = self.walk()
        for mapped in ("EnvChou3", "A4.Fullbleed", "Postcard", None, "A3"):
            walk.paper("A4", mapped=mapped)
            walk.print_job()

    def test_long_walks_through_everything(self):
        for seed, model in itertools.product(range(12), MODELS):
            chance = random.Random(seed)  # the same walks in every run
            walk = self.walk(model, shown=(), languages=[chance.choice(["en", "ja"])])
            steps = walk.possible_steps()
            for _ in range(60):
                chance.choice(chance.choice(steps))()

    def test_user_defined_papers_before_printing(self):
        sizes = (
            (400, 700), (300, 700), (1000, 1000), (359.6, 700), (359.4, 700), (360, 612), (612, 842), (612, 612.4),
            (612.5, 842), (252, 360), (251, 400), (251, 700), (900, 1400), (900, 1401), (700, 300), (500, 1200),
            (0, 0),
        )
        for model, (width, height) in itertools.product(("corvane-a3", "corvane-a4"), sizes):
            for name in ("Custom", "Letter"):
                walk = self.walk(model, shown=())
                walk.paper({"name": name, "ppdName": None, "width": width, "height": height})
                walk.print_job()


if __name__ == "__main__":
    unittest.main()
