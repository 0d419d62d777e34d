#!/usr/bin/env python3
"""Tests of what the documents promise: keywords that stand in them, sessions that they show, links.

Run with the name of one class, or without a name for all. Those that show sessions run the
scripted host that the environment variable CV_PANEL_SESSION names, AddingAnOption with the bundle in CV_DOCS_EXAMPLE.
"""

import json
import os
import pathlib
import re
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
DOCS = SOURCE / "docs"
sys.path.insert(0, str(SOURCE / "tests" / "sessions"))


def blocks(document, language):
    """The code blocks of one language in a document."""
    return re.findall(rf"^```{language}\n(.*?)^```$", (DOCS / document).read_text(encoding="utf-8"), re.M | re.S)


def problems(session, folder):
    """How many answers of the session differ from what it expects; "${OUT}" in it is the folder."""
    from run_session import Replay
    with tempfile.NamedTemporaryFile("w", suffix=".jsonl", encoding="utf-8") as file:
        file.write(session)
        file.flush()
        return Replay(pathlib.Path(file.name), folder).run()


class PpdAuthors(unittest.TestCase):
    """The page for authors of PPDs names everything that the code compares with."""

    HEADERS = ("framework/option_keywords.h", "print_settings/print_keywords.h", "color_settings/color_keywords.h",
               "printing/print_settings.h", "framework/help_and_checks.cpp")
    # Names that no PPD and no job carries: notifications, entries of dictionaries and of the store, the language.
    INTERNAL = re.compile(r"NS\w+|PM\w+|CVInkPrintSettingNotification|FromSetting|Summary Display Order|frameHeight"
                          r"|UnsupportedPaper|ja|CvHelpAnchor|CFBundleHelpBookName|Help|\.help|/|")

    def setUp(self):
        self.page = (DOCS / "ppd-authors.md").read_text(encoding="utf-8")

    def test_everyKeywordStandsInIt(self):
        keywords = set()
        for header in self.HEADERS:
            for line in (SOURCE / header).read_text(encoding="utf-8").splitlines():
                if not line.startswith("#"):
                    keywords |= set(re.findall(r'"([\w.]*)"', line.split("//")[0]))
        info = json.loads((SOURCE / "resources" / "Info.json").read_text())
        keywords |= set(info["PMPPDKeysSupported"] + info["PMPPDKeysSupportedColor"])
        keywords = {keyword for keyword in keywords if not self.INTERNAL.fullmatch(keyword)}
        self.assertGreater(len(keywords), 60)
        missing = [keyword for keyword in keywords if not re.search(rf"(?<!\w){re.escape(keyword)}(?!\w)", self.page)]
        self.assertEqual(sorted(missing), [])

    def test_everyPaperThatHasAMessageStandsInIt(self):
        source = (SOURCE / "print_settings" / "paper_names.cpp").read_text(encoding="utf-8")
        lists = dict(re.findall(r"(k\w+)\[?\]? *= *\{(.*?)\};", source, re.S))
        papers = {paper.removesuffix(".Fullbleed") for name, items in lists.items() if re.search("Papers|Postcards|Envelopes", name) and "Tray2" not in name
                  for paper in re.findall(r'"([^"]+)"', items)}
        papers = {paper for paper in papers if not paper.endswith("Grain")}
        self.assertGreater(len(papers), 25)
        self.assertEqual(sorted(paper for paper in papers if f"`{paper}" not in self.page), [])

    def test_itNamesNoOptionThatTheCodeDoesNotKnow(self):
        source = "".join((SOURCE / header).read_text(encoding="utf-8") for header in self.HEADERS)
        for option in set(re.findall(r"`(CV\w+)`", self.page)):
            self.assertIn(f'"{option}"', source)


class WritingAHost(unittest.TestCase):
    """The page for authors of hosts names every operation of the two interfaces and of the panel protocol."""

    def test_everyOperationStandsInIt(self):
        page = (DOCS / "writing-a-host.md").read_text(encoding="utf-8")
        operations = set()
        for header in ("framework/host_callback.h", "toolkit/application.h"):
            text = (SOURCE / header).read_text(encoding="utf-8")
            operations |= set(re.findall(r"virtual [\w:&*<> ]+?[ *&](\w+)\(", text))
        panel = (SOURCE / "framework" / "CVPrintQualityPDE.h").read_text(encoding="utf-8")
        protocol = panel[panel.index("// The panel protocol"):panel.index("// Accessors")]
        operations |= set(re.findall(r"[ *>](\w+)\(", protocol)) - {"initWithCallback"}
        self.assertGreater(len(operations), 30)
        self.assertEqual(sorted(name for name in operations if not re.search(rf"`{name}`", page)), [])


class Sessions(unittest.TestCase):
    """Sessions that a document shows run as it tells."""

    def test_everySessionWithExpectationsHolds(self):
        shown = [(path.name, block) for path in sorted(DOCS.glob("*.md")) for block in blocks(path.name, "jsonl")
                 if path.name != "adding-an-option.md"]
        self.assertTrue(shown)
        for document, block in shown:
            with self.subTest(document), tempfile.TemporaryDirectory(prefix="docs-") as folder:
                self.assertEqual(problems(block, folder), 0)


class AddingAnOption(unittest.TestCase):
    """The example that was built as its page tells behaves as its page tells."""

    def test_theSessionOfThePageHoldsWithTheBundleThatThePageMakes(self):
        block, = blocks("adding-an-option.md", "jsonl")
        self.assertEqual(problems(block, os.environ["CV_DOCS_EXAMPLE"]), 0)


class Links(unittest.TestCase):
    def test_everyFileThatADocumentLinksToIsThere(self):
        documents = [*SOURCE.glob("*.md"), *DOCS.rglob("*.md")]
        self.assertGreater(len(documents), 8)
        for document in documents:
            for target in re.findall(r"\]\(([^)#\s]+)[^)]*\)", document.read_text(encoding="utf-8")):
                if "://" not in target:
                    self.assertTrue((document.parent / target).exists(), f"{document.name}: {target}")


if __name__ == "__main__":
    unittest.main()
