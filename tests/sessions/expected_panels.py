"""What the panels must ask of the host, in order: a second description of their rules, made from the rules' wording.

It shares no line with the panels, so the two can only agree where both say the same. `Dialog` takes the commands of a
session by their names and keeps what the host saw: requests, notifications, alerts, marks and print settings.
"""

import math
import re

from expected_controls import Box, Matrix, PopUp

PLAIN_KINDS = ("Plain", "PlainDuplex", "HagakiAtena")
POSTCARDS = ("Postcard", "Postcard.Fullbleed", "CvHagaki_B", "DoublePostcardRotated")
LANDSCAPE = ("A4", "Letter", "Executive", "B5")
PORTRAIT = (
    "A5", "A6", "A6.Fullbleed", "Postcard", "Postcard.Fullbleed", "DoublePostcardRotated", "4x6", "4x6.Fullbleed",
    "5x8", "5x8.Fullbleed", "3.5x5", "3.5x5.Fullbleed", "5x7", "5x7.Fullbleed", "Env10", "EnvDL", "EnvMonarch",
)  # fmt: skip
BY_HAND = ("A3", "B4", "Tabloid", "Legal", "EnvC5")
JAPANESE_ENVELOPES = ("EnvYou4", "EnvChou3", "EnvChou4", "EnvKaku2")

MATCHING, MONO, DUPLEX, NO_SLOW_DRYING, TRANSPARENCY = 0x1, 0x2, 0x4, 0x8, 0x10
BORDERLESS, ENVELOPE, NO_BIDIR, FAX, LATER_MODEL = 0x20, 0x40, 0x80, 0x200, 0x400
HELP, SHOWN, DIFFUSION = 0x800, 0x2000, 0x10000

PREFIX = "com.corvane.print.PrintSettings."
MAPPED = "com.apple.print.PageToPaperMappingMediaName"
BRIDGE = "CVInkPrintSettingNotification"

ADJUSTMENTS = {"CVBrightness": "Brightness", "CVContrast": "Contrast", "CVRed": "Red", "CVGreen": "Green",
               "CVBlue": "Blue"}  # fmt: skip


def base_name(paper):
    """The name without its last extension."""
    return paper.rsplit(".", 1)[0] if "." in paper else paper


def is_plain(media):
    return media in PLAIN_KINDS


def is_borderless(paper, size):
    return paper is not None and (paper.startswith(size + ".Fullbleed") or paper.startswith("Cv" + size + "_B"))


def integer_in(value):
    """A number cut toward zero; of a text, blanks, a sign and digits, else 0."""
    if isinstance(value, str):
        match = re.match(r"\s*([+-]?\d+)", value)
        return int(match[1]) if match else 0
    return int(value or 0)


def is_later_model(ppd):
    if int(ppd.attributes.get("cupsModelNumber", 0)) >= 11:
        return True
    parts = ppd.attributes.get("ModelName", "").split("-")
    if len(parts) != 2:
        return False
    suffix = parts[1]
    if suffix[0] == "J":
        digits = re.sub(r"^[A-Za-z]+|[A-Za-z]+$", "", suffix)
        if len(digits) > 3:
            return True
        return digits[1] in "123456789" if digits[0] == "6" else digits[0] in "789"
    if suffix[3] != "C":
        return True
    return suffix[1] in "89" if suffix[0] == "3" else suffix[0] in "456789"


class Panel:
    """What both panels do."""

    name = ""
    info_keys = ()
    disclosure = "advancedItem"
    enabled_by_population = ()

    def __init__(self, host):
        self.host, self.ppd = host, host.ppd
        self.bin, self.keys, self.flags = {}, None, 0
        self.view = self.populated = False
        self.controls, self.paper, self.disclosed = {}, None, False
        self.check_model_name()
        self.restore()
        self.check_constraints()

    # Overridden.

    def check_model_name(self):
        pass

    def set_defaults(self):
        pass

    def check_constraints(self):
        pass

    def after_control_constraints(self):
        pass

    def key_was_shown(self, key):
        pass

    def was_reverted(self, key):
        pass

    # Values.

    def set_flag(self, bit, on):
        self.flags = self.flags | bit if on else self.flags & ~bit

    def use_keys(self, keys):
        self.keys = [key for key in keys if key in self.ppd.options]

    def control(self, key):
        return self.controls.get(key) if self.view else None

    def set_and_mark(self, value, key):
        if self.bin.get(key) == value or not self.host.ask(key, value):
            return
        self.bin[key] = value

    def check_fax(self):
        self.set_flag(FAX, self.host.marks.get("CVOutput") == "FAX")

    def check_color_sync(self):
        if "APSupportsCustomColorMatching" not in self.ppd.attributes:
            self.set_flag(MATCHING, False)
        elif self.host.settings is not None:
            mode = self.host.settings.get("AP_ColorMatchingMode")
            self.set_flag(MATCHING, mode != "AP_ApplicationColorMatching")

    def restore_disclosure(self):
        if self.view:
            self.disclosed = bool(self.host.setting(PREFIX + self.disclosure))

    def restore(self):
        self.check_fax()
        self.set_defaults()
        for key in self.keys or ():
            self.bin[key] = self.host.marks.get(key) or self.ppd.options[key].default
        self.check_color_sync()
        self.restore_disclosure()
        self.check_constraints()
        if self.populated:
            self.update_ui()
        self.save_all()

    def save_all(self):
        if self.populated:
            self.read_controls()
            self.host.store(PREFIX + self.disclosure, self.disclosed)

    def show_value(self, control, value):
        if isinstance(control, Box):
            control.on = value in ("ON", "True")
        elif value is not None:
            control.select(value)

    def update_key(self, key):
        control = self.control(key)
        if isinstance(control, PopUp):
            self.update_popup(control, key)
        elif control is not None:
            self.show_value(control, self.bin.get(key))
        self.key_was_shown(key)

    def update_popup(self, popup, key):
        value = self.bin.get(key)
        if popup.select(value) or key != "CVMediaType":
            return
        substitute = "Glossy" if value == "HagakiUra" else "Plain"
        if popup.select(substitute) and value != "PlainDuplex":
            self.set_and_mark(substitute, key)

    def update_ui(self):
        for key in self.keys or ():
            self.update_key(key)
        self.check_control_constraints()

    def check_control_constraints(self):
        for key in self.keys or ():
            if self.control(key) is not None:
                self.control(key).enabled = not self.flags & FAX
        self.after_control_constraints()

    def read_controls(self):
        self.check_control_constraints()
        for key in self.keys or ():
            control = self.control(key)
            if isinstance(control, Box):
                on, off = ("True", "False") if key == "MirrorPrint" else ("ON", "OFF")
                self.set_and_mark(on if control.on else off, key)
                if not control.enabled and key != "CVSlowDrying" and not self.flags & FAX:
                    self.set_and_mark(off, key)
            elif control is not None and control.selected_keyword() is not None:
                two_sided = self.flags & DUPLEX and key == "CVMediaType"
                self.set_and_mark("PlainDuplex" if two_sided else control.selected_keyword(), key)

    def request(self, key):
        """The action of the control of this key."""
        control = self.control(key)
        if isinstance(control, Box):
            words = ("False", "True") if key == "MirrorPrint" else ("OFF", "ON")
            value = words[control.on]
        else:
            value = control.selected_keyword()
        if value is not None:
            if self.host.ask(key, value):
                self.bin[key] = value
                self.update_key(key)
            else:
                shown = self.bin.get(key)
                self.show_value(control, "Plain" if key == "CVMediaType" and shown == "PlainDuplex" else shown)
                self.was_reverted(key)
        self.save_all()

    def was_marked(self, option, choice):
        if option in (self.keys or ()):
            self.bin[option] = choice
            if self.view:
                self.update_key(option)

    # Showing.

    def make_view(self):
        self.view = True

    def populate(self):
        for key in self.keys:
            control, option = self.control(key), self.ppd.options[key]
            if control is None:
                continue
            control.visible = True
            if isinstance(control, Matrix):
                control.fill(option.choices)
            elif isinstance(control, PopUp):
                control.clear()
                for choice, text in option.choices.items():
                    if text[:6] != "Hagaki" and choice != "PlainDuplex":
                        control.add(text, choice)
            else:
                control.enabled = key in self.enabled_by_population
        self.disclosed = False
        self.set_flag(HELP, True)  # the books stand beside the bundle
        self.populated = True
        self.restore_disclosure()

    def will_show(self):
        self.set_flag(SHOWN, True)
        self.check_color_sync()
        self.check_fax()
        if not self.populated:
            self.populate()


class PrintPanel(Panel):
    """The Print Settings panel."""

    name = "print"
    info_keys = (
        "CVMediaType", "CVResolution", "CVColorPaperThick", "CVInputSlot", "CVMonoColor", "CVSlowDrying", "CVBiDir",
        "MirrorPrint", "CVMirror", "CVReverse", "CVJpeg", "CVDuplexMode", "CVVertLineAlignA3B4Ledger",
        "CVVertLineAlignA4Letter", "CVVertLineAlignOther", "CVVertLineAlignDedicated",
    )  # fmt: skip
    enabled_by_population = info_keys[-4:]
    outlets = {
        "CVMediaType": "mediaTypePopup", "CVResolution": "resolutionPopup", "CVColorPaperThick": "paperThickPopup",
        "CVInputSlot": "paperFeedPopup", "CVMonoColor": "monoColorPopup", "CVSlowDrying": "slowDryButton",
        "CVBiDir": "biDirButton", "MirrorPrint": "mirrorButton", "CVMirror": "mirrorButton",
        "CVReverse": "reverseButton", "CVJpeg": "jpegPopup", "CVDuplexMode": "duplexPopup",
        "CVVertLineAlignA3B4Ledger": "vertLineAlignA3Button", "CVVertLineAlignA4Letter": "vertLineAlignA4Button",
        "CVVertLineAlignOther": "vertLineAlignOtherButton", "CVVertLineAlignDedicated": "vertLineAlignQT22Button",
    }  # fmt: skip

    def __init__(self, host):
        super().__init__(host)
        self.use_keys(self.info_keys)
        self.read_page_setup()
        self.set_defaults()
        self.follows_host = True

    def make_view(self):
        if self.view:
            return
        self.view = True
        by_outlet = {}
        for key, outlet in self.outlets.items():
            if key == "CVVertLineAlignDedicated" and self.host.languages[0] != "ja":
                continue  # bound in Japanese only
            tag = {"mediaTypePopup": 10, "resolutionPopup": 5}.get(outlet, 0)
            by_outlet.setdefault(outlet, PopUp(tag) if outlet.endswith("Popup") else Box())
            self.controls[key] = by_outlet[outlet]

    def check_model_name(self):
        self.set_flag(LATER_MODEL, is_later_model(self.ppd))

    # The paper.

    def paper_name(self):
        mapped = self.host.setting(MAPPED)
        if mapped is not None:
            return mapped
        if self.host.settings is None:
            self.follows_host = False  # it observes nothing any more
            return None
        return self.host.paper["name"] if self.host.paper else None

    def is_out_of_limits(self):
        paper = self.host.paper
        if not paper or paper["ppdName"] is not None or paper["width"] is None or paper["height"] is None:
            return False
        widths, heights = self.ppd.limits["Width"], self.ppd.limits["Height"]
        return not (widths[0] <= paper["width"] <= widths[1] and heights[0] <= paper["height"] <= heights[1])

    def read_page_setup(self):
        name = self.paper_name()
        if name is None:
            return False
        if name == "Letter" and self.is_out_of_limits():
            name = "UnsupportedPaper"
        if name == self.paper:
            return False
        self.paper = name
        self.set_flag(BORDERLESS, "Fullbleed" in name or "_B" in name)
        self.set_flag(ENVELOPE, name.startswith("Env"))
        if name.startswith("Custom"):
            if self.bin.get("CVColorPaperThick") == "Env":
                self.set_flag(ENVELOPE, True)
        else:
            thickness = "Env" if self.flags & ENVELOPE else "Regular"
            self.set_and_mark(thickness, "CVColorPaperThick")
            if self.populated:
                self.controls["CVColorPaperThick"].select(thickness)
        self.set_flag(NO_BIDIR, bool(self.flags & ENVELOPE) or name in POSTCARDS)
        if not self.flags & NO_BIDIR:
            plain = is_plain(self.bin.get("CVMediaType"))
            self.bin["CVBiDir"] = "ON" if plain else "OFF"
            if self.populated:
                self.controls["CVBiDir"].on = plain
        return True

    def paper_did_change(self):
        if not self.follows_host or not self.read_page_setup():
            return
        reset = bool(self.flags & BORDERLESS) and (
            self.bin.get("CVMediaType") == "Transparencies" or self.bin.get("CVResolution") == "PlainFast"
        )
        if reset and self.populated:
            self.host.alert("alert", "Borderless Alert")
        self.check_constraints()
        if self.populated:
            self.check_control_constraints()
            self.follow_media(reset)
            self.update_ui()

    def custom_envelope(self):
        if self.paper is None or not self.paper.startswith("Custom"):
            return False
        envelope = self.bin.get("CVColorPaperThick") == "Env"
        self.set_flag(ENVELOPE, envelope)
        self.set_flag(NO_BIDIR, envelope)
        return envelope

    def follow_paper_feed(self):
        if self.flags & BORDERLESS:
            self.change_items("CVMediaType", ["Transparencies"], False, False)
            self.set_flag(TRANSPARENCY, False)

    # Two-sided printing.

    def check_duplex(self):
        has_medium = "PlainDuplex" in self.ppd.options["CVMediaType"].choices
        duplex = self.ppd.options.get("Duplex")
        self.set_flag(DUPLEX, has_medium and duplex is not None and self.host.marks["Duplex"] != duplex.default)

    def duplex_did_change(self):
        if not self.follows_host:
            return
        before = self.flags & DUPLEX
        self.check_duplex()
        if self.flags & DUPLEX:
            if before or self.bin.get("CVMediaType") not in ("PlainDuplex", "Plain"):
                return
            self.set_and_mark("PlainDuplex", "CVMediaType")
            self.use_default_quality("PlainDuplex")
        if self.populated:
            self.update_ui()

    # Media and quality.

    def default_quality(self, media):
        if is_plain(media):
            return "Best" if is_borderless(self.paper, "A3") else "PlainNormal"
        return "Normal" if media == "Transparencies" else "Photo"

    def use_default_quality(self, media):
        self.set_and_mark(self.default_quality(media), "CVResolution")

    def allowed_qualities(self, media):
        if media in ("Inkjet", "CorvaneQT20Matte"):
            return ["Normal", "Photo"]
        if media in ("CorvaneGlossy", "CorvaneGlossyR", "Glossy", "HagakiUra"):
            return ["Fast", "Photo", "Best"]
        if media == "Transparencies":
            return ["Normal"]
        if not is_plain(media):
            self.set_and_mark("Plain", "CVMediaType")
            self.use_default_quality("Plain")
        return ["PlainFast", "PlainNormal", "Best"] if self.flags & DUPLEX else ["PlainFast", "PlainNormal", "High", "Best"]

    def shown_media(self):
        popup = self.control("CVMediaType")
        return popup.selected_keyword() if popup else None

    def change_items(self, key, keywords, enable, to_default):
        popup = self.control(key)
        if popup is None:
            return
        if enable and popup.tag == 5:
            popup.clear()
            texts = self.ppd.options[key].choices if self.populated else {}
            for keyword in keywords:
                if keyword in texts:
                    popup.add(texts[keyword], keyword)
        else:
            for item in popup.items:
                if item["keyword"] in keywords:
                    item["enabled"] = enable
        if not to_default and popup.selected >= 0 and popup.items[popup.selected]["enabled"]:
            return
        if key == "CVMediaType":
            popup.select("Plain")
        elif key == "CVResolution":
            popup.select(self.default_quality(self.shown_media()))

    def follow_media(self, reset):
        media = self.shown_media()
        if not self.flags & MATCHING:
            self.set_flag(NO_SLOW_DRYING, True)
        else:
            self.set_flag(NO_SLOW_DRYING, media not in ("Plain", "HagakiAtena"))
            if reset and self.control("CVSlowDrying"):
                self.controls["CVSlowDrying"].on = media == "HagakiAtena"
        self.change_items("CVResolution", self.allowed_qualities(media), True, reset)
        if self.flags & BORDERLESS:
            on_a3 = ["PlainFast", "PlainNormal", "High"]
            self.change_items("CVResolution", on_a3 if is_borderless(self.paper, "A3") else ["PlainFast"], False, False)
        if reset and self.control("CVBiDir"):
            self.controls["CVBiDir"].on = is_plain(media)
        self.set_flag(DIFFUSION, media != "Plain")
        if reset:
            self.host.post_setting("CVHalfTonePattern", bool(self.flags & DIFFUSION))
        self.set_flag(TRANSPARENCY, media == "Transparencies")

    def follow_color_mode(self):
        self.set_flag(MONO, self.bin.get("CVMonoColor") == "Mono")
        self.host.post_setting("CVMonoColor", bool(self.flags & MONO))

    # Constraints.

    def check_constraints(self):
        media = self.bin.get("CVMediaType")
        if media is not None and self.bin.get("CVResolution") not in self.allowed_qualities(media):
            self.use_default_quality(media)
        if self.flags & BORDERLESS:
            if self.bin.get("CVMediaType") == "Transparencies":
                self.set_and_mark("Plain", "CVMediaType")
                self.use_default_quality("Plain")
                self.set_flag(NO_SLOW_DRYING, True)
                self.set_and_mark("ON", "CVBiDir")
            elif is_plain(self.bin.get("CVMediaType")):
                if is_borderless(self.paper, "A3") or self.bin.get("CVResolution") == "PlainFast":
                    self.use_default_quality("Plain")
        offered = ["Plain", "Inkjet", "Transparencies", "CorvaneGlossyR", "CorvaneGlossy", "CorvaneQT20Matte",
                   "Glossy", "HagakiAtena", "HagakiUra"]  # fmt: skip
        self.change_items("CVMediaType", offered, True, True)
        self.custom_envelope()
        self.set_and_mark("OFF" if self.flags & NO_BIDIR else "ON", "CVBiDir")
        self.set_flag(TRANSPARENCY, self.bin.get("CVMediaType") == "Transparencies")
        if self.flags & DUPLEX:
            self.set_and_mark("PlainDuplex", "CVMediaType")
        self.follow_color_mode()

    def after_control_constraints(self):
        if self.flags & FAX or not self.view:
            return
        if self.flags & BORDERLESS:
            self.change_items("CVMediaType", ["Transparencies"], False, False)
        bidir, mirror = self.controls["CVBiDir"], self.controls["MirrorPrint"]
        if self.flags & NO_BIDIR:
            bidir.enabled = False
        if self.flags & NO_SLOW_DRYING:
            self.controls["CVSlowDrying"].enabled = False
        if self.flags & TRANSPARENCY:
            mirror.enabled = False
        self.controls["CVJpeg"].enabled = True
        quality, media = self.controls["CVResolution"].selected_keyword(), self.shown_media()
        if quality in ("Photo", "Best") or media in ("Inkjet", "CorvaneQT20Matte", "Transparencies"):
            bidir.enabled = bidir.on = False

    def set_defaults(self):
        for key in self.keys or ():
            default, marked = self.ppd.options[key].default, self.host.marks.get(key)
            if self.bin.get(key) == default:
                continue
            if marked == default:
                if key == "CVColorPaperThick" and self.flags & ENVELOPE:
                    self.set_and_mark("Env", key)
                elif key == "CVBiDir" and self.flags & NO_BIDIR:
                    self.set_and_mark("OFF", key)
            elif marked is None and self.host.ask(key, default):
                self.bin[key] = default

    # Changes.

    def key_was_shown(self, key):
        if key == "CVMediaType":
            self.follow_media(False)
        elif key == "CVInputSlot":
            self.follow_paper_feed()
        elif key == "CVMonoColor":
            self.follow_color_mode()

    def was_reverted(self, key):
        if key == "CVMonoColor":
            self.follow_color_mode()
        elif key == "CVMediaType":
            self.follow_media(True)
            self.use_default_quality(self.bin.get("CVMediaType"))

    def request(self, key):
        super().request(key)
        media_is_plain = is_plain(self.bin.get("CVMediaType"))
        if key == "CVMediaType":
            self.follow_media(True)
            self.read_controls()
        elif key == "CVResolution":
            if self.bin.get("CVResolution") == "Best" and not media_is_plain:
                self.host.keyed_alert("sheet", "Best Alert")
        elif key == "CVInputSlot":
            self.follow_paper_feed()
        elif key == "CVMonoColor":
            self.follow_color_mode()
        elif key == "CVColorPaperThick":
            if self.custom_envelope():
                self.set_and_mark("OFF", "CVBiDir")
            elif media_is_plain:
                self.set_and_mark("ON", "CVBiDir")
            self.check_control_constraints()
            self.update_key("CVBiDir")

    def was_marked(self, option, choice):
        super().was_marked(option, choice)
        if option == "CVMediaType":
            self.follow_media(True)
            self.use_default_quality(choice)
            self.check_control_constraints()

    def will_show(self):
        super().will_show()
        self.check_duplex()
        self.update_ui()

    def save(self):
        self.check_duplex()
        two_sided = self.flags & DUPLEX
        if self.populated:
            if self.shown_media() == "Plain":
                self.set_and_mark("PlainDuplex" if two_sided else "Plain", "CVMediaType")
        elif two_sided:
            self.set_and_mark("PlainDuplex", "CVMediaType")
            self.set_and_mark("PlainNormal", "CVResolution")
        elif self.bin.get("CVMediaType") == "PlainDuplex":
            self.set_and_mark("Plain", "CVMediaType")

    # Printing.

    def should_print(self):
        self.save()
        if self.host.marks.get("CVOutput") == "FAX":
            return True
        self.make_view()
        return self.check_paper()

    def check_paper(self):
        loaded = lambda orientation: self.host.store(PREFIX + "Orientation", orientation)
        loaded("Portrait")
        paper = self.paper
        base = base_name(paper) if paper is not None else None
        if base in JAPANESE_ENVELOPES:
            return self.host.alert("window", "Envelope Alert1\n\nEnvelope Alert2") == "OK"
        if base in LANDSCAPE:
            if not self.host.keyed_alert("window", "Landscape Instruction"):
                return False
            loaded("Landscape")
            return True
        if paper in PORTRAIT:
            return self.host.keyed_alert("window", "Portrait Instruction")
        if base in BY_HAND:
            return self.host.keyed_alert("window", "Manual Instruction")
        if paper == "UnsupportedPaper":
            return self.refuse_paper()
        size = self.host.paper
        if not size or size["width"] is None or size["height"] is None:
            return False
        width, height = math.floor(size["width"] + 0.5), math.floor(size["height"] + 0.5)
        (narrowest, widest), (_, highest) = self.ppd.limits["Width"], self.ppd.limits["Height"]
        within = narrowest <= width <= widest
        if 360 <= width <= 612 and 612 < height <= 842:
            if self.host.alert("window", "Landscape Instruction") != "OK":
                return False
            loaded("Landscape")
            return True
        if within and 360 <= height <= 612:
            return self.host.alert("window", "Portrait Instruction") == "OK"
        by_hand = (
            (within and 842 < height <= highest)
            or (narrowest <= width < 360 and 612 < height <= 842)
            or (612 < width <= widest and 612 < height <= 842)
        )
        if by_hand:
            return self.host.alert("window", "Manual Instruction") == "OK"
        return self.refuse_paper()

    def refuse_paper(self):
        texts = ["Unsupported Paper MSG%d" % number for number in range(1, 5)]
        self.host.alert("panel", texts[0] + "\n\n" + "\n".join(texts[1:]))
        return False


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


class Dialog:
    """A dialog: the host's side of it and its two panels. Its operations bear the names of a session's commands and
    answer whether the command is carried out."""

    def __init__(self, ppd, mark=None, settings=None, paper=None, languages=("en",), refuse=None):
        self.ppd, self.languages = ppd, list(languages)
        self.marks = {keyword: option.default for keyword, option in ppd.options.items()}
        self.marks["PageRegion"] = None  # the page size stands for both
        self.marks.update(mark or {})
        self.settings, self.refused = dict(settings or {}), refuse or {}
        self.paper = paper or self.ppd_paper(self.marks["PageSize"])
        if self.paper["ppdName"]:
            self.marks["PageSize"] = self.paper["ppdName"]
        self.defaults, self.answers = {}, []
        self.window_box = self.box = False  # the paper window keeps its box's state, a sheet begins with its own off
        self.color, self.restored = None, False
        self.asked, self.posted, self.alerts = [], [], []
        self.print = PrintPanel(self)
        ColorPanel(self)
        self.panels = {"print": self.print, "color": self.color}

    def ppd_paper(self, name):
        width, height = self.ppd.sizes[name]
        return {"name": name, "ppdName": name, "width": width, "height": height}

    # What the panels use.

    def setting(self, key):
        return None if self.settings is None else self.settings.get(key)

    def store(self, key, value):
        if self.settings is not None:
            self.settings[key] = value

    def ask(self, option, choice):
        accepted = self.accepts(option, choice)
        self.asked.append([option, choice, accepted])
        if accepted:
            self.marks[option] = choice
        return accepted

    def accepts(self, option, choice):
        refused = self.refused.get(option, ())
        if refused is True or choice in refused:
            return False
        if option not in self.ppd.options or choice not in self.ppd.options[option].choices:
            return False
        if self.marks.get(option) == choice:
            return True
        return not any(
            one == (option, choice) and self.marks.get(other[0]) == other[1]
            for pair in self.ppd.constraints
            for one, other in (pair, pair[::-1])
        )

    def post(self, info):
        self.posted.append([BRIDGE, info])
        if self.color:
            self.color.hear(info)

    def post_setting(self, setting, on):
        self.post({"FromSetting": setting, setting: on})

    def alert(self, how, message):
        """Shows it; the key of the button that answers it."""
        answer = self.answers.pop(0) if self.answers else {}
        self.alerts.append([how, message])
        if how == "window":
            self.window_box = answer.get("suppress", self.window_box)
        self.box = self.window_box if how == "window" else answer.get("suppress", False)
        return answer.get("button", "OK")

    def keyed_alert(self, how, key):
        """Shows an alert that the user may suppress; whether it lets the job go on."""
        if self.defaults.get(key) is False:
            return True
        button = self.alert(how, key)
        if how == "sheet" or button == "OK":
            self.defaults[key] = not self.box
        return button == "OK"

    # Commands.

    def view(self, panel):
        self.panels[panel].make_view()
        return True

    def show(self, panel):
        if not self.restored:
            self.restore("print")
            self.restore("color")
        self.panels[panel].make_view()
        self.panels[panel].will_show()
        return True

    def hide(self, panel):
        self.panels[panel].set_flag(SHOWN, False)
        return True

    def restore(self, panel):
        self.restored = True
        self.panels[panel].restore()
        return True

    def save(self, panel):
        self.panels[panel].save()
        return True

    def summary(self, panel):
        self.panels[panel].restore()
        return True

    def choose(self, panel, control, choice):
        key, model = self.usable(panel, control)
        if model is None or not model.offers(choice):
            return False
        model.select(choice)
        self.panels[panel].request(key)
        return True

    def check(self, panel, control, on):
        key, model = self.usable(panel, control)
        if model is None:
            return False
        model.on = on
        self.panels[panel].request(key)
        return True

    def usable(self, name, control):
        panel = self.panels[name]
        for key, outlet in panel.outlets.items():
            model = panel.control(key)
            if outlet == control and model and model.visible and model.enabled and key in panel.keys:
                return key, model
        return None, None

    def mark(self, option, choice):
        self.marks[option] = choice
        for panel in self.panels.values():
            panel.was_marked(option, choice)
        if option == "Duplex":
            self.print.duplex_did_change()
        return True

    def change_paper(self, paper, mapped=False):
        if mapped is None:
            self.settings.pop(MAPPED, None)
        elif mapped:
            self.settings[MAPPED] = mapped
        self.paper = paper
        if paper and paper["ppdName"] in self.ppd.sizes:
            self.marks["PageSize"] = paper["ppdName"]
        self.print.paper_did_change()
        return True

    def set_setting(self, key, value):
        if value is None:
            self.settings.pop(key, None)
        else:
            self.settings[key] = value
        return True

    def refuse(self, options):
        self.refused = options
        return True

    def answer_with(self, alerts):
        self.answers = list(alerts)
        return True

    def print_job(self):
        """Whether the job goes."""
        return self.print.should_print() and self.color.should_print()

    def job_options(self):
        managed = [key for panel in self.panels.values() for key in panel.keys]
        options = {
            option: choice
            for option, choice in self.marks.items()
            if choice is not None
            and option not in ("PageSize", "PageRegion")
            and (option in managed or choice != self.ppd.options[option].default)
        }
        if self.setting(MAPPED) is not None:
            options.update({"PageSize": self.settings[MAPPED], "print-scaling": "fit"})
        elif self.paper["ppdName"] is not None:
            options["PageSize"] = self.paper["ppdName"]
        else:
            options["PageSize"] = "Custom.%gx%g" % (self.paper["width"], self.paper["height"])
        for key, value in (self.settings or {}).items():
            options.setdefault(key, str(value).lower() if isinstance(value, bool) else str(value))
        return options
