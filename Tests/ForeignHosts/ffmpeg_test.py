"""ffmpeg's lv2 filter: in place, 4096 frames at a time and a short rest, all ports connected anew for every call."""
from hosts import PLUGINS, HostTest, SameSamples, symbol


class FfmpegTest(SameSamples, HostTest):
    def process(self, channels, settings, source, result):
        controls = "|".join(f"{symbol(name)}={value}" for name, value in settings.items())
        uri = PLUGINS[channels].replace(":", r"\:")
        self.run_program("ffmpeg", "-nostdin", "-y", "-i", source, "-af", f"lv2=p='{uri}':c={controls}",
                         "-c:a", "pcm_f32le", result)

    def test_lists_the_controls(self):
        uri = PLUGINS[2].replace(":", r"\:")
        text = self.run_program("ffmpeg", "-nostdin", "-y", "-i", self.stimulus(2), "-af", f"lv2=p='{uri}':c=help",
                                "-f", "null", "-", status=(0, 1))  # 1 with ffmpeg 5, 0 with ffmpeg 7
        for port in ("gain", "hot", "linksw", "enabled"):
            self.assertIn(port, text)
