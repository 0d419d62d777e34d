#!/usr/bin/env python3
"""Tests of what the bundle carries: sample printers, texts, info entries, pictures, help books.

Run with the name of one class, or without a name for all. The class Bundle looks into the build folder that the
environment variable CV_BINARY_DIR names.
"""

import html.parser
import json
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

RESOURCES = pathlib.Path(__file__).resolve().parents[2] / "resources"
LANGUAGES = ("en", "ja", "de", "fr", "es", "zh_CN")
MODELS = ("corvane-a3", "corvane-a4", "corvane-office", "corvane-mirror")
ADJUSTMENTS = ("CVBrightness", "CVContrast", "CVRed", "CVGreen", "CVBlue")
PPD_LANGUAGES = ("", *LANGUAGES[1:])   # the PPDs' own texts are English
MAX_TEXT_BYTES = 80   # what a PPD reader keeps of the text of an option or choice


class Ppd:
    """As much of a PPD file as these tests ask about."""

    def __init__(self, model):
        self.path = RESOURCES / "models" / f"{model}.ppd"
        text = self.path.read_text(encoding="utf-8")
        self.lines = text.splitlines()
        self.options = re.findall(r"^\*OpenUI \*([^/:]+)/", text, re.M)
        self.defaults = dict(re.findall(r"^\*Default(\w+): (\S+)$", text, re.M))
        self.attributes = dict(re.findall(r"^\*(\w+): \"?([^\"\n]*)\"?$", text, re.M))
        self.constraints = {tuple(sorted([(a, b), (c, d)])) for a, b, c, d in
                            re.findall(r"^\*UIConstraints: \*(\S+) (\S+) \*(\S+) (\S+)$", text, re.M)}

    def choices(self, option, language=""):
        """The choice keywords of an option with their texts, in order."""
        prefix = f"{language}." if language else ""
        pattern = re.compile(rf"^\*{re.escape(prefix + option)} ([^/:]+)/([^:]*): ?\"")
        return {match[1]: match[2] for match in map(pattern.match, self.lines) if match}


def catalogue(language, folder="texts"):
    """The keys of a string table with their texts, as msgcat reads them."""
    path = RESOURCES / folder / f"{language}.po"
    unwrapped = subprocess.run(["msgcat", "--no-wrap", "--no-location", path], check=True, capture_output=True,
                               encoding="utf-8").stdout
    entries = re.findall(r'^msgid "(.*)"\nmsgstr "(.*)"$', unwrapped, re.M)
    return {key: text for key, text in entries if key}


def tiff_properties(path):
    """Width, height, samples per pixel and compression of a TIFF file's first picture."""
    data = path.read_bytes()
    order = {b"II*\0": "<", b"MM\0*": ">"}[data[:4]]
    offset, = struct.unpack_from(order + "I", data, 4)
    count, = struct.unpack_from(order + "H", data, offset)
    values = {}
    for index in range(count):
        tag, kind, length, value = struct.unpack_from(order + "HHII", data, offset + 2 + 12 * index)
        if length == 1:
            values[tag] = struct.unpack_from(order + "H", data, offset + 10 + 12 * index)[0] if kind == 3 else value
    return values[256], values[257], values.get(277, 1), values[259]


def bmp_properties(path):
    """Width, height and bits per pixel of a BMP file."""
    data = path.read_bytes()
    if data[:2] != b"BM":
        raise ValueError(f"{path} is no BMP file")
    width, height, _, bits = struct.unpack_from("<iiHH", data, 18)
    return width, abs(height), bits


class SamplePrinters(unittest.TestCase):
    def test_everyModelPassesTheReferenceCheck(self):
        self.assertIsNotNone(shutil.which("cupstestppd"), "cupstestppd (package cups-client) is missing")
        for model in MODELS:
            with self.subTest(model):
                run = subprocess.run(["cupstestppd", Ppd(model).path], capture_output=True, encoding="utf-8")
                self.assertEqual(run.returncode, 0, run.stdout + run.stderr)

    def test_filesAreWhatTheScriptWrites(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([RESOURCES / "models" / "make-models", folder], check=True)
            written = {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir()}
        committed = {path.name: path.read_bytes() for path in (RESOURCES / "models").glob("*.ppd")}
        self.assertEqual(sorted(written), sorted(committed))
        for name in written:
            self.assertEqual(written[name], committed[name], f"{name}: run resources/models/make-models")

    def test_theLargeModelHasEveryOptionOfBothPanelsButTheOtherMirror(self):
        info = json.loads((RESOURCES / "Info.json").read_text())
        wanted = set(info["PMPPDKeysSupported"] + info["PMPPDKeysSupportedColor"]) - {"CVMirror"}
        self.assertLessEqual(wanted | {"Duplex", "CVOutput", "PageSize"}, set(Ppd("corvane-a3").options))

    def test_modelsDifferInWhatTheyAreFor(self):
        small, office, mirror = Ppd("corvane-a4"), Ppd("corvane-office"), Ppd("corvane-mirror")
        self.assertFalse({"CVInputSlot", "Duplex", "CVOutput"} & set(small.options))
        self.assertNotIn("A3", small.choices("PageSize"))
        self.assertNotIn("APSupportsCustomColorMatching", office.attributes)
        for model in ("corvane-a3", "corvane-a4", "corvane-mirror"):
            self.assertIn("APSupportsCustomColorMatching", Ppd(model).attributes, model)
        self.assertIn("CVMirror", mirror.options)
        self.assertNotIn("MirrorPrint", mirror.options)

    def test_defaultsAreChoices(self):
        for model in MODELS:
            ppd = Ppd(model)
            for option in ppd.options:
                with self.subTest(model=model, option=option):
                    self.assertIn(ppd.defaults[option], ppd.choices(option))
            self.assertEqual(ppd.defaults["CVMediaType"], "Plain")
            self.assertEqual(ppd.defaults["CVResolution"], "PlainNormal")
            self.assertEqual(ppd.defaults["CVBiDir"], "ON")

    def test_everyTextIsTranslatedAndFits(self):
        for model in MODELS:
            ppd = Ppd(model)
            for option in ppd.options:
                for language in PPD_LANGUAGES:
                    with self.subTest(model=model, option=option, language=language):
                        texts = ppd.choices(option, language)
                        self.assertEqual(list(texts), list(ppd.choices(option)))
                        for text in texts.values():
                            self.assertTrue(text.strip())
                            self.assertLess(len(text.encode()), MAX_TEXT_BYTES)

    def test_postcardMediaAreNamedSoThatTheyAreOfferedOnlyInJapanese(self):
        for language in PPD_LANGUAGES:
            texts = Ppd("corvane-a3").choices("CVMediaType", language)
            for media in ("HagakiAtena", "HagakiUra"):
                self.assertEqual(texts[media].startswith("Hagaki"), language != "ja", language)

    def test_dedicatedMediaAreNamedSoThatTheSummaryLeavesThemOutExceptInJapanese(self):
        for language in PPD_LANGUAGES:
            keyword = f"{language}.Translation" if language else "OpenUI"
            pattern = rf"^\*{keyword} \*?CVVertLineAlignDedicated/([^:]+):"
            text = re.search(pattern, "\n".join(Ppd("corvane-a3").lines), re.M)[1]
            self.assertEqual(text == "Dedicated Media", language != "ja", language)

    def test_everyLanguageOfTheCataloguesIsDeclared(self):
        for model in MODELS:
            self.assertEqual(Ppd(model).attributes["cupsLanguages"].split(), list(LANGUAGES))

    def test_qualitiesOfOneMediaTypeHaveDifferentTexts(self):
        offered_together = [("PlainFast", "PlainNormal", "High", "Best"), ("Normal", "Photo"),
                            ("Fast", "Photo", "Best")]
        for language in PPD_LANGUAGES:
            texts = Ppd("corvane-a3").choices("CVResolution", language)
            for qualities in offered_together:
                self.assertEqual(len({texts[quality] for quality in qualities}), len(qualities))

    def test_adjustmentsOfferEveryWholeStep(self):
        for option in ADJUSTMENTS:
            self.assertEqual([int(choice) for choice in Ppd("corvane-a3").choices(option)], list(range(-20, 21)))

    def test_theFirstColourMatchingIsNone(self):
        self.assertEqual(next(iter(Ppd("corvane-a3").choices("CVColorMatching").items())), ("NONE", "None"))

    def test_constraintsStateBothDirectionsOfKnownChoicesAndLeaveThePanelsRulesAlone(self):
        ppd = Ppd("corvane-a3")
        self.assertIn((("CVInputSlot", "Tray2"), ("CVMediaType", "Glossy")), ppd.constraints)
        self.assertIn((("CVJpeg", "ON"), ("MirrorPrint", "True")), ppd.constraints)
        self.assertEqual(len([line for line in ppd.lines if line.startswith("*UIConstraints")]),
                         2 * len(ppd.constraints))
        never_chosen_by_a_rule = {("CVInputSlot", "Tray2"), ("CVJpeg", "ON")}
        for pair in ppd.constraints:
            with self.subTest(pair):
                self.assertTrue(never_chosen_by_a_rule & set(pair))
                for option, choice in pair:
                    self.assertIn(choice, ppd.choices(option))

    def test_borderlessSizesHaveNoBorderAndOthersDo(self):
        ppd = Ppd("corvane-a3")
        dimensions = dict(re.findall(r"^\*PaperDimension ([^/]+)/.*: \"(.*)\"$", "\n".join(ppd.lines), re.M))
        areas = dict(re.findall(r"^\*ImageableArea ([^/]+)/.*: \"(.*)\"$", "\n".join(ppd.lines), re.M))
        self.assertEqual(list(dimensions), list(ppd.choices("PageSize")))
        for size in dimensions:
            with self.subTest(size):
                whole_sheet = areas[size] == f"0 0 {dimensions[size]}"
                self.assertEqual(whole_sheet, "Fullbleed" in size or size.endswith("_B"))


class Catalogues(unittest.TestCase):
    KEYS = {
        "Print Setting", "Color Setting", "Layout", "VertLineAlignSetting", "OtherOption", "advancedItem",
        "advancedcolorItem", "Model", "ON", "OFF", "OK", "Cancel", "Best Alert", "Highest Alert2", "DiscPrint Alert",
        "DiscPrint Alert2", "Duplex Alert", "Duplex Alert2", "A4", "Borderless Alert", "Borderless Alert2",
        "Landscape Instruction", "Portrait Instruction", "Manual Instruction", "Envelope Alert1", "Envelope Alert2",
        "Envelope Alert Summary", "Envelope Alert Title", "Suppression", "Paper Orientation Title",
        "Unsupported Paper Title", "Unsupported Paper MSG1", "Unsupported Paper MSG2", "Unsupported Paper MSG3",
        "Unsupported Paper MSG4", "Revert", "Help",
    }

    def test_everyLanguageCompilesWithoutAComplaint(self):
        for language in LANGUAGES:
            run = subprocess.run(["msgfmt", "--check", "-o", os.devnull, RESOURCES / "texts" / f"{language}.po"],
                                 capture_output=True, encoding="utf-8")
            self.assertEqual((run.returncode, run.stderr), (0, ""), language)

    def test_everyLanguageHasTheSameKeys(self):
        files = {path.stem for path in (RESOURCES / "texts").glob("*.po")}
        self.assertEqual(files, set(LANGUAGES))
        for language in LANGUAGES:
            self.assertEqual(set(catalogue(language)), set(catalogue("en")), language)

    def test_textsHaveThePlacesForValuesOfTheEnglishOnes(self):
        english = catalogue("en")
        for language in LANGUAGES:
            for key, text in catalogue(language).items():
                self.assertEqual(re.findall(r"%\S?", text), re.findall(r"%\S?", english[key]), f"{language}: {key}")

    def test_textsAreTranslatedAndNotCopied(self):
        english = catalogue("en")
        same = {"A4", "OK", "Layout", "Contrast"}   # words of another language, too
        for language in LANGUAGES[1:]:
            copied = {key for key, text in catalogue(language).items() if text == english[key]}
            self.assertLessEqual(copied, same, language)

    def test_buttonsAndListEntriesStayShort(self):
        limits = {"OK": 10, "Cancel": 12, "Help": 10, "Revert": 14, "Layout": 16, "OtherOption": 20,
                  "VertLineAlignSetting": 34, "Print Setting": 24, "Color Setting": 24, "Suppression": 40}
        for language in LANGUAGES:
            texts = catalogue(language)
            for key, limit in limits.items():
                self.assertLessEqual(len(texts[key]), limit, f"{language}: {key}")

    def test_everyKeyOfThePanelsHasAText(self):
        for language in LANGUAGES:
            texts = catalogue(language)
            self.assertLessEqual(self.KEYS, set(texts), language)
            self.assertEqual([key for key, text in texts.items() if not text.strip()], [], language)

    def test_namesThatAreWordsOfTheirOwnReadAsTheirKeys(self):
        texts = catalogue("en")
        for key in ("Print Setting", "Color Setting", "A4", "OK", "Cancel", "Layout", "Model", "Revert", "Help"):
            self.assertEqual(texts[key], key)

    def test_alertsAreSentences(self):
        for language in LANGUAGES:
            stop = "。" if language in ("ja", "zh_CN") else "."
            for key, text in catalogue(language).items():
                if key.endswith(("Alert", "Alert1", "Alert2", "Instruction", "Summary")):
                    self.assertTrue(text.endswith(stop), f"{language}: {key}")

    def test_textsOfTheViewsAreKeys(self):
        keys = set(catalogue("en"))
        views = sorted((RESOURCES / "views").glob("*.ui"))
        self.assertTrue(views)
        for view in views:
            for element in xml.etree.ElementTree.parse(view).iter("string"):
                if element.text and element.get("notr") != "true":
                    self.assertIn(element.text, keys, view.name)


class WindowTexts(unittest.TestCase):
    """The window's texts: English in the source, the other languages in catalogues whose keys are the English texts."""

    FOLDER = "texts/window"
    LANGUAGES = ("de", "es", "fr", "ja", "zh_CN")

    def english(self):
        source = (RESOURCES.parent / "host" / "window" / "window_texts.cpp").read_text(encoding="utf-8")
        rows = re.findall(r'\{Text::\w+,((?:\s*"(?:[^"\\\n]|\\.)*")+)\s*\}', source)
        return {"".join(re.findall(r'"((?:[^"\\\n]|\\.)*)"', row)) for row in rows}

    def test_everyLanguageCompilesWithoutAComplaint(self):
        self.assertEqual({path.stem for path in (RESOURCES / self.FOLDER).glob("*.po")}, set(self.LANGUAGES))
        for language in self.LANGUAGES:
            run = subprocess.run(["msgfmt", "--check", "-o", os.devnull, RESOURCES / self.FOLDER / f"{language}.po"],
                                 capture_output=True, encoding="utf-8")
            self.assertEqual((run.returncode, run.stderr), (0, ""), language)

    def test_everyTextIsTranslatedIntoEveryLanguage(self):
        english = self.english()
        self.assertGreater(len(english), 60)
        for language in self.LANGUAGES:
            texts = catalogue(language, self.FOLDER)
            self.assertEqual(sorted(english - set(texts)), [], f"add to resources/{self.FOLDER}/{language}.po")
            self.assertEqual(sorted(set(texts) - english), [], f"remove from resources/{self.FOLDER}/{language}.po")
            self.assertEqual([key for key, text in texts.items() if not text], [], language)

    def test_translationsHaveThePlacesForValues(self):
        for language in self.LANGUAGES:
            for key, text in catalogue(language, self.FOLDER).items():
                self.assertEqual(sorted(re.findall(r"%\d", text)), sorted(re.findall(r"%\d", key)), f"{language}: {key}")

    def test_buttonsStayShort(self):
        for language in self.LANGUAGES:
            texts = catalogue(language, self.FOLDER)
            for key in ("Print", "Cancel", "Close", "Back", "More", "Help", "Copy", "Browse…"):
                self.assertLessEqual(len(texts[key]), 14, f"{language}: {key}")


class InfoEntries(unittest.TestCase):
    def setUp(self):
        self.info = json.loads((RESOURCES / "Info.json").read_text())

    def test_names(self):
        self.assertEqual(self.info["CFBundleName"], "CVInkQuality12")
        self.assertEqual(self.info["CFBundleIdentifier"], "com.corvane.print.pde.CVInkQuality12")
        self.assertEqual(self.info["CFBundleExecutable"], "CVInkQuality12.so")
        self.assertEqual(self.info["CFBundleHelpBookName"], "Corvane Print Settings Help")
        self.assertRegex(self.info["CFBundleShortVersionString"], r"^\d+\.\d+\.\d+$")

    def test_keysStandInThePanelsOrder(self):
        self.assertEqual(self.info["PMPPDKeysSupported"], [
            "CVMediaType", "CVResolution", "CVColorPaperThick", "CVInputSlot", "CVMonoColor", "CVSlowDrying",
            "CVBiDir", "MirrorPrint", "CVMirror", "CVReverse", "CVJpeg", "CVDuplexMode", "CVVertLineAlignA3B4Ledger",
            "CVVertLineAlignA4Letter", "CVVertLineAlignOther", "CVVertLineAlignDedicated"])
        self.assertEqual(self.info["PMPPDKeysSupportedColor"],
                         ["CVColorMatching", "CVHalfTonePattern", "CVColorEnhancement", *ADJUSTMENTS])


class Pictures(unittest.TestCase):
    FOLDER = RESOURCES / "pictures"
    COMPRESSED = (5, 8, 32946)   # LZW and the two numbers of deflate

    def test_everyColourMatchingHasAReferencePictureOfOneSize(self):
        names = {"None"}
        for model in MODELS:
            names |= set(Ppd(model).choices("CVColorMatching"))
        sizes = set()
        for name in names:
            width, height, samples, compression = tiff_properties(self.FOLDER / f"{name}.tiff")
            sizes.add((width, height))
            self.assertEqual(samples, 3, name)
            self.assertIn(compression, self.COMPRESSED, name)
        self.assertEqual(sizes, {(320, 240)})

    def test_referencePicturesDiffer(self):
        names = ["None", *Ppd("corvane-a3").choices("CVColorMatching")]
        self.assertEqual(len({(self.FOLDER / f"{name}.tiff").read_bytes() for name in names}), len(names))

    def test_everyListedMediaTypeHasASmallPictureWithTransparency(self):
        for model in MODELS:
            for media in set(Ppd(model).choices("CVMediaType")) - {"PlainDuplex"}:
                width, height, samples, _ = tiff_properties(self.FOLDER / f"{media}.tiff")
                self.assertEqual((width, height, samples), (32, 32, 4), media)

    def test_everyPaperAlertHasItsPicture(self):
        for name in ("Envelope", "Landscape", "Portrait", "Manual"):
            self.assertEqual(bmp_properties(self.FOLDER / f"{name}.bmp"), (240, 180, 24), name)

    def test_theDiscAlertHasItsPicture(self):
        width, height, samples, _ = tiff_properties(self.FOLDER / "DiscPrint.tiff")
        self.assertEqual((width, height, samples), (128, 128, 4))


class Page(html.parser.HTMLParser):
    """Collects what a page links to, its ids, its language and its open elements."""

    VOID = {"meta", "link", "br", "img", "hr"}

    def __init__(self, text):
        super().__init__()
        self.links, self.ids, self.language, self.title, self.unclosed = [], set(), None, "", []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag == "html":
            self.language = attributes.get("lang")
        if tag not in self.VOID:
            self.unclosed.append(tag)
        if "id" in attributes:
            self.ids.add(attributes["id"])
        self.links += [attributes[name] for name in ("href", "src") if name in attributes]

    def handle_endtag(self, tag):
        if not self.unclosed or self.unclosed.pop() != tag:
            raise ValueError(f"</{tag}> closes nothing that is open, line {self.getpos()[0]}")

    def handle_data(self, data):
        if self.unclosed[-1:] == ["title"]:
            self.title += data


class HelpBooks(unittest.TestCase):
    BOOKS = {"CVInkQuality12": ("Corvane Print Settings Help", "PMPPDKeysSupported"),
             "CVInkColorSetting": ("Corvane Color Settings Help", "PMPPDKeysSupportedColor")}

    def pages(self):
        for book, (name, keys) in self.BOOKS.items():
            for language in LANGUAGES:
                path = RESOURCES / "help" / f"{book}.help" / language / "index.html"
                yield book, name, keys, language, path.read_text(encoding="utf-8")

    def test_booksBearThePanelsNamesAndAnchors(self):
        for book, (name, _) in self.BOOKS.items():
            entries = json.loads((RESOURCES / "help" / f"{book}.help" / "book.json").read_text(encoding="utf-8"))
            self.assertEqual(entries["name"], name)
            self.assertTrue(entries["title"])
            self.assertEqual(entries["anchors"], {"CvHelpAnchor": "index.html"})
            self.assertEqual(entries["languages"], list(LANGUAGES))

    def test_pagesAreWellFormedAndReferToNothingOutside(self):
        for book, _, _, language, text in self.pages():
            with self.subTest(book=book, language=language):
                page = Page(text)
                self.assertEqual(page.unclosed, [])
                self.assertEqual(page.language, language.replace("_", "-"))
                self.assertTrue(page.title.strip())
                for link in page.links:
                    self.assertTrue(link.startswith("#") and link[1:] in page.ids, link)

    def test_everyLanguageHasTheSameSections(self):
        english = {book: Page(text).ids for book, _, _, language, text in self.pages() if language == "en"}
        for book, _, _, language, text in self.pages():
            self.assertEqual(Page(text).ids, english[book], f"{book}: {language}")

    def test_everyLanguageListsTheSame(self):
        listed = {book: text.count("<li>") for book, _, _, language, text in self.pages() if language == "en"}
        for book, _, _, language, text in self.pages():
            self.assertEqual(text.count("<li>"), listed[book], f"{book}: {language}")

    def test_everyOptionOfThePanelIsExplained(self):
        info = json.loads((RESOURCES / "Info.json").read_text())
        ppds = [Ppd("corvane-a3"), Ppd("corvane-mirror")]
        for book, _, keys, language, text in self.pages():
            for keyword in info[keys]:
                ppd = next(ppd for ppd in ppds if keyword in ppd.options)
                pattern = (rf"^\*OpenUI \*{keyword}/([^:]+):" if language == "en"
                           else rf"^\*{language}\.Translation {keyword}/([^:]+):")
                option_text = re.search(pattern, "\n".join(ppd.lines), re.M)[1]
                with self.subTest(book=book, language=language, option=keyword):
                    self.assertTrue(option_text in text, "the page does not name it")


class Samples(unittest.TestCase):
    def test_documentsAreWhatTheirNamesSay(self):
        folder = RESOURCES / "samples"
        self.assertEqual((folder / "picture.png").read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
        document = (folder / "picture.pdf").read_bytes()
        self.assertTrue(document.startswith(b"%PDF-1."))
        self.assertTrue(document.rstrip().endswith(b"%%EOF"))
        start = int(re.search(rb"startxref\s+(\d+)", document)[1])
        self.assertEqual(document[start:start + 4], b"xref")


class Bundle(unittest.TestCase):
    def test_theBuildFolderHoldsEverythingWhereThePanelsLook(self):
        build = pathlib.Path(os.environ["CV_BINARY_DIR"])
        bundle = build / "PlugIns" / "CVInkQuality12.plugin"
        expected = {RESOURCES / "Info.json": bundle / "Info.json"}
        for folder, kind in (("views", "*.ui"), ("pictures", "*.tiff"), ("pictures", "*.bmp")):
            for source in (RESOURCES / folder).glob(kind):
                expected[source] = bundle / "Resources" / source.name
        for source in (RESOURCES / "help").rglob("*.*"):
            if source.is_file():
                expected[source] = build / "Help" / source.relative_to(RESOURCES / "help")
        for source, copy in expected.items():
            self.assertEqual(source.read_bytes(), copy.read_bytes(), copy)
        for language in LANGUAGES:
            compiled = (bundle / "Resources" / language / "CVInkQuality12.mo").read_bytes()
            self.assertIn(struct.unpack_from("<I", compiled)[0], (0x950412DE, 0xDE120495))
            self.assertIn(catalogue(language)["Duplex Alert"].encode(), compiled)


if __name__ == "__main__":
    unittest.main()
