"""Holds every include against the rooms of cmake/Rooms.cmake: arrows between rooms point down only."""

import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROOM_LINE = re.compile(r"^set\(CV_ROOM_(\w+)\s+(\d)\s+([^)]*)\)", re.M)
INCLUDE = re.compile(r'^\s*#include\s+[<"]([^>"]+)[>"]', re.M)
# Who may include the headers of an outside library.
RESTRICTED = {
    "cups/ppd.h": ["printing/printer_description.cpp"],
    "pugixml.hpp": ["toolkit/view_description.cpp"],
}


def rooms():
    text = (ROOT / "cmake/Rooms.cmake").read_text()
    return {name: (int(floor), set(uses.replace('"', "").split())) for name, floor, uses in ROOM_LINE.findall(text)}


def folder(room):
    return room.replace("host_", "host/", 1)  # the host's rooms share a folder


def room_of_include(include, names):
    found = [room for room in names if include.startswith(folder(room) + "/")]
    return max(found, key=lambda room: len(folder(room)), default=None)


def sources(room):
    path = ROOT / folder(room)
    return sorted(p for p in path.iterdir() if p.suffix in (".h", ".cpp"))


class Rooms(unittest.TestCase):
    def test_every_room_is_listed_with_rooms_of_lower_floors_or_its_own_row(self):
        table = rooms()
        self.assertGreater(len(table), 8)
        for name, (floor, uses) in table.items():
            for used in uses:
                with self.subTest(room=name, uses=used):
                    self.assertLessEqual(table[used][0], floor)
                    self.assertNotIn(name, table[used][1], "an arrow back")

    def test_includes_point_down(self):
        table = rooms()
        for room, (_, uses) in table.items():
            for path in sources(room):
                for include in INCLUDE.findall(path.read_text()):
                    target = room_of_include(include, table)
                    if target is not None:
                        with self.subTest(source=str(path.relative_to(ROOT)), include=include):
                            self.assertIn(target, uses | {room})

    def test_outside_libraries_stay_where_they_belong(self):
        for path in ROOT.rglob("*"):
            if path.suffix not in (".h", ".cpp") or path.parts[len(ROOT.parts)].startswith(("build", ".", "tests", "benchmarks")):
                continue
            relative = str(path.relative_to(ROOT))
            for include in INCLUDE.findall(path.read_text()):
                with self.subTest(source=relative, include=include):
                    self.assertIn(relative, RESTRICTED.get(include, [relative]))
                    if re.match(r"(Q[A-Z]|Qt)", include):
                        self.assertTrue(relative.startswith("host/window/"), "Qt stays in host/window")

    def test_no_panel_knows_the_other_and_no_host_knows_a_panel(self):
        for room, banned in (("print_settings", "color_settings"), ("color_settings", "print_settings"),
                             ("host_session", "settings"), ("host_script", "settings"), ("host_jobs", "settings")):
            for path in sources(room):
                for include in INCLUDE.findall(path.read_text()):
                    with self.subTest(source=path.name, include=include):
                        self.assertNotIn(banned + "/", include)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
