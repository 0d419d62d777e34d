#!/usr/bin/python3
"""The print dialog for somebody who does not see it and has no mouse: what AT-SPI tells of it, led by keys alone, from the
first choice to the printed job. CV_PRINT names the program."""

import json
import os
import pathlib
import unittest

from private_desktop import PrivateDesktop, ProgramOnTheDesktop, wait_for

SOURCES = pathlib.Path(__file__).resolve().parents[3]
PROGRAM = os.environ.get("CV_PRINT", str(SOURCES / "build" / "bin" / "corvane-print"))
PRINTER = SOURCES / "resources" / "models" / "corvane-a3.ppd"
DOCUMENT = SOURCES / "resources" / "samples" / "picture.pdf"
WINDOW, ALERT = "Print: picture.pdf", "Loading the Paper"
# What the user sets something with or goes somewhere by, in AT-SPI's words; a tree is the summary's list.
CONTROLS = {"combo box", "list", "list item", "tree", "text", "spin button", "slider", "check box", "radio button",
            "push button", "page tab list", "page tab"}


class AccessibleTour(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = PrivateDesktop()
        cls.addClassCleanup(cls.desktop.end)

    def setUp(self):
        self.out = self.desktop.folder / self.id().rsplit(".", 1)[-1]
        self.dialog = self.enterContext(ProgramOnTheDesktop(
            self.desktop, [PROGRAM, "--ppd", str(PRINTER), "--to", str(self.out), str(DOCUMENT)]))
        self.dialog.enter_window(WINDOW)

    def open_disclosure(self, name):
        box = self.dialog.move_to("check box", name)
        self.dialog.press("space")
        return box

    def choose_glossy_paper(self):
        """The fourth media type: the third one down from plain paper."""
        self.dialog.show_tab("Print Setting")
        media = self.dialog.move_to("combo box", "Media Type")
        self.assertEqual(media.name, "Plain Paper")
        self.dialog.press("Down", "Down", "Down")
        wait_for("the media type", lambda: media.name == "Corvane Premium Glossy")

    def make_brighter(self):
        self.dialog.show_tab("Color Setting")
        self.dialog.move_to("check box", "Color Enhancement")
        self.dialog.press("space")
        self.open_disclosure("Advanced Color Settings")
        brightness = self.dialog.move_to("slider", "Brightness")
        self.assertEqual(brightness.value(), 0)
        self.dialog.press("Right", "Right", "Right")
        wait_for("the slider", lambda: brightness.value() == 3)
        field = self.dialog.find("spin button", "Brightness")
        wait_for("the slider's field", lambda: field.value() == 3)

    def press_print(self):
        self.dialog.move_to("push button", "Print")
        self.dialog.press("space")
        return self.dialog.enter_window(ALERT)

    def controls_that_are_called_something(self):
        """Their roles; fails for one that is called nothing."""
        controls = [seen for seen in self.dialog.shown() if seen.role in CONTROLS]
        nameless = [f"{seen} after {before}" for before, seen in zip([None, *controls], controls) if not seen.called()]
        self.assertEqual(nameless, [])
        return {seen.role for seen in controls}

    def test_every_control_says_what_it_is(self):
        roles = self.controls_that_are_called_something()
        self.dialog.show_tab("Print Setting")
        self.open_disclosure("Advanced Settings")
        pages = self.dialog.move_to("list", "Advanced Settings")
        for name in ("Direct JPEG Printing", "Two-Sided Drying", "Vertical Line Alignment", "Other Options"):
            roles |= self.controls_that_are_called_something()
            self.dialog.press("Down")
            wait_for(f"the page '{name}'", lambda: self.dialog.selected_in(pages) == name)
        roles |= self.controls_that_are_called_something()
        self.dialog.show_tab("Color Setting")
        self.open_disclosure("Advanced Color Settings")
        self.dialog.find("slider", "Blue")
        roles |= self.controls_that_are_called_something()
        self.dialog.show_tab("Summary")
        self.dialog.find("tree", "Summary")
        roles |= self.controls_that_are_called_something()
        self.assertEqual(roles, CONTROLS)

    def test_a_refused_choice_stays_and_says_why(self):
        self.choose_glossy_paper()
        tray = self.dialog.move_to("combo box", "Paper Source")
        self.dialog.press("Down")
        self.dialog.read_label('"Paper Source: Tray 2" cannot be used together with '
                               '"Media Type: Corvane Premium Glossy".')
        self.assertEqual(tray.name, "Tray 1")

    def test_escape_prints_nothing_and_printing_writes_what_was_chosen(self):
        self.choose_glossy_paper()
        self.make_brighter()
        alert = self.press_print()
        self.assertEqual(alert.role, "dialog")
        self.dialog.read_label("Load the paper in the tray sideways, in landscape orientation, so that a long edge enters "
                               "the printer first. Then click OK.")
        self.dialog.press("Escape")
        wait_for("the alert to go", lambda: [window.name for window in self.dialog.windows()] == [WINDOW])
        self.dialog.enter_window(WINDOW)
        self.assertFalse(self.out.exists())

        self.press_print()
        self.dialog.move_to("push button", "OK")
        self.dialog.press("space")
        self.assertEqual(self.dialog.exit_status(), 0, self.dialog.output.read_text(encoding="utf-8"))
        ticket = json.loads((self.out / "ticket.json").read_text(encoding="utf-8"))
        self.assertEqual((self.out / ticket["document"]).read_bytes(), DOCUMENT.read_bytes())
        expected = {"CVMediaType": "CorvaneGlossy", "CVResolution": "Photo", "CVInputSlot": "Tray1",
                    "CVColorEnhancement": "ON", "com.corvane.print.PrintSettings.CEV_Brightness": "3"}
        self.assertEqual({name: ticket["options"].get(name) for name in expected}, expected)


if __name__ == "__main__":
    unittest.main()
