"""./run COMMAND brings the program up to date, prints only while it does so, and is replaced by the program."""
import os
import pty
import subprocess
import unittest

from fixture import FixtureProject


class ProgramTest(FixtureProject):
    def test_builds_and_becomes_the_program(self):
        elsewhere = self.folder / "else where"
        elsewhere.mkdir()
        done = self.run_script("render", "a b", "", "--help", cwd=elsewhere, stdin="audio\n")
        self.assertEqual(done.stdout, f"in {elsewhere}: <render> <a b> <> <--help>audio\n")
        self.assertEqual(done.returncode, 3)
        self.assertIn("run: configuring (program)\n", done.stderr)
        self.assertIn("run: building (program) [1/2]\n", done.stderr)
        self.assertTrue(all(line.startswith("run: ") for line in done.stderr.splitlines()), done.stderr)

    def test_second_call_prints_and_does_nothing_of_its_own(self):
        self.run_script("render")
        cmake_calls, package_queries = self.counted("cmake"), self.counted("dpkg-query")
        done = self.run_script("describe")
        self.assertEqual((done.stdout, done.stderr), (f"in {self.folder}: <describe>", ""))
        self.assertEqual(cmake_calls() + package_queries(), [])

    def test_changes_are_built(self):
        self.run_script("render")
        source = self.root / "Apps/varno/main.cpp"
        source.write_text(source.read_text().replace("in %s:", "at %s:"))
        self.assertEqual(self.run_script("render").stdout, f"at {self.folder}: <render>")

    def test_a_deleted_file_is_noticed(self):
        self.write("Apps/varno/extra.h", "#define EXTRA\n")
        self.run_script("render")
        (self.root / "Apps/varno/extra.h").unlink()
        cmake_calls = self.counted("cmake")
        self.run_script("render")
        self.assertNotEqual(cmake_calls(), [])

    def test_silent_where_a_change_needs_no_building(self):
        self.run_script("render")
        self.write("Apps/varno/README.md", "Words.\n")
        self.assertEqual(self.run_script("render").stderr, "")

    def test_other_folders_do_not_matter(self):
        self.run_script("render")
        self.write("Tests/new.cpp", "")
        self.write("docs/new.md", "")
        self.write("rendered.wav", "")
        cmake_calls = self.counted("cmake")
        self.run_script("render")
        self.assertEqual(cmake_calls(), [])

    def test_reached_through_a_link(self):
        link = self.folder / "varno-link"
        link.symlink_to(self.root / "run")
        self.assertEqual(self.run_script("render", script=link).stdout, f"in {self.folder}: <render>")

    def test_a_failed_build_prints_command_and_reason_and_runs_nothing(self):
        self.run_script("render")
        self.write("Apps/varno/main.cpp", "int main() { return undeclared; }\n")
        done = self.run_script("render")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertRegex(done.stderr, r"run: failed: cmake --build build/program .*--target varno Varno-S\n")
        self.assertRegex(done.stderr, r"main.cpp:1:21: error: .undeclared. was not declared")

    def test_a_warning_stops_the_tests_and_nobody_else(self):
        self.write("Apps/varno/main.cpp", "int main() {\n    int unused;\n    return 3;\n}\n")
        self.assertEqual(self.run_script("render").returncode, 3)
        done = self.run_script("test", "gcc")
        self.assertEqual(done.returncode, 1)
        self.assertIn("error: unused variable", done.stderr)

    def test_builds_again_after_a_failure(self):
        good = (self.root / "Apps/varno/main.cpp").read_text()
        self.write("Apps/varno/main.cpp", "int main() { return undeclared; }\n")
        self.assertEqual(self.run_script("render").returncode, 1)
        self.write("Apps/varno/main.cpp", good)
        self.assertEqual(self.run_script("render").returncode, 3)

    def test_a_failed_configuration_prints_command_and_reason(self):
        self.write("CMakeLists.txt", "cmake_minimum_required(VERSION 3.25)\nproject(x CXX)\nfind_package(Nowhere REQUIRED)\n")
        done = self.run_script("render")
        self.assertEqual(done.returncode, 1)
        self.assertIn("run: failed: cmake --fresh --preset program\n", done.stderr)
        self.assertIn("Could not find a package configuration file provided by \"Nowhere\"", done.stderr)

    def test_survives_a_move(self):
        self.run_script("render")
        moved = self.folder / "moved"
        self.root.rename(moved)
        self.assertEqual(self.run_script("render", script=moved / "run").stdout, f"in {self.folder}: <render>")

    def test_two_at_once_build_once(self):
        both = [subprocess.Popen([self.root / "run", "render"], cwd=self.folder, env=self.environment(), text=True,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                for _ in range(2)]
        said = [process.communicate() for process in both]
        self.assertEqual([out for out, _ in said], [f"in {self.folder}: <render>"] * 2)
        self.assertEqual("".join(err for _, err in said).count("run: building (program) [1/2]"), 1)

    def test_progress_on_a_terminal_leaves_no_trace(self):
        terminal, end = pty.openpty()
        process = subprocess.Popen([self.root / "run", "render"], cwd=self.folder,
                                   env={**self.environment(), "TERM": "xterm"}, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=end)
        os.close(end)
        said = b""
        while chunk := self.read(terminal):
            said += chunk
        process.wait()
        os.close(terminal)
        self.assertIn(b"\r\x1b[Krun: building (program) [1/2] ", said)
        self.assertTrue(said.endswith(b"\r\x1b[K"), said[-80:])

    @staticmethod
    def read(terminal):
        try:
            return os.read(terminal, 4096)
        except OSError:  # the other end is closed
            return b""

    def test_help_is_the_script_s_own_and_builds_nothing(self):
        cmake_calls = self.counted("cmake")
        for arguments in ([], ["help"]):
            done = self.run_script(*arguments)
            self.assertEqual((done.returncode, done.stderr, done.stdout.splitlines()[0]),
                             (0, "", "usage: ./run [--no-install] COMMAND [ARGUMENTS...]"))
        self.assertEqual(cmake_calls(), [])


if __name__ == "__main__":
    unittest.main()
