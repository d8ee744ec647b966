"""clang-tidy finds a fault in a source and in a header of the project, and checks again only what has changed."""
import shutil
import unittest

from fixture import FixtureProject

SOUND = "int main() {\n    return 0;\n}\n"
FAULTY = "int main() {\n    int* nothing = 0;\n    return nothing == nullptr ? 0 : 1;\n}\n"


class TidyTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.write("Apps/varno/main.cpp", SOUND)
        self.looks = self.counted("clang-tidy-14")

    def tidy(self, step="tidy"):
        """The last line of the step, its output, and the sources that it checked."""
        before = len(self.looks())
        done = self.run_script("test", step)
        looked_at = [call.split("/")[-1] for call in self.looks()[before:] if "--version" not in call]
        return self.last_line(done), done.stderr, sorted(looked_at)

    def test_faults_and_changes(self):
        self.assertEqual(self.tidy()[::2], ("1 passed, 0 failed", ["main.cpp"]))
        self.assertEqual(self.tidy()[::2], ("1 passed, 0 failed", []))

        self.write("Apps/varno/main.cpp", FAULTY)
        for _ in range(2):  # a fault is found again, and only there
            last_line, said, looked_at = self.tidy()
            self.assertEqual((last_line, looked_at), ("0 passed, 1 failed", ["main.cpp"]))
            self.assertIn("main.cpp:2:20: error: use nullptr", said)

        self.write("Apps/varno/main.cpp", SOUND)
        self.assertEqual(self.tidy()[::2], ("1 passed, 0 failed", []))

    def test_tests_are_a_step_of_their_own(self):
        self.assertEqual(self.tidy("tidy-tests")[::2], ("1 passed, 0 failed", ["test.cpp"]))

    def test_headers_count(self):
        self.write("Apps/varno/part.h", "#pragma once\ninline int* part() {\n    return nullptr;\n}\n")
        self.write("Apps/varno/main.cpp", '#include "part.h"\n\nint main() {\n    return part() == nullptr ? 0 : 1;\n}\n')
        self.assertEqual(self.tidy()[0], "1 passed, 0 failed")
        self.write("Apps/varno/part.h", "#pragma once\ninline int* part() {\n    return 0;\n}\n")
        last_line, said, looked_at = self.tidy()
        self.assertEqual((last_line, looked_at), ("0 passed, 1 failed", ["main.cpp"]))
        self.assertIn("part.h:3:12: error: use nullptr", said)

    def test_headers_count_that_are_included_through_a_link_to_their_folder(self):
        self.write("Host/part.h", "#pragma once\ninline int* part() {\n    return 0;\n}\n")
        self.write("Apps/varno/main.cpp", '#include "Host/part.h"\n\nint main() {\n    return part() == nullptr ? 0 : 1;\n}\n')
        links = "${PROJECT_BINARY_DIR}/include/varno_host"
        self.write("Apps/varno/CMakeLists.txt", (self.root / "Apps/varno/CMakeLists.txt").read_text() +
                   f'file(MAKE_DIRECTORY "{links}")\n'
                   f'file(CREATE_LINK "${{PROJECT_SOURCE_DIR}}/Host" "{links}/Host" SYMBOLIC)\n'
                   f'target_include_directories(varno PRIVATE "{links}")\n')
        last_line, said, looked_at = self.tidy()
        self.assertEqual((last_line, looked_at), ("0 passed, 1 failed", ["main.cpp"]))
        self.assertIn("Host/part.h:3:12: error: use nullptr", said)

    def add(self, name, text):
        """Adds a source to the program."""
        self.write("Apps/varno/CMakeLists.txt", (self.root / "Apps/varno/CMakeLists.txt").read_text() +
                   f"target_sources(varno PRIVATE {name})\n")
        self.write(f"Apps/varno/{name}", text)

    def test_sources_of_a_folder_are_looked_at_together(self):
        self.write("Apps/varno/main.cpp", f'#include "part.h"\n\n{SOUND}')
        self.write("Apps/varno/part.h", "#pragma once\nint part();\n")
        self.add("part.cpp", '#include "part.h"\n\nint part() {\n    return 1;\n}\n')
        last_line, _, looked_at = self.tidy()
        self.assertEqual((last_line, len(looked_at)), ("1 passed, 0 failed", 1))
        self.assertRegex(looked_at[0], r"^joined-\w+\.cpp$")
        self.assertEqual(self.tidy()[::2], ("1 passed, 0 failed", []))
        self.assertFalse(list((self.root / "Apps/varno").glob("joined-*")))

    def test_a_fault_among_others_is_found_where_it_is(self):
        # The last one needs the analyzer, which follows what stands in the file itself only.
        for fault, text in (("use nullptr", "int* more() {\n    return 0;\n}\n"),
                            ("duplicate include", "#include <string>\n#include <string>\n\nstd::string more() {\n    return {};\n}\n"),
                            ("Division by zero", "int more(int a) {\n    if (a == 0) {\n        return 1 / a;\n    }\n    return a;\n}\n")):
            with self.subTest(fault):
                if not (self.root / "Apps/varno/more.cpp").exists():
                    self.add("more.cpp", text)
                self.write("Apps/varno/more.cpp", text)
                self.write("Apps/varno/main.cpp", f"// {fault}\n{SOUND}")
                last_line, said, looked_at = self.tidy()
                self.assertEqual((last_line, looked_at[1:]), ("0 passed, 1 failed", ["main.cpp", "more.cpp"]))
                self.assertRegex(said, rf"/more\.cpp:\d+:\d+: error: {fault}")
                self.assertNotRegex(said, "main.cpp:|joined-")

    def test_each_source_includes_what_it_uses(self):
        self.write("Apps/varno/main.cpp", f"#include <string>\n\nstd::string text() {{\n    return {{}};\n}}\n{SOUND}")
        self.add("more.cpp", "std::string more() {\n    return {};\n}\n")
        for _ in range(2):  # a fault is found again
            last_line, said, _ = self.tidy("sources")
            self.assertEqual(last_line, "0 passed, 1 failed")
            self.assertRegex(said, r"/more\.cpp:1:1: error: use of undeclared identifier 'std'")
        self.write("Apps/varno/more.cpp", "#include <string>\n\nstd::string more() {\n    return {};\n}\n")
        self.assertEqual(self.tidy("sources")[::2], ("1 passed, 0 failed", []))
        self.assertEqual(self.tidy()[0], "1 passed, 0 failed")

    def test_sources_that_do_not_stand_together_are_looked_at_alone(self):
        part = "namespace {\nint one() {\n    return 1;\n}\n} // namespace\n"
        self.write("Apps/varno/main.cpp", f"{part}int main() {{\n    return one();\n}}\n")
        self.add("more.cpp", f"{part}int more() {{\n    return one();\n}}\n")
        last_line, _, looked_at = self.tidy()
        self.assertEqual((last_line, looked_at[1:]), ("1 passed, 0 failed", ["main.cpp", "more.cpp"]))

    def test_what_is_written_while_it_is_looked_at_is_not_known(self):
        # The fault is there when the state is taken, and when the next run begins.
        source, moment = self.root / "Apps/varno/main.cpp", self.folder / "moment"
        self.write("Apps/varno/main.cpp", FAULTY)
        (self.folder / "sound").write_text(SOUND)
        moment.touch()
        self.command("clang-tidy-14", f'if [[ $* == *main.cpp && -e "{moment}" ]]; then\n    rm "{moment}"\n'
                     f'    cp "{self.folder}/sound" "{source}"\nfi\nexec {shutil.which("clang-tidy-14")} "$@"\n')
        self.assertEqual(self.tidy()[0], "1 passed, 0 failed")
        self.assertFalse(moment.exists())
        self.write("Apps/varno/main.cpp", FAULTY)
        self.assertEqual(self.tidy()[0], "0 passed, 1 failed")

    def test_a_clean_source_is_so_for_every_choice_of_folders(self):
        # A header of another folder than those that are named.
        self.write("Host/part.h", "#pragma once\ninline int* part() {\n    return 0;\n}\n")
        self.write("Apps/varno/main.cpp", '#include "../../Host/part.h"\n\nint main() {\n    return part() == nullptr ? 0 : 1;\n}\n')
        last_line, said, _ = self.tidy()
        self.assertEqual(last_line, "0 passed, 1 failed")
        done = self.run_script("build/tidy", "Apps", cwd=self.root, script=self.root / "Scripts/tidy")
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertRegex(done.stdout, r"Host/part\.h:3:12: error: use nullptr")

    def test_a_new_source_is_looked_at(self):
        self.tidy()
        self.add("more.cpp", "int* more() {\n    return 0;\n}\n")
        last_line, _, looked_at = self.tidy()
        self.assertEqual((last_line, looked_at), ("0 passed, 1 failed", ["more.cpp"]))

    def test_the_configuration_counts(self):
        self.tidy()
        self.write(".clang-tidy", "Checks: '-*,modernize-use-trailing-return-type'\n")
        last_line, said, _ = self.tidy()
        self.assertEqual(last_line, "0 passed, 1 failed")
        self.assertIn("use a trailing return type", said)


if __name__ == "__main__":
    unittest.main()
