"""What ./run package takes, and the pages of HTML that it makes of the manual."""
import pathlib
import re
import subprocess
import tempfile
import unittest

from fixture import ROOT, FixtureProject


class PackageTest(FixtureProject):
    def test_explains_itself(self):
        done = self.run_script("package", "--help")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("varno-editor_*.deb", done.stdout)

    def test_every_package_is_named_where_users_look(self):
        names = set(re.findall(r"(?m)^Package: (.*)$", (ROOT / "Packaging/debian/control").read_text()))
        self.assertEqual(set(re.findall(r"(?m)^  (\S+)_\*\.deb ", self.run_script("package", "--help").stdout)), names)
        self.assertLessEqual(names, set(re.findall(r"`([\w-]+)`", (ROOT / "README.md").read_text())))
        self.assertEqual(set(re.findall(r"(?m)^\| `([\w-]+)` \| [A-Za-z]", (ROOT / "docs/packages.md").read_text())), names)

    def test_takes_no_other_arguments(self):
        for arguments in (["all"], ["--record", "x"]):
            done = self.run_script("package", *arguments)
            self.assertEqual((done.returncode, done.stderr),
                             (2, f"run: package does not take '{' '.join(arguments)}'; ./run package --help tells more\n"))

    def test_records_what_it_has_made(self):
        self.write("Scripts/packages-report", "#!/bin/sh\nprintf '<%s>' \"$@\"\n")
        (self.root / "Scripts/packages-report").chmod(0o755)
        script = 'make_packages() {{ printf made; {0}; }}; commit() {{ printf abc; }}; package_command --record'
        self.assertEqual(self.call(script.format("false")).stdout, "made")
        # What is written goes into the document alone.
        self.assertEqual(self.call(script.format("true")).stdout, "made")
        (self.root / "Scripts/packages-report").write_text("#!/bin/sh\nprintf '<%s>' \"$@\" >&2\n")
        self.assertRegex(self.call(script.format("true")).stderr,
                         rf"\A<--document><{self.root}/docs/packages\.md><--made><\d{{4}}-\d\d-\d\d, commit abc\.><{self.root}/build/packages>\Z")

    def call(self, commands, **environment):
        return subprocess.run(["bash", "-c", f'root="{self.root}"; source "$root/Scripts/console.sh"; '
                                             f'source "$root/Scripts/package.sh"; {commands}'],
                              env={**self.environment(), **environment}, capture_output=True, text=True, check=False)

    def test_files_have_the_time_of_the_release_or_of_the_last_change(self):
        self.write("CMakeLists.txt", "project(Varno-S VERSION 2.3.4 LANGUAGES CXX)\n")
        self.write("CHANGELOG.md", "## [2.3.4] - unreleased\n\n## [2.3.3] - 2020-01-01\n")
        for command in (["init", "-q"], ["add", "--all"], ["-c", "user.name=A", "-c", "user.email=a@b", "commit", "-q", "-m", "All"]):
            subprocess.run(["git", "-C", self.root, *command], env={**self.environment(), "GIT_COMMITTER_DATE": "1234567890 +0000"},
                           check=True)
        self.assertEqual(self.call("project_version; source_time").stdout, "2.3.4\n1234567890\n")
        self.write("CHANGELOG.md", "## [2.3.4] - 2026-12-01\n\n## [2.3.3] - 2020-01-01\n")
        self.assertEqual(self.call("source_time").stdout, "1796083200\n")
        self.assertEqual(self.call("source_time", SOURCE_DATE_EPOCH="5").stdout, "5\n")

    def test_nothing_is_taken_from_a_cache_of_compilations(self):
        done = self.call('need_packages() { :; }; make_debian_packages() { show debian; }; make_archive() { show archive; }; '
                         'show() { bash -c \'echo "$0 ${CCACHE_DISABLE-}"\' "$1" >&2; }; make_packages; show after', CCACHE_DISABLE="before")
        self.assertEqual(done.stderr, "debian 1\narchive 1\nafter before\n")

    def compare(self, script):
        """Compares the package that the project's ./run makes by this script in its build folder with another one."""
        self.write("run", "#!/usr/bin/env bash\ncd \"$(dirname \"$0\")\" && mkdir -p build/packages\n" + script)
        self.write("CMakeLists.txt", "project(Varno-S VERSION 2.3.4 LANGUAGES CXX)\n")
        self.write("CHANGELOG.md", "## [2.3.4] - 2026-12-01\n")
        (self.root / "run").chmod(0o755)
        subprocess.run([self.root / "run"], check=True)
        return self.call('lint() { "$@"; }; make_again_and_compare', TMPDIR=str(self.folder))

    def test_another_build_must_give_the_same_bytes(self):
        done = self.compare('echo same >build/packages/a.deb\n')
        self.assertEqual((done.returncode, done.stdout), (0, ""), done.stderr)
        self.assertEqual([path.name for path in self.folder.glob("varno-packages*")], [])
        for script in ('pwd >build/packages/a.deb\n',
                       '[[ $PWD == */project ]] || touch build/packages/b.deb\n'):
            done = self.compare(script)
            self.assertEqual(done.returncode, 1, script)
            self.assertRegex(done.stdout, "(a.deb differ|Only in .*: b.deb)\n")

    def test_another_build_has_the_time_of_the_first(self):
        done = self.compare('echo "${SOURCE_DATE_EPOCH-1796083200}" >build/packages/a.deb\n')
        self.assertEqual((done.returncode, done.stdout), (0, ""), done.stderr)

    def test_fails_where_the_other_build_fails(self):
        self.assertNotEqual(self.compare('[[ $PWD == */project ]]\n').returncode, 0)


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
