"""./run test runs every step that is named, counts, and reports at the end what failed and how to repeat it."""
import pathlib
import subprocess
import time
import unittest

from fixture import FixtureProject

MORE_TESTS = """
add_test(NAME bad COMMAND sh -c "echo the reason; exit 1")
add_test(NAME absent COMMAND nowhere_to_be_found)
add_test(NAME skipped COMMAND sh -c "exit 77")
set_tests_properties(skipped PROPERTIES SKIP_RETURN_CODE 77)
add_test(NAME off COMMAND true)
set_tests_properties(off PROPERTIES DISABLED ON)
"""


class StepsTest(FixtureProject):
    def test_all_well(self):
        done = self.run_script("test", "text", "gcc")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertRegex(done.stdout, r"\Atext +1 passed +\d+ s\ngcc +1 passed +\d+ s\n2 passed, 0 failed\n\Z")

    def test_a_test_that_did_not_pass_has_failed(self):
        self.write("Tests/CMakeLists.txt", (self.root / "Tests/CMakeLists.txt").read_text() + MORE_TESTS)
        done = self.run_script("test", "gcc", "text")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "2 passed, 4 failed"))
        self.assertRegex(done.stdout, r"gcc +1 passed, 4 FAILED +\d+ s\ntext +1 passed")
        self.assertIn("\n  ./run test gcc\n      bad\n      absent\n      skipped\n      off\n", done.stdout)
        self.assertIn("the reason", done.stderr)
        self.assertNotIn("good", done.stderr)

    def test_counts_the_cases_of_a_googletest_program(self):
        def program(name, report, status=0):
            self.write(f"{name}.xml", f"<testsuites><testsuite>{report}</testsuite></testsuites>")
            return (f'add_test(NAME {name} COMMAND sh -c "mkdir -p $(dirname ${{GTEST_OUTPUT#xml:}}x); '
                    f'cp {self.root}/{name}.xml ${{GTEST_OUTPUT#xml:}}; exit {status}")\n').replace("$", "\\$")

        passed = '<testcase name="A" classname="Some" result="completed"/>'
        failed = '<testcase name="B" classname="Some" result="completed"><failure message="no"/></testcase>'
        skipped = '<testcase name="C" classname="Some" result="skipped"/>'
        self.write("Tests/CMakeLists.txt", (self.root / "Tests/CMakeLists.txt").read_text() +
                   program("three", passed + failed + skipped, 1) + program("leaking", passed, 1) + program("none", ""))
        done = self.run_script("test", "gcc")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "3 passed, 4 failed"))
        self.assertIn("\n  ./run test gcc\n      Some.B\n      Some.C\n      leaking\n      none\n", done.stdout)

    def test_only_a_skipped_test(self):
        self.write("Tests/CMakeLists.txt", (self.root / "Tests/CMakeLists.txt").read_text() +
                   'add_test(NAME skipped COMMAND sh -c "exit 77")\n'
                   "set_tests_properties(skipped PROPERTIES SKIP_RETURN_CODE 77)\n")
        done = self.run_script("test", "gcc")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "1 passed, 1 failed"))

    def test_no_tests_at_all(self):
        self.write("Tests/CMakeLists.txt", "\n")
        done = self.run_script("test", "gcc")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "0 passed, 1 failed"))

    def test_a_build_that_fails(self):
        self.write("Tests/test.cpp", "int main() { return undeclared; }\n")
        done = self.run_script("test", "gcc", "text")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "1 passed, 1 failed"))
        self.assertRegex(done.stderr, "undeclared. was not declared")

    def test_reports_what_tests_left_out(self):
        self.write("Tests/test.cpp", """
#include <cstdio>
int main() {
    std::puts("skipped: wide: this processor cannot run it");
    std::puts("Not at the start of a line: skipped: other: no");
    std::puts("skipped: longer: it lacks memory");
}
""")
        done = self.run_script("test", "gcc")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertRegex(done.stdout, r"\Agcc +1 passed +\d+ s\n"
                                      r"  skipped: longer: it lacks memory\n"
                                      r"  skipped: wide: this processor cannot run it\n"
                                      r"1 passed, 0 failed\n\Z")

    def test_reports_what_another_processor_needs(self):
        script = 'source "$1/Scripts/console.sh"; source "$1/Scripts/checks.sh"; PATH=$2; step_aarch64'
        for name in ("aarch64-linux-gnu-g++", "qemu-aarch64"):
            done = subprocess.run(["bash", "-c", script, "step", self.root, self.commands], env=self.environment(),
                                  capture_output=True, text=True, check=False)
            self.assertEqual((done.returncode, done.stderr),
                             (1, f"run: cannot build and run for 64-bit ARM: there is no {name}\n"))
            self.command(name, "true\n")

    def test_a_stale_report_does_not_count(self):
        self.run_script("test", "gcc")
        self.write("Tests/test.cpp", "int main() { return undeclared; }\n")
        self.assertEqual(self.last_line(self.run_script("test", "gcc")), "0 passed, 1 failed")

    def test_wrong_usage(self):
        for arguments in (["test", "nonsense"], ["test", "gcc", "--quick"], ["lint", "gcc"], ["coverage", "x"],
                          ["format", "x"]):
            done = self.run_script(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertRegex(done.stderr, r"\Arun: [^\n]+\n\Z")

    def test_names_its_steps(self):
        done = self.run_script("test", "--list")
        names = [line.split()[0] for line in done.stdout.splitlines()]
        for name in ("format", "guards", "scripts", "gcc", "clang", "tidy", "sources", "tidy-tests", "asan-ubsan", "tsan", "hosts", "coverage", "aarch64",
                     "libcxx", "windows", "fetch", "long", "long-threads"):
            self.assertIn(name, names)

    def test_continuous_integration_runs_them(self):
        self.write("run", '#!/usr/bin/env bash\nprintf "%s in %s\\n" "$*" "$PWD"\nexit "$status"\n')
        for status in (0, 1):
            done = self.run_script(script=self.root / ".ci/run", prefix=["env", f"status={status}"])
            self.assertEqual((done.returncode, done.stdout), (status, f"test in {self.root}\n"))

    def run_steps(self, steps, *names):
        """Runs steps of the test's own. Returns the shell's result."""
        script = (f'root=$1; source "$root/Scripts/console.sh"; source "$root/Scripts/checks.sh"; '
                  f'source "$root/Scripts/steps.sh"; checks=$root/checks; {steps}; run_steps "${{@:2}}"')
        return subprocess.run(["bash", "-c", script, "steps", self.root, *names], env=self.environment(),
                              capture_output=True, text=True, check=False, timeout=60)

    def test_windows_is_refused_where_its_programs_cannot_run(self):
        self.command("uname", "echo aarch64\n")
        done = self.run_steps("build_preset() { echo built; }", "windows")
        self.assertEqual(self.last_line(done), "0 passed, 1 failed")
        self.assertNotIn("built", done.stdout)
        self.assertIn("this machine is aarch64, and the programs are for x86_64", done.stderr)

    def test_a_step_goes_on_beside_others(self):
        # Each of the two waits for a file of the other.
        steps = """step_one() { touch "$root/one"; until [[ -f $root/two ]]; do sleep 0.01; done; }
                   step_two() { touch "$root/two"; until [[ -f $root/one ]]; do sleep 0.01; done; }"""
        done = self.run_steps(steps, "one&", "two")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertRegex(done.stdout, r"\Atwo +1 passed +\d+ s\none +1 passed +\d+ s\n2 passed, 0 failed\n\Z")

    def test_the_step_beside_others_has_idle_priority_and_counts(self):
        steps = """step_one() { chrt --pid 0 | grep -q SCHED_IDLE && echo '<testcase name="A" status="run"/>' >"$step_report"; }
                   step_two() { ! chrt --pid 0 | grep -q SCHED_IDLE; }"""
        self.assertEqual(self.last_line(self.run_steps(steps, "one&", "two")), "2 passed, 0 failed")
        done = self.run_steps("step_one() { false; }; step_two() { true; }", "one&", "two")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "1 passed, 1 failed"))
        self.assertIn("\n  ./run test one\n", done.stdout)

    def test_the_step_beside_others_ends_with_them(self):
        steps = """step_one() { sleep 50 & echo $! >"$root/id"; wait; }
                   step_two() { until [[ -s $root/id ]]; do sleep 0.01; done; kill -TERM $$; sleep 1; }"""
        done = self.run_steps(steps, "one&", "two")
        self.assertNotEqual(done.returncode, 0)
        process = pathlib.Path("/proc", (self.root / "id").read_text().strip())
        end = time.monotonic() + 20
        while process.exists() and time.monotonic() < end:
            time.sleep(0.01)
        self.assertFalse(process.exists())


if __name__ == "__main__":
    unittest.main()
