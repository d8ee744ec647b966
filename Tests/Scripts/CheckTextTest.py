"""check-text reports what no file may contain, each with its place, and accepts what only resembles it."""
import pathlib
import subprocess
import tempfile
import unittest

from fixture import ROOT


class CheckTextTest(unittest.TestCase):
    def check(self, content, name="file.txt"):
        with tempfile.TemporaryDirectory(prefix="varno-text-") as folder:
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content if isinstance(content, bytes) else content.encode())
            done = subprocess.run([ROOT / "Scripts/check-text", folder], capture_output=True, text=True, check=False)
        self.assertEqual(done.stderr, "")
        self.assertEqual(done.returncode, 1 if done.stdout else 0)
        return done.stdout

    def assert_found(self, content, line, what):
        self.assertEqual(self.check(content), f"file.txt:{line}: {what}\n")

    # The words are composed here, since this file is checked too.
    def test_paths_of_a_machine(self):
        for path in ("/wo" + "rk/x", "/ro" + "ot/x", "/ho" + "me/ann/x", "/tm" + "p/x", "/Us" + "ers/ann", "C:\\Us" + "ers\\a"):
            self.assert_found(f"first\nopen(\"{path}\");\n", 2, "a path of one machine")
        self.assert_found("cd /ro" + "ot\n", 1, "a path of one machine")

    def test_registry_hosts(self):
        for host in ("deb.deb" + "ian.org", "py" + "pi.org", "files.python" + "hosted.org", "registry.npm" + "js.org",
                     "cra" + "tes.io", "pro" + "xy.golang.org", "archive.ubu" + "ntu.com"):
            self.assert_found(f"see https://{host}/simple\n", 1, "a host of a package registry")

    def test_left_overs(self):
        for word in ("TO" + "DO", "FIX" + "ME", "XX" + "X", "HA" + "CK"):
            self.assert_found(f"x = 1 // {word} later\n", 1, "a left-over: do it or leave it out")

    def test_switched_off_tests(self):
        for word in ("GTEST" + "_SKIP() << 1;", "TEST(A, DISABLED" + "_b) {"):
            self.assert_found(word + "\n", 1, "a test that is switched off")

    def test_line_ends(self):
        self.assert_found("one\r\n", 1, "a carriage return")
        self.assert_found("one\ntwo \n", 2, "blanks at the end of a line")
        self.assert_found("one", 1, "does not end with one line feed")
        self.assert_found("one\n\n", 3, "does not end with one line feed")

    def test_what_is_no_source(self):
        self.assert_found(b"\x7fELF\0\0\n", 1, "is a binary (generate it in the build)")
        self.assert_found("caf\xe9\n".encode("latin-1"), 1, "is not UTF-8")
        self.assertRegex(self.check("x\n" * 200_000), r"^file.txt:1: has 400000 bytes; ")

    def test_pictures_of_the_documents(self):
        picture = b"\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR"
        self.assertEqual(self.check(picture.ljust(150 * 1024, b"\0"), "docs/pictures/editor.png"), "")
        self.assertEqual(self.check(picture.ljust(150 * 1024 + 1, b"\0"), "docs/pictures/editor.png"),
                         "docs/pictures/editor.png:1: has 153601 bytes; 153600 is the most for a picture\n")
        for name in ("docs/editor.png", "docs/pictures/old/editor.png", "docs/pictures/editor.bin", "pictures/editor.png"):
            self.assertEqual(self.check(picture, name), f"{name}:1: is a binary (generate it in the build)\n")
        self.assertEqual(self.check(b"\x7fELF\0\0\n", "docs/pictures/editor.png"),
                         "docs/pictures/editor.png:1: is a binary (generate it in the build)\n")

    def test_passes_what_is_right(self):
        for content in ("", "docs/tmp/x and ${HOME}/x\n", "https://example.org/home/page\n", "/usr/share /dev/full\n",
                        "hackers, todos, XXXL\n", "Gr\u00fc\u00dfe\n", "/homework\n", "TMPDIR, else /tmp\n", "a build/release/tmp/ folder\n"):
            self.assertEqual(self.check(content), "")

    def test_a_checkout_is_seen_as_git_sees_it(self):
        with tempfile.TemporaryDirectory(prefix="varno-text-") as folder:
            root = pathlib.Path(folder)
            subprocess.run(["git", "init", "-q", folder], check=True)
            (root / ".gitignore").write_text("/build/\n")
            (root / "build").mkdir()
            (root / "build/ignored").write_text("no line feed")
            (root / "new").write_text("no line feed")
            done = subprocess.run([ROOT / "Scripts/check-text", folder], capture_output=True, text=True, check=False)
        self.assertEqual(done.stdout, "new:1: does not end with one line feed\n")


if __name__ == "__main__":
    unittest.main()
