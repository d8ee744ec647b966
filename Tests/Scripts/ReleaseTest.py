"""./run release refuses what cannot be tagged, checks everything else, and states what to tag; the version is in one place."""
import re
import subprocess
import unittest

from fixture import ROOT, FixtureProject

# With other checks in place of the long ones.
RELEASE = """
root=$1
source "$root/Scripts/console.sh"
source "$root/Scripts/install.sh"
source "$root/Scripts/build.sh"
source "$root/Scripts/package.sh"
source "$root/Scripts/test.sh"
source "$root/Scripts/release.sh"
other_release=debian-13
test_command() { echo "tested $*"; [[ -z ${broken-} ]]; }
release_command "${@:2}"
"""

CHANGES = "# Changelog\n\n## [2.3.4] - 2026-12-01\n\n### Added\n\n- A thing.\n\n## [2.3.3] - 2026-11-01\n\n- Another.\n"


class ReleaseTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.write("CMakeLists.txt", "project(Varno-S VERSION 2.3.4 LANGUAGES CXX)\n")
        self.write("CHANGELOG.md", CHANGES)
        self.write("Packaging/debian/control", "Source: all\n\nPackage: one-lib\nArchitecture: any\n\nPackage: two\n")
        self.write(".gitignore", "build/\n")
        self.write("build/packages/varno_2.3.4.deb", "package\n")
        self.write("build/packages-13-made/varno-s.tar.xz", "archive\n")
        self.git("init", "-q")
        self.commit()

    def git(self, *words):
        subprocess.run(["git", "-C", self.root, "-c", "user.name=A", "-c", "user.email=a@b", *words], check=True,
                       capture_output=True)

    def commit(self):
        self.git("add", "--all")
        self.git("commit", "-q", "-m", "All")

    def release(self, *arguments, broken=""):
        return subprocess.run(["bash", "-c", RELEASE, "release", self.root, *arguments],
                              env={**self.environment(), "broken": broken}, capture_output=True, text=True, check=False)

    def assert_refused(self, *reasons):
        done = self.release()
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertEqual(done.stderr, "".join(f"run: no release: {reason}\n" for reason in reasons))
        plan = self.release("--dry-run")
        self.assertEqual((plan.returncode, plan.stderr), (1, ""))
        self.assertTrue(plan.stdout.endswith("It would be refused:\n" + "".join(f"  {reason}\n" for reason in reasons)), plan.stdout)

    def test_checks_everything_and_states_what_to_tag(self):
        done = self.release()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(done.stdout.startswith("tested --full\n"))
        self.assertIn('  2. git tag -a v2.3.4 -m "Varno-S 2.3.4"\n  3. git push origin HEAD v2.3.4\n', done.stdout)
        self.assertRegex(done.stdout, r"\n[0-9a-f]{64}  \S+/build/packages-13-made/varno-s.tar.xz\n"
                                      r"[0-9a-f]{64}  \S+/build/packages/varno_2.3.4.deb\n\Z")

    def test_nothing_is_to_be_tagged_where_a_check_fails(self):
        done = self.release(broken="yes")
        self.assertEqual((done.returncode, done.stdout), (1, "tested --full\n"))
        self.assertEqual(done.stderr, "run: no release: ./run test --full has failed\n")

    def test_a_dry_run_names_the_steps_and_does_none(self):
        done = self.release("--dry-run")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertNotIn("tested", done.stdout)
        self.assertRegex(done.stdout, r"  1\. \./run test --full.*\n     the archive and the packages one-lib two\n  2\. git commit .*\n  3\. git tag -a v2\.3\.4 .*\n  4\. git push ")

    def test_refuses_what_is_not_committed(self):
        self.write("new.txt", "new\n")
        self.assert_refused("not committed: new.txt")
        self.commit()
        self.write("CHANGELOG.md", CHANGES + "\n")
        self.assert_refused("not committed: CHANGELOG.md")

    def test_refuses_a_version_without_its_section(self):
        no_date = 'CHANGELOG.md has no date for 2.3.4; expected a line "## [2.3.4] - YYYY-MM-DD"'
        for changes, reason in ((CHANGES.replace("2.3.4", "2.3.5"), "CHANGELOG.md has no section for 2.3.4"),
                                (CHANGES.replace("2.3.4", "2x3.4"), "CHANGELOG.md has no section for 2.3.4"),
                                (CHANGES.replace("2026-12-01", "unreleased"), no_date),
                                (CHANGES.replace("- A thing.\n", ""), "CHANGELOG.md says nothing about 2.3.4")):
            self.write("CHANGELOG.md", changes)
            self.commit()
            self.assert_refused(reason)

    def test_refuses_a_version_that_is_tagged(self):
        self.git("tag", "v2.3.40")
        self.assertEqual(self.release("--dry-run").returncode, 0)
        self.git("tag", "v2.3.4")
        self.assert_refused("v2.3.4 is tagged already; expected another version in CMakeLists.txt")

    def test_names_all_that_stands_against_it(self):
        self.git("tag", "v2.3.4")
        self.write("CHANGELOG.md", "")
        self.assert_refused("not committed: CHANGELOG.md", "CHANGELOG.md has no section for 2.3.4",
                            "v2.3.4 is tagged already; expected another version in CMakeLists.txt")

    def test_wrong_usage(self):
        for arguments in (["now"], ["--dry-run", "x"]):
            self.assertEqual(self.release(*arguments).returncode, 2)


class VersionTest(unittest.TestCase):
    def test_is_in_one_place(self):
        version = re.search(r"^project\(Varno-S VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)[1]
        number = re.compile(rf"(?<![\d.]){re.escape(version)}(?![\d.])")
        places = [path.relative_to(ROOT).as_posix() for path in sorted(ROOT.rglob("*"))
                  if path.is_file() and path.suffix != ".png" and path.relative_to(ROOT).parts[0] not in ("build", ".git")
                  and number.search(path.read_text(errors="replace"))]
        self.assertEqual(places, ["CHANGELOG.md", "CMakeLists.txt"])


if __name__ == "__main__":
    unittest.main()
