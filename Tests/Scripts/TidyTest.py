"""clang-tidy finds a fault in a source and in a header of the project, and checks again only what has changed."""
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

    def test_a_new_source_is_looked_at(self):
        self.tidy()
        self.write("Apps/varno/CMakeLists.txt", (self.root / "Apps/varno/CMakeLists.txt").read_text() +
                   "target_sources(varno PRIVATE more.cpp)\n")
        self.write("Apps/varno/more.cpp", "int* more() {\n    return 0;\n}\n")
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
