"""GStreamer: an element per plug-in. It ignores the defaults of switches, so enabled=true must be stated."""
import re

from hosts import PLUGINS, HostTest, SameSamples, symbol


def element(channels):
    return re.sub(r"[^a-z0-9]+", "-", PLUGINS[channels])


class GstreamerTest(SameSamples, HostTest):
    def setUp(self):
        super().setUp()
        # A list of elements of its own: the user's may be older than the bundle.
        self.environment = {"GST_REGISTRY": self.path("registry.bin"), "HOME": self.path("."),
                            "GST_REGISTRY_FORK": "no"}

    def process(self, channels, settings, source, result):
        controls = [f"{symbol(name)}={'true' if value == 1 and is_switch(name) else value}"
                    for name, value in settings.items()]
        self.run_program("gst-launch-1.0", "-q", "filesrc", f"location={source}", "!", "wavparse", "!", "audioconvert", "!",
                         element(channels), "enabled=true", *controls, "!", "audioconvert", "!",
                         "audio/x-raw,format=F32LE", "!", "wavenc", "!", "filesink", f"location={result}",
                         environment=self.environment)

    def test_shows_the_controls(self):
        text = self.run_program("gst-inspect-1.0", element(2), environment=self.environment)
        for port in ("gain", "hot", "linksw", "enabled"):
            self.assertRegex(text, rf"\n  {port} +: ")


def is_switch(name):
    return name in ("HP", "Band", "ASw", "UK", "HSw", "LinkSw")
