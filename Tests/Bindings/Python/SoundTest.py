"""What the Python package makes of sound is what varno render makes of it, to the bit."""
import tempfile
import unittest

import numpy as np
import varno
from numpy.lib.stride_tricks import as_strided
from sound import RATE, music, rendered

FRAMES = 9600
QUALITIES = ("1x", "2x", "4x", "8x")
# As keywords, and as the program takes them.
SETTINGS = {"gain_db": 4.5, "hot": 0.7, "ratio_curve": 8, "atk_ms": 0.9, "hp_on": True, "mix_percent": 25, "volume": "-2 dB"}
OPTIONS = [word for setting in ("Gain=4.5 dB", "Hot=0.7", "Ratio=#8", "Atk=0.9 ms", "HP=on", "Mix=25 %", "Volume=-2 dB")
           for word in ("--set", setting)]


class SoundTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def same(self, found, expected):
        np.testing.assert_array_equal(found.view(np.uint32), expected.view(np.uint32))

    def test_is_that_of_the_program_at_every_quality(self):
        for channels in (1, 2):
            sound = music(channels, FRAMES)
            for quality in QUALITIES:
                with self.subTest(channels=channels, quality=quality):
                    expected, report = rendered(self.folder, sound, "--quality", quality, *OPTIONS)
                    effect = varno.Effect(RATE, channels, quality=quality, **SETTINGS)
                    self.same(effect(sound), expected)
                    self.assertEqual((effect.latency, effect.quality), (report["latency_frames"], quality))
                    self.assertAlmostEqual(32 * effect.meters["GRL"], report["gain_reduction_db"], places=5)

    def test_has_the_presets_and_rates_of_the_program(self):
        for preset, rate in (("drum-bus", 44100), ("Destroyed", 96000)):
            sound = music(2, FRAMES)
            expected, _ = rendered(self.folder, sound, "--preset", preset, rate=rate)
            self.same(varno.Effect(rate, 2, preset=preset)(sound), expected)

    def test_of_a_clip_is_independent_of_what_was_before(self):
        sound = music(2, FRAMES)
        for quality in QUALITIES:
            effect = varno.Effect(RATE, 2, quality=quality, hot=0.9)
            effect.process(music(2, 777, seed=2))
            effect.set(**SETTINGS)
            self.same(effect(sound), varno.Effect(RATE, 2, quality=quality, **SETTINGS)(sound))
            self.same(effect(sound), varno.Effect(RATE, 2, quality=quality, **SETTINGS)(sound))

    def test_of_a_stream_is_that_of_the_clip(self):
        sound = music(2, FRAMES)
        random = np.random.default_rng(3)
        for quality in QUALITIES:
            effect = varno.Effect(RATE, 2, quality=quality, **SETTINGS)
            expected = effect(sound)
            effect.reset()
            self.assertEqual(set(effect.meters.values()), {0.0})
            ends = np.sort(random.integers(0, FRAMES, 20))
            blocks = [effect.process(block) for block in np.split(sound, ends, axis=1)]
            self.same(np.concatenate(blocks, axis=1), expected)

    def test_goes_on_after_a_clip(self):
        sound = music(1, FRAMES)
        effect = varno.Effect(RATE, 1, quality="2x", hot=0.8)
        whole = effect(sound)
        self.same(np.concatenate([effect(sound[:, :4000]), effect.process(sound[:, 4000:])], axis=1), whole)

    def test_of_long_clips_is_that_of_short_blocks(self):
        sound = music(1, 600000)  # more than is processed between two looks at signals
        effect = varno.Effect(RATE, 1, hot=0.8)
        whole = effect(sound)
        effect.reset()
        self.same(np.concatenate([effect.process(block) for block in np.split(sound, 25, axis=1)], axis=1), whole)


class LayoutTest(unittest.TestCase):
    def setUp(self):
        self.effect = varno.Effect(RATE, 2, hot=0.8, quality="2x")
        self.sound = music(2, 1000)
        self.expected = self.effect(self.sound)

    def same(self, found):
        np.testing.assert_array_equal(found.view(np.uint32), self.expected.view(np.uint32))

    def test_of_the_input_does_not_matter(self):
        interleaved = np.ascontiguousarray(self.sound.T).T
        wide = np.zeros((2, 3000), np.float32)
        wide[:, 500:1500] = self.sound
        backwards = self.sound[::-1, ::-1].copy()[::-1, ::-1]
        odd = np.frombuffer(b"\0" + self.sound.tobytes(), np.uint8)[1:].view(np.float32).reshape(2, 1000)
        for sound in (interleaved, wide[:, 500:1500], backwards, odd):
            before = sound.copy()
            self.same(self.effect(sound))
            np.testing.assert_array_equal(sound, before)
        read_only = self.sound.copy()
        read_only.flags.writeable = False
        self.same(self.effect(read_only))

    def test_of_the_output_does_not_matter(self):
        wide = np.full((2, 3000), np.nan, np.float32)
        for out in (np.full((2, 1000), np.nan, np.float32), np.full((1000, 2), np.nan, np.float32).T, wide[:, 7:1007],
                    np.full((4, 1000), np.nan, np.float32)[::3], np.full((2, 2000), np.nan, np.float32)[:, ::2]):
            self.assertIs(self.effect(self.sound, out=out), out)
            self.same(out)
        self.assertTrue(np.isnan(wide[:, :7]).all() and np.isnan(wide[:, 1007:]).all())

    def test_the_output_may_be_the_input(self):
        for sound in (self.sound.copy(), np.ascontiguousarray(self.sound.T).T):
            self.same(self.effect(sound, out=sound))

    def test_the_output_may_overlap_the_input(self):
        for shift in (-3, 3, 1000):
            memory = np.zeros((4, 1100), np.float32)
            source, out = memory[1:3, 50:1050], memory.reshape(-1)[1150 + shift:]
            out = as_strided(out, (2, 1000), (4400, 4))
            source[:] = self.sound
            self.same(self.effect(source, out=out))
        swapped = self.sound.copy()
        self.same(self.effect(swapped, out=swapped[::-1]))

    def test_nothing_may_be_there(self):
        self.assertEqual(self.effect.process(np.zeros((2, 0), np.float32)).shape, (2, 0))
        self.same(self.effect(self.sound))


class GroupTest(unittest.TestCase):
    def test_has_the_sound_of_one_after_the_other(self):
        shapes = [(2, 5000), (1, 3000), (2, 5000), (2, 0), (1, 3000), (2, 700), (2, 300000)]
        qualities = ["1x", "1x", "4x", "1x", "1x", "1x", "1x"]
        sounds = [music(*shape, seed=i) for i, shape in enumerate(shapes)]

        def effects():
            return [varno.Effect(RATE, shape[0], quality=quality, hot=0.1 * i)
                    for i, (shape, quality) in enumerate(zip(shapes, qualities))]
        group, alone = effects(), effects()
        for sound_of in (lambda each: each, lambda each: each[:, ::-1]):
            found = varno.process_group(group, [sound_of(each) for each in sounds])
            expected = [effect.process(sound_of(each)) for effect, each in zip(alone, sounds)]
            self.assertEqual(len(found), len(expected))
            for one, other in zip(found, expected):
                np.testing.assert_array_equal(one.view(np.uint32), other.view(np.uint32))

    def test_may_be_empty(self):
        self.assertEqual(varno.process_group([], []), [])


if __name__ == "__main__":
    unittest.main()
