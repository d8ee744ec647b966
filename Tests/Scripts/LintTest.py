"""Each step of lint accepts the correct project and finds a fault of its kind."""
import subprocess
import unittest

from fixture import FixtureProject

INTERFACES = """
add_library(Interfaces INTERFACE)
target_link_libraries(Interfaces INTERFACE varno_settings)
varno_check_headers(Interfaces ${CMAKE_CURRENT_SOURCE_DIR})
"""


class LintTest(FixtureProject):
    def assert_step(self, name, passes, said=""):
        done = self.run_script("test", name)
        self.assertEqual(self.last_line(done), "1 passed, 0 failed" if passes else "0 passed, 1 failed", done.stderr)
        if said:
            self.assertRegex(done.stderr, said)

    def test_format(self):
        self.assert_step("format", passes=True)
        self.write("Apps/varno/main.cpp", "int main( ) { return 0 ; }\n")
        self.assert_step("format", passes=False, said=r"main\.cpp:1:.*code should be clang-formatted")

    def test_format_of_every_folder(self):
        self.write("Anywhere/Else/thing.cpp", "int thing( ) { return 0 ; }\n")
        self.write("build/package/Host/other.cpp", "int other( ) { return 0 ; }\n")
        self.assert_step("format", passes=False, said=r"Anywhere/Else/thing\.cpp:1:.*code should be clang-formatted")
        self.write("Anywhere/Else/thing.cpp", "int thing() {\n    return 0;\n}\n")
        self.assert_step("format", passes=True)

    def test_format_command_mends_it(self):
        self.write("Apps/varno/main.cpp", "int main( ) {return 0 ; }\n")
        self.assertEqual(self.run_script("format").returncode, 0)
        self.assertEqual((self.root / "Apps/varno/main.cpp").read_text(), "int main() {\n    return 0;\n}\n")
        self.assert_step("format", passes=True)

    def test_a_release_without_the_tools_leaves_their_steps_out_and_says_so(self):
        for file in ("Scripts/checks.sh", "Scripts/tidy"):
            path = self.root / file
            path.write_text(path.read_text().replace("clang-format-14", "clang-format-nowhere")
                            .replace("clang-tidy-14", "clang-tidy-nowhere"))
        self.write("Tests/CMakeLists.txt", "\n")
        done = self.run_script("lint")
        self.assertRegex(done.stdout, r"\nleft out here: format tidy \(Debian 12 judges them, with clang-format 14 and "
                                      r"clang-tidy 14\)\n\d passed, \d failed\n\Z")
        self.assertNotRegex(done.stdout, r"(?m)^(format|tidy) ")
        for arguments, said in ((["test", "text", "tidy"], "run: the step 'tidy' needs clang-tidy-nowhere, which Debian 12 has\n"),
                                (["format"], "run: format needs clang-format-nowhere, which Debian 12 has\n")):
            done = self.run_script(*arguments)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (1, "", said))

    def test_comments(self):
        self.write("Interfaces/IThing.h", "struct IThing {\n    /// Does what is to be done. [any]\n"
                                          "    virtual void Do() = 0;\n};\n")
        self.assert_step("comments", passes=True)
        self.write("Interfaces/IThing.h", "struct IThing {\n    virtual void Do() = 0;\n};\n")
        self.assert_step("comments", passes=False, said=r"IThing\.h:2: Do: has no /// comment")

    def test_guards(self):
        guarded = "#ifndef VARNO_HOST_THING_H\n#define VARNO_HOST_THING_H\n\nint thing();\n\n#endif\n"
        self.write("Host/Thing.h", guarded)
        self.assert_step("guards", passes=True)
        for fault, said in ((guarded.replace("HOST", "OTHER"), "expected VARNO_HOST_THING_H"),
                            ("#pragma once\n\nint thing();\n", "is not enclosed by #ifndef VARNO_HOST_THING_H"),
                            ("int thing();\n", "is not enclosed by #ifndef VARNO_HOST_THING_H")):
            self.write("Host/Thing.h", fault)
            self.assert_step("guards", passes=False, said=r"Host/Thing\.h:1: .*" + said)
            subprocess.run([self.root / "Scripts/check-guards", "--fix", self.root], check=True)
            self.assertEqual((self.root / "Host/Thing.h").read_text(), guarded)
        # In every folder, but not in copies of the tree in the build folder.
        self.write("Anywhere/Else.h", guarded)
        self.write("build/package/Else.h", "int thing();\n")
        self.assert_step("guards", passes=False, said=r"Anywhere/Else\.h:1: .*VARNO_ANYWHERE_ELSE_H\nrun:")

    def test_includes(self):
        self.write("Host/Host.h", "\n")
        self.write("Source/Bad.h", "\n")
        self.assert_step("includes", passes=True)
        self.write("Source/Bad.h", '#include "Host.h"\n')
        self.assert_step("includes", passes=False, said=r"Source/Bad\.h:1: Source may not include Host/Host\.h")

    def test_text(self):
        self.assert_step("text", passes=True)
        self.write("docs/bad.md", "blank \n")
        self.assert_step("text", passes=False, said=r"docs/bad\.md:1: blanks")

    def test_shell(self):
        self.assert_step("shell", passes=True)
        self.write("Scripts/console.sh", (self.root / "Scripts/console.sh").read_text() + "unquoted() { rm $1; }\n")
        self.assert_step("shell", passes=False, said="Double quote to prevent globbing")

    def test_headers(self):
        self.write("CMakeLists.txt", (self.root / "CMakeLists.txt").read_text() + "add_subdirectory(Interfaces)\n")
        self.write("Interfaces/CMakeLists.txt", INTERFACES)
        self.write("Interfaces/Alone.h", "#include <cstdint>\ninline int32_t one() {\n    return 1;\n}\n")
        self.assert_step("headers", passes=True)
        self.write("Interfaces/Alone.h", "inline int32_t one() {\n    return 1;\n}\n")
        self.assert_step("headers", passes=False, said="int32_t. does not name a type")


if __name__ == "__main__":
    unittest.main()
