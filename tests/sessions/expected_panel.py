"""What both panels do, in a second description that is made from the rules' wording.

It shares no line with the panels, so the two can only agree where both say the same.
"""

from expected_controls import Box, Matrix, PopUp

MATCHING, MONO, DUPLEX, NO_SLOW_DRYING, TRANSPARENCY = 0x1, 0x2, 0x4, 0x8, 0x10
BORDERLESS, ENVELOPE, NO_BIDIR, FAX, LATER_MODEL = 0x20, 0x40, 0x80, 0x200, 0x400
HELP, SHOWN, DIFFUSION = 0x800, 0x2000, 0x10000

PREFIX = "com.corvane.print.PrintSettings."


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
