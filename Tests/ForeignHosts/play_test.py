"""JACK and PulseAudio, each with a server of its own without a sound card: `varno play` between a player and a recorder,
and what can happen while it runs."""
import array
import fcntl
import json
import os
import pty
import re
import signal
import subprocess
import termios
import time
import unittest

from hosts import DRIVEN, LATENCY_FRAMES, MILD, PATIENCE_S, PROGRAM, RATE_HZ, Sound, difference, make_music, read_wav
from hosts import write_wav
from jack import JackTest

# Much longer than the effect's initial state has an influence: from then on the output depends on the input alone.
SILENCE_S = 3
MUSIC_S = 3
PORTS = {1: (["in"], ["out"]), 2: (["in_l", "in_r"], ["out_l", "out_r"])}


class LiveTest(JackTest):
    """A JACK server, and no other sound system."""

    def setUp(self):
        super().setUp()
        self.jack.update(XDG_RUNTIME_DIR=str(self.folder), PULSE_SERVER="unix:/nowhere")

    def tool(self, *command):
        return self.run_program(*command, environment=self.jack)

    def play(self, *options, environment=None, log="play.log"):
        """Starts `varno play` and waits until it plays."""
        process = self.start(PROGRAM, "play", "--no-edit", *options, environment={**self.jack, **(environment or {})},
                             log=log)
        self.eventually(lambda: "playing: " in self.log(log) or process.poll() is not None, "the effect")
        self.assertIsNone(process.poll(), self.log(log))
        return process

    def refused(self, *options, environment=None, status=1):
        """The one line with which the program refuses."""
        text = self.run_program(PROGRAM, "play", "--no-edit", *options, status=status,
                                environment={**self.jack, **(environment or {})})
        self.assertEqual(text.count("\n"), 1, text)
        return text

    def music_in_silence(self, channels):
        path = self.path("in.wav")
        silence = array.array("f", bytes(4 * SILENCE_S * RATE_HZ))
        music = make_music(channels, MUSIC_S).channels
        write_wav(path, Sound(RATE_HZ, [silence + channel + silence for channel in music]), 32)
        return path

    def recorded(self, channels, client="varno"):
        """Plays music into the running effect. Returns its input and its output, frame by frame."""
        inputs, outputs = PORTS[channels]
        recorder, ports = self.start_recorder(self.path("heard.wav"), 2 * channels)
        for source, target in zip(outputs, ports[channels:]):
            self.connect(f"{client}:{source}", target)
        player = self.start_player(self.music_in_silence(channels), channels)
        for number, (dry, target) in enumerate(zip(ports, inputs), 1):
            self.connect(f"player:out_{number}", dry)
            self.connect(f"player:out_{number}", f"{client}:{target}")
        player.wait(PATIENCE_S)
        self.end(recorder, signal.SIGINT)
        heard = read_wav(self.path("heard.wav")).channels
        # When the player disconnects, effect and recorder do not lose it in the same period.
        end = max(frame for channel in heard[:channels] for frame, sample in enumerate(channel) if sample != 0.0)
        heard = [channel[:end] for channel in heard]
        return Sound(RATE_HZ, heard[:channels]), Sound(RATE_HZ, heard[channels:])

    def assert_is_rendered(self, dry, wet, *options):
        """The second is what the program renders of the first, bit for bit."""
        write_wav(self.path("dry.wav"), dry, 32)
        self.run_program(PROGRAM, "render", "--quiet", "--force", "--format", "float", *options, self.path("dry.wav"),
                         self.path("expected.wav"))
        self.assertGreater(max(max(channel) for channel in dry.channels), 0.1, "the recorder heard no music")
        self.assertGreaterEqual(dry.frames, (MUSIC_S + SILENCE_S - 1) * RATE_HZ)
        self.assertEqual(difference(wet, read_wav(self.path("expected.wav"))), "")

    def check_sound(self, channels, settings):
        self.start_server()
        options = [word for name, value in settings.items() for word in ("--set", f"{name}={value}")]
        self.play("--no-connect", *(["--mono"] if channels == 1 else []), *options)
        self.assert_is_rendered(*self.recorded(channels), *options)


class SoundTest(LiveTest):
    """What is recorded is what the program renders of the same input, bit for bit."""

    def test_mono_mild(self):
        self.check_sound(1, MILD)

    def test_stereo_driven(self):
        self.check_sound(2, {name: value for name, value in DRIVEN.items() if name != "HSw"})


class PortsTest(LiveTest):
    def test_names_and_connections(self):
        self.start_server()
        self.play()
        # jack_lsp names a port and then, indented, those that it is connected to.
        connections = self.list_ports("-c")
        for capture, port in (("system:capture_1", "varno:in_l"), ("system:capture_2", "varno:in_r")):
            self.assertRegex(connections, rf"(?m)^{port}\n   {capture}$")
        for playback, port in (("system:playback_1", "varno:out_l"), ("system:playback_2", "varno:out_r")):
            self.assertRegex(connections, rf"(?m)^{port}\n   {playback}$")

    def test_mono_goes_to_both_sides(self):
        self.start_server()
        self.play("--mono", "--name", "drive")
        connections = self.list_ports("-c")
        self.assertRegex(connections, r"(?m)^drive:in\n   system:capture_1$")
        self.assertRegex(connections, r"(?m)^drive:out\n   system:playback_1\n   system:playback_2$")

    def test_unconnected(self):
        self.start_server()
        self.play("--no-connect")
        self.assertNotIn("   varno:", self.list_ports("-c"))

    def test_one_frame_of_latency(self):
        self.start_server()
        self.play()

        def latency(port, direction):
            text = self.list_ports("-l")
            found = re.search(rf"(?m)^{port}\n(?:\t.*\n)*?\tport {direction} latency = \[ (\d+) (\d+) \] frames", text)
            self.assertIsNotNone(found, text)
            return [int(found[1]), int(found[2])]

        for side in ("l", "r"):
            number = {"l": 1, "r": 2}[side]
            captured = latency(f"system:capture_{number}", "capture")
            self.assertEqual(latency(f"varno:out_{side}", "capture"), [frames + LATENCY_FRAMES for frames in captured])
            played = latency(f"system:playback_{number}", "playback")
            self.assertEqual(latency(f"varno:in_{side}", "playback"), [frames + LATENCY_FRAMES for frames in played])


class ServerTest(LiveTest):
    """What the server does while the program runs."""

    def test_another_period(self):
        self.start_server()
        process = self.play("--no-connect")
        self.tool("jack_bufsize", "512")
        self.assertIn("512", self.tool("jack_bufsize"))
        self.assert_is_rendered(*self.recorded(2))
        self.assertEqual(self.end(process), 0)

    def test_freewheeling(self):
        self.start_server()
        process = self.play()
        self.tool("jack_freewheel", "y")
        time.sleep(0.5)
        self.tool("jack_freewheel", "n")
        self.assert_is_rendered(*self.recorded(2))
        self.assertEqual(self.end(process), 0)

    def check_end_of_server(self, how):
        server = self.start_server()
        process = self.play()
        self.end(server, how)
        self.assertEqual(process.wait(PATIENCE_S), 1)
        self.assertRegex(self.log("play.log"), r"varno: JACK client varno: the sound system has ended( \(.*\))?\n$")

    def test_ends(self):
        self.check_end_of_server(signal.SIGTERM)

    def test_is_killed(self):
        self.check_end_of_server(signal.SIGKILL)

    def test_is_not_there(self):
        self.assertEqual(self.refused("--backend", "jack"),
                         "varno: no sound system can be had (JACK: no server "
                         f"\"{self.jack['JACK_DEFAULT_SERVER']}\" answers)\n")

    def test_neither_is_another_sound_system(self):
        self.assertRegex(self.refused(), r"^varno: no sound system can be had \(JACK: no server .*; RtAudio: "
                                         r"PulseAudio: .*, ALSA: .*\)\n$")


class EndTest(LiveTest):
    def check_signal(self, how):
        self.start_server()
        process = self.play("--set", "Hot=0.5")
        self.assertEqual(self.end(process, how), 0)
        self.assertEqual(self.log("play.log").count("\n"), 1, self.log("play.log"))
        self.assertNotIn("varno:", self.list_ports())

    def test_interrupted(self):
        self.check_signal(signal.SIGINT)

    def test_terminated(self):
        self.check_signal(signal.SIGTERM)

    def test_hung_up(self):
        self.check_signal(signal.SIGHUP)


class TerminalTest(LiveTest):
    """Keys that a user presses in a terminal."""

    def setUp(self):
        super().setUp()
        self.server = self.start_server()
        self.terminal, self.end_of_program = pty.openpty()
        self.addCleanup(os.close, self.terminal)
        self.addCleanup(os.close, self.end_of_program)
        self.before = termios.tcgetattr(self.end_of_program)
        os.set_blocking(self.terminal, False)
        self.shown = ""

    def play_at_terminal(self, *options):
        def own_the_terminal():
            os.setsid()
            fcntl.ioctl(0, termios.TIOCSCTTY, 0)

        side = self.end_of_program
        process = subprocess.Popen([PROGRAM, "play", "--no-edit", *options], cwd=self.folder, stdin=side, stdout=side,
                                   stderr=side, env={**os.environ, **self.jack},
                                   preexec_fn=own_the_terminal)  # pylint: disable=subprocess-popen-preexec-fn
        self.addCleanup(self.end, process)
        self.await_text("[Gain ")
        return process

    def look(self):
        try:
            self.shown += os.read(self.terminal, 65536).decode()
        except (BlockingIOError, OSError):
            pass
        return self.shown

    def await_text(self, text):
        self.eventually(lambda: text in self.look(), f"{text!r} on the terminal")
        self.shown = self.shown.split(text, 1)[1]

    def press(self, keys):
        os.write(self.terminal, keys.encode())

    def assert_restored(self):
        self.assertEqual(termios.tcgetattr(self.end_of_program), self.before)

    def test_keys_change_settings(self):
        process = self.play_at_terminal()
        self.assertNotEqual(termios.tcgetattr(self.end_of_program), self.before)
        self.press("b")
        self.await_text("bypassed")
        self.press("b\x1b[B")
        self.await_text("[HP ")
        self.press("\x1b[C?s")
        self.await_text("ends the program")
        self.await_text("saved varno-s.state")
        self.press("q")
        self.assertEqual(process.wait(PATIENCE_S), 0)
        self.assert_restored()
        state = json.loads(self.run_program(PROGRAM, "params", "--state", self.path("varno-s.state"), "--json", "HP"))
        self.assertEqual(state["value"], 1)

    def test_unsaved_settings_are_printed(self):
        process = self.play_at_terminal()
        self.press("\x1b[6~q")
        self.assertEqual(process.wait(PATIENCE_S), 0)
        self.await_text("they come back with: varno play --set Gain=0.4")

    def test_a_signal_puts_the_terminal_back(self):
        process = self.play_at_terminal()
        self.press("\x03")  # Ctrl-C
        self.assertEqual(process.wait(PATIENCE_S), 0)
        self.assert_restored()

    def test_the_end_of_the_server_too(self):
        process = self.play_at_terminal()
        self.end(self.server, signal.SIGKILL)
        self.assertEqual(process.wait(PATIENCE_S), 1)
        self.assert_restored()


class PipeWireTest(LiveTest):
    """PipeWire's own library in the place of JACK's: a server that changes its rate while it runs."""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o700)
        self.jack = {"XDG_RUNTIME_DIR": str(self.folder), "HOME": str(self.folder), "PULSE_SERVER": "unix:/nowhere"}
        self.start("pipewire", environment=self.jack, log="pipewire.log")
        self.eventually((self.folder / "pipewire-0").exists, "PipeWire")
        self.start("dbus-run-session", "--", "wireplumber", environment=self.jack, log="wireplumber.log")
        self.tool("pw-cli", "create-node", "adapter", "{factory.name=support.null-audio-sink node.name=sink "
                  "media.class=Audio/Sink object.linger=true audio.position=[FL FR]}")
        self.eventually(lambda: "sink:playback_FR" in self.tool("pw-link", "-i"), "the sink")

    def test_another_rate(self):
        # To the PipeWire of Debian 13, a sink without a device has no physical ports, to which the effect would connect itself.
        process = self.start("pw-jack", PROGRAM, "play", "--no-edit", "--no-connect", "--set", "Hot=0.5",
                             environment=self.jack, log="play.log")
        self.eventually(lambda: "playing: JACK client varno, 48000 Hz" in self.log("play.log"), "the effect")
        self.tool("pw-link", "varno:out_l", "sink:playback_FL")
        self.eventually(lambda: re.search(r"varno:out_l\n +\|-> sink:playback_FL", self.tool("pw-link", "-l")),
                        "the connection")
        self.tool("pw-metadata", "-n", "settings", "0", "clock.force-rate", "96000")
        self.eventually(lambda: "playing: JACK client varno, 96000 Hz" in self.log("play.log"), "the other rate")
        self.assertEqual(self.end(process, signal.SIGINT), 0)
        self.assertNotIn("not saved", self.log("play.log"))


class PulseAudioTest(LiveTest):
    """Where there is no JACK server."""

    def setUp(self):
        super().setUp()
        socket = self.path("pulse.socket")
        self.jack.update(PULSE_SERVER=f"unix:{socket}", HOME=str(self.folder), PULSE_RUNTIME_PATH=self.path("pulse"))
        self.server = self.start("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                                 "-L", "module-null-sink", "-L",
                                 f"module-native-protocol-unix socket={socket} auth-anonymous=1",
                                 environment=self.jack, log="pulse.log")
        self.eventually(lambda: os.path.exists(socket), "PulseAudio")

    def test_is_found(self):
        process = self.play()
        self.assertIn("RtAudio, PulseAudio, 48000 Hz", self.log("play.log"))
        self.eventually(lambda: "varno" in self.tool("pactl", "list", "sink-inputs"), "the stream")
        self.assertEqual(self.end(process), 0)

    def test_its_end(self):
        process = self.play("--backend", "rtaudio")
        self.end(self.server, signal.SIGKILL)
        self.assertEqual(process.wait(PATIENCE_S), 1)
        self.assertIn("the sound system has ended", self.log("play.log"))


if __name__ == "__main__":
    unittest.main()
