"""The plots of the manual show what the built program measures: the numbers that each picture has as its comment."""
import os
import pathlib
import tempfile
import unittest

from script import ROOT, script

VARNO = pathlib.Path(os.environ["VARNO_BUILD"]) / "Apps/varno/varno"
PICTURES = ROOT / "docs/pictures"
# Processors differ by rounding alone, which soft products in dB show.
TOLERANCE = 0.01
SOFT_DB = -90
SOFT_TOLERANCE = 1.0


def faults(stated, found, place=""):
    """Where two trees of lists, objects and numbers differ."""
    if isinstance(stated, dict) and isinstance(found, dict) and stated.keys() == found.keys():
        return [fault for key in stated for fault in faults(stated[key], found[key], f"{place}/{key}")]
    if isinstance(stated, list) and isinstance(found, list) and len(stated) == len(found):
        return [fault for at, pair in enumerate(zip(stated, found)) for fault in faults(*pair, f"{place}/{at}")]
    if isinstance(stated, (int, float)) and isinstance(found, (int, float)):
        tolerance = SOFT_TOLERANCE if max(stated, found) < SOFT_DB else TOLERANCE
        return [] if abs(stated - found) <= tolerance else [f"{place}: {stated} is shown, {found} measured"]
    return [] if stated == found else [f"{place}: {stated!r} is shown, {found!r} measured"]


class PlotsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.plots = script("draw-plots")

    def shown(self, kind):
        return self.plots.numbers_of(PICTURES / f"plot-{kind}.png")

    def check(self, kind):
        with tempfile.TemporaryDirectory() as folder:
            measured = self.plots.draw(VARNO, kind, pathlib.Path(folder, "plot.svg"))
        shown = self.shown(kind)
        self.assertEqual(faults(shown, measured)[:5], [], "./run manual draws it anew")
        # A wrong one is found.
        shown["panels"][0]["series"][0]["y"][3] += 0.02
        self.assertEqual(len(faults(shown, measured)), 1)

    def test_curves(self):
        self.check("curves")

    def test_burst(self):
        self.check("burst")

    def test_detector(self):
        self.check("detector")

    def test_harmonics(self):
        self.check("harmonics")

    def test_transfer(self):
        self.check("transfer")

    def test_aliasing(self):
        self.check("aliasing")

    def test_the_map_and_the_table_agree(self):
        """At the places that both have: all of the map takes too long to measure at each build."""
        rows = script("manual-figures").Effect(VARNO).rows("aliasing")
        shown = self.shown("map")["panels"][0]["map"]
        both = 0
        for at, value in enumerate(shown["values"]):
            level_db, hot = shown["y"][at // len(shown["x"])], shown["x"][at % len(shown["x"])]
            sums = [row["sum_db"] for row in rows if row["level_db"] == level_db and row["hot"] == hot]
            if sums:
                self.assertAlmostEqual(value, max(sums), delta=TOLERANCE, msg=f"{level_db} dBFS, {hot}")
                both += 1
        self.assertEqual(both, 30)


if __name__ == "__main__":
    unittest.main()
