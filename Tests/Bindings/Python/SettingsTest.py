"""Parameters, presets and states of the Python package, beside those of the program."""
import json
import pathlib
import tempfile
import unittest

import varno
from sound import RATE, music, rendered
from sound import varno as program


def name_of(parameter):
    return "bypass" if parameter == "MasterBypassID" else parameter.lower()


class SettingsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.effect = varno.Effect(RATE, 2)

    def test_every_parameter_begins_as_in_the_program(self):
        rows = json.loads(program("params", "--json"))
        self.assertEqual(len(rows), 14)
        for row in rows:
            self.assertEqual(getattr(self.effect, name_of(row["id"])), row["default"], row["id"])

    def test_every_parameter_has_a_value_in_its_unit(self):
        for name, normalized, value in (("gain_db", 0.25, -10.0), ("volume_db", 1.0, 20.0), ("hot_percent", 0.5, 50.0),
                                        ("mix_percent", 0.0, 0.0), ("hp_on", 1.0, True), ("band_on", 0.0, False),
                                        ("asw_on", 1.0, True), ("uk_on", 1.0, True), ("hsw_on", 1.0, True),
                                        ("linksw_on", 0.0, False), ("bypass_on", 1.0, True), ("ratio_curve", 1.0, 8)):
            setattr(self.effect, name, value)
            self.assertEqual(getattr(self.effect, name.rsplit("_", 1)[0]), normalized, name)
            self.assertEqual(getattr(self.effect, name), value)
            self.assertIs(type(getattr(self.effect, name)), type(value))
        for name, value in (("atk_ms", 5.0), ("atk_ms", 20.0), ("rls_ms", 40.0), ("rls_ms", 150.0)):
            setattr(self.effect, name, value)
            self.assertAlmostEqual(getattr(self.effect, name), value, places=3)

    def test_times_mean_the_curve_of_the_same_call(self):
        self.effect.set(atk_ms=1.0, ratio_curve=8)
        later = varno.Effect(RATE, 2, ratio_curve=8)
        later.atk_ms = 1.0
        self.assertEqual((self.effect.atk, self.effect.ratio), (later.atk, later.ratio))
        self.assertNotEqual(varno.Effect(RATE, 2, atk_ms=1.0).atk, later.atk)

    def test_takes_the_texts_of_the_program(self):
        self.effect.set(hot="40 %", ratio="#3", gain="-3 dB", hp="on", bypass="on", mix="0.25")
        self.assertEqual((self.effect.ratio_curve, self.effect.hp_on, self.effect.bypass_on, self.effect.mix), (3, True, True, 0.25))
        self.assertAlmostEqual(self.effect.gain_db, -3, places=5)

    def test_a_refused_value_leaves_all_as_they_were(self):
        self.effect.set(hot=0.25, gain=0.75)
        before = self.effect.state
        for wrong in ({"hot": 0.9, "gain": 2}, {"gain": 0.1, "ratio_curve": 9}, {"mix": 0.5, "volume_db": float("nan")}):
            with self.assertRaises(ValueError):
                self.effect.set(**wrong)
            self.assertEqual(self.effect.state, before)

    def test_presets_and_states_are_those_of_the_program(self):
        effect = varno.Effect(RATE, 2, preset="mix-glue", hot=0.3)
        preset, state = self.folder / "p.txt", self.folder / "s"
        rendered(self.folder, music(2, 10), "--preset", "mix-glue", "--set", "Hot=0.3", "--save-preset", preset, "--save-state", state)
        self.assertEqual(effect.preset, preset.read_text())
        self.assertEqual(effect.state, state.read_bytes())
        for change in (lambda: self.effect.load_preset(preset), lambda: setattr(self.effect, "preset", preset.read_text()),
                       lambda: setattr(self.effect, "state", state.read_bytes())):
            self.effect.set(hot=0.9, mix=0.4)
            change()
            self.assertEqual(self.effect.state, state.read_bytes())
        self.assertEqual(varno.Effect(RATE, 1, preset=str(preset)).preset, effect.preset)

    def test_lists_the_factory_presets(self):
        names = [preset["name"] for preset in json.loads(program("presets", "--json"))]
        self.assertGreater(len(names), 3)
        self.assertEqual(list(varno.presets()), names)
        for file in varno.presets().values():
            self.assertTrue(pathlib.Path(file).is_absolute())
            varno.Effect(RATE, 2, preset=file)

    def test_has_the_version_of_the_program(self):
        self.assertIn(varno.__version__, program("--version"))


if __name__ == "__main__":
    unittest.main()
