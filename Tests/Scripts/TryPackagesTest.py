"""The packages are tried in a bare release of Debian that is made anew in a folder."""
import os
import subprocess
import unittest

from debian_fixture import DebianProject
from InstallTest import AS_NOBODY

# Makes packages where the command would.
MAKING = """
[[ ${@: -1} != *"run package" ]] || {
    mkdir -p "${@: -3:1}/varno/build/packages"
    touch "${@: -3:1}/varno/build/packages/made.deb"
}
"""


class TryPackagesTest(DebianProject):
    script_name = "try-packages"
    in_the_release = MAKING

    def setUp(self):
        super().setUp()
        self.made = self.folder / "made"
        self.made.mkdir()
        for name in ("a_1.deb", "a-dbgsym_1.deb", "a.tar.xz", "a.changes"):
            (self.made / name).write_text(name)

    def test_uses_the_packages_in_a_new_system(self):
        for number, suite in (("12", "bookworm"), ("13", "trixie")):
            system = self.into / f"packages-{number}"
            for _ in range(2):  # the one of before makes room
                done, calls = self.make(number, str(self.into), str(self.made))
                self.assertEqual((done.returncode, calls),
                                 (0, [f"mmdebstrap {suite} {system} mirror",
                                      f"in {system} with {self.into}/debian-{number}-packages: /tried/use-packages /tried"]),
                                 done.stderr)
            self.assertEqual(sorted(os.listdir(system / "tried")), ["a.tar.xz", "a_1.deb", "use-packages"])
            self.assertFalse((system / "varno").exists())

    def test_makes_them_in_another_system_before_where_none_are_named(self):
        system = self.into / "packages-13"
        inside = f"in {system} with {self.into}/debian-13-packages: "
        made = f"mmdebstrap trixie {system} mirror"
        done, calls = self.make("13", str(self.into))
        self.assertEqual((done.returncode, calls),
                         (0, [made, inside + "/varno/run package", made, inside + "/tried/use-packages /tried"]), done.stderr)
        self.assertEqual(sorted(os.listdir(system / "tried")), ["made.deb", "use-packages"])
        self.assertEqual(os.listdir(self.into / "packages-13-made"), ["made.deb"])

    def test_fails_where_a_command_fails(self):
        for command, count in (("run package", 2), ("/tried", 4)):
            self.broken.write_text(command)
            done, calls = self.make("13", str(self.into))
            self.assertEqual((done.returncode, len(calls)), (3, count))

    def test_needs_root(self):
        subprocess.run(["chmod", "-R", "a+rX", self.folder], check=True)
        prefix = AS_NOBODY if os.geteuid() == 0 else []
        done = self.run_script("13", str(self.into), script=self.script, prefix=prefix)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertTrue(done.stderr.endswith("needs root, to mount and to change the root folder: sudo ./run test packages-13\n"))

    def test_wrong_usage(self):
        for arguments in ([], ["13"], ["11", str(self.into)]):
            done = self.run_script(*arguments, script=self.script)
            self.assertEqual((done.returncode, done.stdout), (2, ""))
            self.assertRegex(done.stderr, r"\Arun: usage: try-packages .* \[PACKAGES\]\n\Z")


if __name__ == "__main__":
    unittest.main()
