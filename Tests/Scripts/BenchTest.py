"""./run bench runs the measuring programs with the options of each mode, and passes their results to bench-report."""
import json
import pathlib
import unittest

from fixture import ROOT, FixtureProject

CMAKE = """
cmake_minimum_required(VERSION 3.25)
project(fixture LANGUAGES CXX)
add_custom_target(varno_bench)
"""

# Records its arguments and that it has a folder for its files; has one case and writes it as a result.
PROGRAM = """#!/usr/bin/env bash
name=${{0##*varno_bench_}}
filter='' out=''
for argument in "$@"; do
    case $argument in
    --benchmark_filter=*) filter=${{argument#*=}} ;;
    --benchmark_out=*) out=${{argument#*=}} ;;
    --benchmark_list_tests) lists=yes ;;
    esac
done
if [[ -n ${{lists-}} ]]; then
    [[ "$name/case" =~ $filter ]] && echo "$name/case"
    exit
fi
[[ -d $TMPDIR ]] && touch "$TMPDIR/leftover"
echo "$name ${{VARNO_SIMD-}} $TMPDIR $*" >>"{calls}"
echo "said by $name"
[[ ${{BREAK-}} != "$name" ]] || exit 3
[[ -z $out ]] || echo '{results}' >"$out"
"""


class BenchTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.write("CMakeLists.txt", CMAKE)
        self.write("docs/performance.md", (ROOT / "docs/performance.md").read_text())
        self.calls = self.folder / "calls"
        results = json.dumps({"benchmarks": [{"run_name": "x", "run_type": "iteration", "items_per_second": 1.0}]})
        for name in ("routine", "settings", "plugin", "render", "model", "editor"):
            path = self.root / f"build/release/Benchmarks/varno_bench_{name}"
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(PROGRAM.format(calls=self.calls, results=results))
            path.chmod(0o755)
        self.changes = {}

    def environment(self):
        return {**super().environment(), **self.changes}

    def called(self):
        """Program, instruction set and the remaining words of each call."""
        calls = []
        for line in self.calls.read_text().splitlines():
            program, instruction_set, folder, words = line.split(" ", 3)
            self.assertFalse(pathlib.Path(folder).exists(), "temporary files are left")
            calls.append((program, instruction_set, words))
        return calls

    def test_measures_everything_and_writes_the_document(self):
        done = self.run_script("bench")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue(done.stdout.startswith("| figure | required |"), done.stdout)
        self.assertEqual([call[:2] for call in self.called()],
                         [("routine", ""), ("routine", "baseline"), ("settings", ""), ("plugin", ""), ("render", ""), ("render", ""),
                          ("routine", "avx2"), ("routine", "avx512"), ("model", ""), ("editor", "")])
        self.assertIn("--benchmark_enable_random_interleaving=true --benchmark_repetitions=15", self.called()[0][2])
        document = (self.root / "docs/performance.md").read_text()
        self.assertRegex(document, r"\n\n## \S.*\n\n\d{4}-\d\d-\d\d \d\d:\d\d UTC, commit .*\. .* processors?, .*kernel .*; load before: [\d.]+\. "
                                   r"Built by g\+\+ ")
        self.assertIn("| figure | required |", document)

    def test_three_hours_only_when_asked_for(self):
        self.run_script("bench")
        self.assertEqual([call[2].split()[0] for call in self.called() if "memory" in call[2]],
                         ["--benchmark_filter=^memory/song"])
        self.calls.unlink()
        self.run_script("bench", "--long")
        self.assertEqual([call[2].split()[0] for call in self.called() if "memory" in call[2]],
                         ["--benchmark_filter=^memory/song", "--benchmark_filter=^memory/"])

    def test_checks_what_is_required_and_leaves_the_document(self):
        before = (self.root / "docs/performance.md").read_text()
        done = self.run_script("bench", "--check")
        self.assertEqual(done.returncode, 1)
        self.assertIn("\nmissed: stereo, 512-frame buffers, AVX2 or better, against literal: not measured", done.stderr)
        self.assertEqual([call[0] for call in self.called()], ["routine", "routine", "settings", "plugin", "render", "render"])
        self.assertEqual((self.root / "docs/performance.md").read_text(), before)

    def test_a_program_that_fails_ends_it(self):
        self.changes = {"BREAK": "settings"}
        done = self.run_script("bench", "--check")
        self.assertEqual((done.returncode, done.stdout), (3, ""))
        self.assertIn("said by settings\n", done.stderr)
        self.assertEqual(self.called()[-1][0], "settings")

    def test_results_of_an_earlier_run_do_not_count(self):
        self.run_script("bench")
        self.changes = {"BREAK": "routine"}
        self.run_script("bench")
        self.assertEqual([path.name for path in (self.root / "build/bench").glob("*.json")], [])

    def test_a_filter_runs_what_matches_with_the_options(self):
        self.changes = {"VARNO_SIMD": "avx2"}
        done = self.run_script("bench", "--filter", "(model|editor)/case", "--benchmark_repetitions=3")
        self.assertEqual((done.returncode, done.stdout), (0, "said by model\nsaid by editor\n"), done.stderr)
        words = "--benchmark_filter=(model|editor)/case --benchmark_repetitions=3"
        self.assertEqual(self.called(), [("model", "avx2", words), ("editor", "avx2", words)])

    def test_a_filter_that_matches_nothing_is_an_error(self):
        done = self.run_script("bench", "--filter", "nothing")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("run: no measurement matches 'nothing'\n", done.stderr)

    def test_usage(self):
        done = self.run_script("bench", "--help")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(done.stdout.startswith("usage: ./run bench [--long | --check]\n"))
        for wrong in (["--filter"], ["--quick"], ["--check", "--long"]):
            done = self.run_script("bench", *wrong)
            self.assertEqual((done.returncode, done.stdout), (2, ""), wrong)
            self.assertIn("./run bench --help tells more", done.stderr)


if __name__ == "__main__":
    unittest.main()
