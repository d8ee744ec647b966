"""ecasound: in place, an instance made and freed before the one that is used, controls by the order of their ports."""
from hosts import PARAMETERS, PLUGINS, HostTest, SameSamples


class EcasoundTest(SameSamples, HostTest):
    input_bits = 16
    step = 2.0 ** -23  # it writes no floating point

    def process(self, channels, settings, source, result):
        values = [str(settings.get(name, default)) for name, default in PARAMETERS.items()] + ["1"]
        self.run_program("ecasound", "-q", f"-i:{source}", f"-f:s24_le,{channels},48000", f"-o:{result}",
                         f"-elv2:{PLUGINS[channels]},{','.join(values)}")
