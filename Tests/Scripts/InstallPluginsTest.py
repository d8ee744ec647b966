"""./run install-lv2 and ./run install-clap put the plug-ins where hosts look for them."""
import pathlib
import unittest

from fixture import FixtureProject

BUILT = """
file(WRITE ${CMAKE_BINARY_DIR}/lv2/varno-s.lv2/manifest.ttl "new LV2")
add_custom_target(varno_lv2_bundle COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/lv2/varno-s.lv2/built)
file(WRITE ${CMAKE_BINARY_DIR}/clap/varno-s/varno-s.clap "new CLAP")
add_custom_target(varno_clap_folder COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/clap/varno-s/built)
"""


class Format:
    def __init__(self, command, user_folder, plugins, file, text):
        self.command, self.user_folder, self.plugins, self.file, self.text = command, user_folder, plugins, file, text


FORMATS = (Format("install-lv2", ".lv2", "varno-s.lv2", "manifest.ttl", "new LV2"),
           Format("install-clap", ".clap", "varno-s", "varno-s.clap", "new CLAP"))


class InstallPluginsTest(FixtureProject):
    def setUp(self):
        super().setUp()
        with open(self.root / "Apps/varno/CMakeLists.txt", "a", encoding="utf-8") as file:
            file.write(BUILT)

    def for_each_format(self):
        for each in FORMATS:
            with self.subTest(each.command):
                yield each

    def assert_installed(self, each, done, folder):
        plugins = pathlib.Path(folder) / each.plugins
        self.assertEqual((done.returncode, done.stdout), (0, f"{plugins}\n"), done.stderr)
        self.assertEqual((plugins / each.file).read_text(), each.text)
        self.assertEqual(sorted(entry.name for entry in plugins.iterdir()), ["built", each.file], "built before it is copied")
        self.assertEqual([entry.name for entry in plugins.parent.iterdir()], [each.plugins], "nothing else is left")

    def test_into_a_folder_that_is_made(self):
        for each in self.for_each_format():
            folder = self.folder / "a b" / each.command
            self.assert_installed(each, self.run_script(each.command, str(folder)), folder)

    def test_into_the_users_own_folder(self):
        for each in self.for_each_format():
            done = self.run_script(each.command, prefix=["env", f"HOME={self.folder}"])
            self.assert_installed(each, done, self.folder / each.user_folder)

    def test_an_old_one_is_replaced_whole(self):
        for each in self.for_each_format():
            folder = self.folder / each.command
            old = folder / each.plugins
            old.mkdir(parents=True)
            (old / "gone").write_text("old")
            self.assert_installed(each, self.run_script(each.command, str(folder)), folder)

    def test_a_file_in_the_way_is_reported(self):
        (self.folder / "file").write_text("")
        for each in self.for_each_format():
            done = self.run_script(each.command, str(self.folder / "file"))
            self.assertEqual(done.returncode, 1)
            self.assertIn(str(self.folder / "file"), done.stderr)

    def test_where_nothing_was_built_the_old_one_remains(self):
        for each in self.for_each_format():
            folder = self.folder / each.command
            (folder / each.plugins).mkdir(parents=True)
            (folder / each.plugins / each.file).write_text("old")
            self.command("cp", "exit 1\n")
            done = self.run_script(each.command, str(folder))
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertIn(f"run: {folder / each.plugins} could not be written\n", done.stderr)
            self.assertEqual((folder / each.plugins / each.file).read_text(), "old")
            self.assertEqual([entry.name for entry in folder.iterdir()], [each.plugins])
            (self.commands / "cp").unlink()

    def test_explains_itself(self):
        for each in self.for_each_format():
            done = self.run_script(each.command, "--help")
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertTrue(done.stdout.startswith(f"usage: ./run {each.command} [FOLDER]\n"))
            self.assertIn(f"by default ~/{each.user_folder},", done.stdout)
            self.assertIn(f"delete FOLDER/{each.plugins}.", done.stdout.replace("\n", " "))
            self.assertIn(f"  {each.command} ", self.run_script("help").stdout)

    def test_wrong_usage(self):
        for each in self.for_each_format():
            for arguments in (["a", "b"], ["--force"], [""]):
                done = self.run_script(each.command, *arguments)
                self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
                self.assertIn(f"{each.command} takes one folder", done.stderr)


if __name__ == "__main__":
    unittest.main()
