"""The bar above the editor in the window of jalv.gtk3, used with mouse and keyboard under a window manager. What it changes
reaches the ports, and is heard."""
import re
import time

from desktop import Desktop, EffectWindow
from hosts import LATENCY_FRAMES, RATE_HZ, STEREO, Sound, difference
from layout import BAR_HEIGHT, BAR_WIDTH, EDITOR_HEIGHT
from play_test import LiveTest

# At quality 2x.
LATENCY_FRAMES_2X = 41
# Longer than a host takes to lay out its window.
REST_S = 0.5
PLAIN_SIZE = BAR_WIDTH, BAR_HEIGHT + EDITOR_HEIGHT


class JalvBarTest(LiveTest):
    def setUp(self):
        super().setUp()
        self.start_server()
        self.desktop = Desktop(self)
        self.desktop.manage()
        environment = {**self.jack, **self.desktop.environment, "GDK_BACKEND": "x11", "NO_AT_BRIDGE": "1",
                       "HOME": self.path("."), "XDG_DATA_HOME": self.path("data"), "XDG_CONFIG_HOME": self.path("config")}
        self.start("stdbuf", "-oL", "jalv.gtk3", "--print-controls", "--jack-name=Fx", "--exact-jack-name", STEREO,
                   environment=environment, log="jalv.log")
        self.wait_for_ports("Fx:in_l", "Fx:out_r")
        self.eventually(self.is_placed, "the editor inside jalv's window")
        self.window = EffectWindow(self.desktop, self.corner())

    def corner(self):
        return self.desktop.inner_window(*PLAIN_SIZE)

    def is_placed(self):
        """Whether the window manager has placed and framed jalv's window: the corner is below a title bar and a menu."""
        corner = self.corner()
        return corner and min(corner) > 0 and "_NET_FRAME_EXTENTS(CARDINAL)" in self.desktop.run(
            "xprop", "-name", "Varno-S Stereo")

    def resting_corner(self):
        """Where the editor lies, once it stays there: jalv moves it to the middle after a change of its size."""
        before = self.corner()
        time.sleep(REST_S)
        return before if before == self.corner() else None

    def choose_preset(self, keys):
        """Opens the menu of presets and uses it with keys, after a click: then they reach the effect."""
        self.window.press("Presets")
        self.eventually(self.desktop.menu, "the menu")
        self.desktop.keys(*keys)
        self.eventually(lambda: not self.desktop.menu(), "the end of the menu")


class SoundTest(JalvBarTest):
    def test_bypass_is_the_port(self):
        """The port "enabled" delays the sound by the latency and changes nothing else."""
        self.window.press("Bypass")
        dry, wet = self.recorded(2, "Fx")
        delayed = [channel[:-LATENCY_FRAMES] for channel in dry.channels]
        self.assertGreater(max(map(max, delayed)), 0.1)
        self.assertEqual(difference(Sound(RATE_HZ, [channel[LATENCY_FRAMES:] for channel in wet.channels]),
                                    Sound(RATE_HZ, delayed)), "")

    def test_quality_is_the_port(self):
        """What the bar chooses is heard, at the latency that the plug-in reports then."""
        self.window.press("Quality")
        self.eventually(self.desktop.menu, "the menu")
        self.desktop.keys("Down", "Down", "Return")  # 2x
        self.eventually(lambda: (LATENCY_FRAMES_2X,) * 2 in self.reported_latency("Fx:out_l"), "the latency")
        self.assert_is_rendered(*self.recorded(2, "Fx"), "--quality", "2x")

    def test_preset_typed_value_and_undo(self):
        self.choose_preset(("End", "Return"))  # the last of the factory's presets
        self.desktop.move(*self.window.control("Gain"))
        self.desktop.keys("minus", "3", "Return")
        self.desktop.click(*self.window.control("HP"))
        self.desktop.drag(*self.window.control("Mix"), -40)
        self.window.press("Undo")
        self.desktop.keys("ctrl+z")
        self.assert_is_rendered(*self.recorded(2, "Fx"), "--preset", "voice-smooth", "--set", "Gain=-3dB")


class PopupTest(JalvBarTest):
    def test_menus_open_below_and_close(self):
        self.window.press("Size")
        left, top, _, _ = self.eventually(self.desktop.menu, "the menu")
        button_left, button_bottom = self.window.place((624, 30))
        self.assertEqual((left, top), (button_left, button_bottom))
        self.desktop.click(left - 60, top + 60)  # on the editor
        self.eventually(lambda: not self.desktop.menu(), "the end of the menu")
        self.desktop.click(*self.window.control("Mix"), 3)
        self.eventually(self.desktop.menu, "the menu of a knob")
        self.desktop.click(2, 2)  # the desktop
        self.eventually(lambda: not self.desktop.menu(), "its end")
        self.window.press("Presets")
        self.eventually(self.desktop.menu, "the menu of presets")
        self.desktop.click(self.window.corner[0] + 20, self.window.corner[1] - 10)  # jalv's own menu bar
        self.eventually(lambda: not self.desktop.menu(), "its end")

    def test_a_preset_is_saved(self):
        self.choose_preset(("Down", "Return"))  # Save as
        self.desktop.keys("m", "y", "Return")
        self.eventually((self.folder / "data/varno-s/presets/my.txt").exists, "the preset's file")


class SizeTest(JalvBarTest):
    def choose(self, steps):
        """Chooses the size so many rows down in the menu: 75, 100, 125 % and so on."""
        self.window.press("Size")
        self.eventually(self.desktop.menu, "the menu")
        self.desktop.keys(*["Down"] * steps, "Return")

    def host_width(self):
        return int(re.search(r"Width: (\d+)", self.desktop.run("xwininfo", "-name", "Varno-S Stereo")).group(1))

    def test_the_host_follows(self):
        """It grows with the editor. Where the editor shrinks, jalv keeps its size."""
        self.choose(3)
        large = BAR_WIDTH * 5 // 4, BAR_HEIGHT * 5 // 4 + EDITOR_HEIGHT * 5 // 4
        self.eventually(lambda: self.desktop.inner_window(*large) and self.host_width() == large[0], "125 %")
        self.desktop.keys("ctrl+minus")
        self.window.corner = self.eventually(self.resting_corner, "100 %")
        small = BAR_WIDTH * 3 // 4, BAR_HEIGHT * 3 // 4 + EDITOR_HEIGHT * 3 // 4
        self.choose(1)
        self.eventually(lambda: self.desktop.inner_window(*small), "75 %")
