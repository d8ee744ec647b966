"""./run install-lv2 puts the LV2 bundle where hosts look for it."""
import pathlib
import unittest

from fixture import FixtureProject

BUNDLE = """
file(WRITE ${CMAKE_BINARY_DIR}/lv2/varno-s.lv2/manifest.ttl "new")
add_custom_target(varno_lv2_bundle)
"""


class InstallLv2Test(FixtureProject):
    def setUp(self):
        super().setUp()
        with open(self.root / "Apps/varno/CMakeLists.txt", "a", encoding="utf-8") as file:
            file.write(BUNDLE)

    def assert_installed(self, done, folder):
        bundle = pathlib.Path(folder) / "varno-s.lv2"
        self.assertEqual((done.returncode, done.stdout), (0, f"{bundle}\n"), done.stderr)
        self.assertEqual((bundle / "manifest.ttl").read_text(), "new")
        self.assertEqual([entry.name for entry in bundle.parent.iterdir()], ["varno-s.lv2"], "nothing else is left")

    def test_into_a_folder_that_is_made(self):
        self.assert_installed(self.run_script("install-lv2", str(self.folder / "a b/lv2")), self.folder / "a b/lv2")

    def test_into_the_users_own_folder(self):
        done = self.run_script("install-lv2", prefix=["env", f"HOME={self.folder}"])
        self.assert_installed(done, self.folder / ".lv2")

    def test_an_old_bundle_is_replaced_whole(self):
        old = self.folder / "lv2/varno-s.lv2"
        old.mkdir(parents=True)
        (old / "gone.ttl").write_text("old")
        self.assert_installed(self.run_script("install-lv2", str(self.folder / "lv2")), self.folder / "lv2")
        self.assertFalse((old / "gone.ttl").exists())

    def test_a_file_in_the_way_is_reported(self):
        (self.folder / "file").write_text("")
        done = self.run_script("install-lv2", str(self.folder / "file"))
        self.assertEqual(done.returncode, 1)
        self.assertIn(str(self.folder / "file"), done.stderr)

    def test_wrong_usage(self):
        for arguments in (["a", "b"], ["--force"], [""]):
            done = self.run_script("install-lv2", *arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertIn("install-lv2 takes one folder", done.stderr)


if __name__ == "__main__":
    unittest.main()
