"""lv2apply: no features at all, one frame per call, unused ports left unconnected."""
from hosts import PLUGINS, HostTest, SameSamples, symbol


class Lv2applyTest(SameSamples, HostTest):
    def process(self, channels, settings, source, result):
        controls = [word for name, value in settings.items() for word in ("-c", symbol(name), str(value))]
        self.run_program("lv2apply", "-i", source, "-o", result, *controls, PLUGINS[channels])

    def test_refuses_a_port_that_there_is_not(self):
        self.assertIn("treble", self.run_program("lv2apply", "-i", self.stimulus(1), "-o", self.path("out.wav"),
                                                 "-c", "treble", "1", PLUGINS[1], status=7))
