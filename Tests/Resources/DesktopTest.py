"""The program's entry in menus and its description for software centres are what desktops expect."""
import configparser
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["VARNO_BUILD"])
ID = "com.morvak.varno_s"
ENTRY = ROOT / f"Resources/Desktop/{ID}.desktop"
DESCRIPTION = BUILD / f"Resources/Desktop/{ID}.metainfo.xml"


def output(*command):
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    return done.returncode, done.stdout + done.stderr


class DesktopTest(unittest.TestCase):
    def groups(self):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(ENTRY)
        return parser

    def test_the_entry_is_valid(self):
        self.assertEqual(output("desktop-file-validate", ENTRY), (0, ""))

    def test_the_description_is_valid(self):
        status, said = output("appstreamcli", "validate", "--no-net", "--pedantic", DESCRIPTION)
        self.assertEqual(status, 0, said)
        self.assertNotIn("W:", said)

    def test_damaged_ones_are_not(self):
        with tempfile.TemporaryDirectory() as folder:
            for file, text, judge in ((ENTRY, "Type=Application", ("desktop-file-validate",)),
                                      (DESCRIPTION, "<summary>", ("appstreamcli", "validate", "--no-net"))):
                damaged = pathlib.Path(folder, file.name)
                damaged.write_text(file.read_text().replace(text, text.replace("a", "")))
                self.assertNotEqual(output(*judge, damaged)[0], 0, file.name)

    def test_it_starts_commands_that_exist(self):
        groups = self.groups()
        lines = [group["Exec"] for name, group in groups.items() if "Exec" in group]
        self.assertEqual(lines, ["varno edit %f", "varno play"])
        for line in lines:
            command = line.split()[1]
            self.assertEqual(output(BUILD / "Apps/varno/varno", command, "--help")[0], 0, command)

    def test_it_is_installed_with_its_icons(self):
        folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, folder)
        # This folder's part of an installation.
        status, said = output("cmake", f"-DCMAKE_INSTALL_PREFIX={folder}", "-P",
                              BUILD / "Resources/Desktop/cmake_install.cmake")
        self.assertEqual(status, 0, said)
        self.assertTrue((folder / f"share/applications/{ID}.desktop").exists())
        self.assertTrue((folder / f"share/metainfo/{ID}.metainfo.xml").exists())
        icon = self.groups()["Desktop Entry"]["Icon"]
        for size in (16, 32, 48, 64, 128, 256):
            data = (folder / f"share/icons/hicolor/{size}x{size}/apps/{icon}.png").read_bytes()
            # The header of a PNG begins with width and height.
            self.assertEqual(data[16:24], 2 * size.to_bytes(4, "big"))


if __name__ == "__main__":
    unittest.main()
