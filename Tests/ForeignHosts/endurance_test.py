"""The parts of ./run endurance with foreign hosts, in their short form, and what they find where something is wrong."""
import pathlib
import re

from hosts import PROGRAM, HostTest

RUN = pathlib.Path(__file__).resolve().parents[1] / "Endurance/run"
BUILD = pathlib.Path(PROGRAM).parents[2]


class EnduranceTest(HostTest):
    def part(self, name, status=0, environment=None):
        """What the short form of a part prints."""
        return self.run_program(str(RUN), "--short", "--build", str(BUILD), name, status=status,
                                environment={**(environment or {}), "TMPDIR": str(self.folder)})

    def test_play(self):
        self.assertIn("\nplay: passed", self.part("play"))

    def test_play_finds_a_slow_effect(self):
        text = self.part("play", 1, {"VARNO_MODULE": str(BUILD / "Tests/Host/Slow.aaxplugin"),
                                     "VARNO_FIXTURE_SLOW": "compute"})
        found = re.findall(r"FAILED: ([^;]+); demanded", text)
        self.assertTrue(found and found[0].startswith("late blocks: ours"), text)

    def test_ardour(self):
        self.assertIn("\nardour: passed", self.part("ardour"))
