"""What ./run package takes, and the pages of HTML that it makes of the manual."""
import pathlib
import subprocess
import tempfile
import unittest

from fixture import ROOT, FixtureProject


class PackageTest(FixtureProject):
    def test_explains_itself(self):
        done = self.run_script("package", "--help")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("varno-editor_*.deb", done.stdout)

    def test_takes_no_arguments(self):
        done = self.run_script("package", "all")
        self.assertEqual((done.returncode, done.stderr),
                         (2, "run: package takes no arguments; ./run package --help tells more\n"))

    def test_has_the_version_of_the_project_and_the_time_of_its_sources(self):
        done = subprocess.run(["bash", "-c", f'root="{ROOT}"; source "$root/Scripts/package.sh"; project_version; source_time'],
                              capture_output=True, text=True, check=True)
        version, time = done.stdout.split()
        self.assertIn(f"project(Varno-S VERSION {version} ", (ROOT / "CMakeLists.txt").read_text())
        self.assertGreater(int(time), 1_700_000_000)


class ManualHtmlTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.docs, self.pages = pathlib.Path(folder.name, "docs"), pathlib.Path(folder.name, "html")
        (self.docs / "pictures").mkdir(parents=True)
        for picture in ("shown", "linked", "other"):
            (self.docs / f"pictures/{picture}.png").write_text(picture)
        (self.docs / "manual.md").write_text("# The manual\n\n![A](pictures/shown.png) [B](pictures/linked.png)\n\n"
                                             "[presets](presets.md#mine)\n\n| a | b |\n|---|---|\n| 1 | <2> |\n")
        (self.docs / "presets.md").write_text("## Mine\n\n[back](manual.md)\n")

    def make(self):
        return subprocess.run([ROOT / "Scripts/manual-html", self.docs, self.pages], capture_output=True, text=True, check=False)

    def test_makes_pages_that_lead_to_each_other(self):
        done = self.make()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        manual = (self.pages / "manual.html").read_text()
        self.assertIn('<h1 id="the-manual">The manual</h1>', manual)
        self.assertIn('href="presets.html#mine"', manual)
        self.assertIn("<td>1</td>", manual)
        presets = (self.pages / "presets.html").read_text()
        self.assertIn('id="mine"', presets)
        self.assertIn('href="manual.html"', presets)

    def test_brings_the_pictures_that_are_used(self):
        self.make()
        self.assertEqual(sorted(picture.name for picture in (self.pages / "pictures").iterdir()), ["linked.png", "shown.png"])

    def test_fails_without_a_picture(self):
        (self.docs / "pictures/shown.png").unlink()
        done = self.make()
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("shown.png", done.stderr)


if __name__ == "__main__":
    unittest.main()
