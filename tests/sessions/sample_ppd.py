"""Reads a sample printer's PPD: options, choices, defaults, constraints. Only what an expectation needs."""

import dataclasses
import pathlib
import re

MODELS = pathlib.Path(__file__).resolve().parents[2] / "resources" / "models"


@dataclasses.dataclass
class Option:
    keyword: str
    text: str
    default: str = ""
    choices: dict = dataclasses.field(default_factory=dict)  # keyword -> text, in the PPD's order


@dataclasses.dataclass
class Ppd:
    options: dict  # keyword -> Option, in the PPD's order
    constraints: list  # ((option, choice), (option, choice))
    attributes: dict  # keyword -> value
    sizes: dict  # page size -> (width, height), points
    limits: dict  # "Width" and "Height" of custom sizes -> (smallest, largest), points


def read_sample(model, language="en"):
    """The PPD of a sample printer, such as "corvane-a3", with its texts in this language."""
    text = (MODELS / (model + ".ppd")).read_text(encoding="utf-8")
    ppd = read_text(text)
    for option, choice, translation in re.findall(r"^\*%s\.(\w+) ([^/]+)/([^:]*):" % language, text, re.MULTILINE):
        if choice in ppd.options and option == "Translation":
            ppd.options[choice].text = translation
        elif option in ppd.options:
            ppd.options[option].choices[choice] = translation
    return ppd


def read_text(text):
    ppd = Ppd({}, [], {}, {}, {})
    for line in text.splitlines():
        if match := re.match(r"\*OpenUI \*(\w+)/([^:]*): \w+", line):
            ppd.options[match[1]] = Option(match[1], match[2])
        elif match := re.match(r"\*UIConstraints: \*(\w+) (\S+) \*(\w+) (\S+)", line):
            ppd.constraints.append(((match[1], match[2]), (match[3], match[4])))
        elif match := re.match(r'\*PaperDimension ([^/]+)/[^:]*: "(\d+) (\d+)"', line):
            ppd.sizes[match[1]] = (int(match[2]), int(match[3]))
        elif match := re.match(r"\*ParamCustomPageSize (Width|Height): \d points (\d+) (\d+)", line):
            ppd.limits[match[1]] = (int(match[2]), int(match[3]))
        elif (match := re.match(r"\*Default(\w+): (\S+)", line)) and match[1] in ppd.options:
            ppd.options[match[1]].default = match[2]
        elif (match := re.match(r"\*(\w+) ([^/]+)/([^:]*): \"", line)) and match[1] in ppd.options:
            ppd.options[match[1]].choices[match[2]] = match[3]
        elif match := re.match(r'\*(\w+): "?([^"]*)"?$', line):
            ppd.attributes.setdefault(match[1], match[2])
    return ppd
