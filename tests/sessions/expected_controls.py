"""The controls of the panels as far as the panels' rules read and write them."""


class PopUp:
    """A pop-up list. Its first item is selected when it comes; when the selected one goes, the first one left is."""

    def __init__(self, tag=0):
        self.tag, self.items, self.selected = tag, [], -1
        self.visible, self.enabled = False, True

    def clear(self):
        self.items, self.selected = [], -1

    def add(self, title, keyword):
        """Titles are unique: a listed one goes before the new item comes."""
        earlier = next((at for at, item in enumerate(self.items) if item["title"] == title), -1)
        if earlier >= 0:
            del self.items[earlier]
            if self.selected == earlier:
                self.selected = 0 if self.items else -1
            elif self.selected > earlier:
                self.selected -= 1
        self.items.append({"title": title, "keyword": keyword, "enabled": True})
        if len(self.items) == 1:
            self.selected = 0

    def index_of(self, keyword):
        return next((at for at, item in enumerate(self.items) if item["keyword"] == keyword), -1)

    def select(self, keyword):
        at = self.index_of(keyword)
        if at >= 0:
            self.selected = at
        return at >= 0

    def selected_keyword(self):
        return self.items[self.selected]["keyword"] if self.selected >= 0 else None

    def offers(self, keyword):
        at = self.index_of(keyword)
        return at >= 0 and self.items[at]["enabled"]

    def in_words(self):
        return {
            "visible": self.visible,
            "enabled": self.enabled,
            "selected": self.selected,
            "items": [dict(item) for item in self.items],
        }


class Matrix:
    """A group of radio buttons; its first row is selected at the start."""

    def __init__(self):
        self.cells, self.selected, self.visible, self.enabled = [], 0, False, True

    def fill(self, choices):
        self.cells = [{"title": text, "keyword": keyword} for keyword, text in choices.items()]

    def select(self, keyword):
        for row, cell in enumerate(self.cells):
            if cell["keyword"] == keyword:
                self.selected = row
                return True
        return False

    def selected_keyword(self):
        return self.cells[self.selected]["keyword"] if self.cells else None

    def offers(self, keyword):
        return any(cell["keyword"] == keyword for cell in self.cells)

    def in_words(self):
        return {"visible": self.visible, "enabled": self.enabled, "selected": self.selected, "cells": list(self.cells)}


class Box:
    """A check box."""

    def __init__(self):
        self.on, self.visible, self.enabled = False, False, True

    def in_words(self):
        return {"visible": self.visible, "enabled": self.enabled, "state": int(self.on)}
