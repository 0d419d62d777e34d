"""What the Color Settings panel must ask of the host, in order, in a second description of its rules."""

import re

from expected_controls import Box, Matrix, PopUp
from expected_panel import DIFFUSION, MONO, PREFIX, Panel

ADJUSTMENTS = {"CVBrightness": "Brightness", "CVContrast": "Contrast", "CVRed": "Red", "CVGreen": "Green",
               "CVBlue": "Blue"}


def integer_in(value):
    """A number cut toward zero; of a text, blanks, a sign and digits, else 0."""
    if isinstance(value, str):
        match = re.match(r"\s*([+-]?\d+)", value)
        return int(match[1]) if match else 0
    return int(value or 0)


class ColorPanel(Panel):
    """The Color Settings panel."""

    name = "color"
    info_keys = ("CVColorMatching", "CVHalfTonePattern", "CVColorEnhancement", *ADJUSTMENTS)
    disclosure = "advancedcolorItem"
    outlets = {
        "CVColorMatching": "colorMatchingMatrix",
        "CVHalfTonePattern": "ditherPopup",
        "CVColorEnhancement": "colorEnhanceButton",
    }

    def __init__(self, host):
        self.effects, self.adjusts = {}, False
        super().__init__(host)
        self.use_keys(self.info_keys)
        self.adjusts = True
        for key in ADJUSTMENTS:
            if key in self.ppd.options:
                self.bin[key] = integer_in(self.ppd.options[key].default)
        self.check_constraints()
        self.save()
        self.host.color = self  # from here on it hears what the other panel posts
        self.host.post(None)

    def make_view(self):
        if not self.view:
            self.view = True
            self.controls = {"CVColorMatching": Matrix(), "CVHalfTonePattern": PopUp(), "CVColorEnhancement": Box()}

    def check_constraints(self):
        if not self.adjusts or self.host.settings is None:
            return
        for key, name in ADJUSTMENTS.items():
            value = integer_in(self.host.setting(PREFIX + "CEV_" + name))
            self.bin[key] = value if -20 <= value <= 20 else 0
            if self.view:
                self.effects[key] = self.bin[key]

    def save(self):
        if not self.adjusts or self.host.settings is None:
            return
        for key, name in ADJUSTMENTS.items():
            if self.view:
                self.bin[key] = integer_in(self.effects.get(key))
            value = integer_in(self.bin.get(key))
            self.host.store(PREFIX + "CEV_" + name, str(value) if -20 <= value <= 20 else "0")

    def save_all(self):
        super().save_all()
        self.save()

    def populate(self):
        super().populate()
        for key in ADJUSTMENTS:
            self.effects[key] = integer_in(self.bin.get(key))

    def will_show(self):
        super().will_show()
        self.update_ui()

    def should_print(self):
        self.save()
        return True

    def hear(self, info):
        if info is None:
            mode, pattern = self.host.setting("CVMonoColor"), self.host.setting("CVHalfTonePattern")
            if mode is not None:
                self.set_flag(MONO, mode != "Color")
            if pattern in ("Dither", "Diffusion"):
                self.set_flag(DIFFUSION, pattern == "Diffusion")
        elif info["FromSetting"] == "CVMonoColor":
            self.set_flag(MONO, info["CVMonoColor"])
        elif info["FromSetting"] == "CVHalfTonePattern":
            self.set_flag(DIFFUSION, info["CVHalfTonePattern"])
            self.set_and_mark("Diffusion" if info["CVHalfTonePattern"] else "Dither", "CVHalfTonePattern")
