"""Draws the guide's diagrams from what `mechanism-cell info --json` says of a cell.

usage: diagrams.py layout|coupling CELL.json OUT.svg
"""
import json
import sys

BOX, GAP, LEFT, FONT = 62, 6, 24, "font-family='sans-serif'"
COLOURS = ["#d9733a", "#4a5260", "#b98a1e", "#4f7fb5"]
PLACES = {"robot": "Robot", "pedestal": "Pedestal", "bench": "Bench"}


def text(x, y, words, size=13, anchor="middle", colour="#2b3038", weight="normal"):
    return (f"<text x='{x}' y='{y}' font-size='{size}' text-anchor='{anchor}' fill='{colour}' "
            f"font-weight='{weight}' {FONT}>{words}</text>")


def box(x, y, words, colour):
    return (f"<rect x='{x}' y='{y}' width='{BOX - GAP}' height='40' rx='4' fill='{colour}'/>"
            + text(x + (BOX - GAP) / 2, y + 25, words, 14, colour="white", weight="bold"))


def page(width, height, parts):
    return (f"<svg xmlns='http://www.w3.org/2000/svg' width='{width}' height='{height}' "
            f"viewBox='0 0 {width} {height}'><rect width='100%' height='100%' fill='white'/>"
            + "".join(parts) + "</svg>\n")


def layout(cell):
    """The flat vector of the first system, slice by slice."""
    system = cell["systems"][0]
    mechanisms = {m["name"]: m for m in cell["mechanisms"]}
    parts = [text(LEFT, 28, f"system {system['hash']}: {system['values']} values", 15, "start", weight="bold")]
    for number, part in enumerate(system["slices"]):
        mechanism = mechanisms[part["entity"]]
        start = LEFT + part["start"] * BOX
        for i in range(part["count"]):
            parts.append(box(start + i * BOX, 66, str(part["start"] + i), COLOURS[number % len(COLOURS)]))
            parts.append(text(start + i * BOX + (BOX - GAP) / 2, 122, "mm" if mechanism["axes"][i]["unit"] == "mm" else "rad", 12, colour="#707784"))
        middle = start + (part["count"] * BOX - GAP) / 2
        parts.append(text(middle, 56, part["entity"], 13))
        parts.append(text(middle, 142, PLACES[mechanism["kind"]], 13, weight="bold"))
    return page(2 * LEFT + system["values"] * BOX, 160, parts)


def coupling(cell):
    """How the full vector of the first system follows from its independent values."""
    record = cell["systems"][0]["coupling"]
    full = len(record["ratio"])
    parts = [text(LEFT, 28, "independent values (GetValuesCoupling)", 14, "start"),
             text(LEFT, 214, "all values of the robot (GetValues)", 14, "start")]
    for place, source in enumerate(record["index"]):
        parts.append(box(LEFT + place * BOX, 42, str(place), "#4f7fb5"))
    source = -1
    for place in range(full):
        source += 1 + record["skip"][place]
        ratio = record["ratio"][place]
        x1, x2 = LEFT + source * BOX + (BOX - GAP) / 2, LEFT + place * BOX + (BOX - GAP) / 2
        colour = "#707784" if ratio == 1 else "#c0392b"
        parts.append(f"<line x1='{x1}' y1='84' x2='{x2}' y2='146' stroke='{colour}' stroke-width='2'/>")
        if ratio != 1:
            parts.append(text((x1 + x2) / 2 + 22, 118, f"times {ratio:g}", 13, colour=colour))
        parts.append(box(LEFT + place * BOX, 148, str(place), "#d9733a"))
    return page(max(2 * LEFT + full * BOX, 330), 230, parts)


def main():
    kind, source, target = sys.argv[1:]
    with open(source, encoding="utf-8") as file:
        cell = json.load(file)
    with open(target, "w", encoding="utf-8") as file:
        file.write({"layout": layout, "coupling": coupling}[kind](cell))


main()
