"""The numbers of the manual are those that the built program measures, and others are found."""
import os
import pathlib
import unittest

from script import ROOT, script

MANUAL = (ROOT / "docs/manual.md").read_text()


class FiguresTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.figures = script("manual-figures")
        # Measures once for all tests.
        cls.effect = cls.figures.Effect(pathlib.Path(os.environ["VARNO_BUILD"]) / "Apps/varno/varno")

    def faults(self, text):
        return self.figures.faults(text, self.effect)

    def test_the_manual_has_the_measured_numbers(self):
        self.assertEqual(self.faults(MANUAL), [])

    def assert_found(self, old, new, fault):
        self.assertIn(old, MANUAL)
        faults = self.faults(MANUAL.replace(old, new, 1))
        self.assertEqual(len(faults), 1, faults)
        self.assertIn(fault, faults[0])

    def test_a_wrong_number_is_found(self):
        self.assert_found("42 ms at the right end", "43 ms at the right end", "43 is stated, 41.6")

    def test_a_wrong_word_is_found(self):
        self.assert_found("releases nine times", "releases eight times", "eight is stated, 9.2")
        self.assert_found("it is half as long", "it is nine as long", "nine is stated, 0.4999")

    def test_a_number_that_nothing_measures_is_found(self):
        self.assert_found("keeps its bass.", "keeps its bass above 17 Hz.", 'above 17 Hz": nothing measures this')

    def test_a_sentence_that_is_gone_is_found(self):
        self.assert_found("amplify by up to 0.4 dB", "amplify a little", "no sentence has: amplify by up to")

    def test_a_wrong_cell_is_found(self):
        self.assert_found("| 106 ms |", "| 107 ms |", "106 ms")

    def test_another_preset_is_found(self):
        self.assert_found("Hottitude 0.0700000003", "Hottitude 0.0700000000", "the text of the usual settings is another")

    def test_tables_are_written(self):
        emptied = self.figures.marked("drive").sub("<!-- measured: drive -->\n<!-- end of drive -->", MANUAL)
        self.assertNotEqual(emptied, MANUAL)
        self.assertEqual(self.figures.with_tables(emptied, self.effect), MANUAL)

    def test_a_table_without_its_place_is_found(self):
        with self.assertRaisesRegex(LookupError, "no place for the table drive"):
            self.figures.with_tables(MANUAL.replace("<!-- measured: drive -->", ""), self.effect)


if __name__ == "__main__":
    unittest.main()
