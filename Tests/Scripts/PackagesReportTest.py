"""The tables of the packages: what each depends on, and the size and the libraries of every binary."""
import pathlib
import re
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BEGIN, END = (f"<!-- {place} this line: written by ./run package --record. -->\n" for place in ("Below", "Above"))
# Compiled without the start-up files, so that it names this library alone.
PROGRAM = "#include <math.h>\ndouble value(double x) { return cos(x); }\n"


class PackagesReportTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.made = self.folder / "made"
        self.made.mkdir()

    def package(self, name, version="2.3.4+deb12", relations="", files=()):
        """A package of these files, path -> bytes."""
        tree = self.folder / name
        (tree / "DEBIAN").mkdir(parents=True)
        (tree / "DEBIAN/control").write_text(f"Package: {name}\nVersion: {version}\nArchitecture: all\nMaintainer: A <a@b>\n"
                                             f"Installed-Size: 1234\n{relations}Description: a\n Depends: no field\n")
        for path, content in dict(files).items():
            (tree / path).parent.mkdir(parents=True, exist_ok=True)
            (tree / path).write_bytes(content)
        subprocess.run(["dpkg-deb", "--root-owner-group", "--build", tree, self.made / f"{name}_1.deb"], check=True,
                       capture_output=True)

    def library(self):
        (self.folder / "a.c").write_text(PROGRAM)
        subprocess.run(["gcc", "-shared", "-fPIC", "-nostdlib", "-Wl,--no-as-needed", "-o", self.folder / "a.so",
                        self.folder / "a.c", "-lm"], check=True)
        return (self.folder / "a.so").read_bytes()

    def report(self, *arguments):
        return subprocess.run([ROOT / "Scripts/packages-report", *arguments, self.made], capture_output=True, text=True, check=False)

    def test_packages_with_what_they_need(self):
        self.package("alone")
        self.package("more", relations="Depends: alone (= 2.3.4+deb12), libc6 (>= 2.34)\nRecommends: x | y\n")
        self.package("more-dbgsym")
        done = self.report()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertRegex(done.stdout, r"\n\| `alone` \| \d+ \| 1,234 \| - \| - \|\n"
                                      r"\| `more` \| \d+ \| 1,234 \| alone \(same version\), libc6 \(>= 2.34\) \| x or y \|\n\n")
        self.assertNotIn("dbgsym", done.stdout)

    def test_binaries_with_size_and_libraries(self):
        library = self.library()
        padded = library + bytes(10240 * 1024)  # sizes of more than three digits
        self.package("plugin", files={"usr/lib/a.so": library, "usr/lib/b.so": padded, "usr/share/text": b"ELF"})
        rows = re.findall(r"(?m)^\| `(/.*)` \| `plugin` \| (.*) \| (.*) \|$", self.report().stdout)
        size = f"{len(library) / 1024:,.0f}"
        self.assertEqual(rows, [("/usr/lib/a.so", size, "libm.so.6"), ("/usr/lib/b.so", f"{10240 + round(len(library) / 1024):,}", "libm.so.6")])

    def test_goes_into_the_document_as_the_section_of_its_release(self):
        document = self.folder / "packages.md"
        document.write_text(f"# Packages\n\n{BEGIN}\n### Debian 12\n\nold\n\n### Debian 13\n\nkept\n\n{END}\nEnd.\n")
        self.package("alone")
        done = self.report("--document", document, "--made", "Made today.")
        self.assertEqual(document.read_text(), f"# Packages\n\n{BEGIN}\n### Debian 12\n\nMade today.\n\n{done.stdout}"
                                               f"\n### Debian 13\n\nkept\n\n{END}\nEnd.\n")

    def test_refuses_no_packages_and_those_of_two_releases(self):
        done = self.report()
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertEqual(done.stderr, f"{self.made}: expected packages of one release, found those of 0\n")
        self.package("one")
        self.package("other", version="2.3.4+deb13")
        self.assertIn("found those of 2\n", self.report().stderr)


if __name__ == "__main__":
    unittest.main()
