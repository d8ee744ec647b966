"""The part "audio" fails for each figure that is not as demanded. (What the figures find: LongRunTest.cpp.)"""
import unittest

import audio_part
from part_test import PartTest

GOOD = {"buffers": 1, "changes": 1, "bad inputs": 1, "bad buffers": 0, "bad meters": 0, "position error": 0,
        "broken contracts": 0, "resident bytes": 0, "allocated bytes": 0, "difference after silence, dBFS": -120.5,
        "difference after reset": ""}
BAD = {"bad buffers": 1, "bad meters": 1, "position error": -1, "broken contracts": 1, "resident bytes": 300 * 1024,
       "allocated bytes": 70 * 1024, "difference after silence, dBFS": -99.0, "difference after reset": "channel 0"}


class AudioTest(PartTest):
    part = audio_part
    program = "Tests/Endurance/varno_endurance_audio"

    def script(self, changed, more=""):
        """A program that finds this at 4x, and else nothing wrong."""
        return (f"import json, sys\nfound = {GOOD!r}\nif sys.argv[1] == '4':\n    found.update({changed!r})\n    {more}\n"
                "print('progress 1')\nprint(json.dumps(found))\n")

    def test_passes_where_all_is_as_demanded(self):
        work = self.run_with(self.script({}))
        self.assertTrue(work.is_passed)
        self.assertEqual(len(work.findings), 4 * 5)

    def test_fails_where_one_figure_is_not(self):
        for key, value in [*BAD.items(), ("difference after silence, dBFS", None)]:
            failed = self.failed(self.script({key: value}))
            self.assertEqual(len(failed), 1, key)
            self.assertTrue(failed[0].startswith("4x: "), failed)

    def test_fails_where_the_program_does(self):
        with self.assertRaisesRegex(RuntimeError, "4x ended with status 3"):
            self.run_with(self.script({}, "sys.exit(3)"))


if __name__ == "__main__":
    unittest.main()
