"""What the tests of foreign hosts share: the input, the expected output, and running programs.

The program renders what is expected. Its output is delayed by the latency that the plug-in reports (one frame). No host
that processes files compensates for it, so the samples of both must be the same.
"""
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

from sounds import (DRIVEN, LATENCY_FRAMES, MILD, MONO, PARAMETERS, PLUGINS, RATE_HZ, STEREO, URI, Sound, make_music,
                    read_wav, write_wav)

PROGRAM = os.environ["VARNO_PROGRAM"]
BUNDLE = pathlib.Path(os.environ["VARNO_LV2"])
RESULTS = pathlib.Path(os.environ["VARNO_RESULTS"])

# In seconds. A host that takes longer counts as hanging, however busy the machine is.
PATIENCE_S = 300

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
