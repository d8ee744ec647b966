#!/usr/bin/env python3
"""How much faster two workers render many small files than one: scaling.py PROGRAM [FILES]

Prints the times of examples/batch/dask-batch.py with one and with two workers on this machine for so many files of 0.5 s
(default: 10,000), their ratio, the time of a single process, and what starting and ending the engine costs: a batch of
which all has been rendered. Three times in turn: the median and the range. All files are in a memory file system. It
needs a quiet machine and two processors.
"""
import pathlib
import random
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
RATE, SECONDS = 48000, 0.5
OPTIONS = ("--set", "Hot=0.5", "--quality", "4x")
ROUNDS = 3


def seconds_of(*command):
    start = time.perf_counter()
    subprocess.run([*map(str, command)], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.perf_counter() - start


def make_files(folder, count):
    frames = int(RATE * SECONDS)
    noise = random.Random(1).randbytes(4 * frames + 4 * count)
    folder.mkdir()
    for number in range(count):
        data = noise[4 * number:4 * (number + frames)]
        header = b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " + struct.pack("<IHHIIHH", 16, 1, 2, RATE, 4 * RATE, 4, 16)
        (folder / f"{number:05}.wav").write_bytes(header + b"data" + struct.pack("<I", len(data)) + data)


def median_and_range(values, digits):
    return f"{statistics.median(values):.{digits}f} ({min(values):.{digits}f} to {max(values):.{digits}f})"


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    program, count = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) == 3 else 10000
    times = {"one worker": [], "one worker, all rendered": [], "two workers": [], "two workers, all rendered": [],
             "one process without the engine": []}
    with tempfile.TemporaryDirectory(dir="/dev/shm") as name:
        source, target, files = (pathlib.Path(name) / part for part in ("in", "out", "files"))
        make_files(source, count)
        files.write_text("\0".join(str(path) for path in sorted(source.iterdir())))

        def batch(workers):
            return seconds_of("/usr/bin/python3", ROOT / "examples/batch/dask-batch.py", "--program", program, "--workers", workers,
                              source, target, "--", *OPTIONS)
        for _ in range(ROUNDS):
            for workers, what in ((1, "one worker"), (2, "two workers")):
                shutil.rmtree(target, ignore_errors=True)
                times[what].append(batch(workers))
                times[what + ", all rendered"].append(batch(workers))
            shutil.rmtree(target)
            target.mkdir()
            times["one process without the engine"].append(
                seconds_of("xargs", "--null", "--arg-file", files, program, "render", "--quiet", "--out-dir", target, *OPTIONS))
    for what, seconds in times.items():
        print(f"{what:31} {median_and_range(seconds, 1)} s")
    one, nothing_one, two, nothing_two, _ = times.values()
    print(f"two workers are {median_and_range([a / b for a, b in zip(one, two)], 2)} times as fast as one; without what the engine takes\n"
          f"where all is rendered, {median_and_range([(a - b) / (c - d) for a, b, c, d in zip(one, nothing_one, two, nothing_two)], 2)} times")


if __name__ == "__main__":
    main()
