"""The window of `varno play` between a player and a recorder of a JACK server, used with mouse and keyboard."""
import json
import os
import signal
import subprocess

from desktop import Desktop, EffectWindow
from hosts import LATENCY_FRAMES, MILD, PATIENCE_S, PROGRAM, RATE_HZ, Sound, difference, make_music, read_wav, write_wav
from play_test import PORTS, LiveTest

# Rounds of a loop, of a second each: more than pass until it is recorded.
ROUNDS = 120
# Upwards, in pixels.
DRAG = -40
# At quality 4x.
LATENCY_FRAMES_4X = 46
# The colour of a level.
LIT = bytes((0xFF, 0x9D, 0x33))


class WindowTest(LiveTest):
    def setUp(self):
        super().setUp()
        self.server = self.start_server()
        self.desktop = Desktop(self)
        self.homes = {"XDG_DATA_HOME": self.path("data"), "XDG_CONFIG_HOME": self.path("config")}

    def start_window(self, *options):
        """Returns the program and its window, which has the focus."""
        process = self.start(PROGRAM, "play", "--no-connect", "--save-state", "my.state", *options,
                             environment={**self.jack, **self.homes, **self.desktop.environment}, log="play.log")
        window = self.eventually(lambda: self.windows() or process.poll() is not None and self.fail(self.log("play.log")),
                                 "the window")[0]
        self.desktop.xdotool("windowfocus", "--sync", window)
        return process, EffectWindow(self.desktop, (0, 0))

    def windows(self):
        done = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Varno-S"], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, env={**os.environ, **self.desktop.environment}, check=False)
        return done.stdout.decode().split()

    def saved(self, *names):
        """The values of parameters as Ctrl-S saves them now."""
        state = self.folder / "my.state"
        state.unlink(missing_ok=True)
        self.desktop.keys("ctrl+s")
        self.eventually(state.exists, "the saved state")
        values = {row["id"]: row["value"] for row in json.loads(
            self.run_program(PROGRAM, "params", "--state", str(state), "--json"))}
        return tuple(round(values[name], 4) for name in names)

    def factory(self, preset, *names):
        """The values of parameters in a factory preset."""
        rows = json.loads(self.run_program(PROGRAM, "params", "--preset", preset, "--json"))
        values = {row["id"]: row["value"] for row in rows}
        return tuple(round(values[name], 4) for name in names)

    def close(self, process):
        self.desktop.keys("Escape", "Escape")
        return process.wait(PATIENCE_S)


class SoundTest(WindowTest):
    """What the window changes is heard."""

    def test_a_knob_and_a_preset(self):
        process, window = self.start_window()
        window.press("Next preset")
        self.desktop.drag(*window.control("Gain"), DRAG)
        self.assertGreater(self.saved("Gain"), self.factory("bass-firm", "Gain"))
        self.assert_is_rendered(*self.recorded(2), "--state", self.path("my.state"))
        self.assertEqual(self.close(process), 0)

    def test_bypass(self):
        _, window = self.start_window("--set", "Hot=0.5", "--set", "Gain=0.75")
        window.press("Bypass")
        dry, wet = self.recorded(2)
        delayed = [channel[:-LATENCY_FRAMES] for channel in dry.channels]
        self.assertGreater(max(map(max, delayed)), 0.1)
        self.assertEqual(difference(Sound(RATE_HZ, [channel[LATENCY_FRAMES:] for channel in wet.channels]),
                                    Sound(RATE_HZ, delayed)), "")

    def test_quality(self):
        """It is heard, and its latency is reported."""
        process, window = self.start_window("--set", "Hot=0.5")
        window.press("Quality")
        self.eventually(self.desktop.menu, "the menu")
        self.desktop.keys("Down", "Down", "Down", "Return")  # 4x
        self.eventually(lambda: not self.desktop.menu(), "the end of the menu")
        self.eventually(lambda: (LATENCY_FRAMES_4X,) * 2 in self.reported_latency("varno:out_l"), "the latency")
        self.assert_is_rendered(*self.recorded(2), "--set", "Hot=0.5", "--quality", "4x")
        self.assertEqual(self.close(process), 0)

    def test_a_file_in_a_loop_is_heard(self):
        music = make_music(2, 1)
        write_wav(self.path("loop.wav"), music, 32)
        write_wav(self.path("rounds.wav"), Sound(RATE_HZ, [ROUNDS * channel for channel in music.channels]), 32)
        process = self.start(PROGRAM, "edit", "--sound", "jack", "loop.wav",
                             environment={**self.jack, **self.homes, **self.desktop.environment}, log="edit.log")
        self.eventually(lambda: "varno:out_l\n   system:playback_1" in (self.list_ports("-c") or ""), "the sound")
        recorder, ports = self.start_recorder(self.path("heard.wav"), 2, "-t:4")
        for source, target in zip(PORTS[2][1], ports):
            self.connect(f"varno:{source}", target)
        recorder.wait(PATIENCE_S)
        self.run_program(PROGRAM, "render", "--quiet", "--format", "float", self.path("rounds.wav"),
                         self.path("expected.wav"))
        heard, expected = read_wav(self.path("heard.wav")), read_wav(self.path("expected.wav"))
        self.assertGreaterEqual(heard.frames, 2 * RATE_HZ)
        for actual, whole in zip(heard.channels, expected.channels):
            # From the first sound on: before it nothing may have been recorded.
            start = next(frame for frame, sample in enumerate(actual) if sample != 0.0)
            self.assertIn(actual[start:2 * RATE_HZ].tobytes(), whole.tobytes())
        self.end(process)


class BarTest(WindowTest):
    def test_compare_and_undo(self):
        process, window = self.start_window()
        self.desktop.wheel(*window.control("Gain"), 4)
        window.press("Settings B")
        self.desktop.wheel(*window.control("Mix"), 4, steps=2)
        changed = self.saved("Gain", "Mix")
        self.assertEqual(changed, (0.5, 0.0308))
        window.press("Settings A")
        self.assertEqual(self.saved("Gain", "Mix"), (0.5154, 0.0))
        window.press("Settings B")
        window.press("Undo")
        self.assertEqual(self.saved("Gain", "Mix"), (0.5, 0.0))
        window.press("Redo")
        self.assertEqual(self.saved("Gain", "Mix"), changed)
        window.press("Copy to the other settings")
        window.press("Settings A")
        self.assertEqual(self.saved("Gain", "Mix"), changed)
        self.assertEqual(self.close(process), 0)

    def test_a_preset_is_chosen_saved_and_typed_over(self):
        process, window = self.start_window()
        window.press("Presets")
        left, top, width, height = self.eventually(self.desktop.menu, "the menu")
        self.desktop.click(left + width // 2, top + height - 14)  # the last of the factory's presets
        self.eventually(lambda: not self.desktop.menu(), "the end of the menu")
        names = tuple(MILD)
        self.assertEqual(self.saved(*names), self.factory("voice-smooth", *names))
        self.desktop.move(*window.control("Mix"))
        self.desktop.keys("4", "0", "Return")
        window.press("Presets")
        self.eventually(self.desktop.menu, "the menu")
        self.desktop.keys("Down", "Return", "b", "u", "s", "Return")  # Save as
        mine = self.folder / "data/varno-s/presets/bus.txt"
        self.eventually(mine.exists, "the preset's file")
        self.assertEqual(self.saved("Mix"), (0.4,))
        self.assertIn("Mix 0.4", mine.read_text())
        self.assertEqual(self.close(process), 0)

    def test_the_meters_show_the_signal(self):
        _, window = self.start_window()
        meters = ("Input level", "Output level")

        def lit():
            """Of each meter, whether a part is lit, and whether a number stands beside it."""
            return [(LIT in window.picture_of(name).colours(), len(window.picture_of(f"{name} number").colours()) > 1)
                    for name in meters]

        self.eventually(lambda: lit() == [(False, False)] * 2, "silence")
        player = self.start_player(self.music_in_silence(2), 2)
        for number, port in enumerate(PORTS[2][0], 1):
            self.connect(f"player:out_{number}", f"varno:{port}")
        self.eventually(lambda: lit() == [(True, True)] * 2, "levels")
        player.wait(PATIENCE_S)
        self.eventually(lambda: lit() == [(False, False)] * 2, "silence again")


class LostServerTest(WindowTest):
    """The end of the sound system is shown, and the settings can still be saved."""

    def check_end_of_server(self, how):
        process, window = self.start_window()
        before = bytes(window.picture_of("Message").pixels)
        self.desktop.wheel(*window.control("Gain"), 4)
        self.end(self.server, how)
        self.eventually(lambda: "has ended" in self.log("play.log"), "an error")
        self.assertRegex(self.log("play.log"), r"\nvarno: JACK client varno: the sound system has ended( \(.*\))?\n$")
        self.eventually(lambda: bytes(window.picture_of("Message").pixels) != before, "a message")
        window.press("Undo")
        self.desktop.wheel(*window.control("Mix"), 4)
        self.assertEqual(self.saved("Gain", "Mix"), (0.5, 0.0154))
        self.assertIsNone(process.poll())
        self.assertEqual(self.close(process), 1)
        self.assertEqual(self.log("play.log").count("has ended"), 1)

    def test_ends(self):
        self.check_end_of_server(signal.SIGTERM)

    def test_is_killed(self):
        self.check_end_of_server(signal.SIGKILL)

    def test_without_a_bar(self):
        process, _ = self.start_plain_window()
        self.end(self.server, signal.SIGKILL)
        self.assertEqual(process.wait(PATIENCE_S), 1)

    def start_plain_window(self):
        process = self.start(PROGRAM, "play", "--no-connect", "--no-bar",
                             environment={**self.jack, **self.homes, **self.desktop.environment}, log="play.log")
        return process, self.eventually(self.windows, "the window")


class EndTest(WindowTest):
    def test_a_signal_ends_it(self):
        process, _ = self.start_window()
        self.assertEqual(self.end(process, signal.SIGINT), 0)
