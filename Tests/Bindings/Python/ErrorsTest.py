"""What the Python package refuses, with what was found and what was expected; and threads, which do no harm."""
import threading
import unittest

import numpy as np
import varno
from sound import RATE, music


class ErrorsTest(unittest.TestCase):
    def setUp(self):
        self.effect = varno.Effect(RATE, 2)
        self.sound = music(2, 100)

    def refused(self, error, text, call):
        with self.assertRaises(error) as raised:
            call()
        self.assertEqual(str(raised.exception), text)

    def test_of_arrays(self):
        expected = "; expected a NumPy array of float32 and shape (2, frames)"
        for error, found, sound in (
                (ValueError, "has samples of float64", self.sound.astype(np.float64)),
                (ValueError, "has samples of >f4", self.sound.astype(">f4")),
                (ValueError, "has the shape (100, 2)", self.sound.T),
                (ValueError, "has the shape (100,)", self.sound[0]),
                (ValueError, "has the shape (1, 100)", self.sound[:1]),
                (TypeError, "is list", [[0.0], [0.0]]), (TypeError, "is NoneType", None)):
            for call in (self.effect, self.effect.process, lambda each: varno.process_group([self.effect], [each])):
                self.refused(error, f"the input {found}{expected}", lambda: call(sound))
            if sound is not None:
                self.refused(error, f"out {found}{expected}", lambda: self.effect(self.sound, out=sound))

    def test_of_outputs(self):
        read_only = np.zeros((2, 100), np.float32)
        read_only.flags.writeable = False
        self.refused(ValueError, "out is read-only; expected an array that can be written",
                     lambda: self.effect(self.sound, out=read_only))
        self.refused(ValueError, "out has 99 frames; expected those of the input, 100",
                     lambda: self.effect(self.sound, out=np.zeros((2, 99), np.float32)))
        memory = np.zeros(101, np.float32)
        for strides in ((4, 4), (0, 4), (4, 0)):
            shared = np.lib.stride_tricks.as_strided(memory, (2, 100), strides)
            self.refused(ValueError, "out has several samples at one place of the memory; expected one that was not broadcast",
                         lambda: self.effect(self.sound, out=shared))
        self.assertFalse(memory.any())

    def test_of_constructors(self):
        for error, text, arguments, keywords in (
                (ValueError, "sample rate 8000 Hz is not supported: expected 16000 to 384000 Hz", (8000, 2), {}),
                (ValueError, "channels is 3; expected 1 (mono) or 2 (stereo)", (RATE, 3), {}),
                (ValueError, 'quality is "3x"; expected "1x", "2x", "4x" or "8x"', (RATE, 2), {"quality": "3x"}),
                (ValueError, "quality 8x needs 768000 Hz; expected at most 384000 Hz: 4x at the sample rate 96000 Hz",
                 (96000, 2), {"quality": "8x"}),
                (ValueError, 'preset "drumbus": there is neither a factory preset nor a file of this name; did you mean "drum-bus"?',
                 (RATE, 2), {"preset": "drumbus"}),
                (ValueError, 'preset "zither": there is neither a factory preset nor a file of this name; '
                 "expected one that varno.presets() lists, or a file", (RATE, 2), {"preset": "zither"}),
                (OSError, "./none: cannot be read: No such file or directory", (RATE, 2), {"preset": "./none"}),
                (TypeError, 'unknown parameter "hott"; did you mean "hot"?', (RATE, 2), {"hott": 1}),
                (TypeError, "gain is []; expected a number or a text", (RATE, 2), {"gain": []}),
                (TypeError, "gain_db is 'loud'; expected a number", (RATE, 2), {"gain_db": "loud"}),
                (TypeError, "hp_on is 1; expected True or False", (RATE, 2), {"hp_on": 1}),
                (ValueError, 'Hot takes 0 to 1 or "0.0 %" to "100.0 %", found "2"', (RATE, 2), {"hot": 2}),
                (ValueError, 'Gain takes 0 to 1 or "-20.0 dB" to "+20.0 dB", found "21 dB"', (RATE, 2), {"gain_db": 21}),
                (ValueError, 'Ratio takes 0 to 1 or "#1" to "#8", found "#9"', (RATE, 2), {"ratio_curve": 9})):
            self.refused(error, text, lambda: varno.Effect(*arguments, **keywords))

    def test_of_settings(self):
        self.effect.hot = 0.25
        before = self.effect.state
        for attribute, value in (("hot", float("nan")), ("hot", 1.5), ("state", b"short"), ("state", before[:-1]),
                                 ("preset", "text"), ("gain_db", float("inf"))):
            with self.assertRaises(ValueError):
                setattr(self.effect, attribute, value)
            self.assertEqual(self.effect.state, before)
        for attribute in ("rate", "channels", "quality", "latency", "meters"):
            with self.assertRaises(AttributeError):
                setattr(self.effect, attribute, 1)

    def test_of_groups(self):
        self.refused(ValueError, "an effect is there twice; expected each one once",
                     lambda: varno.process_group([self.effect] * 2, [self.sound] * 2))
        self.refused(ValueError, "there are 1 effects and 2 arrays; expected one for each",
                     lambda: varno.process_group([self.effect], [self.sound] * 2))
        self.effect.process(self.sound)  # nothing holds it


class ThreadsTest(unittest.TestCase):
    def test_a_second_one_is_refused_and_harms_nothing(self):
        sound = music(2, RATE * 8)
        effect = varno.Effect(RATE, 2, quality="8x", hot=0.7)
        expected = effect(sound)
        effect.reset()
        found = []
        thread = threading.Thread(target=lambda: found.append(effect(sound)))
        refusals = set()
        small = music(2, 16)
        calls = {"set": lambda: effect.set(hot=0.7), "get": lambda: effect.hot, "state": lambda: effect.state,
                 "clip": lambda: effect(small), "block": lambda: effect.process(small), "reset": effect.reset,
                 "group": lambda: varno.process_group([effect], [small])}
        thread.start()
        while not effect.meters["InRMS"] and thread.is_alive():  # which may be read at any time; the clip has begun
            pass
        for name, call in calls.items():
            try:
                call()
            except RuntimeError as error:
                self.assertEqual(str(error), "the effect is in use by another call; expected an effect of its own for each thread")
                refusals.add(name)
        self.assertTrue(thread.is_alive(), "the clip was too short for this test")
        thread.join()
        self.assertEqual(refusals, set(calls))
        np.testing.assert_array_equal(found[0].view(np.uint32), expected.view(np.uint32))
        self.assertEqual(effect.hot, varno.Effect(RATE, 2, hot=0.7).hot)  # it can be used again

    def test_each_may_have_effects_of_its_own(self):
        sound = music(2, RATE)
        expected = [varno.Effect(RATE, 2, hot=0.1 * i)(sound) for i in range(4)]
        found = [None] * 4

        def work(i):
            for _ in range(5):
                found[i] = varno.Effect(RATE, 2, hot=0.1 * i)(sound)
        threads = [threading.Thread(target=work, args=(i,)) for i in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for one, other in zip(found, expected):
            np.testing.assert_array_equal(one.view(np.uint32), other.view(np.uint32))


if __name__ == "__main__":
    unittest.main()
