"""The source of VSTGUI is fetched once per user, whole or not at all, from the first place that has it."""
import hashlib
import io
import re
import subprocess
import tarfile
import unittest

from fixture import FixtureProject

FOLDER = "varno-s/vstgui-4.13.3"
MIRRORS = ("first", "second/")
FILE = "pool/main/v/vst3sdk/vst3sdk_3.7.10.14+~4.13.3.orig-vstgui4.tar.gz"
POOL = f"first/{FILE}"


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
        # The script calls apt's helper by its full path; here a copy of the script calls another, and fetches from a
        # repository of this test.
        self.repository = self.folder / "repository"
        tree = self.make_repository()
        text = self.script.read_text()
        digest = hashlib.sha256(self.archive.read_bytes()).hexdigest()
        for pattern, value in ((r"debian_sha256=\w+", f"debian_sha256={digest}"), (r"\nupstream=.*", f"\nupstream=file://{self.repository}"),
                               (r"upstream_tree=\w+", f"upstream_tree={tree}"), ("/usr/lib/apt/apt-helper", "apt-helper")):
            text, count = re.subn(pattern, value, text)
            self.assertEqual(count, 1, pattern)
        self.script.write_text(text)
        self.command("apt-get", f"""
case " $* " in
*" indextargets "*) printf '%s\\n' {" ".join(MIRRORS)} ;;
*" update "*) grep ^URIs: "{self.cache}"/varno-s/fetch.*/apt/sources/* | sed 's/.*: //' >"{self.folder}/listed" ;;
*" --print-uris "*)
    mirror=$(cat "{self.folder}/listed")
    echo "'$mirror/elsewhere.orig-base.tar.gz' a 1 SHA256:0"
    echo "'$mirror/elsewhere.orig-vstgui4.tar.gz' b 1 SHA256:0" ;;
esac
""")
        self.there_is(POOL)

    def git(self, *arguments):
        command = ["git", "-C", self.repository, "-c", "user.name=A", "-c", "user.email=a@b", *arguments]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()

    def make_repository(self):
        """The library's own repository, with the files of the archive. Returns Git's name of them."""
        (self.repository / "vstgui").mkdir(parents=True)
        (self.repository / "vstgui/CMakeLists.txt").write_text("# a library\n")
        self.git("init", "-q")
        self.git("add", "--all")
        self.git("commit", "-q", "-m", "All")
        self.git("tag", "vstgui4_13_3")
        return self.git("rev-parse", "HEAD^{tree}")

    def there_is(self, *uris):
        """The only files that can be downloaded, each the archive."""
        self.command("apt-helper", f"""
while [[ $1 == -* || $1 == *=* ]]; do shift; done
[[ $1 == download-file ]] || exit 9
echo "$2" >>"{self.folder}/tried"
[[ " {" ".join(uris)} " == *" $2 "* ]] || exit 7
sum=$(sha256sum "{self.archive}")
[[ SHA256:${{sum%% *}} == "$4" ]] || exit 8
cp "{self.archive}" "$3"
""")

    def tried(self):
        return (self.folder / "tried").read_text().splitlines()

    def there_is_no_network(self):
        self.there_is()
        self.command("git", "echo no network >&2\nexit 1\n")

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

    def test_each_mirror_and_its_lists_are_tried_in_turn(self):
        self.there_is("second//elsewhere.orig-vstgui4.tar.gz")
        self.assertEqual(self.fetch().returncode, 0)
        self.assertTrue((self.cache / FOLDER / "vstgui/CMakeLists.txt").exists())
        self.assertEqual(self.tried(), [POOL, "first/elsewhere.orig-vstgui4.tar.gz", f"second/{FILE}",
                                        "second//elsewhere.orig-vstgui4.tar.gz"])

    def test_its_own_repository_comes_last(self):
        self.there_is()
        done = self.fetch()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual((self.cache / FOLDER / "vstgui/CMakeLists.txt").read_text(), "# a library\n")

    def test_a_tag_that_was_moved_is_refused(self):
        (self.repository / "vstgui/CMakeLists.txt").write_text("# another library\n")
        self.git("commit", "-q", "--all", "-m", "Other")
        self.git("tag", "--force", "vstgui4_13_3")
        self.there_is()
        done = self.fetch()
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertRegex(done.stderr, r"vstgui4_13_3 of .* has the files [0-9a-f]{40}, expected are [0-9a-f]{40}\n")
        self.assert_nothing_left()

    def test_a_failure_leaves_nothing_and_states_what_to_do(self):
        self.there_is_no_network()
        done = self.fetch()
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("name its folder in VSTGUI_SOURCE_DIR\n", done.stderr)
        self.assertIn("no network\n", done.stderr)
        self.assert_nothing_left()

    def test_a_damaged_archive_is_refused(self):
        self.there_is_no_network()
        self.there_is(POOL, "first/elsewhere.orig-vstgui4.tar.gz")
        self.archive.write_bytes(archive() + b"more")
        self.assertEqual(self.fetch().returncode, 1)
        self.assert_nothing_left()

    def test_the_step_fetches_into_an_empty_cache_each_time(self):
        for expected in (1, 2):
            done = self.run_script("test", "fetch")
            self.assertEqual((done.returncode, self.last_line(done)), (0, "1 passed, 0 failed"), done.stderr)
            self.assertEqual(self.tried(), [POOL] * expected)
        self.there_is_no_network()
        self.assertEqual(self.last_line(self.run_script("test", "fetch")), "0 passed, 1 failed")

    def test_does_not_fetch_where_nothing_may_be_installed(self):
        done = self.run_script("--no-install", "render")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("run: the source of VSTGUI 4.13.3 is missing", done.stderr)
        self.assert_nothing_left()


if __name__ == "__main__":
    unittest.main()
