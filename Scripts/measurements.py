"""Results of Google Benchmark, and how they come into a document."""
import dataclasses
import json
import pathlib
import re
import statistics
import sys


class Skipped(Exception):
    """The figure cannot be measured here; the text states why."""


class NotMeasured(Exception):
    """The figure was not measured; the text states what would measure it."""


class Results:
    """The repetitions of every case, by the run that they come from and the case's name."""

    def __init__(self, folder):
        self.runs = {}
        for file in sorted(pathlib.Path(folder).glob("*.json")):
            for case in json.loads(file.read_text(encoding="utf-8"))["benchmarks"]:
                if case["run_type"] == "iteration":
                    name = re.sub(r"/(iterations:\d+|manual_time|real_time)", "", case["run_name"])
                    self.runs.setdefault((file.stem, name), []).append(case)

    def names(self, run, prefix):
        return [name for of_run, name in self.runs if of_run == run and name.startswith(prefix)]

    def cases(self, run, name):
        cases = self.runs.get((run, name))
        if not cases:
            raise NotMeasured(f"no result of {name} ({run})")
        for case in cases:
            if case.get("error_occurred"):
                raise Skipped(case["error_message"])
        return cases

    def label(self, run, name):
        return self.cases(run, name)[0].get("label", "")

    def counter(self, run, name, counter):
        return Cost([case[counter] for case in self.cases(run, name)])

    def per_item(self, run, name):
        """Seconds per item (a frame, or an operation)."""
        return Cost([1.0 / case["items_per_second"] for case in self.cases(run, name)])


class Cost:
    """What something costs, seconds or MiB: the median of its repetitions, and the quartiles around it."""

    def __init__(self, values):
        self.middle = statistics.median(values)
        self.low, _, self.high = statistics.quantiles(values, method="inclusive") if len(values) > 1 else 3 * values

    def over(self, other):
        return Measured(self.middle / other.middle, self.low / other.high, self.high / other.low)


@dataclasses.dataclass(frozen=True)
class Measured:
    value: float
    low: float
    high: float


def table(head, rows, right=()):
    """Lines of a Markdown table; the columns whose indices are in `right` are of numbers."""
    rules = ["---:" if column in right else "---" for column in range(len(head))]
    lines = ["| " + " | ".join(head) + " |", "|" + "|".join(rules) + "|"]
    return lines + ["| " + " | ".join(row) + " |" for row in rows]


def attempt(text_of, *arguments):
    """The text, or why there is none."""
    try:
        return text_of(*arguments)
    except Skipped as reason:
        return f"skipped: {reason}"
    except NotMeasured:
        return "not measured"


def duration(seconds):
    """In the unit in which it has one to three digits before the point."""
    for unit, scale in (("s", 1), ("ms", 1e3), ("µs", 1e6)):
        if seconds * scale >= 1:
            return f"{seconds * scale:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def nanoseconds(cost):
    return f"{cost.middle * 1e9:.3g}"


def write_into(document, command, heading, text):
    """Replaces the section with this heading (a line that begins with "## " or the like) between the two marks of the
    command that writes it, or adds it behind the others. Deeper headings belong to the sections."""
    begin, end = (f"<!-- {place} this line: written by {command}. -->" for place in ("Below", "Above"))
    path = pathlib.Path(document)
    old = path.read_text(encoding="utf-8")
    if old.count(begin + "\n") != 1 or old.count(end + "\n") != 1 or old.index(begin) > old.index(end):
        sys.exit(f"{document}: expected one line {begin} and below it one line {end}")
    before, after = old[:old.index(begin)], old[old.index(end):]
    written = old[old.index(begin) + len(begin):old.index(end)]
    level = re.escape(heading.split(" ", 1)[0])
    parts = re.split(rf"^(?={level} )", written, flags=re.MULTILINE)
    sections = {part.split("\n", 1)[0]: part.strip() for part in parts if part.strip()}
    sections[heading] = f"{heading}\n\n{text}"
    path.write_text(f"{before}{begin}\n\n" + "\n\n".join(sections.values()) + f"\n\n{after}", encoding="utf-8")
