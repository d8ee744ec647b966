"""lv2file: a feature without identifier, blocks of any size with the last one filled up, presets."""
from hosts import PLUGINS, HostTest, SameSamples, read_wav, symbol


def process(test, plugin, block, options, source, result):
    test.run_program("lv2file", "-i", source, "-o", result, "-b", str(block), *options, plugin)


def options_of(settings):
    return [word for name, value in settings.items() for word in ("-p", f"{symbol(name)}:{value}")]


class Blocks64(SameSamples, HostTest):
    def process(self, channels, settings, source, result):
        process(self, PLUGINS[channels], 64, options_of(settings), source, result)


class Blocks17(SameSamples, HostTest):
    def process(self, channels, settings, source, result):
        process(self, PLUGINS[channels], 17, options_of(settings), source, result)


class Presets(HostTest):
    def test_each_is_the_factory_preset(self):
        source = self.stimulus(2)
        for name in ("drum-bus", "voice-close", "destroyed"):
            process(self, PLUGINS[2], 512, ["-P", name.replace("-", " ").capitalize()], source, self.path("out.wav"))
            self.assert_same(read_wav(self.path("out.wav")), self.rendered(source, name))
