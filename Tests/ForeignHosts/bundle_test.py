"""What LV2's own tools report about the bundle."""
import re

from hosts import BUNDLE, PARAMETERS, PLUGINS, HostTest, symbol


class BundleTest(HostTest):
    def test_lv2_validate_finds_no_error(self):
        files = sorted(str(path) for path in BUNDLE.rglob("*.ttl"))
        self.assertGreaterEqual(len(files), 2)
        text = self.run_program("lv2_validate", *files)
        self.assertRegex(text, r"Found 0 errors among \d+ files")

    def test_lv2ls_lists_both_and_nothing_else(self):
        self.assertEqual(sorted(self.run_program("lv2ls").split()), sorted(PLUGINS.values()))

    def test_lv2info_shows_ports_latency_and_presets(self):
        for uri in PLUGINS.values():
            text = self.run_program("lv2info", uri)
            for name in PARAMETERS:
                self.assertRegex(text, rf"Symbol: +{symbol(name)}\n")
            self.assertRegex(text, r"Has latency: +yes, reported by port \d+\n")
            presets = text.split("Presets:")[1].split("\n\n")[0].strip().splitlines()
            self.assertGreaterEqual(len(presets), 12, presets)

    def test_lv2bench_measures_both(self):
        # Its input is silence, in one buffer for left and right.
        for uri in PLUGINS.values():
            self.assertRegex(self.run_program("lv2bench", "-b", "512", "-n", "480000", uri), r"\d+\.\d+ ")


class ValgrindTest(HostTest):
    """valgrind over lv2apply: not one error, of reading, writing, undefined values or memory lost, that has the bundle
    among its callers."""

    def check(self, channels):
        source = self.short_stimulus(channels)
        self.run_program("valgrind", "--leak-check=full", "--keep-debuginfo=yes", "--num-callers=40", "--xml=yes",
                         f"--xml-file={self.path('found.xml')}", "lv2apply", "-i", source, "-o", self.path("out.wav"),
                         "-c", "hot", "0.5", PLUGINS[channels], timeout_s=1200)
        found = (self.folder / "found.xml").read_text()
        self.assertIn("<state>FINISHED</state>", found)
        errors = [error for error in found.split("<error>")[1:] if BUNDLE.name in error]
        self.assertEqual([re.findall(r"<(?:kind|text|fn)>(.*)</", error) for error in errors], [])

    def test_mono(self):
        self.check(1)

    def test_stereo(self):
        self.check(2)
