"""A batch that is killed again and again and given again, until its work is done."""
import dataclasses
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

import clips

TITLE = "a batch killed at 100 random moments in each of several ways, and given again until its work is done"
PACKAGES = ()
TARGETS = ("varno", "varno_no_unnamed_files")

KILLS, SHORT_KILLS = 100, 1
FILES, SHORT_FILES = 400, 40
# The most files that a batch ends before it is killed.
MOST_FILES_TO_KILL = 60
# Where fewer are left to do, the batch is no longer killed.
LEAST_LEFT = 30
# In seconds, from the end of a file to the kill: about what a file takes.
MOST_WAIT_S = 0.004
# From the start of the program to a kill before its first file has ended.
MOST_START_S = 0.03
MEMORY_FOLDER = pathlib.Path("/dev/shm")
SETTINGS = ("--set", "Hot=0.5")
FORMER_SETTINGS = ("--set", "Hot=0.25")


@dataclasses.dataclass(frozen=True)
class Way:
    """How a batch is done."""
    name: str
    jobs: int = 2
    keeps_record: bool = True
    replaces: bool = False        # outputs of other settings
    has_unnamed: bool = True      # files, where the file system has them
    is_in_memory: bool = False    # the folder of the outputs

    def environment(self, work):
        return {} if self.has_unnamed else {"LD_PRELOAD": str(work.build / "Tests/Endurance/libvarno_no_unnamed_files.so")}


WAYS = (Way("new outputs", jobs=1, keeps_record=False),
        Way("new outputs, two jobs, record"),
        Way("replaced outputs, two jobs, record", replaces=True),
        Way("new outputs in memory (tmpfs), two jobs, record", is_in_memory=True),
        Way("new outputs with hidden names, two jobs, record", has_unnamed=False),
        Way("replaced outputs with hidden names, two jobs, record", replaces=True, has_unnamed=False))


def contents(folder):
    """The files by their names, without hidden ones and the record."""
    return {path.name: path.read_bytes() for path in folder.glob("*.wav") if not path.name.startswith(".")}


def hidden(folder):
    return {path.name for path in folder.iterdir() if path.name.startswith(".")}


def lines_of(path):
    """What the whole lines of a record hold."""
    lines = []
    for line in path.read_text().splitlines() if path.exists() else []:
        try:
            lines.append(json.loads(line))
        except ValueError:  # cut off by a kill
            continue
    return lines


# What may be wrong, by the key of Killing.faults.
FAULTS = {"half": "files that are not whole under a final name", "stale": "temporary files that the next run leaves",
          "result": "outputs that are not those of an undisturbed batch", "end": "batches that end in error or leave work",
          "record": "lines of the record without an output"}


class Killing:
    """A batch in one way, in a folder of outputs."""

    def __init__(self, work, way, inputs, names, place):
        self.work, self.way, self.inputs, self.names = work, way, inputs, names
        self.target, self.reference, self.former = (place / name for name in ("out", "reference", "former"))
        self.faults = {key: [] for key in FAULTS}
        self.kills = self.rounds = self.leftovers = 0

    def command(self, target, settings=SETTINGS):
        record = ("--record", str(target / "record.jsonl")) if self.way.keeps_record else ()
        return [self.work.program, "render", "--json", "--skip-existing", "--jobs", str(self.way.jobs), "--out-dir",
                str(target), *record, *settings, "--", *self.names]

    def start(self, target, settings=SETTINGS):
        return subprocess.Popen(self.command(target, settings), cwd=self.inputs, stdin=subprocess.DEVNULL, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                env={**os.environ, **self.way.environment(self.work)})

    def complete(self, target, settings=SETTINGS):
        """Gives the batch and lets it end. Returns its status and report."""
        process = self.start(target, settings)
        out, err = process.communicate()
        if process.returncode != 0:
            raise RuntimeError(f"a batch that nothing disturbs ends with status {process.returncode}: {err[:500]}")
        return [json.loads(line) for line in out.splitlines()]

    def prepare(self):
        """Renders what is expected, and what is replaced."""
        for folder, settings in ((self.reference, SETTINGS), (self.former, FORMER_SETTINGS)):
            folder.mkdir(parents=True)
            if folder == self.reference or self.way.replaces:
                self.complete(folder, settings)
        self.expected, self.before = contents(self.reference), contents(self.former)

    def begin_round(self):
        """An empty folder, or one with the outputs of other settings."""
        shutil.rmtree(self.target, ignore_errors=True)
        self.target.mkdir()
        if self.way.replaces:
            shutil.copytree(self.former, self.target, dirs_exist_ok=True)
            record = self.target / "record.jsonl"
            record.write_text(record.read_text().replace(str(self.former), str(self.target)))
        self.rounds += 1

    def left(self):
        """How many files are still to do."""
        now = contents(self.target)
        return sum(now.get(name) != content for name, content in self.expected.items())

    def kill_once(self, left):
        """Starts the batch and kills it when some files have ended, at a random moment."""
        random = self.work.random
        stale = hidden(self.target)
        files = random.randrange(min(left, MOST_FILES_TO_KILL))
        process = self.start(self.target)
        done = 0
        for line in process.stdout if files else ():
            done += not json.loads(line)["skipped"]
            if done == files:
                break
        if not self.work.is_short:
            time.sleep(random.uniform(0.0, MOST_WAIT_S if files else MOST_START_S))
        process.kill()
        process.communicate()
        if process.returncode > 0:
            self.faults["end"].append(f"ended with status {process.returncode} before it was killed")
        self.kills += process.returncode != 0  # else it had no more than these files to do
        self.judge(stale if done else set())

    def judge(self, stale):
        """What a kill has left. `stale`: hidden files of before, which an output has removed."""
        for name, content in contents(self.target).items():
            if content not in (self.expected.get(name), self.before.get(name)):
                self.faults["half"].append(f"{name}: {len(content)} bytes")
        self.leftovers += len(hidden(self.target))
        self.faults["stale"] += sorted(stale & hidden(self.target))
        for line in lines_of(self.target / "record.jsonl"):
            if not pathlib.Path(line["output"]).exists():
                self.faults["record"].append(line["output"])

    def end_round(self):
        """Ends the work, and gives the batch once more, which then has nothing to do."""
        self.complete(self.target)
        now = contents(self.target)
        self.faults["result"] += sorted(name for name in {*now, *self.expected} if now.get(name) != self.expected.get(name))
        self.faults["stale"] += sorted(hidden(self.target))
        again = self.complete(self.target)
        self.faults["end"] += [line["output"] for line in again if not line["skipped"]]

    def run(self, kills):
        self.prepare()
        left = 0
        while self.kills < kills:
            if left == 0:
                self.begin_round()
                left = self.left()
            self.kill_once(left)
            left = self.left()
            if left < LEAST_LEFT or self.kills == kills:
                self.end_round()
                left = 0
            self.work.progress(f"{self.way.name}: {self.kills} of {kills} kills")


def file_system(folder):
    return subprocess.run(["stat", "-f", "-c", "%T", folder], capture_output=True, text=True, check=True).stdout.strip()


def judge(work, way, killing, where):
    kills = SHORT_KILLS if work.is_short else KILLS
    work.check(f"{way.name}: kills", f"{killing.kills} in {killing.rounds} batches of {len(killing.names)} files, on {where}; "
               f"{killing.leftovers} temporary files left", kills, killing.kills == kills)
    found = [killing.faults[key] for key in FAULTS]
    some = [f"{key}: {fault}" for key, faults in killing.faults.items() for fault in faults[:2]]
    work.check(f"{way.name}: such faults", "; ".join([", ".join(str(len(faults)) for faults in found), *some]),
               ", ".join("0" for _ in FAULTS), not any(found))
    if not way.has_unnamed and not work.is_short:
        work.check(f"{way.name}: temporary files left by kills", killing.leftovers, "at least 1", killing.leftovers > 0)


def run(work):
    inputs = work.folder / "in"
    inputs.mkdir()
    names = clips.make_clips(inputs, SHORT_FILES if work.is_short else FILES, work.random)
    work.note("faults that are counted in each way", "; ".join(FAULTS.values()))
    for number, way in enumerate(WAYS):
        if way.is_in_memory and not os.access(MEMORY_FOLDER, os.W_OK):
            work.note(f"{way.name}", f"left out: {MEMORY_FOLDER} cannot be written")
            continue
        place = work.folder / str(number)
        with tempfile.TemporaryDirectory(prefix="varno-endurance-", dir=MEMORY_FOLDER if way.is_in_memory else None) as memory:
            killing = Killing(work, way, inputs, names, pathlib.Path(memory) if way.is_in_memory else place)
            killing.run(SHORT_KILLS if work.is_short else KILLS)
            judge(work, way, killing, file_system(killing.target))
