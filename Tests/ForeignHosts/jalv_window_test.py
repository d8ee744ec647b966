"""jalv.gtk3 on an X server without a screen: the editor opens inside its window, and a knob that the pointer drags there
moves the port."""
import pathlib
import re
import sys

from hosts import RESULTS, STEREO
from jack import JackTest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "Tests/docs"))
from layout import control_middle
from picture import Picture, differences

EDITOR_SIZE = "690x454"  # with the bar above it
# The middle of the Gain knob in the editor, and how far it is dragged upwards, in pixels.
GAIN_KNOB = control_middle("Gain")
DRAG = 60
# What the picture of docs/hosts.md may differ by in the mean, of full scale; as edges in the editor, what moves and the
# status text.
MOST_DIFFERENCE = 0.02
MOVING = ((8, 38, 680, 56), (178, 340, 518, 385), (10, 426, 150, 444))


class JalvWindowTest(JackTest):
    def setUp(self):
        super().setUp()
        self.start_server()
        self.start("Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", log="xvfb.log")
        number = self.eventually(lambda: re.search(r"^(\d+)\n", self.log("xvfb.log"), re.MULTILINE), "the X server")
        self.desktop = {**self.jack, "DISPLAY": ":" + number.group(1), "GDK_BACKEND": "x11", "NO_AT_BRIDGE": "1",
                        "HOME": self.path("."), "GTK_THEME": "Adwaita"}
        # Clicks, so that the meters have something to show.
        self.start("jack_metro", "--bpm", "240", "--frequency", "440", "--duration", "100", "--amplitude", "0.2",
                   environment=self.jack, log="metro.log")
        self.start("stdbuf", "-oL", "jalv.gtk3", "--print-controls", "--jack-name=Fx", "--exact-jack-name", STEREO,
                   environment=self.desktop, log="jalv.log")
        self.wait_for_ports("Fx:in_l", "Fx:in_r", "metro:240_bpm")
        self.connect("metro:240_bpm", "Fx:in_l")
        self.connect("metro:240_bpm", "Fx:in_r")

    def on_desktop(self, *command):
        return self.run_program(*command, environment=self.desktop)

    def editor_corner(self):
        """Where on the screen the editor's window lies, in pixels: inside another window, not on the screen itself."""
        pattern = rf"^ {{8,}}0x\w+ .*{EDITOR_SIZE}\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)$"
        found = self.eventually(lambda: re.search(pattern, self.on_desktop("xwininfo", "-root", "-tree"), re.MULTILINE),
                                f"a window of {EDITOR_SIZE} inside jalv's")
        return int(found.group(1)), int(found.group(2))

    def reduction(self):
        """The most that the gain reduction meter shows while some clicks pass."""
        before = len(self.log("jalv.log"))
        shown = self.eventually(
            lambda: (lambda lines: lines if len(lines) >= 40 else None)(
                re.findall(r"grl = ([\d.]+)", self.log("jalv.log")[before:])), "forty values of the meter")
        return max(map(float, shown))

    def picture(self, name):
        path = RESULTS / name
        self.on_desktop("import", "-window", "root", str(path))
        return path

    def drag_gain(self):
        """Drags the drawn editor's Gain knob. Returns where the editor lies."""
        left, top = self.editor_corner()
        self.eventually(lambda: self.colours(left, top) > 500, "a drawn editor")
        x, y = left + GAIN_KNOB[0], top + GAIN_KNOB[1]
        self.on_desktop("xdotool", "mousemove", str(x), str(y), "mousedown", "1")
        for step in range(1, DRAG // 4 + 1):
            self.on_desktop("xdotool", "mousemove", str(x), str(y - 4 * step))
        self.on_desktop("xdotool", "mouseup", "1")
        return left, top

    # ./run manual takes this test's picture.
    def test_a_dragged_knob_moves_the_port(self):
        self.editor_corner()
        self.assertLess(self.reduction(), 0.01, "the clicks are too soft to be turned down")
        self.drag_gain()
        self.picture("jalv-gtk3-dragged.png")
        self.eventually(lambda: self.reduction() > 0.1, "gain reduction")

    def test_the_documents_show_the_window(self):
        """jalv's own bar above the editor is text, and left out."""
        left, top = self.drag_gain()
        window = self.path("window.png")
        self.on_desktop("convert", str(self.picture("jalv-gtk3-documented.png")), "-trim", "+repage", window)
        documented, shown = Picture.read(ROOT / "docs/pictures/jalv.png"), Picture.read(window)
        self.assertEqual(documented.size, shown.size)
        for picture in (documented, shown):
            picture.fill(0, 0, picture.width, top)
            for edges in MOVING:
                picture.fill(left + edges[0], top + edges[1], left + edges[2], top + edges[3])
        self.assertLess(differences(documented, shown, picture.width)[0], MOST_DIFFERENCE, "./run manual draws it anew")

    def test_the_window_shows_the_editor(self):
        left, top = self.editor_corner()
        self.eventually(lambda: self.colours(left, top) > 500, "a drawn editor")

    def colours(self, left, top):
        """How many colours there are where the editor lies."""
        return int(self.on_desktop("convert", str(self.picture("jalv-gtk3.png")), "-crop",
                                   f"{EDITOR_SIZE}+{left}+{top}", "+repage", "-format", "%k", "info:"))
