"""The presets that ship with the effect, as the preset index lists them."""

import re
from dataclasses import dataclass
from pathlib import Path


@dataclass
class Preset:
    name: str
    thumbnail: Path
    comment: str


def read_presets(folder):
    """Presets by section; empty where there is no index."""
    index = folder / "Drizzen.prs"
    sections = {}
    if not index.is_file():
        return sections
    entries = []
    for line in index.read_text(encoding="ascii").splitlines()[1:]:  # the first is a title
        header = re.match(r"\[(\w+)\]", line)
        if header:
            entries = sections.setdefault(header[1], [])
        elif line and not line.startswith(";"):
            parameters, thumbnail = line.split()
            entries.append(Preset(Path(parameters).stem, folder / thumbnail,
                                  leading_comment(folder / parameters)))
    return sections


def leading_comment(path):
    """The text of the ';' lines between the header and the first parameter."""
    words = []
    for line in path.read_text(encoding="ascii").splitlines()[1:]:
        if not line.startswith(";"):
            break
        words.append(line[1:].strip())
    return " ".join(words)
