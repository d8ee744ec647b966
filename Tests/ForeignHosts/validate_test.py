"""varno validate on other people's LV2 bundles: it comes to a judgement about each, whatever they do, and finds in those
of Debian 12 what docs/validate.md states of them."""
import json
import os
import pathlib
import subprocess

from hosts import PROGRAM, HostTest

BUNDLES = pathlib.Path("/usr/lib/lv2")
FAULTS = {
    "balance": set(),
    "stereoroute": set(),
    "xfade": set(),
    "nodelay": set(),
    "dpl": {"life-recycling"},
    "darc": {"life-recycling", "description-unique"},
    "ZamComp": {"binary-symbols", "binary-reloading", "audio-float-mode"},
    "ZamGateX2": {"binary-symbols", "binary-reloading", "audio-float-mode"},
    "ZamEQ2": {"binary-symbols", "binary-reloading", "audio-float-mode", "audio-rates"},
    "ZamDelay": {"binary-symbols", "binary-reloading", "audio-float-mode", "audio-rates"},
    "ZamTube": {"binary-symbols", "binary-reloading", "audio-float-mode", "audio-bad-samples"},
}
CALF = "http://calf.sourceforge.net/plugins/"
LSP = "http://lsp-plug.in/plugins/lv2/"
# Of bundles with very many.
PLUGINS = {
    ("calf", CALF + "Compressor"): {"binary-symbols"},
    ("calf", CALF + "Saturator"): {"binary-symbols", "audio-rates", "audio-automation"},
    ("lsp-plugins", LSP + "compressor_stereo"): {"life-recycling"},
    ("lsp-plugins", LSP + "gate_mono"): {"life-recycling"},
}
# Other versions may have other faults.
VERSIONS = {"x42-plugins": "20221119-1", "zam-plugins": "4.1+ds-1", "calf-plugins": "0.90.3-4",
            "lsp-plugins-lv2": "1.2.5-1"}


def version_of(package):
    return subprocess.run(["dpkg-query", "--show", "--showformat=${Version}", package], stdout=subprocess.PIPE, text=True,
                          check=True).stdout


class ValidateTest(HostTest):
    def judge(self, name, faults, *options):
        is_known = all(version_of(package) == version for package, version in VERSIONS.items())
        # Without the X servers that it would start: editors that draw with OpenGL take minutes without its hardware.
        done = subprocess.run([PROGRAM, "validate", "--json", *options, BUNDLES / f"{name}.lv2"], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, check=False, env={**os.environ, "PATH": "/nonexistent"})
        self.assertEqual(done.stderr, "")
        report = json.loads(done.stdout)
        failed = {check["id"] for check in report["checks"] if check["verdict"] == "FAIL"}
        self.assertEqual((report["judgement"], done.returncode), ("failed", 1) if failed else ("passed", 0))
        self.assertGreaterEqual(report["passed"] + report["failed"], 30)
        if is_known:
            self.assertEqual(failed, faults)

    def test_judges_the_bundles_of_others(self):
        for name, faults in FAULTS.items():
            with self.subTest(name):
                self.judge(name, faults)

    def test_judges_single_plugins_of_large_bundles(self):
        for (name, plugin), faults in PLUGINS.items():
            with self.subTest(plugin):
                self.judge(name, faults, "--plugin", plugin)
