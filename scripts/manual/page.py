"""Puts the page together from chapters, declared parameters, presets and pictures."""

import html
import itertools
import re
import string
import tomllib

from .parameters import ManualError, ParameterChapter
from .recipes import recipes_html

CHAPTERS = ["about", "first_steps", "recipes", "command_line", "parameters", "presets", "files",
            "speed"]

__all__ = ["ManualError", "make_page"]


def make_page(root, declared, presets, pictures):
    """The page from what `brisel params` and `brisel presets` list; without `pictures` its pictures
    are empty."""
    folder = root / "docs/manual"
    with open(folder / "parameters.toml", "rb") as file:
        texts = tomllib.load(file)
    parameters = ParameterChapter(declared, texts, folder / "scenes", pictures)
    generated = {"parameters": parameters.html(), "presets": presets_html(presets, pictures),
                 "recipes": recipes_html(root, parameters, pictures)}

    content = []
    for name in CHAPTERS:
        chapter = (folder / "chapters" / f"{name}.html").read_text(encoding="utf-8")
        chapter = chapter.replace("<!-- generated -->", generated.get(name, ""))
        chapter = fill_pictures(root, chapter, pictures)
        content.append(f'<section class="chapter">\n{parameters.linked(chapter).strip()}\n</section>')
    content = "\n".join(content)

    frame = string.Template((folder / "page.html").read_text(encoding="utf-8"))
    style = (folder / "page.css").read_text(encoding="utf-8").strip()
    script = (folder / "page.js").read_text(encoding="utf-8").strip()
    return frame.substitute(style=style, script=script, contents=contents_html(content),
                            index=parameters.index_html(), content=content)


def contents_html(content):
    """The table of contents from the headings that carry an id."""
    lines = []
    depth = 1
    for level, anchor, title in re.findall(r'<h([23]) id="([^"]+)">(.*?)</h[23]>', content):
        level = int(level)
        if level > depth:
            lines.append("<ul>" * (level - depth))
        elif level < depth:
            lines.append("</li>" + "</ul></li>" * (depth - level))
        else:
            lines.append("</li>")
        depth = level
        lines.append(f'<li><a href="#{anchor}">{title}</a>')
    lines.append("</li></ul>" * (depth - 1))
    return "\n".join(lines)


def fill_pictures(root, chapter, pictures):
    """Fills <img data-example="scene.toml" data-frame="n" data-width="w" ...> with that frame, w pixels
    wide, and <img data-panel="height" ...> with the top of the effect controls."""
    def example(match):
        source = ""
        if pictures:
            source = pictures.example(root / match[1], int(match[2]), int(match[3]))
        return f'<img src="{source}"'

    def panel(match):
        source = pictures.panel(int(match[1])) if pictures else ""
        return f'<img src="{source}"'

    chapter = re.sub(r'<img data-example="([^"]+)" data-frame="(\d+)" data-width="(\d+)"', example,
                     chapter)
    return re.sub(r'<img data-panel="(\d+)"', panel, chapter)


def presets_html(presets, pictures):
    anchors = {"Emmiter presets": "presets-emmiter", "Stars presets": "presets-geometry"}
    parts = []
    for row, members in itertools.groupby(presets, lambda preset: preset["row"]):
        cards = []
        for preset in members:
            source = pictures.thumbnail(preset["thumbnail"]) if pictures else ""
            name, description = html.escape(preset["name"]), html.escape(preset["description"])
            cards.append(f'<li><img src="{source}" width="88" height="65" alt="Thumbnail of {name}">'
                         f"<div><strong>{name}</strong><p>{description}</p></div></li>")
        parts.append(f'<h3 id="{anchors[row]}">{row}</h3>\n'
                     '<ul class="presets">\n' + "\n".join(cards) + "\n</ul>")
    return "\n".join(parts)
