"""Which late blocks the part "play" takes for the effect's own."""
import contextlib
import io
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import play_part
from stalls import Stalls
from work import Work

LENGTH_US = 500.0
SCHEDULE = {"policy": "SCHED_FIFO", "priority": 5}
TIMES = {"p50": 1.0, "p99_9": 1.0, "worst": 1.0, "histogram": [{"up_to": 1.0, "blocks": 1}]}


def block(took_us=3000.0, **others):
    """Begins at 1 ms on processor 0."""
    return {"cause": "ours", "began_ns": 1_000_000, "took_us": took_us, "computed_us": took_us, "waits": 0,
            "page_faults": 0, "processor": 0, **others}


def statistics(*long_blocks, ours=None):
    return {"blocks": 3000, "frames": 24, "rate_hz": 48000.0, "block_us": LENGTH_US, "lost_blocks": 0, "overruns": 0,
            "late": {"ours": len(long_blocks) if ours is None else ours, "interrupted": 0, "woken_late": 0},
            "long_blocks": list(long_blocks), "schedule": SCHEDULE, "processing_us": TIMES, "waking_us": TIMES}


class StallsTest(unittest.TestCase):
    def explains(self, text, **of_block):
        return Stalls(text).explain(block(**of_block), LENGTH_US)

    def test_a_block_is_done_in_time_but_for_a_stop(self):
        self.assertTrue(self.explains("watching\n0 1400000 3900000\n"))
        self.assertTrue(self.explains("0 1500000 4000000\n"), "500 us are left")
        self.assertFalse(self.explains("0 1501000 4000000\n"))
        self.assertFalse(self.explains(""))

    def test_only_what_is_within_the_block_counts(self):
        self.assertTrue(self.explains("0 0 3600000\n"))
        self.assertFalse(self.explains("0 0 3400000\n"))
        self.assertTrue(self.explains("0 1400000 9000000\n"))
        self.assertFalse(self.explains("0 1600000 9000000\n"))
        self.assertFalse(self.explains("0 0 1000000\n0 4000000 9000000\n"))

    def test_several_stops_add_up(self):
        stops = "0 0 900000\n0 1100000 2300000\n0 2500000 3900000\n0 5000000 6000000\n"
        self.assertTrue(self.explains(stops))
        self.assertFalse(self.explains(stops.replace("1100000", "1300000")))

    def test_another_processor_does_not_matter(self):
        self.assertFalse(self.explains("1 1000000 4000000\n"))
        self.assertTrue(self.explains("0 5 6\n1 1000000 4000000\n", processor=1))

    def test_what_the_effect_asked_of_the_system_is_its_own(self):
        self.assertFalse(self.explains("0 1000000 4000000\n", waits=1))
        self.assertFalse(self.explains("0 1000000 4000000\n", page_faults=1))


class PlayTest(unittest.TestCase):
    STOP = Stalls("0 1000000 4000000\n")

    def failed(self, found, stops=STOP, seconds=1.5, growth_kib=0):
        work = Work("play", "", "")
        with contextlib.redirect_stderr(io.StringIO()):
            play_part.judge(work, found, statistics(block()), stops, seconds, growth_kib)
        return [finding.what for finding in work.findings if not finding.is_met]

    def setUp(self):
        frames = play_part.PERIOD_FRAMES
        play_part.PERIOD_FRAMES = statistics()["frames"]
        self.addCleanup(setattr, play_part, "PERIOD_FRAMES", frames)

    def test_passes_where_nothing_is_late_or_a_stop_explains_it(self):
        self.assertEqual(self.failed(statistics()), [])
        self.assertEqual(self.failed(statistics(block(), block(took_us=2000.0))), [])

    def test_fails_where_one_block_is_not_explained(self):
        self.assertEqual(self.failed(statistics(block(), block(took_us=9000.0))), ["late blocks: ours"])
        self.assertEqual(self.failed(statistics(block()), Stalls()), ["late blocks: ours"])

    def test_fails_where_a_late_block_is_not_listed(self):
        self.assertEqual(self.failed(statistics(block(), ours=2)), ["late blocks: ours"])

    def test_an_interrupted_block_explains_none_of_ours(self):
        self.assertEqual(self.failed(statistics(block(cause="interrupted"), ours=1)), ["late blocks: ours"])

    def test_fails_where_blocks_are_missing_or_memory_grows(self):
        self.assertEqual(self.failed(statistics(), seconds=4.0), ["blocks processed or lost, of those in that time"])
        self.assertEqual(self.failed(statistics(), growth_kib=257), ["memory added"])


if __name__ == "__main__":
    unittest.main()
