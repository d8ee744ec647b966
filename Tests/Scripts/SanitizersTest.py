"""Each sanitizer step fails with a fault of its kind and passes without."""
import unittest

from fixture import FixtureProject

OUT_OF_BOUNDS = """
#include <vector>

int main(int count, char**) {
    const std::vector<int> few(1);
    return few.data()[count];
}
"""

OVERFLOW = """
#include <limits>

int main(int count, char**) {
    const int most = std::numeric_limits<int>::max();
    return (most + count) & 1;
}
"""

LEAK = """
int main(int count, char**) {
    volatile int* lost = new int(count);
    lost = nullptr;
    return lost == nullptr ? 0 : 1;
}
"""

RACE = """
#include <thread>

int main() {
    int shared = 0;
    std::thread other([&shared] { ++shared; });
    ++shared;
    other.join();
    return shared > 2 ? 1 : 0;
}
"""


class SanitizersTest(FixtureProject):
    def assert_step(self, name, test, passes, said=""):
        self.write("Tests/test.cpp", test)
        done = self.run_script("test", name)
        self.assertEqual(self.last_line(done), "1 passed, 0 failed" if passes else "0 passed, 1 failed", done.stderr)
        self.assertIn(said, done.stderr)

    def test_address_and_undefined_behaviour(self):
        self.assert_step("asan-ubsan", "int main() {\n    return 0;\n}\n", passes=True)
        self.assert_step("asan-ubsan", OUT_OF_BOUNDS, passes=False, said="AddressSanitizer: heap-buffer-overflow")
        self.assert_step("asan-ubsan", OVERFLOW, passes=False, said="runtime error: signed integer overflow")
        self.assert_step("asan-ubsan", LEAK, passes=False, said="LeakSanitizer: detected memory leaks")

    def test_threads(self):
        self.assert_step("tsan", "int main() {\n    return 0;\n}\n", passes=True)
        self.assert_step("tsan", RACE, passes=False, said="ThreadSanitizer: data race")


if __name__ == "__main__":
    unittest.main()
