#!/usr/bin/env python3
"""Renders the WAV files of a folder on the workers of a Dask cluster: dask-batch.py [OPTIONS] SOURCE TARGET [-- VARNO OPTIONS]

Each task is a process of varno render for many files, so that starting costs little of it. What has been rendered of the
same input with the same settings is left out: a batch that was interrupted is given again. TARGET/report.jsonl has the
report of every file at the end. Without --scheduler, workers are started on this machine.
"""
from __future__ import annotations

import argparse
import json
import pathlib
import subprocess
import sys
import zlib

from distributed import Client, LocalCluster, as_completed


def tasks_of(names: list[str], count: int) -> list[list[str]]:
    """The names for each of so many tasks. A name is always in the same one, whatever else is in the folder: the record
    of that task has it."""
    tasks: list[list[str]] = [[] for _ in range(count)]
    for name in sorted(names):
        tasks[zlib.crc32(name.encode()) % count].append(name)
    return tasks


def render(program: str, source: str, target: str, record: str, names: list[str], options: list[str]) -> list[str]:
    """Renders the files on a worker. Returns a line of JSON for each."""
    done = subprocess.run([program, "render", "--json", "--skip-existing", "--record", record, "--out-dir", target, *options, "--",
                           *(str(pathlib.Path(source) / name) for name in names)], capture_output=True, text=True, check=False)
    lines: dict[str, str] = {}
    for line in pathlib.Path(record).read_text().splitlines() if pathlib.Path(record).exists() else []:
        try:
            lines[json.loads(line)["output"]] = line
        except (ValueError, KeyError, TypeError):
            continue  # cut off when a machine stopped
    reports: list[str] = []
    for line in done.stdout.splitlines():
        report = json.loads(line)
        reports.append(line if "error" in report else lines.get(report["output"], line))
    if len(reports) < len(names):
        raise RuntimeError(done.stderr.strip() or f"varno ended with status {done.returncode}")
    return reports


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("source", type=pathlib.Path, metavar="SOURCE")
    parser.add_argument("target", type=pathlib.Path, metavar="TARGET")
    parser.add_argument("options", nargs="*", metavar="VARNO OPTIONS", help="as varno render takes them")
    parser.add_argument("--scheduler", metavar="ADDRESS", help="of a running cluster, for instance tcp://head:8786")
    parser.add_argument("--workers", type=int, default=2, metavar="N", help="to start on this machine (default: 2)")
    parser.add_argument("--tasks", type=int, default=100, metavar="N",
                        help="into which the files are divided (default: 100); the same each time")
    parser.add_argument("--program", default="varno", metavar="FILE", help="of the workers (default: varno)")
    arguments = parser.parse_args()

    names = [path.name for path in arguments.source.glob("*.wav")]
    records = arguments.target / "records"
    records.mkdir(parents=True, exist_ok=True)
    failed = 0
    with (Client(arguments.scheduler) if arguments.scheduler else
          Client(LocalCluster(n_workers=arguments.workers, threads_per_worker=1, dashboard_address=None))) as client, \
            open(arguments.target / "report.jsonl.part", "w", encoding="utf-8") as report:
        # A worker that ends is replaced by another one, which renders what the record does not have.
        futures = [client.submit(render, arguments.program, str(arguments.source.resolve()), str(arguments.target.resolve()),
                                 str((records / f"{number}.jsonl").resolve()), task, arguments.options, pure=False)
                   for number, task in enumerate(tasks_of(names, arguments.tasks)) if task]
        for future in as_completed(futures):
            for line in future.result():
                failed += "error" in json.loads(line)
                report.write(line + "\n")
    (arguments.target / "report.jsonl.part").replace(arguments.target / "report.jsonl")
    print(f"{len(names)} files, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
