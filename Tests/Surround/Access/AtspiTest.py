#!/usr/bin/python3
"""The window as the library finds it by which screen readers use the accessibility bus, on a bus of its own."""
import os
import unittest

from screen_reader import ScreenReaderTest, eventually


class AtspiTest(ScreenReaderTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.program = cls.start([os.environ["VARNO_ACCESSIBLE_PROGRAM"]])
        cls.application = eventually(lambda: cls.find_application("Accessible program"))

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
        events, fetch = self.listen("object:property-change:accessible-value",
                                    "object:property-change:accessible-name", "object:state-changed:focused")
        self.part("Gain")  # the library has the window's parts
        self.change("value Gain 3.0 3.0 dB")
        eventually(lambda: len(fetch()) >= 1)
        self.change("focus Gain 1")
        eventually(lambda: len(fetch()) >= 2)
        self.change("name message saved")
        eventually(lambda: len(fetch()) >= 3)
        self.assertEqual(events, [("object:property-change:accessible-value", "Gain", 0),
                                  ("object:state-changed:focused", "Gain", 1),
                                  ("object:property-change:accessible-name", "saved", 0)])
        self.change("name message ")


if __name__ == "__main__":
    unittest.main()
