"""The commands of docs/hosts.md and of the README, as they stand there."""
import pathlib
import re
import shutil
import subprocess

from hosts import BUNDLE, HostTest, read_wav
from jack import JackTest

ROOT = pathlib.Path(__file__).resolve().parents[2]
# The settings of all commands there.
SETTINGS = {"Hot": 0.4, "Ratio": 1}
# The error of a host that writes 24 bits, or 16.
STEP_24, STEP_16 = 2.0 ** -23, 2.0 ** -15
# GStreamer's dither, in steps of what it writes.
DITHER = 2
# Those that other tests run: the installers, and jalv at its prompt.
TRIED_ELSEWHERE = ("./run", "jalv")


def commands(document):
    """The commands in its indented lines, by the program's name."""
    lines = re.findall(r"(?m)^    (\S.*)$", (ROOT / document).read_text())
    return {re.sub(r"^(\w+=\S+ )+", "", line).split()[0]: line for line in lines}


class DocumentedCommands(HostTest):
    def setUp(self):
        super().setUp()
        self.commands = commands("docs/hosts.md")

    def check(self, line, step=0.0):
        shutil.copy(self.stimulus(2), self.path("in.wav"))
        self.run_program("bash", "-c", line, environment={"GST_REGISTRY": self.path("registry.bin"),
                                                          "GST_REGISTRY_FORK": "no", "HOME": self.path(".")})
        self.assert_same(read_wav(self.path("out.wav")), self.rendered(self.path("in.wav"), SETTINGS), step)

    def test_ffmpeg(self):
        self.check(self.commands["ffmpeg"], STEP_24)

    def test_gstreamer(self):
        self.check(self.commands["gst-launch-1.0"], DITHER * STEP_24)

    def test_lv2apply(self):
        self.check(self.commands["lv2apply"])

    def test_lv2file(self):
        self.check(self.commands["lv2file"])

    def test_ecasound(self):
        self.check(self.commands["ecasound"], STEP_16)

    def test_readme(self):
        # It names the bundle that a user builds; the tests have theirs elsewhere.
        self.check(commands("README.md")["lv2apply"].replace("$PWD/build/program/lv2", str(BUNDLE.parent)))

    def test_no_other_is_documented(self):
        self.assertEqual(set(self.commands),
                         {"ffmpeg", "gst-launch-1.0", "lv2apply", "lv2file", "ecasound", *TRIED_ELSEWHERE})


class DocumentedJalv(JackTest):
    def test_plays(self):
        self.start_server()
        jalv = self.start("bash", "-c", f"exec {commands('docs/hosts.md')['jalv']}", environment=self.jack,
                          log="jalv.log", stdin=subprocess.PIPE)  # at whose end jalv ends
        self.addCleanup(jalv.stdin.close)
        self.eventually(lambda: "out_l" in (self.list_ports() or ""), "its ports")
