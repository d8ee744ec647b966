"""The numbers of the presets are those that the built program gives, and others are found."""
import os
import pathlib
import unittest

from script import ROOT, script

DOCUMENT = (ROOT / "docs/presets.md").read_text()


class PresetFiguresTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.script = script("preset-figures")
        # Measures once for all tests.
        cls.presets = cls.script.Presets(pathlib.Path(os.environ["VARNO_BUILD"]) / "Apps/varno/varno")

    def test_the_document_has_the_measured_numbers(self):
        self.assertEqual(self.script.faults(DOCUMENT, self.presets), [])

    def test_a_wrong_number_is_found(self):
        for name in ("destroyed", "voice-smooth"):
            row = next(line for line in DOCUMENT.splitlines()
                       if line.startswith(f"| `{name}` | ") and line.count("|") == 7)
            faults = self.script.faults(DOCUMENT.replace(row, row.replace(".", ".9", 1)), self.presets)
            self.assertEqual(faults, ["measured is: " + row])

    def test_a_document_without_the_place_is_refused(self):
        with self.assertRaisesRegex(LookupError, "no place for the measurements"):
            self.script.with_table("# The presets\n", self.presets)


if __name__ == "__main__":
    unittest.main()
