"""Checks of the finished page: ids, anchors, links, pictures, headings, balanced elements, and that
what scrolls can be reached by keyboard."""

import html.parser
import re

MAKER = "https://corvane.example/"
VOID = {"br", "hr", "img", "link", "meta", "wbr", "input"}


def without_pictures(page):
    return re.sub(r'src="data:[^"]*"', 'src=""', page)


def faults(page):
    reader = PageReader()
    reader.feed(page)
    reader.close()
    found = reader.faults
    found += reader.imbalances[:1]  # those that follow come of the first
    found += [f"no id for the link #{anchor}" for anchor in reader.anchors - reader.ids]
    return sorted(found)


class PageReader(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.faults = []
        self.imbalances = []
        self.ids = set()
        self.anchors = set()
        self.open = []
        self.level = 0

    def handle_starttag(self, element, attributes):
        attributes = dict(attributes)
        if element not in VOID:
            self.open.append(element)
        if element == "img" and not attributes.get("alt"):
            self.faults.append("a picture has no alternative text")
        if re.fullmatch("h[1-6]", element):
            self._heading(int(element[1]))
        if element == "pre" or attributes.get("class") == "scroll":
            if attributes.get("tabindex") != "0" or not attributes.get("aria-label"):
                self.faults.append(f"line {self.getpos()[0]}: what scrolls needs tabindex and aria-label")
        identifier = attributes.get("id")
        if identifier in self.ids:
            self.faults.append(f"the id {identifier} occurs twice")
        if identifier:
            self.ids.add(identifier)
        for name in ("href", "src"):
            self._link(attributes.get(name))

    def handle_endtag(self, element):
        if not self.open or self.open.pop() != element:
            self.imbalances.append(f"line {self.getpos()[0]}: </{element}> closes something else")

    def _heading(self, level):
        if level > self.level + 1 or (level == 1 and self.level):
            self.faults.append(f"line {self.getpos()[0]}: h{level} follows h{self.level}")
        self.level = level

    def _link(self, target):
        if not target or target == MAKER or target.startswith("data:"):
            return
        if target.startswith("#"):
            self.anchors.add(target[1:])
        else:
            self.faults.append(f"a link leads out of the page: {target[:60]}")
