"""./run test --hosts builds what foreign hosts load, and runs and counts each of their tests separately."""
import shutil
import unittest

from fixture import ROOT, FixtureProject

BUNDLE_CMAKE = """
add_custom_target(varno_clap_folder)
add_custom_target(Slow)
add_custom_target(varno_lv2_bundle
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lv2/varno-s.lv2)
"""

GOOD = """
import os
import pathlib
import subprocess
import unittest


class Good(unittest.TestCase):
    def test_finds_the_program(self):
        self.assertEqual(subprocess.run([os.environ["VARNO_PROGRAM"]], check=False).returncode, 3)

    def test_finds_the_bundle_and_no_other_effect(self):
        bundle, bundles = pathlib.Path(os.environ["VARNO_LV2"]), pathlib.Path(os.environ["LV2_PATH"])
        self.assertEqual((bundles / "varno-s.lv2").resolve(), bundle)
        for other in bundles.iterdir():
            self.assertTrue(other.name == "varno-s.lv2" or "lv2:Plugin" not in (other / "manifest.ttl").read_text())

    def test_sees_no_display(self):
        self.assertNotIn("DISPLAY", os.environ)
"""

BAD = """
import unittest


class Bad(unittest.TestCase):
    def test_fails(self):
        self.fail("the reason")

    def test_breaks(self):
        raise OSError("the other reason")

    @unittest.skip("not today")
    def test_skipped(self):
        pass

    @unittest.expectedFailure
    def test_fails_as_expected(self):
        self.fail()

    def test_passes(self):
        pass
"""


class HostsTest(FixtureProject):
    def setUp(self):
        super().setUp()
        # The hosts need not be installed to test the script.
        (self.root / "Scripts/packages.txt").write_text("[program]\ng++\n")
        self.write("Apps/varno/CMakeLists.txt", (self.root / "Apps/varno/CMakeLists.txt").read_text() + BUNDLE_CMAKE)
        (self.root / "Tests/ForeignHosts").mkdir()
        for name in ("run", "bundles.py"):
            shutil.copy(ROOT / "Tests/ForeignHosts" / name, self.root / "Tests/ForeignHosts" / name)

    def test_each_case_counts(self):
        self.write("Tests/ForeignHosts/good_test.py", GOOD)
        done = self.run_script("test", "--hosts")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertRegex(done.stdout, r"\Ahosts +3 passed +\d+ s\n3 passed, 0 failed\n\Z")

    def test_what_did_not_pass_has_failed(self):
        self.write("Tests/ForeignHosts/bad_test.py", BAD)
        self.write("Tests/ForeignHosts/broken_test.py", "import nowhere_to_be_found\n")
        done = self.run_script("test", "hosts")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "1 passed, 5 failed"), done.stderr)
        self.assertIn("  ./run test hosts\n", done.stdout)
        for name in ("test_fails", "test_breaks", "test_skipped", "test_fails_as_expected"):
            self.assertIn(f"\n      hosts.bad_test.Bad.{name}\n", done.stdout)
        for reason in ("the reason", "the other reason", "not today", "nowhere_to_be_found"):
            self.assertIn(reason, done.stderr)
        self.assertNotIn("test_passes", done.stdout + done.stderr)

    def test_no_test_at_all(self):
        done = self.run_script("test", "--hosts")
        self.assertEqual((done.returncode, self.last_line(done)), (1, "0 passed, 1 failed"))


if __name__ == "__main__":
    unittest.main()
