"""./run manual draws the documents' pictures on an X server of its own, which ends with it."""
import os
import unittest

from fixture import FixtureProject

# Records each call with its display, and writes the file that is requested.
PROGRAM = """
#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int count, char** arguments) {
    std::FILE* log = std::fopen(CALLS, "a");
    const char* display = std::getenv("DISPLAY");
    std::fprintf(log, "%s:", display == nullptr ? "" : display);
    for (int i = 1; i < count; ++i) {
        std::fprintf(log, " %s", arguments[i]);
        if (std::strcmp(arguments[i - 1], "--screenshot") == 0 || (i == 3 && std::strcmp(arguments[1], "--number") == 0)) {
            std::FILE* picture = std::fopen(arguments[i], "w");
            std::fputs("a picture", picture);
            std::fclose(picture);
        }
    }
    std::fputs("\\n", log);
    std::fclose(log);
    if (std::strcmp(arguments[1], "render") == 0 && std::strcmp(arguments[count - 1], "--quiet") != 0) {
        std::printf("half of it\\r\\033[Kall of it\\n");
    }
    if (std::strcmp(arguments[1], "plot") == 0) {
        std::puts("{}"); // its numbers
    }
    return std::getenv("BREAK") != nullptr && std::strcmp(arguments[1], std::getenv("BREAK")) == 0 ? 1 : 0;
}
"""

CMAKE = """
add_executable({name} {source})
target_link_libraries({name} PRIVATE varno_settings)
target_compile_definitions({name} PRIVATE CALLS="{calls}")
"""


HOSTS = """#!/bin/bash
while (($# > 0)); do [[ $1 != --results ]] || echo "a screen" >"$2/jalv-gtk3-dragged.png"; shift; done
exit "${HOSTS_FAIL:-0}"
"""


WINDOW = """#!/bin/bash
mkdir -p "$2"
for state in plain changed bypassed menu typed curve; do echo "$state of $1" >"$2/$state.png"; done
exit "${WINDOW_FAIL:-0}"
"""


class ManualTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.calls = self.folder / "calls"
        self.write("Apps/varno/main.cpp", PROGRAM)
        self.write("Apps/varno/CMakeLists.txt", CMAKE.format(name="varno", source="main.cpp", calls=self.calls) +
                   "add_custom_target(Varno-S)\nadd_custom_target(varno_lv2_bundle)\nadd_subdirectory(../../Resources/Artwork ${CMAKE_BINARY_DIR}/Resources/Artwork)\n")
        self.write("Resources/Artwork/CMakeLists.txt",
                   CMAKE.format(name="varno_artwork", source="../../Apps/varno/main.cpp", calls=self.calls))
        # What it holds the manual to is tested with the real one.
        self.write("Scripts/manual-figures", f'#!/bin/bash\nprintf "%s\\n" "$@" >"{self.folder}/figures"\nexit "${{FIGURES_FAIL:-0}}"\n')
        self.write("Scripts/preset-figures", f'#!/bin/bash\nprintf "%s\\n" "$@" >"{self.folder}/presets"\nexit "${{PRESETS_FAIL:-0}}"\n')
        # The window is used in Tests/Apps/varno; here it matters what becomes of its pictures.
        self.write("Scripts/draw-window", WINDOW)
        (self.root / "Scripts/draw-window").chmod(0o755)
        # A host need not be installed to test the script.
        (self.root / "Scripts/packages.txt").write_text("[program]\ng++\n")
        self.write("Tests/ForeignHosts/run", HOSTS)
        (self.root / "Tests/ForeignHosts/run").chmod(0o755)
        self.command("convert", 'echo "a picture" >"${@: -1}"\n')
        self.command("mogrify", "")
        # The text that it is to draw.
        self.command("pango-view", 'for word; do case $word in --output=*) cp "${@: -1}" "${word#*=}" ;; esac; done\n')
        self.server = self.folder / "server"
        self.command("Xvfb", f'echo $$ >"{self.server}"\necho 77 >&3\nexec sleep 600\n')

    def environment(self):
        return {**super().environment(), "DISPLAY": ":1"}

    def assert_server_ended(self):
        with self.assertRaises(ProcessLookupError):
            os.kill(int(self.server.read_text()), 0)

    def test_takes_the_pictures(self):
        done = self.run_script("manual")
        self.assertEqual(done.returncode, 0, done.stderr)
        pictures = self.root / "docs/pictures"
        kinds = ["aliasing", "burst", "curves", "detector", "harmonics", "map", "transfer"]
        names = ["controls.png", "editor-2x.png", "editor.png", "jalv.png", *(f"plot-{kind}.png" for kind in kinds), "render.png"]
        windows = [f"window-{state}.png" for state in ("bypassed", "changed", "curve", "menu", "typed")]
        self.assertEqual(done.stdout.splitlines(), [str(pictures / name) for name in names + windows])
        for name in names[:-1] + windows:
            self.assertEqual((pictures / name).read_text().strip(), "a picture")
        calls = self.calls.read_text().splitlines()
        plots, calls = calls[:len(kinds)], calls[len(kinds):]
        self.assertEqual(sorted(call.split()[1:5] for call in plots), [["plot", "--force", "--json", kind] for kind in kinds])
        self.assertEqual([call.split()[:2] for call in calls],
                         [[":77:", command] for command in ("render", "edit", "edit", "--number", "render", "render")])
        self.assertIn("--scale 2", calls[2])
        # What a terminal shows at the end: a line without the text that it has overwritten.
        self.assertEqual((pictures / "render.png").read_text(),
                         "".join(f"$ ./run {call.split(' ', 1)[1]}\nall of it\n" for call in calls[-2:]))
        self.assert_server_ended()

    def test_fails_with_the_program(self):
        for part in ("edit", "--number", "render"):
            os.environ["BREAK"] = part
            self.addCleanup(os.environ.pop, "BREAK", None)
            done = self.run_script("manual")
            self.assertEqual((done.returncode, done.stdout), (1, ""), part)
            self.assert_server_ended()

    def test_fails_with_a_plot(self):
        os.environ["BREAK"] = "plot"
        self.addCleanup(os.environ.pop, "BREAK", None)
        done = self.run_script("manual")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertEqual(len(self.calls.read_text().splitlines()), 1)

    def test_holds_the_manual_to_the_built_program(self):
        self.assertEqual(self.run_script("manual").returncode, 0)
        self.assertEqual((self.folder / "figures").read_text().splitlines(),
                         [str(self.root / "build/program/Apps/varno/varno"), str(self.root / "docs/manual.md")])
        self.assertEqual((self.folder / "presets").read_text().splitlines(),
                         [str(self.root / "build/program/Apps/varno/varno"), str(self.root / "docs/presets.md")])

    def test_fails_with_the_figures(self):
        for part in ("FIGURES_FAIL", "PRESETS_FAIL"):
            with self.subTest(part):
                os.environ[part] = "1"
                try:
                    done = self.run_script("manual")
                finally:
                    del os.environ[part]
                self.assertEqual((done.returncode, done.stdout), (1, ""))

    def test_fails_with_the_window(self):
        os.environ["WINDOW_FAIL"] = "1"
        self.addCleanup(os.environ.pop, "WINDOW_FAIL")
        done = self.run_script("manual")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertFalse((self.root / "docs/pictures/window-changed.png").exists())

    def test_fails_with_the_host(self):
        os.environ["HOSTS_FAIL"] = "1"
        self.addCleanup(os.environ.pop, "HOSTS_FAIL")
        done = self.run_script("manual")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertFalse((self.root / "docs/pictures/jalv.png").exists())

    def test_fails_without_a_server(self):
        self.command("Xvfb", "echo no screen >&2\nexit 1\n")
        done = self.run_script("manual")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("run: the X server did not start", done.stderr)

    def test_takes_no_arguments(self):
        done = self.run_script("manual", "all")
        self.assertEqual((done.returncode, done.stderr), (2, "run: manual takes no arguments\n"))


if __name__ == "__main__":
    unittest.main()
