"""A full run writes its result, its date and its machine into docs/verification.md, below the text that is there."""
import subprocess
import unittest

from fixture import FixtureProject

# Two steps in place of the long ones.
FULL = """
root=$1
source "$root/Scripts/console.sh"
source "$root/Scripts/install.sh"
source "$root/Scripts/build.sh"
source "$root/Scripts/test.sh"
may_install=yes
full_steps=(text comments)
step_text() {
    printf '<testcase name="a" status="run">\n<system-out>skipped: wide: not here\n</system-out>\n' >"$step_report"
}
step_comments() { false; }
test_command --full
"""


class VerificationTest(FixtureProject):
    def test_a_run_of_what_is_committed_is_one_without_changes(self):
        self.write("docs/verification.md", "<!-- Below this line: written by ./run test --full. -->\n")
        self.write(".gitignore", "build/\n")
        git = ["git", "-C", self.root, "-c", "user.name=A", "-c", "user.email=a@b"]
        for command in (["init", "-q"], ["add", "--all"], ["commit", "-q", "-m", "All"]):
            subprocess.run(git + command, check=True)
        commit = subprocess.run(git + ["rev-parse", "--short", "HEAD"], check=True, capture_output=True, text=True)
        for expected in (commit.stdout.strip() + ".", commit.stdout.strip() + " with changes."):
            subprocess.run(["bash", "-c", FULL, "full", self.root], env=self.environment(), capture_output=True,
                           check=False)
            self.assertIn(f", commit {expected}\n", (self.root / "docs/verification.md").read_text())

    def test_result_replaces_the_last_one(self):
        self.write("docs/verification.md", "# Verification\n\nWords.\n\n"
                                           "<!-- Below this line: written by ./run test --full. -->\n\nold result\n")
        subprocess.run(["git", "init", "-q", self.root], check=True)
        done = subprocess.run(["bash", "-c", FULL, "full", self.root], env=self.environment(), capture_output=True,
                              text=True, check=False)
        self.assertEqual((done.returncode, self.last_line(done)), (1, "1 passed, 1 failed"), done.stderr)
        document = (self.root / "docs/verification.md").read_text()
        self.assertTrue(document.startswith("# Verification\n\nWords.\n\n<!-- Below"))
        self.assertNotIn("old result", document)
        self.assertRegex(document, r"\n\d{4}-\d\d-\d\d \d\d:\d\d UTC, commit ")
        self.assertRegex(document, r"\d+ processors?, \d+ GiB; .*kernel .*; g\+\+ .*; .*clang version ")
        self.assertRegex(document, r"\n\| text \| no machine paths.* \| 1 passed; skipped: wide: not here \| \d+ s \|\n"
                                   r"\| comments \| .* \| 0 passed, 1 FAILED \| \d+ s \|\n")
        self.assertTrue(document.endswith("Together: 1 passed, 1 failed.\n"))


if __name__ == "__main__":
    unittest.main()
