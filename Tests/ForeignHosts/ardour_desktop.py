"""Ardour's own window on a desktop without a screen, over a JACK server."""
import re

from ardour_program import program
from ardour_test import ArdourHost
from desktop import Desktop
from hosts import PATIENCE_S
from jack import JackTest

# Without it, Ardour asks at its start which sound system to use.
CONFIGURATION = """<Ardour><Extra><AudioMIDISetup><EngineStates>
<State backend="JACK" driver="" device="" input-device="" output-device="" sample-rate="48000" buffer-size="1024"
 n-periods="2" input-latency="0" output-latency="0" lm-input="" lm-output="" active="1" use-buffered-io="0"
 midi-option="" lru="1"><MIDIDevices/></State>
</EngineStates></AudioMIDISetup></Extra></Ardour>
"""


class ArdourDesktop(ArdourHost, JackTest):
    """A server, a screen and a window manager for Ardour with one session, which a script has saved."""

    def setUp(self):
        super().setUp()
        self.start_server()
        self.desktop = Desktop(self)
        self.desktop.manage()

    def session(self):
        """The file of the session, as it was saved last."""
        return self.folder / "session/s.ardour"

    def start_ardour(self):
        release = re.search(r"\d+", program()).group()
        configuration = self.folder / f"config/ardour{release}"
        configuration.mkdir(parents=True, exist_ok=True)
        (configuration / f".a{release}").touch()  # the user is no new one, whom it would ask more
        (configuration / "config").write_text(CONFIGURATION)
        return self.start("ardour", "--no-announcements", "--no-splash", str(self.session()),
                          environment={**self.jack, **self.homes(), **self.desktop.environment}, log="ardour.log")

    def main_window(self):
        """Ardour's own, once it is there; it comes after those of the plug-ins, and over them."""
        found = self.desktop.look("xdotool", "search", "--onlyvisible", "--name", "^s - Ardour|^\\*s - Ardour").split()
        return found and found[0]

    def wait_for_main_window(self):
        """Of all programs here, Ardour takes the longest to start."""
        self.eventually(self.main_window, "Ardour's window", PATIENCE_S)
