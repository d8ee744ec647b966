"""What the tests of foreign hosts share: the input, the expected output, and running programs.

The program renders what is expected. Its output is delayed by the latency that the plug-in reports (one frame). No host
that processes files compensates for it, so the samples of both must be the same.
"""
import array
import math
import os
import pathlib
import random
import shutil
import signal
import struct
import subprocess
import tempfile
import time
import unittest

PROGRAM = os.environ["VARNO_PROGRAM"]
BUNDLE = pathlib.Path(os.environ["VARNO_LV2"])
RESULTS = pathlib.Path(os.environ["VARNO_RESULTS"])

URI = "urn:morvak:varno-s"
MONO, STEREO = URI + "#mono", URI + "#stereo"
PLUGINS = {1: MONO, 2: STEREO}
LATENCY_FRAMES = 1

RATE_HZ = 48000
STIMULUS_S = 10

# Two settings, in multiples of 1/16, so that single precision and decimal text hold them exactly.
MILD = {"Gain": 0.625, "Hot": 0.125, "Ratio": 0.0, "LinkSw": 1, "HP": 1, "Volume": 0.4375}
DRIVEN = {"Gain": 0.75, "Hot": 0.5, "Ratio": 1.0, "Atk": 0.25, "Rls": 0.375, "Mix": 0.125, "HSw": 1, "UK": 1, "Band": 1}

# Every parameter with its default, in the order of the ports.
PARAMETERS = {"Gain": 0.5, "HP": 0, "Band": 0, "Atk": 0.5, "Rls": 0.5, "ASw": 0, "UK": 0, "Volume": 0.5, "Hot": 0.07,
              "Ratio": 0.5, "Mix": 0, "HSw": 0, "LinkSw": 0}

# In seconds. A host that takes longer counts as hanging, however busy the machine is.
PATIENCE_S = 300

WAVE_PCM, WAVE_FLOAT, WAVE_EXTENSIBLE = 1, 3, 0xFFFE


class Sound:
    """Samples of full scale +-1 as single precision, one array per channel."""

    def __init__(self, rate_hz, channels):
        self.rate_hz = rate_hz
        self.channels = channels

    @property
    def frames(self):
        return len(self.channels[0])


def interleaved(sound):
    count = len(sound.channels)
    samples = array.array("f", bytes(4 * sound.frames * count))
    for number, channel in enumerate(sound.channels):
        samples[number::count] = channel
    return samples


def chunks(content):
    at = 12
    while at + 8 <= len(content):
        name, size = struct.unpack_from("<4sI", content, at)
        yield name, content[at + 8:at + 8 + size]
        at += 8 + size + size % 2


def samples_of(data, tag, bits):
    """Samples of a data chunk as single precision."""
    if tag == WAVE_FLOAT:
        return array.array("f", array.array({32: "f", 64: "d"}[bits], data))
    size = bits // 8
    # Integers go into the upper bytes of 32 bits.
    wide = bytearray(4 * (len(data) // size))
    for byte in range(size):
        wide[4 - size + byte::4] = data[byte::size]
    return array.array("f", (value / 2.0 ** 31 for value in array.array("i", bytes(wide))))


def read_wav(path):
    content = pathlib.Path(path).read_bytes()
    parts = dict(chunks(content))
    form = parts[b"fmt "]
    tag, count, rate_hz, _, _, bits = struct.unpack_from("<HHIIHH", form)
    if tag == WAVE_EXTENSIBLE:
        tag = struct.unpack_from("<H", form, 24)[0]
    samples = samples_of(parts[b"data"], tag, bits)
    return Sound(rate_hz, [samples[number::count] for number in range(count)])


def write_wav(path, sound, bits):
    """Writes single precision (32 bits) or integers of 16 bits."""
    count = len(sound.channels)
    samples = interleaved(sound)
    if bits == 32:
        tag, data = WAVE_FLOAT, samples.tobytes()
    else:
        tag, data = WAVE_PCM, array.array("h", (round(value * 2 ** 15) for value in samples)).tobytes()
    frame = count * bits // 8
    form = struct.pack("<HHIIHH", tag, count, sound.rate_hz, sound.rate_hz * frame, frame, bits)
    body = b"WAVEfmt " + struct.pack("<I", len(form)) + form + b"data" + struct.pack("<I", len(data)) + data
    pathlib.Path(path).write_bytes(b"RIFF" + struct.pack("<I", len(body)) + body)


def make_music(channels, seconds=STIMULUS_S):
    """Decaying tones and hiss, peak about -4 dBFS, in steps of 16 bits: exact in every format that hosts read."""
    noise = random.Random(5)
    voices = []
    for channel in range(channels):
        pitch_hz = 110.0 * (channel + 1)
        voice = array.array("f")
        for frame in range(seconds * RATE_HZ):
            time_s = frame / RATE_HZ
            beat = math.exp(-6.0 * (time_s * 3.0 % 1.0))
            value = beat * (0.5 * math.sin(2.0 * math.pi * pitch_hz * time_s) + 0.12 * (noise.random() - 0.5))
            voice.append(round(value * 2 ** 15) / 2 ** 15)
        voices.append(voice)
    return Sound(RATE_HZ, voices)


def symbol(identifier):
    """The port of a parameter."""
    return identifier.lower()


def difference(actual, expected):
    """A sentence on where the first channels' samples differ, empty where they are the same."""
    for number, (left, right) in enumerate(zip(actual.channels, expected.channels)):
        if left != right:
            apart = [(abs(a - b), i) for i, (a, b) in enumerate(zip(left, right)) if a != b]
            first = min(i for _, i in apart) if apart else min(len(left), len(right))
            largest = max(apart)[0] if apart else 0.0
            return (f"channel {number}: {len(apart)} of {len(right)} samples differ, the first at {first}, by at most "
                    f"{largest:.3g}; {len(left)} samples, expected {len(right)}")
    return ""


class HostTest(unittest.TestCase):
    """Gives each test a folder of its own and programs in it."""

    maxDiff = None
    _stimuli = {}

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="varno-host-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def path(self, name):
        return str(self.folder / name)

    def run_program(self, *command, status=0, environment=None, timeout_s=PATIENCE_S):
        """Runs a command in the test's folder. Returns all that it printed; fails where its status is another one, or none
        of several."""
        try:
            done = subprocess.run(command, cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, env={**os.environ, **(environment or {})},
                                  timeout=timeout_s, check=False)
        except subprocess.TimeoutExpired as expired:
            self.fail(f"{' '.join(command)} does not end:\n{(expired.stdout or b'').decode(errors='replace')}")
        text = done.stdout.decode(errors="replace")
        self.assertIn(done.returncode, status if isinstance(status, tuple) else (status,), f"{' '.join(command)}:\n{text}")
        return text

    def start(self, *command, environment=None, log="program.log", stdin=subprocess.DEVNULL):
        """Starts a command in the test's folder, which ends with the test at the latest, however that ends."""
        with open(self.path(log), "wb") as output:
            process = subprocess.Popen(["setpriv", "--pdeathsig", "TERM", *command], cwd=self.folder, stdin=stdin,
                                       stdout=output, stderr=subprocess.STDOUT,
                                       env={**os.environ, **(environment or {})})
        self.addCleanup(self.end, process)
        return process

    def end(self, process, how=signal.SIGTERM):
        """Ends a started process; returns its status."""
        if process.poll() is None:
            process.send_signal(how)
        try:
            return process.wait(PATIENCE_S / 10)
        except subprocess.TimeoutExpired:
            process.kill()
            return process.wait()

    def log(self, name):
        return (self.folder / name).read_text(errors="replace")

    def eventually(self, condition, what, seconds=PATIENCE_S / 5):
        """Waits until condition() is true, and returns what it returned."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            result = condition()
            if result:
                return result
            time.sleep(0.05)
        logs = "".join(f"\n{log.name}:\n{log.read_text(errors='replace')[-2000:]}" for log in self.folder.glob("*.log"))
        return self.fail(f"never came: {what}{logs}")

    def stimulus(self, channels, bits=32):
        """The path of the music that is the input."""
        if channels not in self._stimuli:
            self._stimuli[channels] = make_music(channels)
        path = self.path(f"in{channels}-{bits}.wav")
        write_wav(path, self._stimuli[channels], bits)
        return path

    def short_stimulus(self, channels):
        """The path of a fifth of a second of it, for very slow programs."""
        path = self.path(f"short{channels}.wav")
        music = make_music(channels, 1)
        write_wav(path, Sound(RATE_HZ, [channel[:RATE_HZ // 5] for channel in music.channels]), 32)
        return path

    def rendered(self, source, settings):
        """The program's output for a file. settings: values by parameter, or the name of a factory preset."""
        path = self.path("expected.wav")
        options = ["--preset", settings] if isinstance(settings, str) else []
        if not options:
            for identifier, value in settings.items():
                options += ["--set", f"{identifier}={value}"]
        self.run_program(PROGRAM, "render", "--quiet", "--force", "--format", "float", *options, source, path)
        return read_wav(path)

    def assert_same(self, actual, expected, step=0.0):
        """Every sample of the expected sound is there, and the same but for a rounding to `step`. A host's output for
        the rest of its last block may follow."""
        self.assertEqual(actual.rate_hz, expected.rate_hz)
        self.assertEqual(len(actual.channels), len(expected.channels))
        self.assertGreaterEqual(actual.frames, expected.frames)
        self.assertGreater(max(max(channel) for channel in expected.channels), 0.01, "the expected sound is silence")
        actual = Sound(actual.rate_hz, [channel[:expected.frames] for channel in actual.channels])
        if step > 0.0:
            self.assert_near(actual, expected, step)
        else:
            self.assertEqual(difference(actual, expected), "")

    def assert_near(self, actual, expected, step):
        for left, right in zip(actual.channels, expected.channels):
            largest = max(abs(a - max(-1.0, min(b, 1.0 - step))) for a, b in zip(left, right))
            self.assertLessEqual(largest, step)


class SameSamples:
    """For tests of a host that turns a file into another: its samples are those of the program, mono and stereo, with
    two settings each. A test class adds process() and may state how the host writes."""

    input_bits = 32
    step = 0.0  # of what the host writes, where that is not single precision

    def process(self, channels, settings, source, result):
        """Has the host process the file `source` into `result`."""
        raise NotImplementedError

    def check(self, channels, settings):
        source = self.stimulus(channels, self.input_bits)
        self.process(channels, settings, source, self.path("out.wav"))
        expected = self.rendered(source, settings)
        actual = read_wav(self.path("out.wav"))
        self.assert_same(actual, expected, self.step)

    def test_mono_mild(self):
        self.check(1, MILD)

    def test_mono_driven(self):
        self.check(1, DRIVEN)

    def test_stereo_mild(self):
        self.check(2, MILD)

    def test_stereo_driven(self):
        self.check(2, DRIVEN)
