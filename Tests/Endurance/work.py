"""What the parts of ./run endurance share.

A part is a file NAME_part.py of this folder, which ./run endurance finds by its name. It has:

  TITLE      what it does, in one line
  PACKAGES   purposes of Scripts/packages.txt that it needs beside "program" and "test", for instance ("hosts",)
  TARGETS    what is built for it, of the preset "release"
  run(work)  does it

run() states what it found with work.check(), which goes on after a failure, and figures without a limit with
work.note(). An exception fails the part. Where work.is_short, run() does the same in a few seconds: the tests call it so.
"""
import dataclasses
import pathlib
import random
import sys
import time

# In seconds, between two lines of progress.
PROGRESS_S = 20


@dataclasses.dataclass
class Finding:
    """One row of the table at the end."""
    what: str
    found: str
    demanded: str  # empty for a figure without a limit
    is_met: bool


def one_line(value):
    """Its text as a cell of a table, also where it is that of several lines."""
    return " ".join(str(value).split())


def say(text):
    print(f"run: {text}", file=sys.stderr, flush=True)


class Work:
    """What a part works with: the folder of the build, an empty folder of its own, random numbers of a stated seed."""

    def __init__(self, name, build, folder, is_short=False, seed=1):
        self.name = name
        self.build = pathlib.Path(build)
        self.folder = pathlib.Path(folder)
        self.is_short = is_short
        self.seed = seed
        self.random = random.Random(seed)
        self.findings = []
        self._told = time.monotonic()

    @property
    def program(self):
        """The command-line program."""
        return self.build / "Apps/varno/varno"

    def check(self, what, found, demanded, is_met):
        """States what was found and what is demanded; the part fails where that is not met. Returns whether it is."""
        self._add(Finding(one_line(what), one_line(found), one_line(demanded), bool(is_met)))
        return bool(is_met)

    def note(self, what, found):
        """States a figure without a limit."""
        self._add(Finding(one_line(what), one_line(found), "", True))

    def progress(self, text):
        """Prints how far the work is, now and then; to be called often."""
        now = time.monotonic()
        if now - self._told >= PROGRESS_S:
            self._told = now
            say(f"endurance: {self.name}: {text}")

    @property
    def is_passed(self):
        """Whether something was checked, and all of it was as demanded."""
        return any(finding.demanded for finding in self.findings) and all(finding.is_met for finding in self.findings)

    def _add(self, finding):
        self.findings.append(finding)
        if not finding.is_met:
            say(f"endurance: {self.name}: FAILED: {finding.what}: {finding.found}; demanded: {finding.demanded}")
