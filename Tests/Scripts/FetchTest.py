"""The source of VSTGUI is fetched once per user, whole or not at all, from the first place that has it."""
import hashlib
import io
import re
import tarfile
import unittest

from fixture import FixtureProject

FOLDER = "varno-s/vstgui-4.13.3"


def archive():
    """A source package's component in miniature."""
    data = io.BytesIO()
    with tarfile.open(fileobj=data, mode="w:gz") as tar:
        text = b"# a library\n"
        info = tarfile.TarInfo("vst3sdk/vstgui/CMakeLists.txt")
        info.size = len(text)
        tar.addfile(info, io.BytesIO(text))
    return data.getvalue()


class FetchTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.cache = self.folder / "cache"
        self.script = self.root / "Scripts/fetch-vstgui"
        self.archive = self.folder / "archive.tar.gz"
        self.archive.write_bytes(archive())
        # The script calls apt's helper by its full path; here a copy of the script calls another.
        text = self.script.read_text()
        digest = hashlib.sha256(self.archive.read_bytes()).hexdigest()
        text = re.sub(r"debian_sha256=\w+", f"debian_sha256={digest}", text)
        text = text.replace("/usr/lib/apt/apt-helper", "apt-helper")
        self.script.write_text(text)
        self.command("apt-get", """
case " $* " in
*" indextargets "*) echo mirror ;;
*" --print-uris "*) echo "'mirror/vst3sdk.orig-base.tar.gz' a 1 SHA256:0"; echo "'mirror/vst3sdk.orig-vstgui4.tar.gz' b 1 SHA256:0" ;;
esac
""")
        self.helper_works()
        self.command("git", "echo no network >&2\nexit 1\n")

    def helper_works(self):
        self.command("apt-helper", f"""
while [[ $1 == -* || $1 == *=* ]]; do shift; done
[[ $1 == download-file && $2 == mirror/vst3sdk.orig-vstgui4.tar.gz ]] || exit 9
sum=$(sha256sum "{self.archive}")
[[ SHA256:${{sum%% *}} == "$4" ]] || exit 8
cp "{self.archive}" "$3"
""")

    def environment(self):
        changed = super().environment()
        del changed["VSTGUI_SOURCE_DIR"]
        return {**changed, "XDG_CACHE_HOME": str(self.cache)}

    def fetch(self, *arguments):
        return self.run_script(*arguments, script=self.script)

    def assert_nothing_left(self):
        self.assertEqual(list((self.cache / "varno-s").iterdir()) if (self.cache / "varno-s").exists() else [], [])

    def test_fetches_once(self):
        done = self.fetch()
        self.assertEqual((done.returncode, done.stdout), (0, f"{self.cache / FOLDER}\n"), done.stderr)
        self.assertEqual(done.stderr, "run: fetching VSTGUI 4.13.3\n")
        self.assertTrue((self.cache / FOLDER / "vstgui/CMakeLists.txt").exists())
        self.assertEqual([path.name for path in (self.cache / "varno-s").iterdir()], ["vstgui-4.13.3"])
        self.command("apt-helper", "exit 1\n")
        again = self.fetch()
        self.assertEqual((again.returncode, again.stdout, again.stderr), (0, done.stdout, ""))

    def test_another_place_is_tried(self):
        self.command("apt-helper", "exit 1\n")
        self.command("git", 'mkdir -p "${@: -1}/vstgui" && : >"${@: -1}/vstgui/CMakeLists.txt"\n')
        self.assertEqual(self.fetch().returncode, 0)
        self.assertTrue((self.cache / FOLDER / "vstgui/CMakeLists.txt").exists())

    def test_a_failure_leaves_nothing_and_states_what_to_do(self):
        self.command("apt-helper", "exit 1\n")
        done = self.fetch()
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("name its folder in VSTGUI_SOURCE_DIR\n", done.stderr)
        self.assertIn("no network\n", done.stderr)
        self.assert_nothing_left()

    def test_a_damaged_archive_is_refused(self):
        self.archive.write_bytes(archive() + b"more")
        self.assertEqual(self.fetch().returncode, 1)
        self.assert_nothing_left()

    def test_does_not_fetch_where_nothing_may_be_installed(self):
        done = self.run_script("--no-install", "render")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("run: the source of VSTGUI 4.13.3 is missing", done.stderr)
        self.assert_nothing_left()


if __name__ == "__main__":
    unittest.main()
