#!/usr/bin/python3
"""The window as the library finds it by which screen readers use the accessibility bus, on a bus of its own."""
import os
import pathlib
import subprocess
import tempfile
import time
import unittest

PROGRAM = os.environ["VARNO_ACCESSIBLE_PROGRAM"]
# How long something may take on a loaded machine.
DEADLINE_S = 30


def eventually(find):
    """The first result of find() that is true; the last one at the deadline."""
    end = time.monotonic() + DEADLINE_S
    while not (found := find()) and time.monotonic() < end:
        time.sleep(0.01)
    return found


class AtspiTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        runtime = pathlib.Path(cls.folder.name, "run")
        runtime.mkdir(mode=0o700)
        for name in ("DISPLAY", "AT_SPI_BUS_ADDRESS"):
            os.environ.pop(name, None)
        os.environ.update(HOME=cls.folder.name, XDG_RUNTIME_DIR=str(runtime), GSETTINGS_BACKEND="memory",
                          **{f"XDG_{kind}_HOME": cls.folder.name for kind in ("CACHE", "CONFIG", "DATA")})
        daemon = cls.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address",
                            f"--address=unix:dir={runtime}"])
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = daemon.stdout.readline().strip()

        # The library finds its bus when it is loaded.
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, Gio, GLib
        cls.atspi, cls.glib = Atspi, GLib
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        bus.set_exit_on_close(False)
        bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                      GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))),
                      None, Gio.DBusCallFlags.NONE, -1)
        Atspi.init()
        cls.program = cls.start([PROGRAM])
        cls.application = eventually(cls.find_application)

    @classmethod
    def start(cls, words):
        program = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

        def end():
            program.stdin.close()
            program.terminate()
            program.wait()
            program.stdout.close()
        cls.addClassCleanup(end)
        return program

    @classmethod
    def find_application(cls):
        desktop = cls.atspi.get_desktop(0)
        found = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
        return next((each for each in found if each and each.get_name() == "Accessible program"), None)

    def part(self, name, within=None):
        """The part of that name, by walking the tree."""
        within = within or self.application
        if within.get_name() == name:
            return within
        found = (self.part(name, within.get_child_at_index(i)) for i in range(within.get_child_count()))
        return next((each for each in found if each), None)

    def change(self, line):
        print(line, file=self.program.stdin, flush=True)

    def test_it_is_an_application_with_a_window(self):
        self.assertEqual(self.application.get_role(), self.atspi.Role.APPLICATION)
        self.assertEqual(self.application.get_process_id(), self.program.pid)
        window = self.application.get_child_at_index(0)
        self.assertEqual((window.get_role(), window.get_name()), (self.atspi.Role.FRAME, "Effect of a test"))
        roles = {part.get_name(): part.get_role() for part in
                 (window.get_child_at_index(i) for i in range(window.get_child_count()))}
        self.assertEqual(roles["Effect"], self.atspi.Role.PANEL)
        self.assertEqual(roles["Output"], self.atspi.Role.LEVEL_BAR)
        self.assertEqual(len(roles), 3)

    def test_a_knob_is_read_and_set(self):
        gain = self.part("Gain")
        self.assertEqual(gain.get_role(), self.atspi.Role.DIAL)
        self.assertEqual(gain.get_role_name(), "dial")
        self.assertEqual(gain.get_description(), "How loud it is.")
        value = gain.get_value_iface()
        self.assertEqual((value.get_minimum_value(), value.get_maximum_value(), value.get_minimum_increment()),
                         (-24.0, 24.0, 0.5))
        self.assertIn("valuetext", gain.get_attributes())
        states = gain.get_state_set()
        self.assertTrue(states.contains(self.atspi.StateType.FOCUSABLE))
        self.assertTrue(states.contains(self.atspi.StateType.SHOWING))
        self.assertFalse(states.contains(self.atspi.StateType.CHECKED))
        value.set_current_value(7.5)
        self.assertEqual(self.program.stdout.readline(), "Gain = 7.500000\n")
        self.assertEqual(value.get_current_value(), 7.5)
        gain.get_editable_text_iface().set_text_contents("2 dB")
        self.assertEqual(self.program.stdout.readline(), 'Gain = "2 dB"\n')
        self.assertEqual(gain.get_text_iface().get_text(0, -1), "2 dB")

    def test_a_switch_is_pressed(self):
        switch = self.part("High-pass")
        self.assertEqual(switch.get_role(), self.atspi.Role.TOGGLE_BUTTON)
        action = switch.get_action_iface()
        self.assertEqual((action.get_n_actions(), action.get_action_name(0)), (1, "toggle"))
        self.assertTrue(action.do_action(0))
        self.assertEqual(self.program.stdout.readline(), "HP pressed\n")
        eventually(lambda: switch.get_state_set().contains(self.atspi.StateType.CHECKED))
        self.assertTrue(switch.get_state_set().contains(self.atspi.StateType.CHECKED))

    def test_parts_have_places(self):
        component = self.part("Gain").get_component_iface()
        extents = component.get_extents(self.atspi.CoordType.SCREEN)
        self.assertEqual((extents.x, extents.y, extents.width, extents.height), (110, 220, 40, 40))
        window = self.application.get_child_at_index(0).get_component_iface()
        self.assertEqual(window.get_accessible_at_point(120, 230, self.atspi.CoordType.SCREEN).get_name(), "Gain")
        self.assertTrue(component.grab_focus())
        self.assertEqual(self.program.stdout.readline(), "Gain focused\n")
        self.change("focus Gain 0")

    def test_events_arrive(self):
        events = []
        listener = self.atspi.EventListener.new(
            lambda event: events.append((event.type, event.source.get_name(), event.detail1)))
        for kind in ("object:property-change:accessible-value", "object:property-change:accessible-name",
                     "object:state-changed:focused"):
            self.assertTrue(listener.register(kind))

        def arrived(count):
            while self.glib.MainContext.default().iteration(False):
                pass
            return len(events) >= count
        self.part("Gain")  # the library has the window's parts
        self.change("value Gain 3.0 3.0 dB")
        eventually(lambda: arrived(1))
        self.change("focus Gain 1")
        eventually(lambda: arrived(2))
        self.change("name message saved")
        eventually(lambda: arrived(3))
        self.assertEqual(events, [("object:property-change:accessible-value", "Gain", 0),
                                  ("object:state-changed:focused", "Gain", 1),
                                  ("object:property-change:accessible-name", "saved", 0)])
        self.change("name message ")


if __name__ == "__main__":
    unittest.main()
