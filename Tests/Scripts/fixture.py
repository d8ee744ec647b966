"""A small project in a folder of its own, with this project's run script, and a system with a fake apt."""
import os
import pathlib
import shutil
import stat
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

CMAKE = """
cmake_minimum_required(VERSION 3.25)
project(fixture LANGUAGES CXX)
option(VARNO_TESTS "" ON)
set(VARNO_SANITIZE "" CACHE STRING "")
option(VARNO_COVERAGE "" OFF)
include(cmake/VarnoTarget.cmake)
add_subdirectory(Apps/varno)
if(VARNO_TESTS)
  enable_testing()
  add_subdirectory(Tests)
endif()
"""

PROGRAM_CMAKE = """
add_executable(varno main.cpp)
target_link_libraries(varno PRIVATE varno_settings)
add_custom_target(Varno-S)
"""

# Prints its folder, its arguments and its input.
PROGRAM = """
#include <cstdio>
#include <filesystem>

int main(int count, char** arguments) {
    std::printf("in %s:", std::filesystem::current_path().c_str());
    for (int i = 1; i < count; ++i)
        std::printf(" <%s>", arguments[i]);
    for (int c = std::getchar(); c != EOF; c = std::getchar())
        std::putchar(c);
    return 3;
}
"""

TESTS_CMAKE = """
add_executable(fixture_threaded test.cpp)
target_link_libraries(fixture_threaded PRIVATE varno_settings)
add_dependencies(threaded_tests fixture_threaded)
add_test(NAME good COMMAND fixture_threaded)
set_tests_properties(good PROPERTIES LABELS fixture_threaded)
"""

TEST = """
int main() {
    return 0;
}
"""


class FixtureProject(unittest.TestCase):
    """Gives each test self.root, a project that builds, and self.run_script to call its ./run."""

    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="varno-run-")).resolve()
        self.addCleanup(shutil.rmtree, self.folder)
        self.root = self.folder / "project"
        for folder in ("Scripts", "cmake", "examples"):
            shutil.copytree(ROOT / folder, self.root / folder)
        for file in ("run", "CMakePresets.json", ".clang-format", ".clang-tidy"):
            shutil.copy(ROOT / file, self.root / file)
        (self.root / ".ci").mkdir()
        shutil.copy(ROOT / ".ci/run", self.root / ".ci/run")
        self.write("CMakeLists.txt", CMAKE)
        self.write("Apps/varno/CMakeLists.txt", PROGRAM_CMAKE)
        self.write("Apps/varno/main.cpp", PROGRAM)
        self.write("Tests/CMakeLists.txt", TESTS_CMAKE)
        self.write("Tests/test.cpp", TEST)
        self.commands = self.folder / "commands"
        self.commands.mkdir()

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text.lstrip("\n"))

    def command(self, name, script):
        """Puts a command of that name first in PATH."""
        path = self.commands / name
        path.write_text("#!/usr/bin/env bash\n" + script)
        path.chmod(path.stat().st_mode | stat.S_IXUSR | stat.S_IXGRP | stat.S_IXOTH)

    def counted(self, name):
        """Makes calls of a command countable: returns a function that returns the calls so far."""
        log = self.folder / f"{name}.calls"
        self.command(name, f'echo "$*" >>"{log}"\nexec {shutil.which(name)} "$@"\n')
        return lambda: log.read_text().splitlines() if log.exists() else []

    def environment(self):
        # This project needs no library whose source would be fetched.
        changed = {"PATH": f"{self.commands}:{os.environ['PATH']}", "TERM": "dumb", "VSTGUI_SOURCE_DIR": "unused"}
        return {**os.environ, **changed}

    def run_script(self, *arguments, cwd=None, stdin="", script=None, prefix=()):
        return subprocess.run([*prefix, str(script or self.root / "run"), *arguments], cwd=cwd or self.folder,
                              env=self.environment(), input=stdin, capture_output=True, text=True, check=False)

    def last_line(self, done):
        return done.stdout.splitlines()[-1]
