"""Where the parts of editor and bar lie, from the tables that the program is built from: as edges (left, top, right,
bottom) in pixels at scale 1, those of the editor from its own upper left corner."""
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
EDITOR = (ROOT / "Source/DemoGain_ViewLayout.h").read_text()
BAR = (ROOT / "Surround/BarLayout.h").read_text()


def constant(name):
    """A length of the bar's table."""
    return int(re.search(rf"constexpr int {name} = (\d+);", BAR).group(1))


BAR_WIDTH, BAR_HEIGHT = constant("kWidth"), constant("kHeight")
EDITOR_WIDTH, EDITOR_HEIGHT = map(int, re.search(r"\{Art::kBackground, \"[^\"]+\", (\d+), (\d+), 1\}", EDITOR).groups())


def controls():
    """The editor's controls by their identifiers."""
    sizes = {art: (int(width), int(height)) for art, width, height
             in re.findall(r"\{Art::(\w+), \"[^\"]+\", (\d+), (\d+), \d+\}", EDITOR)}
    found = {}
    for x, y, art, name in re.findall(r"\{Kind::\w+, (\d+), (\d+), Art::(\w+), \w+, \"(\w+)\"", EDITOR):
        found[name] = (int(x), int(y), int(x) + sizes[art][0], int(y) + sizes[art][1])
    return found


def box(text):
    """The edges of a Box of the bar's table: left, top, width, height as numbers, constants and sums of them."""
    left, top, width, height = (sum(int(term) if term.isdigit() else constant(term) for term in length.split(" + "))
                                for length in text.split(", "))
    return left, top, left + width, top + height


def bar():
    """The parts of the bar by name: buttons as the program names them to people, meters by their names, numbers as "Input
    level number", and "Gain reduction" and "Message"."""
    rows = re.findall(r"\{Button::\w+,\s*Kind::\w+,\s*\{([^}]+)\},\s*\"[^\"]*\",\s*\"([^\"]+)\"", BAR)
    found = {name: box(place) for place, name in rows}
    for name, meter, number in re.findall(r"\{\"\w+\", \"([^\"]+)\", \{[^}]+\}, \{([^}]+)\}, \{([^}]+)\}\}", BAR):
        found[name], found[f"{name} number"] = box(meter), box(number)
    for name, member in (("Gain reduction", "kReduction"), ("Message", "kMessage")):
        found[name] = box(re.search(rf"constexpr Box {member} = \{{([^}}]+)\}};", BAR).group(1))
    return found


def middle(edges):
    return (edges[0] + edges[2]) // 2, (edges[1] + edges[3]) // 2


def control_middle(name):
    """The middle of a control in a window with the bar above the editor."""
    x, y = middle(controls()[name])
    return x, BAR_HEIGHT + y
