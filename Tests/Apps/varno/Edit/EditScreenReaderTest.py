#!/usr/bin/python3
"""The whole window of `varno edit` as screen readers find and use it, on an X server and a session bus of its own."""
import math
import os
import struct
import subprocess
import unittest
import wave

from screen_reader import ScreenReaderTest, eventually

# In reading order, with the value that it has in the beginning.
KNOBS = {"Gain": "0.0 dB", "Attack": "2.43 ms", "Release": "210 ms", "Volume": "0.0 dB", "Hottitude": "7.0 %",
         "Mix": "0.0 %"}
CONTROLS = ["Gain", "High Pass", "Band Pass", "Attack", "Release", "Auto Gain", "Volume", "Harmonic Select", "UK Mode",
            "Hottitude", "Ratio", "Stereo Link", "Mix", "Copy Preset", "Paste Preset"]
BUTTONS = ["Bypass", "Settings A", "Settings B", "Copy to the other settings", "Undo", "Redo", "Previous preset",
           "Presets", "Next preset", "Quality", "Curve", "Size"]
METERS = ["Input level", "Output level", "Gain reduction"]
LAST_STEP = 130.0


class EditScreenReaderTest(ScreenReaderTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        server = cls.start(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp"],
                           stderr=subprocess.DEVNULL)
        display = ":" + server.stdout.readline().strip()
        tone = cls.folder / "tone.wav"
        with wave.open(str(tone), "wb") as file:
            file.setparams((1, 2, 48000, 0, "NONE", ""))
            file.writeframes(b"".join(struct.pack("<h", int(9000 * math.sin(2 * math.pi * i / 100)))
                                      for i in range(48000)))
        cls.program = cls.start(
            [os.environ["VARNO_WINDOW_PROGRAM"], "edit", "--module", os.environ["VARNO_MODULE_BUNDLE"],
             "--sound", "off", str(tone)], env={**os.environ, "DISPLAY": display}, stderr=subprocess.DEVNULL)
        cls.application = eventually(lambda: cls.find_application("Varno-S"))
        cls.parts = {}
        cls.beginning = {}

    def part(self, name):
        """Found once: parts stay as long as the window."""
        if name not in self.parts:
            self.parts[name] = super().part(name)
        return self.parts[name]

    def setUp(self):
        self.assertIsNotNone(self.application, "no application on the bus")
        # Also the proof that each change of a test before was a step.
        self.assertTrue(eventually(self.is_undone), self.values())

    def is_undone(self):
        if self.values() == self.beginning.setdefault("values", self.values()):
            return True
        if self.has(self.part("Undo"), self.atspi.StateType.ENABLED):
            self.press("Undo")
        return False

    def press(self, name):
        self.assertTrue(self.part(name).get_action_iface().do_action(0), name)

    def values(self):
        return [self.value(name) for name in (*KNOBS, "Ratio")] + [self.is_checked(name) for name in CONTROLS]

    def value(self, name):
        return self.part(name).get_value_iface().get_current_value()

    def text(self, name):
        return self.part(name).get_text_iface().get_text(0, -1)

    def is_checked(self, name):
        return self.has(self.part(name), self.atspi.StateType.CHECKED)

    def assert_becomes(self, expected, read):
        eventually(lambda: read() == expected)
        self.assertEqual(read(), expected)

    def test_everything_is_there_in_reading_order(self):
        window = self.application.get_child_at_index(0)
        bar, face = self.children_of(window)
        names = [part.get_name() for part in self.children_of(bar)]
        self.assertEqual(names[:-1], BUTTONS + METERS)
        self.assertEqual([part.get_name() for part in self.children_of(face)], CONTROLS)
        whole = window.get_component_iface().get_extents(self.atspi.CoordType.SCREEN)
        self.assertEqual((whole.width, whole.height), (690, 454))
        for name in BUTTONS + CONTROLS:
            part = self.part(name)
            self.assertRegex(part.get_description(), r"\w.*\.$", name)
            for state in (self.atspi.StateType.SHOWING, self.atspi.StateType.FOCUSABLE):
                self.assertTrue(self.has(part, state), name)
            place = part.get_component_iface().get_extents(self.atspi.CoordType.SCREEN)
            self.assertTrue(whole.x <= place.x and place.x + place.width <= whole.x + whole.width, name)
            self.assertTrue(whole.y <= place.y and place.y + place.height <= whole.y + whole.height, name)
            middle = (place.x + place.width // 2, place.y + place.height // 2, self.atspi.CoordType.SCREEN)
            self.assertEqual(window.get_component_iface().get_accessible_at_point(*middle).get_name(), name)

    def test_knobs_are_read_in_units_and_set(self):
        for name, text in KNOBS.items():
            value = self.part(name).get_value_iface()
            self.assertEqual(self.part(name).get_role_name(), "dial")
            self.assertEqual((value.get_minimum_value(), value.get_maximum_value(), value.get_minimum_increment()),
                             (0.0, LAST_STEP, 1.0))
            self.assertEqual(self.text(name), text)
            for step in (LAST_STEP, 1.0):
                value.set_current_value(step)
                self.assert_becomes(step, value.get_current_value)
                self.assertNotEqual(self.text(name), text)

    def test_values_are_typed(self):
        for name, typed, shown in (("Gain", "-3 dB", "-3.0 dB"), ("Mix", "40 %", "40.0 %"),
                                   ("Ratio", "curve 2", "curve 2")):
            self.assertTrue(self.part(name).get_editable_text_iface().set_text_contents(typed))
            self.assert_becomes(shown, lambda name=name: self.text(name))
        self.assertFalse(self.part("Gain").get_editable_text_iface().set_text_contents("loud"))
        self.assertEqual(self.text("Gain"), "-3.0 dB")

    def test_switches_are_pressed(self):
        for name in CONTROLS:
            part = self.part(name)
            if part.get_role_name() == "check box" and name != "Auto Gain":
                for is_on in (True, False):
                    self.press(name)
                    self.assert_becomes(is_on, lambda name=name: self.is_checked(name))

    def test_the_bar_compares_and_bypasses(self):
        self.assertTrue(self.is_checked("Settings A"))
        self.part("Gain").get_value_iface().set_current_value(100.0)
        self.press("Settings B")
        self.assert_becomes(True, lambda: self.is_checked("Settings B"))
        self.assertFalse(self.is_checked("Settings A"))
        self.assert_becomes(65.0, lambda: self.value("Gain"))
        self.press("Settings A")
        self.assert_becomes(100.0, lambda: self.value("Gain"))
        for is_on in (True, False):
            self.press("Bypass")
            self.assert_becomes(is_on, lambda: self.is_checked("Bypass"))

    def test_undo_and_redo_say_whether_there_is_something(self):
        undo, redo = self.part("Undo"), self.part("Redo")
        self.part("Mix").get_value_iface().set_current_value(65.0)
        self.assert_becomes(True, lambda: self.has(undo, self.atspi.StateType.ENABLED))
        self.press("Undo")
        self.assert_becomes(0.0, lambda: self.value("Mix"))
        self.assertTrue(self.has(redo, self.atspi.StateType.ENABLED))
        self.press("Redo")
        self.assert_becomes(65.0, lambda: self.value("Mix"))
        self.assert_becomes(False, lambda: self.has(redo, self.atspi.StateType.ENABLED))

    def test_presets_are_loaded_and_named(self):
        before = self.values()
        self.press("Next preset")
        self.assert_becomes(True, lambda: self.values() != before)
        self.assertRegex(self.text("Presets"), r"^\w")
        self.assertEqual(self.part("Presets").get_attributes()["valuetext"], self.text("Presets"))
        self.assertIsNone(self.part("Presets").get_editable_text_iface())
        self.assertEqual(self.text("Size"), "100 %")
        self.assertEqual(self.text("Quality"), "1x")

    def test_settings_are_copied_and_pasted(self):
        self.part("Gain").get_value_iface().set_current_value(90.0)
        self.press("Copy Preset")
        # Clicks take their turn in the editor: after this one, the settings are copied.
        self.press("High Pass")
        self.assert_becomes(True, lambda: self.is_checked("High Pass"))
        self.part("Gain").get_value_iface().set_current_value(10.0)
        self.assert_becomes(10.0, lambda: self.value("Gain"))
        self.press("Paste Preset")
        self.assert_becomes(90.0, lambda: self.value("Gain"))
        self.assert_becomes(False, lambda: self.is_checked("High Pass"))

    def test_menus_open_without_holding_up_the_window(self):
        for name in ("Presets", "Quality", "Size"):
            self.press(name)
            self.assertEqual(self.text("Gain"), KNOBS["Gain"])

    def test_the_focus_moves_and_is_reported(self):
        events, fetch = self.listen("object:state-changed:focused")
        for name in ("Gain", "Copy Preset", "Bypass"):
            self.assertTrue(self.part(name).get_component_iface().grab_focus())
            eventually(lambda name=name: ("object:state-changed:focused", name, 1) in fetch())
            self.assertIn(("object:state-changed:focused", name, 1), events)
            self.assertTrue(self.has(self.part(name), self.atspi.StateType.FOCUSED))
        self.assertIn(("object:state-changed:focused", "Gain", 0), events)
        self.assertFalse(self.has(self.part("Gain"), self.atspi.StateType.FOCUSED))

    def test_what_the_effect_changes_itself_is_reported(self):
        volume = self.part("Volume")
        self.part("Gain").get_value_iface().set_current_value(LAST_STEP)  # which raises the output
        events, fetch = self.listen("object:property-change:accessible-value",
                                    "object:property-change:accessible-name")
        self.press("Auto Gain")
        self.assert_becomes(True, lambda: self.is_checked("Auto Gain"))
        self.press("High Pass")  # after which it measures
        changed = ("object:property-change:accessible-value", "Volume", 0)
        eventually(lambda: changed in fetch())
        self.assertIn(changed, events)
        eventually(lambda: volume.get_value_iface().get_current_value() != 65.0)
        self.assertNotEqual(volume.get_value_iface().get_current_value(), 65.0)
        told = ("object:property-change:accessible-name", "matching volume", 0)
        eventually(lambda: told in fetch())
        self.assertIn(told, events)
        self.press("Auto Gain")
        self.assert_becomes(False, lambda: self.is_checked("Auto Gain"))


if __name__ == "__main__":
    unittest.main()
