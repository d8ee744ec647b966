"""lv2proc: no features, blocks of any size and a short last one."""
from hosts import PLUGINS, HostTest, SameSamples, symbol


class Lv2procTest(SameSamples, HostTest):
    def process(self, channels, settings, source, result):
        controls = [word for name, value in settings.items() for word in ("-c", f"{symbol(name)}:{value}")]
        self.run_program("lv2proc", "-n", "100", "-i", source, "-o", result, *controls, PLUGINS[channels])
