"""jalv, the reference host, between JACK's ports: controls, presets, monitors, latency."""
import re

from hosts import LATENCY_FRAMES, PARAMETERS, PLUGINS, PROGRAM, URI, symbol
from jack import PERIOD_FRAMES, JackTest, Jalv

METERS = ("grl", "grr", "inrms", "outrms")
AUDIO_PORTS = {1: ("Fx:in", "Fx:out"), 2: ("Fx:in_l", "Fx:in_r", "Fx:out_l", "Fx:out_r")}


class JalvTest(JackTest):
    def setUp(self):
        super().setUp()
        self.start_server()

    def start_jalv(self, channels, *options):
        jalv = Jalv(self, PLUGINS[channels], *options)
        self.wait_for_ports(*AUDIO_PORTS[channels])
        return jalv

    def controls(self, jalv):
        text = jalv.answer("controls", r"^(?:> )?gain = (?:.*\n)*?enabled = .*\n").group()
        return {name: float(value) for name, value in re.findall(r"(\w+) = ([\d.-]+)", text)}

    def test_starts_with_the_defaults(self):
        found = self.controls(self.start_jalv(2))
        expected = {symbol(name): float(value) for name, value in PARAMETERS.items()}
        self.assertEqual(found, {**expected, "enabled": 1.0})

    def test_sets_controls(self):
        jalv = self.start_jalv(2)
        jalv.answer("set hot 0.5", r"hot = 0\.500000")
        jalv.answer("gain = 0.25", r"gain = 0\.250000")
        found = self.controls(jalv)
        self.assertEqual((found["hot"], found["gain"], found["volume"]), (0.5, 0.25, 0.5))

    def test_loads_a_preset(self):
        jalv = self.start_jalv(2)
        listed = jalv.answer("presets", rf"({re.escape(URI)}\S*|file:\S+) \(Drum bus\)")
        jalv.answer(f"preset {listed.group(1)}", r"linksw = 1\.000000")
        found = self.controls(jalv)
        for name, value in self.preset("drum-bus").items():
            self.assertAlmostEqual(found[symbol(name)], value, delta=1e-6, msg=name)

    def preset(self, name):
        words = self.run_program(PROGRAM, "presets", name).split()
        values = [float(word) for word in words[3:3 + 2 * len(PARAMETERS):2]]
        order = ("Gain", "Volume", "HP", "Band", "Atk", "Rls", "UK", "Hot", "Ratio", "Mix", "ASw", "HSw", "LinkSw")
        return dict(zip(order, values))

    def test_meters_move_with_the_music(self):
        jalv = self.start_jalv(2, "-c", "gain=1.0")
        # They start at any value and fall while the input is silent.
        self.eventually(lambda: all(self.meter(jalv, meter) < 0.001 for meter in METERS), "meters at rest")
        self.start_player(self.stimulus(2), 2)
        self.connect("player:out_1", "Fx:in_l")
        self.connect("player:out_1", "Fx:in_r")
        for meter in METERS:
            self.eventually(lambda: self.meter(jalv, meter) > 0.01, f"{meter} above its rest")

    def meter(self, jalv, name):
        return float(jalv.answer("monitors", rf"\b{name} = ([\d.]+)").group(1))

    def check_latency(self, channels, enabled):
        jalv = self.start_jalv(channels, "-c", "hot=0.0")
        jalv.answer(f"set enabled {enabled}", rf"enabled = {enabled}")
        way = AUDIO_PORTS[channels]
        # jalv reads the port after a block and then has the server compute the latencies anew.
        self.eventually(lambda: (LATENCY_FRAMES, LATENCY_FRAMES) in self.reported_latency(way[0]), "the latency reported")
        measured = self.loop_latency(way[0], way[channels]) - PERIOD_FRAMES
        self.assertAlmostEqual(measured, LATENCY_FRAMES, delta=0.1)

    def test_latency_mono(self):
        self.check_latency(1, 1)

    def test_latency_stereo(self):
        self.check_latency(2, 1)

    def test_latency_while_bypassed(self):
        self.check_latency(2, 0)
