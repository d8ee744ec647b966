"""The window of the effect in Ardour's own, over a JACK server: what the bar changes is what Ardour saves."""
import time
from xml.etree import ElementTree

from ardour_desktop import ArdourDesktop
from desktop import EffectWindow
from jack import again_where_requests_are_lost
from layout import BAR_HEIGHT, BAR_WIDTH, EDITOR_HEIGHT

ONE_TRACK = """
local session = create_session(folder, "s", 48000)
for track in add_tracks(session, 1):iter() do
    add_effect(session, track)
end
assert(session:save_state("") == 0)
close_session()
"""

# Longer than Ardour and the window manager take to place a window.
REST_S = 0.5


class ArdourWindowTest(ArdourDesktop):
    def open_effects_window(self):
        """Writes into the session that the window is open."""
        tree = ElementTree.parse(self.session())
        track, effect = next((route.get("id"), processor.get("id")) for route in tree.iter("Route")
                             for processor in route.iter("Processor") if processor.get("type") == "lv2")
        windows = ElementTree.SubElement(ElementTree.SubElement(tree.getroot(), "Extra"), "UI")
        ElementTree.SubElement(windows, "Window", {
            "name": f"P-{track}-{effect}", "visible": "1", "x-off": "20", "y-off": "40", "x-size": "-1", "y-size": "-1",
            "custom-ui": "1"})
        tree.write(self.session(), "UTF-8", xml_declaration=True)

    def raised_corner(self):
        """Where the effect's window lies, once it is above Ardour's and rests."""
        self.desktop.look("xdotool", "search", "--onlyvisible", "--name", "Varno", "windowactivate", "--sync")
        before = self.desktop.inner_window(BAR_WIDTH, BAR_HEIGHT + EDITOR_HEIGHT)
        time.sleep(REST_S)
        return before and before == self.desktop.inner_window(BAR_WIDTH, BAR_HEIGHT + EDITOR_HEIGHT) and before

    def saved(self, *symbols):
        """Values of ports, as Ardour saves them now."""
        self.desktop.xdotool("windowfocus", "--sync", self.main_window(), "key", "ctrl+s")
        ports = {port.get("symbol"): port.get("value") for port in ElementTree.parse(self.session()).iter("Port")}
        return tuple(float(ports[symbol]) for symbol in symbols)

    @again_where_requests_are_lost
    def test_bypass_and_quality_are_ports(self):
        self.ardour(ONE_TRACK, "session.lua", backend="JACK", environment=self.jack)
        self.open_effects_window()
        process = self.start_ardour()
        self.wait_for_main_window()
        window = EffectWindow(self.desktop, self.eventually(self.raised_corner, "the window"))
        window.press("Bypass")
        window.press("Quality")
        self.eventually(self.desktop.menu, "the menu")
        self.desktop.keys("Down", "Down", "Down", "Return")  # 4x
        self.eventually(lambda: not self.desktop.menu(), "the end of the menu")
        self.eventually(lambda: self.saved("enabled", "quality") == (0.0, 4.0), "the ports")
        window.press("Bypass")
        self.eventually(lambda: self.saved("enabled", "quality") == (1.0, 4.0), "the ports")
        self.assertIsNone(process.poll())
