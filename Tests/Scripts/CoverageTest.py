"""./run coverage prints the share of lines of the product's files alone, and fails below the threshold."""
import unittest

from fixture import FixtureProject

TESTS_CMAKE = """
add_executable(fixture_test test.cpp)
target_include_directories(fixture_test PRIVATE ../Source)
target_link_libraries(fixture_test PRIVATE varno_settings)
add_test(NAME good COMMAND fixture_test)
"""

PRODUCT = """
#pragma once
inline int reached() {
    return 1;
}
"""

UNREACHED = """
inline int unreached() {
    return 2;
}
"""

TEST = """
#include "Product.h"

int main(int count, char**) {
    if (count == 100)
        return 1;
    return reached() - 1;
}
"""


class CoverageTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.write("Tests/CMakeLists.txt", TESTS_CMAKE)
        self.write("Tests/test.cpp", TEST)
        self.write("Source/Product.h", PRODUCT)

    def test_all_reached(self):
        done = self.run_script("coverage")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertRegex(done.stdout, r"Source/Product\.h +2 +2 +100%")
        self.assertRegex(done.stdout, r"TOTAL +2 +2 +100%")
        self.assertNotIn("test.cpp", done.stdout)

    def test_too_little(self):
        self.run_script("coverage")
        self.write("Source/Product.h", PRODUCT + UNREACHED)
        self.write("Tests/test.cpp", TEST.replace("count == 100", "count == 100 && unreached() == 2"))
        done = self.run_script("coverage")
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stdout, r"Source/Product\.h +4 +2 +50%")
        self.assertIn("failed minimum line coverage (got 50.0%, minimum 95.0%)", done.stderr)

    def test_what_is_left_of_a_source_that_is_no_more(self):
        self.write("Source/Gone.h", PRODUCT)
        self.write("Tests/gone.cpp", TEST.replace("Product", "Gone"))
        self.write("Tests/CMakeLists.txt", TESTS_CMAKE.replace("test.cpp", "gone.cpp"))
        self.run_script("coverage")
        (self.root / "Source/Gone.h").unlink()
        (self.root / "Tests/gone.cpp").unlink()
        self.write("Tests/CMakeLists.txt", TESTS_CMAKE)
        done = self.run_script("coverage")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertNotIn("Gone", done.stdout)

    def test_a_failing_test(self):
        self.write("Tests/test.cpp", TEST.replace("count == 100", "count == 1"))
        self.assertEqual(self.run_script("coverage").returncode, 1)


if __name__ == "__main__":
    unittest.main()
