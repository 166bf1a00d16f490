"""What the tables of faults say that a program says is in its sources."""

import re

SECTIONS = ["What each fault looks like", "When it doesn't work"]
QUOTED = re.compile(r'"([^"\n]+)"')
# What the operating system, PostgreSQL's example and the reader's own names say.
ELSEWHERE = {"address already in use", "D", ", trying studio1.example and\nstudio2.example"}
LEAST = 20


def sections_of(text):
    for heading in SECTIONS:
        begin = text.index(f"## {heading}\n")
        end = text.find("\n## ", begin)
        yield text[begin:end if end > 0 else len(text)]


def pieces_of(sentence):
    """What stands around the parts that differ from one case to the next."""
    for piece in sentence.split("…"):
        piece = piece.strip(" .:,")
        if len(piece.split()) > 1 and piece not in ELSEWHERE:
            yield piece


def source_text(source):
    """All the sources, with texts that stand in several lines in one."""
    text = "\n".join(file.read_text(encoding="utf-8") for file in sorted(source.rglob("*.cpp"))
                     + sorted(source.rglob("*.h")))
    return re.sub(r'"\s*\n?\s*"', "", text).replace('\\"', '"').replace("&", "")


def unsaid(handbook, source):
    """What nothing says any more."""
    said = source_text(source)
    quoted = [piece for section in sections_of(handbook) for sentence in QUOTED.findall(section)
              for piece in pieces_of(sentence)]
    faults = [f"nothing says this: {piece}" for piece in dict.fromkeys(quoted) if piece not in said]
    if len(quoted) < LEAST:
        faults.append(f"only {len(quoted)} texts of faults were found")
    return faults
