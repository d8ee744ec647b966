"""Ardour's mixer shows the gain reduction in the strip of a track, without any preference: the effect's inline display."""
import array
import json
import math
import pathlib
import re
import time
from xml.etree import ElementTree

from ardour_desktop import ArdourDesktop
from hosts import DRIVEN, PARAMETERS, PROGRAM, RATE_HZ, Sound, write_wav
from jack import again_where_requests_are_lost

PALETTE = (pathlib.Path(__file__).resolve().parents[2] / "Source/DemoGain_Palette.h").read_text()

ONE_TRACK = """
local session = create_session(folder, "s", 48000)
for track in add_tracks(session, 1):iter() do
    local effect = add_effect(session, track)
    for index, value in ipairs(settings[1]) do
        assert(ARDOUR.LuaAPI.set_processor_param(effect, index - 1, value))
    end
end
assert(session:save_state("") == 0)
close_session()
"""

TONE_HZ, TONE_S = 440, 300
SOFT, LOUD = 0.06, 0.9
# Of a strip, in pixels: less is something else of these colours.
LEAST_WIDTH = 50
# Of the bar: the display rounds to pixels and has round corners.
STEP = 0.04
# What Ardour takes to show another page.
PAGE_S = 1
# Of DemoGain_MeterLaw.h: the terms of the bar's length, by powers of the reduction in parts of the range.
RANGE_DB, TERMS = 32.0, {1: 2.1271815, 3: -2.0384471, 5: 0.916367}


def colour(name):
    """One of the effect's, as a picture has it."""
    return bytes.fromhex(re.search(rf"{name} = 0x(\w{{6}});", PALETTE).group(1))


def tone(level, seconds):
    samples = array.array("f", (level * math.sin(2.0 * math.pi * TONE_HZ * frame / RATE_HZ) for frame in range(RATE_HZ)))
    return Sound(RATE_HZ, [samples * seconds] * 2)


class ArdourMixerTest(ArdourDesktop):
    def listen_to_inputs(self):
        """Writes into the session that the track lets its input through."""
        tree = ElementTree.parse(self.session())
        controls = [control for control in tree.iter("Controllable") if control.get("name") == "monitor"]
        self.assertEqual(len(controls), 1)
        controls[0].set("monitoring", "MonitorInput")
        controls[0].set("value", "1")
        tree.write(self.session(), "UTF-8", xml_declaration=True)

    def start_tone(self, level):
        write_wav(self.path("tone.wav"), tone(level, TONE_S), 32)
        player = self.start_player(self.path("tone.wav"), 2)
        for side in (1, 2):
            self.connect(f"player:out_{side}", f"ardour:T/audio_in {side}")
        return player

    def expected(self, level):
        """The part of the bar for the reduction that the program finds with such a tone."""
        write_wav(self.path("second.wav"), tone(level, 1), 32)
        settings = [word for name, value in DRIVEN.items() for word in ("--set", f"{name}={value}")]
        report = json.loads(self.run_program(PROGRAM, "render", "--force", "--json", *settings,
                                             self.path("second.wav"), self.path("second-out.wav")))
        reduction = min(report["gain_reduction_db"] / RANGE_DB, 1.0)
        return min(sum(factor * reduction ** power for power, factor in TERMS.items()), 1.0)

    def display(self):
        """By row of the screen, how many of its pixels have the ground of the inline display, and how many are lit."""
        screen = self.desktop.picture(0, 0, *self.desktop.size)
        ground, lit = colour("kRecess"), colour("kLit")
        rows = {}
        for y in range(screen.height):
            row = bytes(screen.pixels[screen.row(y, 0, screen.width)])
            pixels = [row[at:at + 3] for at in range(0, len(row), 3)]
            counts = pixels.count(ground), pixels.count(lit)
            if sum(counts) >= LEAST_WIDTH:
                rows[y] = counts
        return rows

    def lit(self):
        """The part of the display that is lit, 0 to 1; None where there is no display. The bar has ground above and
        below, and Ardour cuts the corners off."""
        return max((lit / (ground + lit) for ground, lit in self.display().values()), default=None)

    def show_mixer(self):
        if self.lit() is not None:
            return True
        self.desktop.xdotool("windowfocus", "--sync", self.main_window(), "key", "alt+m")
        time.sleep(PAGE_S)
        return False

    def check_tone(self, level):
        expected = self.expected(level)
        player = self.start_tone(level)
        self.eventually(lambda: abs((self.lit() or 0.0) - expected) < STEP, f"a bar of {expected:.2f}")
        self.end(player)
        self.eventually(lambda: self.lit() == 0.0, "an empty display")

    @again_where_requests_are_lost
    def test_the_strip_shows_the_gain_reduction(self):
        values = {**PARAMETERS, **DRIVEN}
        self.ardour(ONE_TRACK, "session.lua", [[values[name] for name in PARAMETERS]], backend="JACK",
                    environment=self.jack)
        self.listen_to_inputs()
        process = self.start_ardour()
        self.wait_for_main_window()
        self.eventually(self.show_mixer, "an inline display")
        self.assertEqual(self.lit(), 0.0)
        self.assertLess(STEP, self.expected(SOFT))
        self.assertLess(self.expected(SOFT), self.expected(LOUD) - 2 * STEP)
        self.check_tone(LOUD)
        self.check_tone(SOFT)
        self.assertIsNone(process.poll())
