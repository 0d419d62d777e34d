#!/usr/bin/env python3
"""Lint of the view descriptions: what neither Qt Designer nor the form loader would complain about.

Forms checks the five forms, Lint checks that the rules find what they are there for.
Run with the name of one class, or without a name for both.
"""

import pathlib
import re
import unittest
import xml.etree.ElementTree as ElementTree
from typing import NamedTuple

RESOURCES = pathlib.Path(__file__).resolve().parents[2] / "resources"
VIEWS = RESOURCES / "views"
LANGUAGES = ("en", "ja", "de", "fr", "es", "zh_CN")

PRINT_PANEL = "CVInkQuality12"
COLOR_PANEL = "CVInkColorSetting"
ALERTS = ("envAlertWindow", "normalPaperAlertWindow", "customPaperAlertWindow")

# Which models stand for the widgets of a class: the values of the property "kind", "" where there is none.
KINDS = {
    "QComboBox": {""}, "QGroupBox": {"", "matrix"}, "QCheckBox": {""}, "QToolButton": {""}, "QPushButton": {""},
    "QLabel": {"", "image"}, "QSpinBox": {""}, "QSlider": {""}, "QStackedWidget": {""}, "QListView": {""},
    "QFrame": {""}, "QWidget": {""}, "QDialog": {""},
}
ACTING = {"QComboBox", "QCheckBox", "QToolButton", "QPushButton", "QSpinBox", "QSlider"}   # and the matrix
FOCUSED = ACTING | {"QListView"}

# Properties of ours: the element that holds the value, and the classes that may bear it.
ANY = set(KINDS)
OWN_PROPERTIES = {
    # name                   value     classes
    "kind":                 ("string", {"QGroupBox", "QLabel"}),
    "tag":                  ("number", {"QComboBox", "QSpinBox", "QSlider"}),
    "action":               ("string", ACTING | {"QGroupBox"}),
    "bindValue":            ("string", {"QToolButton", "QSpinBox", "QSlider"}),
    "bindEnabled":          ("string", {"QPushButton", "QSpinBox", "QSlider"}),
    "bindTextColor":        ("string", {"QLabel", "QSpinBox"}),
    "textColorTransformer": ("string", {"QLabel", "QSpinBox"}),
    "hidden":               ("bool",   ANY - {"QDialog"}),
    "modelFrame":           ("rect",   ANY),
    "columnWidth":          ("number", {"QListView"}),
    "content":              ("string", {"QListView"}),
    "selection":            ("string", {"QStackedWidget"}),
    "pageId":               ("string", {"QWidget"}),
    "disclosedBy":          ("string", {"QFrame"}),
    "store":                ("string", {"QWidget"}),
    "list":                 ("string", {"QWidget"}),
    "companions":           ("string", {"QWidget"}),
    "resizeAction":         ("string", {"QWidget"}),
}
READ_TEXTS = {"text", "title", "toolTip", "accessibleName"}   # keys of the string tables
QT_PROPERTIES = READ_TEXTS | {
    "alignment", "arrowType", "autoDefault", "autoRaise", "buddy", "checkable", "currentIndex", "default",
    "editTriggers", "font", "frameShadow", "frameShape", "geometry", "horizontalScrollBarPolicy", "maximum", "minimum",
    "minimumSize", "orientation", "pageStep", "sizeAdjustPolicy", "sizePolicy", "styleSheet", "tickInterval",
    "tickPosition", "wordWrap",
}
TRANSFORMER = "CVColorTransformer"


class Adjustment(NamedTuple):
    stem: str      # of the names of its field, slider and label
    key: str       # of its value
    enabled: str   # the keys that must all be true


ADJUSTMENTS = (   # in the order of their tags
    Adjustment("brightness", "CVBrightness", "CVColorEnhancement CVOutput"),
    Adjustment("contrast", "CVContrast", "CVColorEnhancement CVOutput"),
    Adjustment("red", "CVRed", "Color CVOutput"),
    Adjustment("green", "CVGreen", "Color CVOutput"),
    Adjustment("blue", "CVBlue", "Color CVOutput"),
)
ADJUSTMENT_LIMIT = 20


class Page(NamedTuple):
    id: str
    controls: tuple


PAGES = (   # of the advanced options, in their order
    Page("Layout", ("mirrorButton", "reverseButton")),
    Page("CVJpeg", ("jpegLabel", "jpegPopup")),
    Page("CVDuplexMode", ("duplexLabel", "duplexPopup")),
    Page("VertLineAlignSetting",
         ("vertLineLabel", "vertLineAlignA3Button", "vertLineAlignA4Button", "vertLineAlignOtherButton",
          "vertLineSeparater", "vertLineAlignQT22Button")),
    Page("OtherOption", ("slowDryButton", "biDirButton")),
)

PRINT_POPUPS = ("mediaType", "resolution", "paperThick", "paperFeed", "monoColor", "jpeg", "duplex")
PRINT_CHECKS = ("slowDryButton", "biDirButton", "mirrorButton", "reverseButton", "vertLineAlignA3Button",
                "vertLineAlignA4Button", "vertLineAlignOtherButton", "vertLineAlignQT22Button")
OPTION_ACTION = "requestNewOutputBin:"


def fieldsOfPrintPanel():
    """Every field of the panel with its class, as name -> (class, kind)."""
    fields = {name: ("QCheckBox", "") for name in PRINT_CHECKS}
    for stem in PRINT_POPUPS:
        fields |= {f"{stem}Popup": ("QComboBox", ""), f"{stem}Label": ("QLabel", "")}
    return fields | {
        "panelView": ("QWidget", ""), "optionLabel": ("QLabel", ""), "optionButton": ("QToolButton", ""),
        "helpButton": ("QPushButton", ""), "advancedTabView": ("QStackedWidget", ""),
        "advancedTableView": ("QListView", ""), "vertLineLabel": ("QLabel", ""), "vertLineSeparater": ("QFrame", "")}


def fieldsOfColorPanel():
    fields = {}
    for row in ADJUSTMENTS:
        fields |= {f"{row.stem}Label": ("QLabel", ""), f"{row.stem}Field": ("QSpinBox", ""),
                   f"{row.stem}Slider": ("QSlider", "")}
    return fields | {
        "panelView": ("QWidget", ""), "optionLabel": ("QLabel", ""), "optionButton": ("QToolButton", ""),
        "helpButton": ("QPushButton", ""), "revertButton": ("QPushButton", ""),
        "colorMatchingLabel": ("QLabel", ""), "colorMatchingMatrix": ("QGroupBox", "matrix"),
        "ditherLabel": ("QLabel", ""), "ditherPopup": ("QComboBox", ""), "colorEnhanceButton": ("QCheckBox", ""),
        "effectImageView": ("QLabel", "image"), "colorModeImageView": ("QLabel", "image")}


def fieldsOfAlert(window, stem, labels, checks=()):
    fields = {name: ("QLabel", "") for name in labels} | {name: ("QCheckBox", "") for name in checks}
    return fields | {window: ("QDialog", ""), f"{stem}AlertImageView": ("QLabel", "image"),
                     f"{stem}AlertOKButton": ("QPushButton", ""), f"{stem}AlertCancelButton": ("QPushButton", "")}


FIELDS = {
    PRINT_PANEL: fieldsOfPrintPanel(),
    COLOR_PANEL: fieldsOfColorPanel(),
    "envAlertWindow": fieldsOfAlert("envAlertWindow", "env", ("envInstructionLabel1", "envAlertSummary")),
    "normalPaperAlertWindow": fieldsOfAlert("normalPaperAlertWindow", "normalPaper", ("normalPaperInstructionLabel",),
                                            ("suppressionButton",)),
    "customPaperAlertWindow": fieldsOfAlert("customPaperAlertWindow", "customPaper", ("customPaperInstructionLabel",)),
}


def wiringOfPrintPanel():
    """What the widgets of the panel bear of our properties, frames and pages apart: name -> {property: value}."""
    wiring = {name: {"action": OPTION_ACTION, "hidden": "true"} for name in PRINT_CHECKS}
    for stem in PRINT_POPUPS:
        wiring |= {f"{stem}Popup": {"action": OPTION_ACTION, "hidden": "true"}, f"{stem}Label": {"hidden": "true"}}
    wiring["mediaTypePopup"]["tag"] = "10"
    wiring["resolutionPopup"]["tag"] = "5"
    return wiring | {
        "panelView": {"store": "effectContent", "list": "arrayController", "companions": " ".join(ALERTS)},
        "optionButton": {"action": "toggleShowOption:", "bindValue": "advancedItem"},
        "helpButton": {"action": "showHelpFile:"},
        "advancedArea": {"disclosedBy": "optionButton"},
        "advancedTableView": {"content": "arrayController", "columnWidth": "120"},
        "advancedTabView": {"selection": "arrayController"}}


def wiringOfColorPanel():
    wiring = {}
    for tag, row in enumerate(ADJUSTMENTS):
        color = {"bindTextColor": row.enabled, "textColorTransformer": TRANSFORMER}
        value = {"tag": str(tag), "action": "effectValueDidChange:", "bindValue": row.key, "bindEnabled": row.enabled}
        wiring |= {f"{row.stem}Label": color, f"{row.stem}Slider": value, f"{row.stem}Field": value | color}
    return wiring | {
        "panelView": {"store": "effectContent", "resizeAction": "updateImage:"},
        "optionButton": {"action": "toggleShowOption:", "bindValue": "advancedcolorItem"},
        "optionLabel": {"bindTextColor": "CVOutput", "textColorTransformer": TRANSFORMER},
        "helpButton": {"action": "showHelpFile:"},
        "revertButton": {"action": "revertEffectDialog:", "bindEnabled": "CVColorEnhancement CVOutput"},
        "advancedArea": {"disclosedBy": "optionButton"},
        "colorMatchingMatrix": {"action": OPTION_ACTION, "hidden": "true"},
        "ditherPopup": {"action": OPTION_ACTION, "hidden": "true"}, "ditherLabel": {"hidden": "true"},
        "colorEnhanceButton": {"action": OPTION_ACTION, "hidden": "true"},
        "colorModeImageView": {"hidden": "true"}}


def wiringOfAlert(stem):
    return {f"{stem}AlertOKButton": {"action": "dialogOkDidClick:"},
            f"{stem}AlertCancelButton": {"action": "dialogCancelDidClick:"}}


WIRING = {PRINT_PANEL: wiringOfPrintPanel(), COLOR_PANEL: wiringOfColorPanel()} | {
    window: wiringOfAlert(window.removesuffix("AlertWindow")) for window in ALERTS}

# Views that the panels move, resize or measure: each has a frame in the panel's points.
MEASURED = {
    PRINT_PANEL: {"panelView", "optionLabel", "optionButton", "advancedTabView", "advancedTableView"},
    COLOR_PANEL: {"panelView", "optionLabel", "optionButton", "effectImageView"},
    "envAlertWindow": {"envAlertWindow", "envInstructionLabel1"},
    "normalPaperAlertWindow": {"normalPaperAlertWindow", "normalPaperInstructionLabel"},
    "customPaperAlertWindow": {"customPaperAlertWindow", "customPaperInstructionLabel"},
}
ROOT_SIZES = {PRINT_PANEL: (520, 160), COLOR_PANEL: (520, 110)}


class Form:
    """A form's widgets in the order of the file; `parents` tells in what each element stands."""

    def __init__(self, name, text):
        self.name = name
        self.ui = ElementTree.fromstring(text)
        self.root = self.ui.find("widget")
        self.widgets = list(self.ui.iter("widget"))
        self.parents = {child: parent for parent in self.ui.iter() for child in parent}

    def named(self, name):
        return next((widget for widget in self.widgets if widget.get("name") == name), None)


def properties(widget):
    return {each.get("name"): each for each in widget.findall("property")}


def valueOf(widget, name):
    """A property's value as text; None where the widget does not bear it."""
    element = properties(widget).get(name)
    return None if element is None or len(element) == 0 else element[0].text or ""


def kindOf(widget):
    return valueOf(widget, "kind") or ""


def frameOf(widget):
    rect = widget.find("property[@name='modelFrame']/rect")
    return None if rect is None else tuple(int(rect.find(side).text) for side in ("x", "y", "width", "height"))


def catalogueKeys(language):
    text = (RESOURCES / "texts" / f"{language}.po").read_text(encoding="utf-8")
    return set(re.findall(r'^msgid "(.+)"$', text, re.M))


# The rules. Each is given a form and tells what is wrong with it, a sentence for each fault.

def namesAreThereAndUnique(form):
    seen = set()
    for element in form.ui.iter():
        if element.tag in ("widget", "layout", "spacer"):
            name = element.get("name")
            if not name or not re.fullmatch(r"[a-z]\w*", name):
                yield f"a {element.tag} is named '{name}'"
            elif name in seen:
                yield f"'{name}' is there twice"
            seen.add(name)


def classesAreKnown(form):
    for widget in form.widgets:
        kinds = KINDS.get(widget.get("class"))
        if kinds is None:
            yield f"{widget.get('name')} is of the unknown class {widget.get('class')}"
        elif kindOf(widget) not in kinds:
            yield f"{widget.get('name')}, a {widget.get('class')}, cannot be of the kind '{kindOf(widget)}'"
        if widget.get("class") == "QToolButton" and valueOf(widget, "checkable") != "true":
            yield f"{widget.get('name')} cannot be checked"


def propertiesAreKnown(form):
    for widget in form.widgets:
        for name, element in properties(widget).items():
            where = f"{widget.get('name')}.{name}"
            if name in OWN_PROPERTIES:
                value, classes = OWN_PROPERTIES[name]
                if widget.get("class") not in classes:
                    yield f"{where} does not belong to a {widget.get('class')}"
                if element.get("stdset") != "0":
                    yield f"{where} lacks stdset=\"0\""
                if [child.tag for child in element] != [value]:
                    yield f"{where} is no {value}"
            elif name not in QT_PROPERTIES:
                yield f"{where} is unknown"
            elif element.get("stdset") is not None:
                yield f"{where} is Qt's own, yet has stdset"


def onlyReadTextsAreTranslated(form):
    for widget in form.widgets:
        for name, element in properties(widget).items():
            for string in element.iter("string"):
                translated = string.get("notr") != "true"
                if translated != (name in READ_TEXTS):
                    yield f"{widget.get('name')}.{name} is {'' if translated else 'not '}for translators"


def textsAreKeys(form):
    for language in LANGUAGES:
        keys = catalogueKeys(language)
        for widget in form.widgets:
            for name in READ_TEXTS:
                text = valueOf(widget, name)
                if text and text not in keys:
                    yield f"'{text}', {name} of {widget.get('name')}, is no key of {language}.po"


def fieldsHaveTheirWidgets(form):
    fields = FIELDS[form.name]
    for name, (className, kind) in fields.items():
        widget = form.named(name)
        if widget is None:
            yield f"the field {name} has no widget"
        elif (widget.get("class"), kindOf(widget)) != (className, kind):
            yield f"{name} is a {widget.get('class')} of the kind '{kindOf(widget)}'"
    for widget in form.widgets:
        if widget.get("name") not in fields and widget.get("class") not in ("QWidget", "QFrame"):
            yield f"{widget.get('name')}, a {widget.get('class')}, is no field"


def wiringIsAsThePanelsExpect(form):
    apart = {"kind", "modelFrame", "pageId"}
    for widget in form.widgets:
        found = {name: valueOf(widget, name) for name in properties(widget)
                 if name in OWN_PROPERTIES and name not in apart}
        wanted = WIRING[form.name].get(widget.get("name"), {})
        if found != wanted:
            yield f"{widget.get('name')} has {found}, not {wanted}"


def measuredViewsHaveFrames(form):
    for name in sorted(MEASURED[form.name]):
        widget = form.named(name)
        frame = None if widget is None else frameOf(widget)
        if frame is None or frame[2] <= 0 or frame[3] <= 0:
            yield f"{name} has no frame"
    frame = frameOf(form.root)
    if frame is not None and frame[:2] != (0, 0):
        yield "the root does not stand at the origin"
    if frame is not None and form.name in ROOT_SIZES and frame[2:] != ROOT_SIZES[form.name]:
        yield f"the root is {frame[2:]} points large"


def adjustmentsKeepTheirLimits(form):
    for widget in form.widgets:
        if widget.get("class") in ("QSpinBox", "QSlider"):
            limits = valueOf(widget, "minimum"), valueOf(widget, "maximum")
            if limits != (str(-ADJUSTMENT_LIMIT), str(ADJUSTMENT_LIMIT)):
                yield f"{widget.get('name')} goes from {limits[0]} to {limits[1]}"


def controlsHaveNamesForAccessibility(form):
    buddies = {}
    for widget in form.widgets:
        buddy = valueOf(widget, "buddy")
        if buddy is not None:
            if form.named(buddy) is None:
                yield f"{widget.get('name')} is the label of {buddy}, which is not there"
            if buddy in buddies:
                yield f"{buddy} has two labels"
            buddies[buddy] = widget.get("name")
    for widget in form.widgets:
        name, isMatrix = widget.get("name"), kindOf(widget) == "matrix"
        filledByPanel = widget.get("class") == "QCheckBox"   # with a title of its own
        if (widget.get("class") in FOCUSED or isMatrix) and not filledByPanel and name not in buddies:
            if not valueOf(widget, "accessibleName") and not valueOf(widget, "text"):
                yield f"{name} has neither a label nor an accessible name"


def tabOrderIsComplete(form):
    stops = [stop.text for stop in form.ui.findall("tabstops/tabstop")]
    controls = {widget.get("name") for widget in form.widgets
                if widget.get("class") in FOCUSED or kindOf(widget) == "matrix"}
    if len(stops) != len(set(stops)):
        yield "a control is in the tab order twice"
    for name in sorted(controls.symmetric_difference(stops)):
        yield f"{name} is {'not in the tab order' if name in controls else 'in the tab order, yet no control'}"


def layoutsSurviveSaving(form):
    """Designer drops a plain QWidget that holds a layout and itself stands in a layout, unless it is marked native."""
    for widget in form.widgets:
        inLayout = form.parents[widget].tag == "item"
        if widget.get("class") == "QWidget" and inLayout and widget.find("layout") is not None:
            if widget.get("native") != "true":
                yield f"{widget.get('name')} would be lost when Designer saves the form"


def pagesHoldTheirControls(form):
    pages = [widget for widget in form.widgets if valueOf(widget, "pageId") is not None]
    if form.name != PRINT_PANEL:
        if pages:
            yield "there are pages"
        return
    if [valueOf(page, "pageId") for page in pages] != [page.id for page in PAGES]:
        yield f"the pages are {[valueOf(page, 'pageId') for page in pages]}"
    for widget, page in zip(pages, PAGES):
        if form.parents[widget].get("name") != "advancedTabView":
            yield f"the page {page.id} is not in advancedTabView"
        controls = tuple(each.get("name") for each in widget.iter("widget") if each is not widget)
        if controls != page.controls:
            yield f"the page {page.id} holds {controls}"


def advancedControlsAreDisclosed(form):
    if form.name in ALERTS:
        return
    area = form.named("advancedArea")
    disclosed = set() if area is None else {widget.get("name") for widget in area.iter("widget")}
    advanced = {control for page in PAGES for control in page.controls} | {"advancedTabView", "advancedTableView"}
    if form.name == COLOR_PANEL:
        advanced = {f"{row.stem}{part}" for row in ADJUSTMENTS for part in ("Label", "Field", "Slider")}
        advanced |= {"effectImageView", "revertButton"}
    for name in FIELDS[form.name]:
        if (name in disclosed) != (name in advanced):
            yield f"{name} is {'' if name in disclosed else 'not '}in the advanced area"


def radioMatricesWaitForTheirRows(form):
    for widget in form.widgets:
        if kindOf(widget) == "matrix":
            if widget.find("layout") is None:
                yield f"{widget.get('name')} has no layout for its rows"
            if len(list(widget.iter("widget"))) > 1:
                yield f"{widget.get('name')} has rows already"


RULES = (namesAreThereAndUnique, classesAreKnown, propertiesAreKnown, onlyReadTextsAreTranslated, textsAreKeys,
         fieldsHaveTheirWidgets, wiringIsAsThePanelsExpect, measuredViewsHaveFrames, adjustmentsKeepTheirLimits,
         controlsHaveNamesForAccessibility, tabOrderIsComplete, layoutsSurviveSaving, pagesHoldTheirControls,
         advancedControlsAreDisclosed, radioMatricesWaitForTheirRows)


def textOf(name):
    return (VIEWS / f"{name}.ui").read_text(encoding="utf-8")


class Forms(unittest.TestCase):
    def test_thereIsOneFormForEachPanelAndAlertWindow(self):
        self.assertEqual({path.stem for path in VIEWS.glob("*.ui")}, set(FIELDS))

    def test_formsFollowEveryRule(self):
        for name in FIELDS:
            for rule in RULES:
                with self.subTest(form=name, rule=rule.__name__):
                    self.assertEqual(list(rule(Form(name, textOf(name)))), [])

    def test_aPanelAndItsCompanionsShareNoName(self):
        names = [widget.get("name") for name in (PRINT_PANEL, *ALERTS) for widget in Form(name, textOf(name)).widgets]
        self.assertEqual(len(names), len(set(names)))

    def test_formsAreInTheShapeThatDesignerWrites(self):
        for name in FIELDS:
            with self.subTest(form=name):
                text = textOf(name)
                self.assertTrue(text.startswith('<?xml version="1.0" encoding="UTF-8"?>\n<ui version="4.0">\n'))
                self.assertTrue(text.endswith("</ui>\n"))
                self.assertEqual(text.count("<string></string>"), 0)
                self.assertEqual(Form(name, text).ui.find("class").text, Form(name, text).root.get("name"))


class Lint(unittest.TestCase):
    """Each rule finds a fault that is put into a sound form."""

    def assertFinds(self, rule, name, sound, faulty):
        text = textOf(name)
        self.assertGreater(text.count(sound), 0, sound)
        self.assertNotEqual(list(rule(Form(name, text.replace(sound, faulty, 1)))), [])

    def test_aNameThatIsThereTwice(self):
        self.assertFinds(namesAreThereAndUnique, PRINT_PANEL, 'name="jpegPopup"', 'name="duplexPopup"')

    def test_aClassThatNoModelStandsFor(self):
        self.assertFinds(classesAreKnown, PRINT_PANEL, 'class="QListView"', 'class="QTreeView"')

    def test_aKindThatDoesNotFitTheClass(self):
        self.assertFinds(classesAreKnown, COLOR_PANEL, '>matrix<', '>image<')

    def test_aMisspeltProperty(self):
        self.assertFinds(propertiesAreKnown, COLOR_PANEL, 'name="bindValue"', 'name="bindVaule"')

    def test_aPropertyOfOursThatDesignerWouldSetAsQts(self):
        self.assertFinds(propertiesAreKnown, PRINT_PANEL, 'name="hidden" stdset="0"', 'name="hidden"')

    def test_aPropertyOfTheWrongType(self):
        self.assertFinds(propertiesAreKnown, PRINT_PANEL, "<number>10</number>", "<string>10</string>")

    def test_aTechnicalTextThatTranslatorsWouldSee(self):
        self.assertFinds(onlyReadTextsAreTranslated, COLOR_PANEL, '<string notr="true">CVBrightness',
                         "<string>CVBrightness")

    def test_aTextThatNoCatalogueHolds(self):
        self.assertFinds(textsAreKeys, COLOR_PANEL, "<string>Revert</string>", "<string>Undo it all</string>")

    def test_aFieldWithoutItsWidget(self):
        self.assertFinds(fieldsHaveTheirWidgets, PRINT_PANEL, 'name="biDirButton"', 'name="bidiButton"')

    def test_aTagThatIsAnothers(self):
        self.assertFinds(wiringIsAsThePanelsExpect, PRINT_PANEL, "<number>10</number>", "<number>5</number>")

    def test_aBindingOfAnOptionsControl(self):
        self.assertFinds(wiringIsAsThePanelsExpect, COLOR_PANEL, '<widget class="QCheckBox" name="colorEnhanceButton">',
                         '<widget class="QCheckBox" name="colorEnhanceButton"><property name="bindValue" stdset="0">'
                         '<string notr="true">CVColorEnhancement</string></property>')

    def test_aMeasuredViewWithoutAFrame(self):
        self.assertFinds(measuredViewsHaveFrames, PRINT_PANEL, "<width>340</width>", "<width>0</width>")

    def test_aLimitBeyondWhatIsSaved(self):
        self.assertFinds(adjustmentsKeepTheirLimits, COLOR_PANEL, "<number>20</number>", "<number>21</number>")

    def test_aPopUpWithoutALabel(self):
        self.assertFinds(controlsHaveNamesForAccessibility, PRINT_PANEL, "<cstring>mediaTypePopup<",
                         "<cstring>mediaPopup<")

    def test_aControlThatTheTabKeyPasses(self):
        self.assertFinds(tabOrderIsComplete, PRINT_PANEL, "<tabstop>mirrorButton</tabstop>", "")

    def test_aPlainWidgetThatHoldsALayoutInALayout(self):
        self.assertFinds(layoutsSurviveSaving, PRINT_PANEL, 'class="QFrame" name="advancedArea"',
                         'class="QWidget" name="advancedArea"')

    def test_aPageOfAnUnknownEntry(self):
        self.assertFinds(pagesHoldTheirControls, PRINT_PANEL, ">OtherOption<", ">OtherOptions<")

    def test_anAdvancedControlThatIsAlwaysInSight(self):
        self.assertFinds(advancedControlsAreDisclosed, COLOR_PANEL, '<widget class="QFrame" name="advancedArea">',
                         '<widget class="QFrame" name="advancedArea"/><widget class="QFrame" name="area">')

    def test_aMatrixWithRowsOfItsOwn(self):
        self.assertFinds(radioMatricesWaitForTheirRows, COLOR_PANEL, 'name="colorMatchingMatrix">',
                         'name="colorMatchingMatrix"><widget class="QRadioButton" name="firstRow"/>')


if __name__ == "__main__":
    unittest.main()
