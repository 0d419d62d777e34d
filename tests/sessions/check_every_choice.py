"""Every choice of every option of the sample printer, the five adjustments and the paper's orientation reach a queue's
filter as the job's ticket says.

As root, `--plain-user` runs the server and the session as a plain user.
"""

import sys
import unittest

import sample_ppd
from print_server import A3, PrintServer, USER, booleans_without_case, parse_options, sent_by_us
from session_program import SOURCES, SessionProgram

DOCUMENT = SOURCES / "resources" / "samples" / "picture.pdf"
SETTINGS = "com.corvane.print.PrintSettings."
ADJUSTMENTS = ("Brightness", "Contrast", "Red", "Green", "Blue")
FOLLOWS_THE_PAPER = "PageRegion"
NEEDS_ANOTHER_MEDIUM = {("CVResolution", "Fast"): "Glossy"}
# Media that the panel shows no item for, and replaces: they are printed on as long as it is not shown.
NEVER_SHOWN = ("HagakiAtena", "HagakiUra")


class EveryChoice(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = PrintServer()
        cls.addClassCleanup(cls.server.end)
        places = cls.server.places
        cls.queue = {"server": places["PRIVATE_CUPSD_SOCKET"], "queue": places["PRIVATE_CUPSD_QUEUE"]}

    def setUp(self):
        self.program = self.enterContext(SessionProgram(user=USER))

    def do(self, command, **members):
        answer = self.program.answer(command, **members)
        self.assertIs(answer["ok"], True, answer)
        return answer

    def check_arrival(self, answer):
        """The ticket's options, after the filter was seen to have got the same."""
        ticket = answer["ticket"]["options"]
        arguments, data = self.server.record_of(answer["job"])
        received = sent_by_us(parse_options(arguments["options"]))
        self.assertEqual(booleans_without_case(received), booleans_without_case(ticket))
        self.assertEqual(data, DOCUMENT.read_bytes())
        return ticket

    def test_each_choice_arrives(self):
        ppd = sample_ppd.read_sample("corvane-a3")
        answers, wanted = [], set()
        for marks in self.rounds(ppd):
            panels = self.do("open", ppd=A3, languages=["en"], mark=marks)["panels"]
            for panel in ("print", "color") if marks.get("CVMediaType") not in NEVER_SHOWN else ():
                self.do("show", panel=panel)
            managed = {key for panel in panels for key in panel["keys"]} | {"PageSize"}
            wanted |= {(name, choice) for name, choice in marks.items()
                       if name in managed or choice != ppd.options[name].default}
            answers.append(self.do("print", file=str(DOCUMENT), to=self.queue))
            self.assertIs(answers[-1]["go"], True, marks)
        arrived = set()
        for answer in answers:
            arrived |= set(self.check_arrival(answer).items())
        self.assertEqual(wanted - arrived, set())

    @staticmethod
    def rounds(ppd):
        """The marks to print with: choices that exclude no others go together, each other choice goes alone."""
        together = ["PageSize", *("CV" + name for name in ADJUSTMENTS)]
        choices = {name: list(option.choices) for name, option in ppd.options.items()}
        for turn in range(max(len(choices[name]) for name in together)):
            yield {name: choices[name][turn % len(choices[name])] for name in together}
        for name in choices:
            if name not in together and name != FOLLOWS_THE_PAPER:
                for choice in choices[name]:
                    medium = NEEDS_ANOTHER_MEDIUM.get((name, choice))
                    yield {name: choice, **({"CVMediaType": medium} if medium else {})}

    def test_the_adjustments_and_the_orientation_arrive(self):
        answers, entered = [], []
        for values in ((-20, -20, -20, -20, -20), (20, 20, 20, 20, 20), (-1, 0, 1, -7, 12)):
            self.do("open", ppd=A3, languages=["en"], mark={"CVColorEnhancement": "ON"})
            for panel in ("print", "color"):
                self.do("show", panel=panel)
            for name, value in zip(ADJUSTMENTS, values):
                self.do("adjust", panel="color", control=name.lower() + "Field", value=value)
            for paper, orientation in (("A4", "Landscape"), ("A3", "Portrait")):
                width, height = sample_ppd.read_sample("corvane-a3").sizes[paper]
                self.do("paper", paper={"name": paper, "ppdName": paper, "width": width, "height": height})
                answers.append(self.do("print", file=str(DOCUMENT), to=self.queue))
                entered.append({SETTINGS + "Orientation": orientation, "PageSize": paper,
                                **{SETTINGS + "CEV_" + name: str(value) for name, value in zip(ADJUSTMENTS, values)}})
        for answer, expected in zip(answers, entered):
            arrived = self.check_arrival(answer)
            self.assertEqual({name: arrived[name] for name in expected}, expected)


if __name__ == "__main__":
    unittest.main(argv=[argument for argument in sys.argv if argument != "--plain-user"])
