"""A dialog as it must go: `Dialog` takes the commands of a session by their names and keeps what the host saw:
requests, notifications, alerts, marks and print settings."""

from expected_color_panel import ColorPanel
from expected_panel import SHOWN
from expected_print_panel import MAPPED, PrintPanel

BRIDGE = "CVInkPrintSettingNotification"


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
