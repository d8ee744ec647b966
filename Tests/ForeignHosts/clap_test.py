"""What qtractor's own scanner finds in the CLAP binary: it makes each plug-in and asks for its ports and parameters."""
import os

from hosts import HostTest

SCANNER = "/usr/lib/x86_64-linux-gnu/qtractor/qtractor_plugin_scan"
BINARY = os.environ["VARNO_CLAP"]


class QtractorScanTest(HostTest):
    def scan(self, path):
        self.assertNotIn("'", path)
        return self.run_program("sh", "-c", f"echo 'CLAP:{path}' | QT_QPA_PLATFORM=offscreen {SCANNER}").splitlines()

    def test_describes_both_plugins(self):
        found = [line.split("|") for line in self.scan(BINARY) if line.startswith("CLAP|")]
        # Name, audio, MIDI and control ports of either direction; then what it offers, file and place in it.
        self.assertEqual([row[1:5] for row in found],
                         [["Varno-S Mono", "1:1", "0:0", "15:0"], ["Varno-S Stereo", "2:2", "0:0", "15:0"]])
        self.assertEqual([row[6:8] for row in found], [[BINARY, "0"], [BINARY, "1"]])
        for row in found:
            # A window, a state of its own, and real time.
            self.assertEqual(row[5].split(","), ["GUI", "EXT", "RT"])

    def test_finds_nothing_in_another_binary(self):
        self.assertEqual([line for line in self.scan(SCANNER) if line.startswith("CLAP|")], [])
