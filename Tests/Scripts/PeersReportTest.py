"""Scripts/peers-report compares the effect with those of others."""
import json
import pathlib
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

COST_NS = {"routine alone": 10.0, "Varno-S": 11.0, "x42 darc compressor": 8.8, "A tube": 55.0}
DOCUMENT = """By hand.

<!-- Below this line: written by ./run bench-peers. -->

### Chip 1

old results

### Chip 2

other results

<!-- Above this line: written by ./run bench-peers. -->
"""


def measured(effect, rate, frames):
    return {"run_name": f"peer/{effect}/rate:{rate}/frames:{frames}", "run_type": "iteration", "label": "stereo",
            "items_per_second": 1e9 / COST_NS[effect]}


class PeersReportTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="varno-peers-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.cases = [measured(effect, rate, frames)
                      for effect in COST_NS for rate in (48000, 96000) for frames in (64, 512, 1024)]

    def report(self, *arguments):
        (self.folder / "peers.json").write_text(json.dumps({"benchmarks": self.cases}))
        return subprocess.run([ROOT / "Scripts/peers-report", *arguments, self.folder], capture_output=True, text=True,
                              check=False)

    def test_every_effect_is_reported_in_ratio_to_ours(self):
        text = self.report().stdout
        self.assertEqual(text.count("| A tube | 55 (5.00) | 55 (5.00) | 55 (5.00) |"), 2, "once for each rate")
        self.assertIn("| Varno-S | 11 (1.00) |", text)

    def test_the_cheapest_comes_first(self):
        lines = [line for line in self.report().stdout.splitlines() if line.endswith(") |") and " frames |" not in line]
        names = [line.split("|")[1].strip() for line in lines]
        self.assertEqual(names, 2 * ["x42 darc compressor", "routine alone", "Varno-S", "A tube"])

    def test_what_is_aimed_at_comes_first(self):
        lines = self.report().stdout.splitlines()
        self.assertIn("| Varno-S / x42 darc compressor, 64 frames | 1.10 | 0.95 | 1.25 (1.25 to 1.25) |", lines[:6])
        self.assertIn("| Varno-S as an LV2 effect / the routine alone, 64 frames | 1.15 | 1.05 | 1.10 (1.10 to 1.10) |",
                      lines[:6])

    def test_an_effect_that_could_not_be_measured_states_why(self):
        for case in self.cases:
            if "A tube" in case["run_name"]:
                case.update(error_occurred=True, error_message="it is not installed")
        self.assertIn("| A tube | skipped: it is not installed |", self.report().stdout)

    def test_the_document_keeps_what_is_written_by_hand(self):
        document = self.folder / "performance.md"
        document.write_text(DOCUMENT)
        result = self.report("--document", document, "--processor", "Chip 1", "--machine", "A machine.")
        self.assertEqual(result.returncode, 0, result.stderr)
        text = document.read_text()
        self.assertTrue(text.startswith("By hand.\n"))
        self.assertIn("\n\n### Chip 1\n\nA machine.\n", text)
        self.assertIn("| A tube |", text)
        self.assertNotIn("old results", text)
        self.assertIn("\n\n### Chip 2\n\nother results\n\n<!-- Above", text)

    def test_a_document_without_marks_is_left_alone(self):
        document = self.folder / "performance.md"
        document.write_text("By hand.\n")
        result = self.report("--document", document)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("written by ./run bench-peers", result.stderr)
        self.assertEqual(document.read_text(), "By hand.\n")


if __name__ == "__main__":
    unittest.main()
