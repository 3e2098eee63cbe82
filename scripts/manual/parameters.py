"""The chapter on the parameters: what the module declares beside what docs/manual explains."""

import html
import re

KEYS = {"text", "gray", "items", "scene", "frame", "values", "set", "input", "item_set",
        "item_input"}
KINDS = {"group start": "group", "fixed slider": "number", "slider": "whole number",
         "color": "color", "path": "mask"}


class ManualError(Exception):
    pass


class ParameterChapter:
    def __init__(self, declared, texts, scenes, pictures):
        self.declared = declared
        self.texts = texts
        self.scenes = scenes
        self.pictures = pictures
        self.anchors = {entry["label"]: anchor_of(entry) for entry in declared}
        self._demand_complete()

    def html(self):
        parts = []
        for entry in self.declared:
            parts.append(self._group(entry) if entry["type"] == "group start"
                         else self._parameter(entry))
        return "\n".join(parts)

    def index_html(self):
        """All labels from A to Z, with the group of each and, for a search, the items."""
        lines = []
        for entry in sorted(self.declared, key=lambda entry: entry["label"].lower()):
            details = ""
            if entry["groups"]:
                details += f' <span class="in">{group_path(entry["groups"])}</span>'
            if "items" in entry:
                details += f' <span class="has">{html.escape(", ".join(entry["items"]))}</span>'
            lines.append(f"<li>{self.link(entry['label'])}{details}</li>")
        return "<ul>\n" + "\n".join(lines) + "\n</ul>"

    def link(self, label):
        if label not in self.anchors:
            raise ManualError(f'"{label}" names no declared parameter')
        return f'<a href="#{self.anchors[label]}">{label}</a>'

    def linked(self, text):
        """[[Label]] becomes a link to that parameter."""
        return re.sub(r"\[\[([^\]]+)\]\]", lambda match: self.link(match[1]), text)

    def _demand_complete(self):
        for entry in self.declared:
            label = entry["label"]
            text = self.texts.get(label)
            if not text or not text.get("text"):
                raise ManualError(f'"{label}" is declared but not explained')
            explained = list(text.get("items", {}))
            if explained != entry.get("items", []):
                raise ManualError(f'the items of "{label}" are not those declared: {explained}')
            strange = set(text) - KEYS
            strange |= {item for key in ("item_set", "item_input") for item in text.get(key, {})
                        if item not in explained}
            if strange:
                raise ManualError(f'"{label}": unknown {", ".join(sorted(strange))}')
        unknown = set(self.texts) - set(self.anchors)
        if unknown:
            raise ManualError(f'explained but not declared: {", ".join(sorted(unknown))}')

    def _group(self, entry):
        label = entry["label"]
        level = level_of(entry)
        path = group_path(entry["groups"] + [label])
        return (f'<div class="group depth{len(entry["groups"])}">'
                f'<h{level} id="{self.anchors[label]}">{label}</h{level}>'
                f'<p class="where">Group {path}</p>'
                f"<p>{self.texts[label]['text']}</p>{self._gray(label)}</div>")

    def _parameter(self, entry):
        label = entry["label"]
        level = level_of(entry)
        body = [f"<p>{self.texts[label]['text']}</p>", self._gray(label)]
        if "items" in entry:
            body.append(self._items(entry))
        elif "values" in self.texts[label]:
            body.append(self._values(label))
        return (f'<article class="parameter"><header>'
                f'<h{level} id="{self.anchors[label]}">{label}</h{level}>{facts_html(entry)}</header>\n'
                + "\n".join(part for part in body if part) + "</article>")

    def _gray(self, label):
        reason = self.texts[label].get("gray")
        return f'<p class="gray"><b>Grayed out</b> {reason}.</p>' if reason else ""

    def _items(self, entry):
        text = self.texts[entry["label"]]
        level = level_of(entry) + 1
        cards = []
        for number, item in enumerate(entry["items"], 1):
            settings = text.get("item_set", {}).get(item, {})
            figure = ""
            if "scene" in text:
                source = text.get("item_input", {}).get(item)
                figure = self._picture(entry["label"], item, settings, source)
            mark = ' <span class="default">default</span>' if item == entry["default"] else ""
            cards.append(f'<li>{figure}<div><h{level} class="name"><span class="number">{number}</span>'
                         f" {html.escape(item)}{mark}</h{level}>"
                         f"<p>{text['items'][item]}</p></div></li>")
        return list_html(cards, text.get("scene"))

    def _values(self, label):
        cards = [f"<li><figure>{self._picture(label, value, {})}"
                 f'<figcaption class="name">{number_text(value)}</figcaption></figure></li>'
                 for value in self.texts[label]["values"]]
        return list_html(cards, self.texts[label]["scene"])

    def _picture(self, label, value, settings, source=None):
        text = self.texts[label]
        data = ""
        if self.pictures:
            settings = {**text.get("set", {}), label: value, **settings}
            data = self.pictures.scene(self.scenes / f"{text['scene']}.toml", text.get("frame", 0),
                                       settings, source or text.get("input"))
        caption = html.escape(f"{label} {value}" if not isinstance(value, str) else f"{label}: {value}")
        return f'<img src="{data}" alt="{caption}">'


def list_html(cards, scene):
    kind = {None: "plain", "life": "wide", "flight": "wide"}.get(scene, "pictures")
    return f'<ul class="items {kind}">\n' + "\n".join(cards) + "\n</ul>"


def level_of(entry):
    """The level of the heading: one below that of the group around it."""
    return 3 + len(entry["groups"])


def group_path(groups):
    return " › ".join(groups)


def anchor_of(entry):
    words = re.sub(r"[^a-z0-9]+", "-", entry["label"].lower()).strip("-")
    return ("group-" if entry["type"] == "group start" else "p-") + words


def facts_html(entry):
    facts = [("", KINDS.get(entry["type"], entry["type"]))]
    if "default" in entry:
        facts.append(("default", value_text(entry, entry["default"])))
    if "items" not in entry:
        for key, name in (("valid", "range"), ("slider", "slider")):
            if key in entry:
                facts.append((name, " … ".join(number_text(n) for n in entry[key])))
    return '<ul class="facts">' + "".join(
        f"<li>{name} <b>{value}</b></li>" if name else f"<li>{value}</li>"
        for name, value in facts) + "</ul>"


def value_text(entry, value):
    """A value of the parameter as a person reads it."""
    if isinstance(value, bool):
        return "on" if value else "off"
    if isinstance(value, list):
        return ", ".join(f"{minus_sign(f'{part * 100:g}')}\N{NO-BREAK SPACE}%" for part in value)
    if isinstance(value, str):
        return value
    return number_text(value) + ("°" if entry["type"] == "angle" else "")


def number_text(number):
    return minus_sign(f"{number:,}".replace(",", "\N{NARROW NO-BREAK SPACE}"))


def minus_sign(text):
    return text.replace("-", "\N{MINUS SIGN}")
