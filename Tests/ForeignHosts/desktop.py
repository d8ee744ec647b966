"""A desktop without a screen for tests: an X server, its mouse and keyboard as a person uses them, pictures of it, and the
window with the effect on it."""
import os
import pathlib
import re
import subprocess
import sys
import time

from hosts import PATIENCE_S

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "docs"))
from layout import BAR_HEIGHT, EDITOR_HEIGHT, EDITOR_WIDTH, bar, controls, middle
from picture import Picture

# What the program takes to answer: its clock has 30 ticks a second. A gesture of the wheel ends half a second later.
ANSWER_S = 0.12
WHEEL_S = 0.6
# What openbox takes from stating that it is there to answering requests of windows.
MANAGER_S = 1
# More colours than a window has before the editor is drawn.
DRAWN_COLOURS = 500


class Desktop:
    """Starts the server for a HostTest. Places are pixels of the screen."""

    def __init__(self, test, width=1280, height=1024):
        self.test = test
        self.size = width, height
        test.start("Xvfb", "-displayfd", "1", "-screen", "0", f"{width}x{height}x24", "-noreset", "-nolisten", "tcp",
                   log="xvfb.log")
        number = test.eventually(lambda: re.search(r"^(\d+)\n", test.log("xvfb.log"), re.MULTILINE), "the X server")
        self.environment = {"DISPLAY": ":" + number.group(1), "GDK_SCALE": "1"}

    def manage(self):
        """Starts a window manager, which frames windows and gives them the focus."""
        homes = {name: str(self.test.folder) for name in ("HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME")}
        self.test.start("openbox", "--sm-disable", environment={**self.environment, **homes}, log="openbox.log")
        self.test.eventually(lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), "openbox")
        time.sleep(MANAGER_S)

    def run(self, *command):
        return self.test.run_program(*map(str, command), environment=self.environment)

    def look(self, *command):
        """What a program prints of windows. One that goes meanwhile ends it, with an error."""
        return self.test.run_program(*command, status=(0, 1), environment=self.environment)

    def xdotool(self, *words):
        """Mouse and keyboard, and an answer to it."""
        self.run("xdotool", *words)
        time.sleep(ANSWER_S)

    def move(self, x, y):
        self.xdotool("mousemove", x, y)

    def click(self, x, y, button=1):
        self.xdotool("mousemove", x, y)
        self.xdotool("mousedown", button)
        self.xdotool("mouseup", button)

    def wheel(self, x, y, direction, steps=1):
        """Direction: 4 is up, 5 is down."""
        self.xdotool("mousemove", x, y, "click", "--repeat", steps, direction)
        time.sleep(WHEEL_S)

    def drag(self, x, y, distance):
        """Drags with the left button to a place so far below, with a step for each answer of the program."""
        self.xdotool("mousemove", x, y)
        self.xdotool("mousedown", 1)
        for part in (1, 2, 3, 4):
            self.xdotool("mousemove", x, y + distance * part // 4)
        self.xdotool("mouseup", 1)

    def keys(self, *names):
        for name in names:
            self.xdotool("key", name)

    def picture(self, left, top, right, bottom):
        width, height = right - left, bottom - top
        pixels = subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8",
                                 "rgb:-"], env={**os.environ, **self.environment}, check=True, timeout=PATIENCE_S,
                                capture_output=True).stdout
        return Picture(width, height, pixels)

    def inner_window(self, width, height):
        """Where on the screen a window of this size lies inside of those of other programs: left, top."""
        tree = self.look("xwininfo", "-root", "-tree")
        found = re.search(rf"^ {{8,}}0x\w+ .*{width}x{height}\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)$", tree, re.MULTILINE)
        return found and (int(found.group(1)), int(found.group(2)))

    def menu(self):
        """The area of the effect's menu on the screen: left, top, width, height; None where it has none."""
        for line in self.look("xwininfo", "-root", "-children").splitlines():
            found = re.match(r"^ +(0x\w+) .*\(\"varno\" \"Varno\"\) +(\d+)x(\d+)\+(-?\d+)\+(-?\d+) ", line)
            if found and "_NET_WM_WINDOW_TYPE_POPUP_MENU" in self.look("xprop", "-id", found.group(1)):
                if "IsViewable" in self.look("xwininfo", "-id", found.group(1)):
                    width, height, left, top = map(int, found.groups()[1:])
                    return left, top, width, height
        return None


class EffectWindow:
    """The editor with the bar above it. Its corner is that of the bar, on the screen."""

    def __init__(self, desktop, corner):
        self.desktop = desktop
        self.corner = corner
        desktop.test.eventually(lambda: self.shows_editor(), "a drawn editor")

    def shows_editor(self):
        return len(self.picture((0, BAR_HEIGHT, EDITOR_WIDTH, BAR_HEIGHT + EDITOR_HEIGHT)).colours()) > DRAWN_COLOURS

    def place(self, point):
        return self.corner[0] + point[0], self.corner[1] + point[1]

    def control(self, name):
        """The middle of one of the editor's controls, on the screen."""
        x, y = middle(controls()[name])
        return self.place((x, BAR_HEIGHT + y))

    def part(self, name):
        """The middle of a part of the bar, on the screen."""
        return self.place(middle(bar()[name]))

    def press(self, name):
        """Clicks a button of the bar."""
        self.desktop.click(*self.part(name))

    def picture(self, edges):
        """Of a part of the window, by its edges there."""
        return self.desktop.picture(*self.place(edges[:2]), *self.place(edges[2:]))

    def picture_of(self, part):
        """Of a part of the bar."""
        return self.picture(bar()[part])
