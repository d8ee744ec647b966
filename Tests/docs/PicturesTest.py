"""The committed pictures of the documents show what this build draws.

Text is left out of the comparison, since another version of a font draws it differently, and so are the meters, which
move. Of a terminal the text itself is compared.
"""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from layout import controls
from picture import Picture, changed_areas, differences

ROOT = pathlib.Path(__file__).resolve().parents[2]
PICTURES = ROOT / "docs/pictures"

# Of full scale: what two pictures may differ in the mean, and in the mean of a square of CELL pixels at scale 1. A knob
# that is turned by 0.02 makes 0.09 in a square; the numbers of controls.png, in another font, make 0.045.
MOST_MEAN = 0.02
MOST_IN_CELL = 0.06
CELL = 16

# What is left out, as edges (left, top, right, bottom) at scale 1.
TEXTS = [
    (8, 4, 104, 30), (530, 12, 682, 30),  # name and kind of the effect
    (0, 28, 690, 40), (0, 180, 116, 192), (534, 180, 690, 192), (116, 218, 534, 230),  # titles, with their lines
    *((x, y, x + 92, y + 29) for x, y in ((10, 117), (256, 117), (396, 117), (588, 117), (10, 269), (588, 269))),  # knobs
    *((x, y, x + 30, y + 12) for x, y in ((40, 39), (285, 39), (425, 39), (620, 39), (40, 191), (620, 191))),  # above them
    (340, 74, 400, 100),  # which curve the times are those of
    (150, 103, 255, 127), (200, 132, 260, 157),  # High Pass, Band Pass, Harmonic Select
    (536, 97, 600, 112), (536, 160, 600, 175), (536, 249, 600, 274),  # Auto Gain, UK Mode, Stereo Link
    (194, 241, 232, 257), *((235 + 29 * n, 235, 247 + 29 * n, 249) for n in range(8)),  # Ratio and its keys
    (122, 284, 171, 313), (150, 321, 522, 335),  # the meters' name and scale
    (10, 362, 150, 380), (208, 362, 300, 380), (338, 362, 430, 380),  # status line, preset buttons
]
METERS = [(178, 276, 518, 321)]
# A knob and its neighbour, by their corners, and their size.
GAIN, VOLUME, KNOB = (24, 56), (604, 56), 62


def scaled(edges, scale):
    return tuple(scale * edge for edge in edges)


def where(area, scale):
    """Which controls an area of a picture lies on, or its edges where it lies on none."""
    edges = tuple(edge / scale for edge in area)
    names = [name for name, control in controls().items()
             if control[0] < edges[2] and edges[0] < control[2] and control[1] < edges[3] and edges[1] < control[3]]
    return " and ".join(names) or f"{area}"


class PicturesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="varno-pictures-")
        cls.addClassCleanup(folder.cleanup)
        cls.drawn = pathlib.Path(folder.name)
        chosen = cls.drawn / "config/varno-s/window.txt"  # by a user, for all windows
        chosen.parent.mkdir(parents=True)
        chosen.write_text("size 1.5\ncurve shown\n")
        subprocess.run([ROOT / "Scripts/draw-pictures", os.environ["VARNO_BUILD"], cls.drawn], check=True,
                       env={**os.environ, "XDG_CONFIG_HOME": str(cls.drawn / "config")})

    def fault(self, committed, drawn, scale):
        """What is wrong with a committed picture of the editor; empty if nothing is."""
        if committed.size != drawn.size:
            return f"is {committed.size}, drawn are {drawn.size}"
        for edges in TEXTS + METERS:
            for picture in (committed, drawn):
                picture.fill(*scaled(edges, scale))
        areas = changed_areas(committed, drawn, CELL * scale, MOST_IN_CELL)
        if areas:
            return "differs at " + "; ".join(where(area, scale) for area in areas)
        mean = differences(committed, drawn, CELL * scale)[0]
        return f"differs by {mean:.3f}" if mean > MOST_MEAN else ""

    def check(self, name, scale):
        committed, drawn = Picture.read(PICTURES / name), Picture.read(self.drawn / name)
        self.assertEqual(self.fault(committed, drawn, scale), "", f"{name}: ./run manual draws it anew")

    def test_editor(self):
        self.check("editor.png", 1)

    def test_editor_at_twice_the_size(self):
        self.check("editor-2x.png", 2)

    def test_numbered_controls(self):
        self.check("controls.png", 2)

    def test_wrong_pictures_are_found(self):
        def broken(change):
            picture, drawn = Picture.read(self.drawn / "editor.png"), Picture.read(self.drawn / "editor.png")
            change(picture)
            return self.fault(picture, drawn, 1)

        def cut(picture):
            picture.height -= 1

        def darken(picture):
            picture.pixels = bytearray(value // 2 for value in picture.pixels)

        self.assertEqual(broken(lambda picture: None), "")
        self.assertEqual(broken(cut), "is (690, 389), drawn are (690, 390)")
        self.assertRegex(broken(darken), r"^differs ")
        # Gain is shown where Volume is: 0.6 instead of 0.5.
        self.assertEqual(broken(lambda picture: picture.copy(GAIN, VOLUME, KNOB, KNOB)), "differs at Volume")
        self.assertEqual(broken(lambda picture: picture.fill(304, 176, 336, 192)), "differs at (304, 176, 336, 192)")
        self.assertEqual(broken(lambda picture: (picture.fill(24, 56, 86, 118), picture.fill(233, 233, 465, 263))),
                         "differs at Gain; Ratio")

    def test_the_controls_are_found_in_the_layout(self):
        self.assertEqual(len(controls()), 17)
        self.assertEqual(controls()["Volume"], (604, 56, 666, 118))

    def comment(self, path):
        return subprocess.run(["identify", "-format", "%c", path], check=True, capture_output=True, text=True).stdout

    def test_terminal(self):
        def lines(folder):
            return re.sub(r"\d+ x real time", "N x real time", self.comment(folder / "render.png"))

        self.assertIn("x real time", lines(PICTURES))
        self.assertEqual(lines(PICTURES), lines(self.drawn))
        # With its text left out, size and ground remain.
        committed, drawn = Picture.read(PICTURES / "render.png"), Picture.read(self.drawn / "render.png")
        self.assertEqual(committed.size, drawn.size)
        self.assertEqual(committed.pixels[:3], drawn.pixels[:3], "the ground's colour")

    def test_each_is_shown(self):
        shown = set()
        for document in (ROOT / "README.md", *(ROOT / "docs").glob("*.md")):
            for name in re.findall(r"(?:\]\(|src=\")([^)\"]*pictures/[^)\"]+)", document.read_text()):
                shown.add((document.parent / name).resolve())
        self.assertEqual(shown, set(PICTURES.iterdir()))


if __name__ == "__main__":
    unittest.main()
