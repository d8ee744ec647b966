"""The parts of ./run endurance with foreign hosts, in their short form, and what they find where something is wrong."""
import pathlib
import re
import subprocess
import sys

from hosts import PROGRAM, HostTest

ENDURANCE = pathlib.Path(__file__).resolve().parents[1] / "Endurance"
RUN = ENDURANCE / "run"
BUILD = pathlib.Path(PROGRAM).parents[2]

sys.path.insert(0, str(ENDURANCE))
import live
import stalls
from work import Work

# Has a processor to itself for 20 ms, before the watch and all else, and prints from when to when.
OCCUPY = """
import os, sys, time
os.sched_setaffinity(0, {int(sys.argv[1])})
os.sched_setscheduler(0, os.SCHED_FIFO, os.sched_param(os.sched_get_priority_max(os.SCHED_FIFO)))
began = time.monotonic_ns()
while time.monotonic_ns() < began + 20_000_000:
    pass
print(began, time.monotonic_ns())
"""


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

    def test_the_watch_sees_a_processor_that_does_nothing_else(self):
        if not live.has_real_time():
            self.skipTest("real-time scheduling is not allowed here")
        processor = live.PROCESSORS[-1]
        with stalls.watch(Work("watch", BUILD, self.folder)) as end:
            spans = [subprocess.run([sys.executable, "-c", OCCUPY, str(processor)], check=True, capture_output=True,
                                    text=True).stdout.split() for _ in range(3)]
            found = end()
        for began, ended in (map(int, span) for span in spans):
            # Of 20 ms, it does not see what comes before its next look, 0.1 ms at most.
            self.assertGreater(found.within_ns(processor, began, ended), 19_500_000)
            self.assertEqual(found.within_ns(processor + 1000, began, ended), 0)

    def test_ardour(self):
        self.assertIn("\nardour: passed", self.part("ardour"))
