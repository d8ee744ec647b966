"""Another release of Debian is made anew in a folder and tried there, and what it fetched is kept."""
import os
import subprocess
import unittest

from debian_fixture import DebianProject
from InstallTest import AS_NOBODY


class MakeDebianTest(DebianProject):
    script_name = "make-debian"

    def test_renders_and_passes_the_quick_tests_in_a_new_system(self):
        (self.root / "build").mkdir()
        for number, suite in (("12", "bookworm"), ("13", "trixie")):
            system = self.into / f"debian-{number}"
            inside = f"in {system} with {system}-packages: /varno/run "
            for _ in range(2):  # the one of before makes room
                done, calls = self.make(number, str(self.into))
                self.assertEqual((done.returncode, calls),
                                 (0, [f"mmdebstrap {suite} {system} mirror", inside + "render", inside + "test --quick"]), done.stderr)
            self.assertTrue((system / "varno/run").exists())
            self.assertFalse((system / "varno/build").exists())
            self.assertTrue((self.into / f"debian-{number}-packages").is_dir())

    def test_fails_where_a_command_fails(self):
        for command, count in (("render", 2), ("--quick", 3)):
            self.broken.write_text(command)
            done, calls = self.make("13", str(self.into))
            self.assertEqual((done.returncode, len(calls)), (3, count))

    def test_needs_root(self):
        subprocess.run(["chmod", "-R", "a+rX", self.folder], check=True)
        prefix = AS_NOBODY if os.geteuid() == 0 else []
        done = self.run_script("13", str(self.into), script=self.script, prefix=prefix)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertEqual(done.stderr, "run: making Debian 13 in a folder needs root, to mount and to change the root folder: "
                                      "sudo ./run test debian-13\n")

    def test_wrong_usage(self):
        for arguments in ([], ["13"], ["11", str(self.into)]):
            done = self.run_script(*arguments, script=self.script)
            self.assertEqual((done.returncode, done.stdout), (2, ""))
            self.assertRegex(done.stderr, r"\Arun: usage: make-debian .* FOLDER\n\Z")


if __name__ == "__main__":
    unittest.main()
