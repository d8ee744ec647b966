"""The Python package as it is installed, moved, checked for types and shown by its example."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import wave

import varno

ROOT = pathlib.Path(__file__).resolve().parents[3]
BUILD = pathlib.Path(os.environ["VARNO_BUILD"])
EXAMPLE = ROOT / "examples/presets.py"


def run(*command, **options):
    return subprocess.run([*map(str, command)], capture_output=True, text=True, check=False, **options)


class PackageTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def succeeds(self, *command, **options):
        done = run(*command, **options)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return done.stdout

    def test_works_where_it_is_installed_and_moved_to(self):
        self.succeeds(os.environ["VARNO_CMAKE"], "--install", BUILD, "--component", "python", "--prefix", self.folder / "first")
        [package] = self.folder.glob("first/lib/python3*/dist-packages/varno")
        names = {path.relative_to(package).as_posix() for path in package.rglob("*") if path.is_file()}
        [binary] = [name for name in names if name.startswith("_varno.") and name.endswith(".so")]
        presets = {f"factory-presets/{path.name}" for path in ROOT.glob("Resources/presets/*.txt")}
        self.assertEqual(names, {"__init__.py", "_varno.pyi", "py.typed", binary} | presets)
        self.assertEqual({path.relative_to(self.folder / "first").parts[0] for path in self.folder.glob("first/*")}, {"lib"})
        moved = self.folder / "second"
        shutil.move(package.parent, moved)
        script = ("import varno, numpy; names = varno.presets(); "
                  "[varno.Effect(48000, 2, preset=name)(numpy.zeros((2, 100), numpy.float32)) for name in names]; "
                  "print(*names.values(), sep='\\n')")
        found = self.succeeds(sys.executable, "-B", "-c", script, cwd="/", env={"PYTHONPATH": str(moved)})
        self.assertEqual(set(found.split()), {str(moved / "varno" / preset) for preset in presets})

    def test_exports_what_python_calls_and_nothing_else(self):
        symbols = self.succeeds("nm", "--dynamic", "--defined-only", sys.modules["varno._varno"].__file__)
        self.assertEqual(re.findall(r" [A-Z] (\w+)", symbols), ["PyInit__varno"])

    def test_needs_no_library_of_screens(self):
        needed = self.succeeds("readelf", "--dynamic", "--wide", sys.modules["varno._varno"].__file__)
        names = set(re.findall(r"NEEDED.*\[(.+?)\.so", needed))
        self.assertLessEqual(names, {"libstdc++", "libm", "libgcc_s", "libc", "ld-linux-x86-64", "libpugixml"})

    def test_stubs_are_those_of_the_package(self):
        environment = os.environ | {"MYPYPATH": str(BUILD / "python")}
        allowed = self.folder / "allowed"
        allowed.write_text("varno.Effect\nvarno._varno.Effect\n")  # the class itself, which has a metaclass of pybind11
        self.succeeds("/usr/bin/stubtest", "--allowlist", allowed, "--ignore-unused-allowlist", "varno", cwd=self.folder, env=environment)

    def test_types_of_scripts_are_checked(self):
        environment = os.environ | {"MYPYPATH": str(BUILD / "python")}
        wrong = self.folder / "wrong.py"
        wrong.write_text("import varno\neffect = varno.Effect(48000, 2)\neffect.gain_db = 'loud'\neffect.hott = 1.0\n")
        done = run("/usr/bin/mypy", "--strict", EXAMPLE, wrong, cwd=self.folder, env=environment)
        found = re.findall(r"^(.*):(\d+): error:", done.stdout, re.MULTILINE)
        self.assertEqual([(pathlib.Path(path).name, line) for path, line in found], [("wrong.py", "3"), ("wrong.py", "4")],
                         done.stdout + done.stderr)

    def test_example_renders_a_file_with_every_preset(self):
        source = self.folder / "loop.wav"
        with wave.open(str(source), "wb") as file:
            file.setparams((2, 2, 48000, 0, "NONE", ""))
            file.writeframes(bytes(range(256)) * 400)
        printed = self.succeeds(sys.executable, "-B", EXAMPLE, source, self.folder / "out")
        names = sorted(path.stem for path in (self.folder / "out").iterdir())
        self.assertEqual(names, sorted(varno.presets()))
        for name in names:
            self.assertRegex(printed, rf"{name} +-?\d+\.\d dBFS +\d+\.\d dB")
            with wave.open(str(self.folder / "out" / f"{name}.wav")) as file:
                self.assertEqual((file.getnchannels(), file.getframerate(), file.getnframes()), (2, 48000, 25600))
                self.assertNotEqual(file.readframes(25600), bytes(range(256)) * 400)
        done = run(sys.executable, "-B", EXAMPLE, self.folder / "none.wav", self.folder / "out")
        self.assertEqual((done.returncode, done.stderr.count("\n")), (1, 1), done.stderr)


if __name__ == "__main__":
    unittest.main()
