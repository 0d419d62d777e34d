"""What the Print Settings panel must ask of the host, in order, in a second description of its rules."""

import math
import re

from expected_controls import Box, PopUp
from expected_panel import (
    BORDERLESS, DIFFUSION, DUPLEX, ENVELOPE, FAX, LATER_MODEL, MATCHING, MONO, NO_BIDIR, NO_SLOW_DRYING, PREFIX,
    TRANSPARENCY, Panel,
)

PLAIN_KINDS = ("Plain", "PlainDuplex", "HagakiAtena")
POSTCARDS = ("Postcard", "Postcard.Fullbleed", "CvHagaki_B", "DoublePostcardRotated")
LANDSCAPE = ("A4", "Letter", "Executive", "B5")
PORTRAIT = (
    "A5", "A6", "A6.Fullbleed", "Postcard", "Postcard.Fullbleed", "DoublePostcardRotated", "4x6", "4x6.Fullbleed",
    "5x8", "5x8.Fullbleed", "3.5x5", "3.5x5.Fullbleed", "5x7", "5x7.Fullbleed", "Env10", "EnvDL", "EnvMonarch",
)
BY_HAND = ("A3", "B4", "Tabloid", "Legal", "EnvC5")
JAPANESE_ENVELOPES = ("EnvYou4", "EnvChou3", "EnvChou4", "EnvKaku2")

MAPPED = "com.apple.print.PageToPaperMappingMediaName"  # the setting that names a scaled job's paper


def base_name(paper):
    """The name without its last extension."""
    return paper.rsplit(".", 1)[0] if "." in paper else paper


def is_plain(media):
    return media in PLAIN_KINDS


def is_borderless(paper, size):
    return paper is not None and (paper.startswith(size + ".Fullbleed") or paper.startswith("Cv" + size + "_B"))


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


class PrintPanel(Panel):
    """The Print Settings panel."""

    name = "print"
    info_keys = (
        "CVMediaType", "CVResolution", "CVColorPaperThick", "CVInputSlot", "CVMonoColor", "CVSlowDrying", "CVBiDir",
        "MirrorPrint", "CVMirror", "CVReverse", "CVJpeg", "CVDuplexMode", "CVVertLineAlignA3B4Ledger",
        "CVVertLineAlignA4Letter", "CVVertLineAlignOther", "CVVertLineAlignDedicated",
    )
    enabled_by_population = info_keys[-4:]
    outlets = {
        "CVMediaType": "mediaTypePopup", "CVResolution": "resolutionPopup", "CVColorPaperThick": "paperThickPopup",
        "CVInputSlot": "paperFeedPopup", "CVMonoColor": "monoColorPopup", "CVSlowDrying": "slowDryButton",
        "CVBiDir": "biDirButton", "MirrorPrint": "mirrorButton", "CVMirror": "mirrorButton",
        "CVReverse": "reverseButton", "CVJpeg": "jpegPopup", "CVDuplexMode": "duplexPopup",
        "CVVertLineAlignA3B4Ledger": "vertLineAlignA3Button", "CVVertLineAlignA4Letter": "vertLineAlignA4Button",
        "CVVertLineAlignOther": "vertLineAlignOtherButton", "CVVertLineAlignDedicated": "vertLineAlignQT22Button",
    }

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
        qualities = ["PlainFast", "PlainNormal", "High", "Best"]
        return [each for each in qualities if each != "High" or not self.flags & DUPLEX]

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
                   "Glossy", "HagakiAtena", "HagakiUra"]
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

    def tell_loading(self, orientation):
        self.host.store(PREFIX + "Orientation", orientation)

    def check_paper(self):
        self.tell_loading("Portrait")
        paper = self.paper
        base = base_name(paper) if paper is not None else None
        if base in JAPANESE_ENVELOPES:
            return self.host.alert("window", "Envelope Alert1\n\nEnvelope Alert2") == "OK"
        if base in LANDSCAPE:
            if not self.host.keyed_alert("window", "Landscape Instruction"):
                return False
            self.tell_loading("Landscape")
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
            self.tell_loading("Landscape")
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
