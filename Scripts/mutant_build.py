"""Builds and runs the tests of a changed file, for ./run mutants.

Works in a copy of the project. Before a file is changed, everything that ninja would make from it is put aside, and put
back afterwards: neither the change nor its end leaves anything to build again.
"""
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import time

PRESET = "mutants"
# The folders whose tests judge the product; within each, a file's mirror comes first.
TEST_FOLDERS = ("Tests/Interfaces", "Tests/Libs", "Tests/Source", "Tests/Integration")
LAST_FOLDER = "Tests/Integration"
LIMIT_FACTOR = 10.0
FIRST_LIMIT_SECONDS = 600.0  # of a program that has not passed yet
MEMORY_BYTES = 8 << 30
SUITE = re.compile(r"\b(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P|RC_GTEST_PROP|RC_GTEST_FIXTURE_PROP)\(\s*(\w+)")


class BuildError(Exception):
    """What does not build, or fails, without any change."""


def project_files(root):
    """The names of the files that git knows or would know; of all but built ones where it does not."""
    command = ["git", "-c", "safe.directory=*", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    try:
        listed = subprocess.run(command, capture_output=True, check=True).stdout.decode().split("\0")
    except (OSError, subprocess.CalledProcessError):
        listed = [path.relative_to(root).as_posix() for path in root.rglob("*")]
    return {name for name in listed if name and not name.startswith(("build/", ".git/")) and (root / name).is_file()}


def copy_project(root, copy):
    """Brings the copy up to date. Files that are equal keep their times."""
    names = project_files(root)
    for name in names:
        source, target = root / name, copy / name
        if not target.is_file() or target.read_bytes() != source.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, target)
    for path in copy.rglob("*"):
        name = path.relative_to(copy).as_posix()
        if not name.startswith("build/") and path.is_file() and name not in names:
            path.unlink()


class Graph:
    """What ninja makes from what."""

    def __init__(self, build):
        self.build = build
        self.users = {}  # file -> files made from it
        self.phony = set()
        for names in self.statements():
            self.add(*names)
        self.add_dependencies()

    def statements(self):
        text = (self.build / "build.ninja").read_text().replace("$\n", "")
        for line in re.findall(r"^build (.*)", text, re.M):
            parts = re.split(r"(?<!\$): ", line, maxsplit=1)
            rule, _, inputs = parts[1].partition(" ")
            inputs, _, earlier = inputs.partition("||")
            # What must only be there before is used by programs alone: modules that they load.
            used = self.paths(inputs) + (self.paths(earlier) if "LINKER" in rule else [])
            yield self.paths(parts[0]), used, rule == "phony"

    def paths(self, words):
        words = re.split(r"(?<!\$) +", words.strip())
        plain = (re.sub(r"\$(.)", r"\1", word) for word in words if word not in ("", "|"))
        return [os.path.normpath(self.build / word) for word in plain]

    def add(self, outputs, inputs, is_phony):
        for output in outputs:
            if is_phony:
                self.phony.add(output)
            for source in inputs:
                self.users.setdefault(source, set()).add(output)

    def add_dependencies(self):
        """The headers, which the compiler reported."""
        output = None
        listed = subprocess.run(["ninja", "-C", str(self.build), "-t", "deps"], capture_output=True, text=True, check=True)
        for line in listed.stdout.splitlines():
            if not line.startswith(" "):
                output = os.path.normpath(self.build / line.split(": #deps")[0]) if line else None
            elif output is not None:
                self.users.setdefault(os.path.normpath(self.build / line.strip()), set()).add(output)

    def made_from(self, path):
        """Everything that is made from a file, at any distance."""
        found, waiting = set(), [str(path)]
        while waiting:
            for user in self.users.get(waiting.pop(), ()):
                if user not in found:
                    found.add(user)
                    waiting.append(user)
        return found

    def files_from(self, path):
        return {made for made in self.made_from(path) if made not in self.phony}


class Project:
    """The copy, built without any change."""

    def __init__(self, root, copy, report, least_limit):
        self.copy = copy
        self.build = copy / "build" / PRESET
        self.report = report
        copy_project(root, copy)
        self.configure()
        self.programs = self.list_programs()
        self.report(f"building {len(self.programs)} test programs")
        self.must_build(self.programs)
        self.graph = Graph(self.build)
        self.limits = {}  # seconds
        self.least_limit = least_limit

    def configure(self):
        preset = self.copy / "CMakePresets.json"
        cache = self.build / "CMakeCache.txt"
        if not (self.build / "build.ninja").exists() or preset.stat().st_mtime > cache.stat().st_mtime:
            done = subprocess.run(["cmake", "--fresh", "--preset", PRESET], cwd=self.copy, capture_output=True, text=True)
            if done.returncode != 0:
                raise BuildError(f"cmake --preset {PRESET} failed:\n{done.stdout}{done.stderr}")

    def list_programs(self):
        """Test program -> the folder in which ctest runs it."""
        self.must_ninja("build.ninja")
        programs = {}
        for listing in self.build.rglob("CTestTestfile.cmake"):
            for program in re.findall(r'^add_test\(\S+ "([^"]+)"', listing.read_text(), re.M):
                if pathlib.Path(program).is_relative_to(self.build) and self.folder_of(program).startswith(TEST_FOLDERS):
                    programs[program] = listing.parent
        return programs

    def folder_of(self, program):
        return pathlib.Path(program).parent.relative_to(self.build).as_posix()

    def ninja(self, targets):
        names = [os.path.relpath(target, self.build) for target in targets]
        return subprocess.run(["ninja", "-C", str(self.build), *names], capture_output=True, text=True, check=False)

    def must_ninja(self, *names):
        done = self.ninja([self.build / name for name in names])
        if done.returncode != 0:
            raise BuildError("the tests do not build without any change:\n" + done.stdout[-4000:])

    def must_build(self, programs):
        self.must_ninja(*(os.path.relpath(program, self.build) for program in programs))

    def programs_of(self, file):
        """The test programs that hold or load the file: its mirror's first, those of the whole system last."""
        made = self.graph.made_from(self.copy / file)
        own = {self.program_of(test) for test in self.mirror(file)}
        folder = self.mirror_folder(file)

        def order(program):
            place = self.folder_of(program)
            return (program not in own, place.startswith(LAST_FOLDER), place != folder, program)
        return sorted((program for program in self.programs if program in made), key=order)

    @staticmethod
    def mirror_folder(file):
        return "Tests/" + "/".join(part for part in pathlib.PurePath(file).parent.parts if part != "source")

    def mirror(self, file):
        """The test files that mirror a file: those whose names begin with its name."""
        stem = re.sub(r"(-inl|_POSIX|_Linux)$", "", pathlib.PurePath(file).stem)
        return sorted((self.copy / self.mirror_folder(file)).glob(f"{stem}*Test.cpp"))

    def program_of(self, test):
        made = self.graph.made_from(test)
        return next((program for program in self.programs if program in made), None)

    def stages(self, file):
        """(program, filter) in the order in which they run: the mirror's tests alone, then whole programs."""
        programs = self.programs_of(file)
        suites = sorted({suite for test in self.mirror(file) if self.program_of(test) == next(iter(programs), None)
                         for suite in SUITE.findall(test.read_text())})
        if suites:
            yield programs[0], ":".join(f"{suite}.*:*/{suite}.*:{suite}/*" for suite in suites)
        for program in programs:
            yield program, "*"

    def is_sound(self, program):
        """Whether a program passes without any change; where it does not, it is left out from now on."""
        if program not in self.limits:
            self.report(f"running {os.path.basename(program)} without any change")
            started = time.monotonic()
            failed = self.run_tests(program, "*", FIRST_LIMIT_SECONDS)
            if failed:
                self.report(f"{os.path.basename(program)} is left out: it fails without any change ({failed})")
                del self.programs[program]
                return False
            self.limit(program, time.monotonic() - started)
        return True

    def limit(self, program, seconds):
        """Takes what a program took when it passed."""
        self.limits.setdefault(program, max(self.least_limit, LIMIT_FACTOR * seconds))

    def run_tests(self, program, tests, limit):
        """The first test that fails, "timed out", or nothing."""
        environment = {**os.environ, "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"}
        running = subprocess.Popen([program, f"--gtest_filter={tests}"], env=environment, start_new_session=True,
                                   cwd=self.programs[program], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.DEVNULL, text=True, errors="replace", preexec_fn=limit_memory)
        try:
            output = running.communicate(timeout=limit)[0]
        except subprocess.TimeoutExpired:
            return "timed out"
        finally:
            end_group(running)
        if running.returncode == 0:
            return ""
        failed = re.search(r"\[  FAILED  \] ([\w/.]+\.[\w/]+)", output)
        return failed.group(1) if failed else os.path.basename(program)

    def judge(self, change):
        """("killed", test), ("timed out", program), ("does not compile", "") or ("survived", "")."""
        while programs := self.programs_of(change.file):
            if self.is_sound(programs[0]):
                verdict, by, program = self.judged_once(change)
                if program is None or self.is_sound(program):
                    return verdict, by
        raise BuildError(f"{change.file}: every test program fails without any change")

    def judged_once(self, change):
        """The verdict and the program that killed, if one did."""
        stages = list(self.stages(change.file))
        source = self.copy / change.file
        original, times = source.read_bytes(), os.stat(source)
        with Aside(self.graph.files_from(source), self.copy / "build" / "aside"):
            try:
                source.write_text(change.apply(original.decode()))
                return self.first_failure(stages)
            finally:
                source.write_bytes(original)
                os.utime(source, ns=(times.st_atime_ns, times.st_mtime_ns))

    def first_failure(self, stages):
        for program, tests in stages:
            if self.ninja([program]).returncode != 0:
                return "does not compile", "", None
            started = time.monotonic()
            failed = self.run_tests(program, tests, self.limits.get(program, FIRST_LIMIT_SECONDS))
            if failed == "timed out":
                return failed, os.path.basename(program), program
            if failed:
                return "killed", failed, program
            if tests == "*":
                self.limit(program, time.monotonic() - started)
        return "survived", "", None


class Aside:
    """Puts files aside while it is open; puts them back at its end, in the place of those that were made meanwhile."""

    def __init__(self, files, folder):
        self.folder = folder
        self.moved = {file: folder / str(number) for number, file in enumerate(sorted(files)) if os.path.isfile(file)}

    def __enter__(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        (self.folder / "list").write_text(json.dumps({file: str(place) for file, place in self.moved.items()}))
        for file, place in self.moved.items():
            os.replace(file, place)

    def __exit__(self, *_):
        put_back(self.folder)


def put_back(folder):
    """Also after an end that left no time for it."""
    index = folder / "list"
    if index.exists():
        for file, place in json.loads(index.read_text()).items():
            if os.path.exists(place):
                os.replace(place, file)
    shutil.rmtree(folder, ignore_errors=True)


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))


def end_group(process):
    """Ends a test with all that it started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()
    if process.stdout is not None:
        process.stdout.close()
