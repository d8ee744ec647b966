"""Scripts/bench-report compares results with its table of figures and writes them into a document."""
import json
import pathlib
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

DOCUMENT = """# Performance

By hand, above.

<!-- Below this line: written by ./run bench. -->

## Chip 1

old results

<!-- Above this line: written by ./run bench. -->

By hand, below.
"""

FRAME_NS = {"product": 10.0, "literal": 80.0, "copy": 0.1}


def case(name, seconds_per_item, **fields):
    """One repetition, as Google Benchmark writes it."""
    return {"run_name": name, "run_type": "iteration", "items_per_second": 1.0 / seconds_per_item, **fields}


def repeated(name, *nanoseconds, **fields):
    return [case(name, value * 1e-9, **fields) for value in nanoseconds]


def product(channels, frames):
    return f"routine/product/channels:{channels}/frames:{frames}"


def instances(way, channels, count):
    return f"instances/{way}/channels:{channels}/count:{count}"


def routine(label, product_ns):
    cases = []
    for channels in (1, 2):
        for frames in (512, 64, 32):
            for way, cost in {**FRAME_NS, "product": product_ns}.items():
                name = f"routine/{way}/channels:{channels}/frames:{frames}"
                cases += repeated(name, cost, label=label if way == "product" else "")
    return cases


def timed(name, seconds, **counters):
    return case(f"{name}/iterations:1/manual_time", seconds, processor_s=seconds, real_time=seconds * 1000, **counters)


def good_results():
    """Runs by name, with every figure at or beyond its aim."""
    return {
        "routine": routine("avx2", 10.0)
        + repeated("minute/product/noise", 10.0) + repeated("minute/product/silence", 9.0)
        + repeated(instances("product", 2, 1), 12.0) + repeated(instances("product", 2, 1000), 13.0)
        + [cases for channels in (1, 2) for way, cost in (("product", 10.0), ("literal", 80.0))
           for cases in repeated(instances(way, channels, 16), cost)],
        "routine-baseline": routine("baseline", 20.0),
        "settings": repeated("settings/typical", 10.0, label="music: middling")
        + repeated("settings/dearest/rank:0", 10.2, label="noise: dear")
        + repeated("settings/dearest/rank:1", 10.5, label="drums: dearest"),
        "render": [timed("render/program", 1.0), timed("render/sndfile", 0.7), timed("render/routine", 0.29)],
        "memory": [timed("memory/song", 1.0, resident_MiB=14.0)],
        "plugin": repeated("plugin/quality/factor:1", 10.0) + repeated("plugin/quality/factor:2", 26.0)
        + repeated("plugin/quality/factor:4", 48.0) + repeated("plugin/quality/factor:8", 96.0),
        "model": [case("model/chunk/save/manual_time", 1e-6, allocations=3.0)],
        "editor": [timed("openToFirstPaint", 0.1)],
    }


class BenchReportTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="varno-bench-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.results = good_results()

    def report(self, *arguments):
        (self.folder / "results").mkdir(exist_ok=True)
        for name, cases in self.results.items():
            (self.folder / f"results/{name}.json").write_text(json.dumps({"benchmarks": cases}))
        return subprocess.run([ROOT / "Scripts/bench-report", *arguments, self.folder / "results"], capture_output=True,
                              text=True, check=False)

    def replace(self, run, name, *cases):
        """Replaces the results of the cases whose names begin with this."""
        self.results[run] = [old for old in self.results[run] if not old["run_name"].startswith(name)] + list(cases)

    def row(self, done, title):
        rows = [line for line in done.stdout.splitlines() if line.startswith(f"| {title}")]
        self.assertEqual(len(rows), 1, done.stdout + done.stderr)
        return [cell.strip() for cell in rows[0].strip("|").split("|")]

    def test_what_is_good_passes(self):
        done = self.report("--check")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertNotIn("MISSED", done.stdout)
        self.assertEqual(self.row(done, "stereo, 512-frame buffers, AVX2")[1:],
                         ["5.70x at least", "7.00x", "8.00x", "aim reached"])
        self.assertEqual(self.row(done, "stereo, 512-frame buffers, baseline")[3:], ["4.00x", "aim reached"])
        self.assertEqual(self.row(done, "dearest")[3:], ["1.05", "aim reached"])
        self.assertEqual(self.row(done, "60 s of silence")[3:], ["0.90", "aim reached"])
        self.assertEqual(self.row(done, "per instance")[3:], ["1.08", "aim reached"])
        self.assertEqual(self.row(done, "quality 2x")[1:], ["1.70 at most", "1.35", "1.30", "aim reached"])
        self.assertEqual(self.row(done, "quality 8x")[3:], ["1.20", "aim reached"])
        self.assertEqual(self.row(done, "`varno render`")[3:], ["1.01", "aim reached"])
        self.assertEqual(self.row(done, "resident memory of that")[1:],
                         ["48 MiB at most", "25 MiB", "14 MiB", "aim reached"])
        self.assertEqual(self.row(done, "resident memory, 3-hour file |")[3:],
                         ["", "not measured: ./run bench --long does"])

    def test_medians_count_and_quartiles_are_written(self):
        name = product(2, 512)
        self.replace("routine", name, *repeated(name, 9.0, 10.0, 500.0, 8.0, 16.0, label="avx2"),
                     {"run_name": name, "run_type": "aggregate", "items_per_second": 1.0})
        self.assertEqual(self.row(self.report(), "stereo, 512-frame buffers, AVX2")[3:],
                         ["8.00x (5.00x to 8.89x)", "aim reached"])

    def test_every_figure_can_be_missed(self):
        literal = "against literal"
        spoilt = [
            ("routine", product(2, 512), 17.0, f"stereo, 512-frame buffers, AVX2 or better, {literal}: 4.71x"),
            ("routine", product(2, 64), 21.0, f"stereo, 64-frame buffers, {literal}: 3.81x"),
            ("routine", product(2, 32), 28.0, f"stereo, 32-frame buffers, {literal}: 2.86x"),
            ("routine", product(1, 512), 21.0, f"mono, 512-frame buffers, {literal}: 3.81x"),
            ("routine-baseline", product(2, 512), 40.0,
             f"stereo, 512-frame buffers, baseline instruction set, {literal}: 2.00x"),
            ("settings", "settings/dearest/rank:1", 13.2,
             "dearest of 200 random settings and six signals / typical: 1.32"),
            ("routine", "minute/product/silence", 10.6,
             "60 s of silence after noise / noise, caller without flush-to-zero: 1.06"),
            ("routine", product(1, 64), 29.0, f"mono, 64-frame buffers, {literal}: 2.76x"),
            ("routine", instances("product", 1, 16), 17.0,
             f"each of 16 mono instances in one call, 64 frames, {literal}: 4.71x"),
            ("routine", instances("product", 2, 16), 14.0,
             f"each of 16 stereo instances in one call, 64 frames, {literal}: 5.71x"),
            ("routine", instances("product", 2, 1000), 15.8,
             "per instance, 1,000 stereo instances in one call / one, 64 frames: 1.32"),
        ]
        for run, name, cost, text in spoilt:
            self.results = good_results()
            self.replace(run, name, *repeated(name, cost, label="avx2"))
            self.assert_missed(text)
        self.results = good_results()
        self.replace("render", "render/program", timed("render/program", 1.2))
        self.assert_missed("`varno render` of a 10-minute stereo WAV / (libsndfile alone + routine): 1.21")
        self.results = good_results()
        self.replace("memory", "memory/song", timed("memory/song", 1.0, resident_MiB=49.0))
        self.assert_missed("resident memory of that render: 49 MiB")

    def assert_missed(self, text):
        done = self.report("--check")
        self.assertEqual(done.returncode, 1, text)
        self.assertEqual([line.split(";")[0] for line in done.stderr.splitlines()], [f"missed: {text}"])
        self.assertEqual(done.stdout.count("| MISSED |"), 1)
        self.assertEqual(self.report().returncode, 0)

    def test_three_hours_count_where_they_were_measured(self):
        self.results["memory"].append(timed("memory/three_hours", 9.0, resident_MiB=14.1))
        done = self.report("--check")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(self.row(done, "resident memory, 3-hour file |")[3:], ["14 MiB", "aim reached"])
        self.assertEqual(self.row(done, "resident memory, 3-hour file /")[3:], ["1.01", "reached"])
        self.replace("memory", "memory/three_hours", timed("memory/three_hours", 9.0, resident_MiB=30.0))
        self.assert_missed("resident memory, 3-hour file / 10-minute file: 2.14")

    def test_what_this_processor_lacks_is_skipped_with_its_reason(self):
        name = product(2, 512)
        self.replace("routine", name, *repeated(name, 10.0, label="sse4"))
        self.replace("routine-baseline", name, {"run_name": name, "run_type": "iteration", "error_occurred": True,
                                                "error_message": "this processor lacks it"})
        done = self.report("--check")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(self.row(done, "stereo, 512-frame buffers, AVX2")[3:],
                         ["", "skipped: the best instruction set of this processor is sse4"])
        self.assertEqual(self.row(done, "stereo, 512-frame buffers, baseline")[3:],
                         ["", "skipped: this processor lacks it"])

    def test_what_nobody_measured_is_missed(self):
        del self.results["routine-baseline"]
        done = self.report("--check")
        self.assertEqual(done.returncode, 1)
        self.assertIn(f"not measured: no result of {product(2, 512)} (routine-baseline)", done.stderr)

    def test_the_document_keeps_what_is_written_by_hand(self):
        document = self.folder / "performance.md"
        document.write_text(DOCUMENT)
        for _ in range(2):
            done = self.report("--document", document, "--processor", "Chip 1", "--machine", "A machine.")
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            text = document.read_text()
            before, after = DOCUMENT.split("## Chip 1\n\nold results")
            self.assertTrue(text.startswith(f"{before}## Chip 1\n\nA machine.\n\n### What is required\n\n| figure |"),
                            text)
            self.assertTrue(text.endswith(f"|{after}"), text)
        self.assertIn("- Stereo instances per core at 48 kHz, 64 frames: 1,603 (13 ns per frame", text)
        self.assertIn("- Dearest: drums: dearest (10.5 ns per frame).", text)
        self.assertIn("| stereo, 64 frames | 10 | 80 | 0.1 | 2,083x |", text)
        self.assertIn("| baseline | 20 ns, 4.0x | 20 ns, 4.0x | 20 ns, 4.0x |\n| avx2 | not measured |", text)
        self.assertIn("| `varno render` | 1 s | 1 s |", text)
        self.assertIn("| chunk: size and content | 1 µs | 3 |", text)
        self.assertIn("| opened, to the last control's picture | 100 ms |", text)

    def test_each_processor_has_a_section_which_its_own_measurement_replaces(self):
        document = self.folder / "performance.md"
        document.write_text(DOCUMENT.replace("old results\n", "old results\n\n### Of it\n\nmore\n\n"
                                             "## Chip 10\n\nother results\n"))
        old = document.read_text()

        def headings():
            return [line for line in document.read_text().splitlines() if line.startswith("## ")]

        self.report("--document", document, "--processor", "Chip 1", "--machine", "One.")
        self.assertEqual(headings(), ["## Chip 1", "## Chip 10"])
        self.assertNotIn("old results", document.read_text())
        self.assertNotIn("### Of it", document.read_text(), "a deeper heading belongs to its section")
        self.assertIn("\n\n## Chip 10\n\nother results\n\n<!-- Above", document.read_text())
        document.write_text(old)
        self.report("--document", document, "--processor", "Chip 2", "--machine", "Two.")
        self.assertEqual(headings(), ["## Chip 1", "## Chip 10", "## Chip 2"])
        others = old[:old.index("\n\n<!-- Above")]
        self.assertTrue(document.read_text().startswith(others), "the others stay as they are")
        self.assertIn("\n\n## Chip 2\n\nTwo.\n\n### What is required\n", document.read_text())

    def test_a_document_without_its_marks_is_left_alone(self):
        document = self.folder / "performance.md"
        document.write_text("# Performance\n")
        done = self.report("--document", document)
        self.assertEqual((done.returncode, document.read_text()), (1, "# Performance\n"))
        self.assertIn("expected one line <!-- Below this line: written by ./run bench. -->", done.stderr)


if __name__ == "__main__":
    unittest.main()
