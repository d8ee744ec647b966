"""check-includes reports each include in a wrong direction and accepts each in a right one."""
import pathlib
import subprocess
import tempfile
import unittest

from fixture import ROOT

TREE = ["Interfaces/AAX_IThing.h", "Interfaces/AAX_CThing.h", "Interfaces/AAX_VThing.h", "Interfaces/AAX_Exception.h",
        "Interfaces/AAX_Callbacks.h", "Interfaces/ACF/IACFUnknown.h", "Interfaces/ACF/CACFUnknown.h",
        "Libs/AAXLibrary/source/Detail.h", "Source/DemoGain_Alg.h", "Source/DemoGain_PresetText.h", "Source/Alg/State.h",
        "Source/DemoGain_SampleRates.h", "Source/GUI/View.h",
        "Source/Platform/Bundle.h", "Host/Instance.h", "Apps/varno/Render.h", "Formats/LV2/Port.h",
        "Tests/Reference/Literal.h"]


class CheckIncludesTest(unittest.TestCase):
    def check(self, includer, included):
        with tempfile.TemporaryDirectory(prefix="varno-includes-") as folder:
            for name in [*TREE, includer]:
                path = pathlib.Path(folder) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text("")
            (pathlib.Path(folder) / includer).write_text(f"// Why.\n#include {included}\n")
            done = subprocess.run([ROOT / "Scripts/check-includes", folder], capture_output=True, text=True, check=False)
        self.assertEqual(done.stderr, "")
        self.assertEqual(done.returncode, 1 if done.stdout else 0)
        return done.stdout

    def test_wrong_directions(self):
        for includer, name, target in [
                ("Interfaces/AAX_IOther.h", "DemoGain_Alg.h", "Source/DemoGain_Alg.h"),
                ("Interfaces/AAX_IOther.h", "Detail.h", "Libs/AAXLibrary/source/Detail.h"),
                ("Libs/AAXLibrary/source/AAX_CThing.cpp", "DemoGain_Alg.h", "Source/DemoGain_Alg.h"),
                ("Source/DemoGain_Parameters.cpp", "Instance.h", "Host/Instance.h"),
                ("Source/DemoGain_Parameters.cpp", "GUI/View.h", "Source/GUI/View.h"),
                ("Source/DemoGain_Parameters.cpp", "Detail.h", "Libs/AAXLibrary/source/Detail.h"),
                ("Source/Alg/Routine.cpp", "DemoGain_PresetText.h", "Source/DemoGain_PresetText.h"),
                ("Source/GUI/View.cpp", "Alg/State.h", "Source/Alg/State.h"),
                ("Source/Platform/Bundle_Linux.cpp", "AAX_IThing.h", "Interfaces/AAX_IThing.h"),
                ("Host/Instance.cpp", "AAX_CThing.h", "Interfaces/AAX_CThing.h"),
                ("Host/Instance.cpp", "AAX_VThing.h", "Interfaces/AAX_VThing.h"),
                ("Host/Instance.cpp", "AAX_Exception.h", "Interfaces/AAX_Exception.h"),
                ("Host/Instance.cpp", "ACF/CACFUnknown.h", "Interfaces/ACF/CACFUnknown.h"),
                ("Host/Instance.cpp", "DemoGain_PresetText.h", "Source/DemoGain_PresetText.h"),
                ("Host/Instance.cpp", "DemoGain_SampleRates.h", "Source/DemoGain_SampleRates.h"),
                ("Host/Instance.cpp", "Render.h", "Apps/varno/Render.h"),
                ("Apps/varno/main.cpp", "DemoGain_Alg.h", "Source/DemoGain_Alg.h"),
                ("Apps/varno/main.cpp", "../../Source/DemoGain_Alg.h", "Source/DemoGain_Alg.h"),
                ("Apps/varno/main.cpp", "Port.h", "Formats/LV2/Port.h"),
                ("Formats/LV2/Plugin.cpp", "Render.h", "Apps/varno/Render.h"),
                ("Source/DemoGain_Alg.cpp", "Reference/Literal.h", "Tests/Reference/Literal.h"),
                ("Host/Instance.cpp", "Literal.h", "Tests/Reference/Literal.h")]:
            with self.subTest(includer=includer, name=name):
                inner = includer.startswith(("Source/Alg/", "Source/GUI/", "Source/Platform/"))
                folder = "/".join(includer.split("/")[:2 if inner else 1])
                self.assertEqual(self.check(includer, f'"{name}"'), f"{includer}:2: {folder} may not include {target}\n")

    def test_right_directions(self):
        for includer, name in [
                ("Interfaces/ACF/CACFOther.h", "AAX_IThing.h"),
                ("Libs/AAXLibrary/source/AAX_CThing.cpp", "AAX_CThing.h"),
                ("Libs/AAXLibrary/source/AAX_CThing.cpp", "Detail.h"),
                ("Source/DemoGain_Parameters.cpp", "AAX_CThing.h"),
                ("Source/DemoGain_Describe.cpp", "GUI/View.h"),
                ("Source/DemoGain_Describe.cpp", "DemoGain_Alg.h"),
                ("Source/DemoGain_Alg.cpp", "Alg/State.h"),
                ("Source/Alg/Routine.cpp", "DemoGain_Alg.h"),
                ("Source/GUI/View.cpp", "Bundle.h"),
                ("Host/Instance.cpp", "AAX_IThing.h"),
                ("Host/Instance.cpp", "AAX_Callbacks.h"),
                ("Host/Instance.cpp", "ACF/IACFUnknown.h"),
                ("Host/Instance.cpp", "Instance.h"),
                ("Apps/varno/main.cpp", "Instance.h"),
                ("Apps/varno/main.cpp", "DemoGain_PresetText.h"),
                ("Apps/varno/main.cpp", "DemoGain_SampleRates.h"),
                ("Formats/LV2/Plugin.cpp", "DemoGain_SampleRates.h"),
                ("Formats/LV2/Plugin.cpp", "Instance.h"),
                ("Tests/Source/DemoGain_AlgTest.cpp", "Literal.h"),
                ("Tests/Host/InstanceTest.cpp", "AAX_CThing.h"),
                ("Apps/varno/main.cpp", "MadeByTheBuild.h")]:
            with self.subTest(includer=includer, name=name):
                self.assertEqual(self.check(includer, f'"{name}"'), "")

    def test_the_file_beside_is_meant_first(self):
        self.assertEqual(self.check("Apps/varno/View.h", '"View.h"'), "")

    def test_other_libraries(self):
        for includer, header in [("Interfaces/AAX_IOther.h", "X11/Xlib.h"), ("Source/DemoGain_Alg.cpp", "sndfile.h"),
                                 ("Host/Instance.cpp", "vstgui/vstgui.h"), ("Apps/varno/main.cpp", "gtest/gtest.h"),
                                 ("Source/DemoGain_Alg.cpp", "vstgui/vstgui.h"), ("Host/A.cpp", "nlohmann/json.hpp")]:
            with self.subTest(includer=includer, header=header):
                self.assertIn(f"may not use the library of <{header}>", self.check(includer, f"<{header}>"))
        for includer, header in [("Interfaces/AAX_IOther.h", "cstdint"), ("Source/Alg/Routine.cpp", "hwy/highway.h"),
                                 ("Host/Instance.cpp", "dlfcn.h"), ("Apps/varno/main.cpp", "sndfile.h"),
                                 ("Tests/Host/InstanceTest.cpp", "gtest/gtest.h")]:
            with self.subTest(includer=includer, header=header):
                self.assertEqual(self.check(includer, f"<{header}>"), "")


if __name__ == "__main__":
    unittest.main()
