#!/usr/bin/env python3
"""How much faster two workers render many small files than one: scaling.py PROGRAM [FILES]

Prints the times of examples/batch/dask-batch.py with one and with two workers on this machine for so many files of 0.5 s
(default: 10,000), their ratio, the time of a single process, and what starting and ending the engine costs: a batch of
which all has been rendered. All files are in a memory file system. It needs a quiet machine and two processors.
"""
import pathlib
import random
import shutil
import struct
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
RATE, SECONDS = 48000, 0.5
OPTIONS = ("--set", "Hot=0.5", "--quality", "4x")


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


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    program, count = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) == 3 else 10000
    with tempfile.TemporaryDirectory(dir="/dev/shm") as name:
        source, target = pathlib.Path(name) / "in", pathlib.Path(name) / "out"
        make_files(source, count)

        def batch(workers, keep=False):
            if not keep:
                shutil.rmtree(target, ignore_errors=True)
            return seconds_of("/usr/bin/python3", ROOT / "examples/batch/dask-batch.py", "--program", program, "--workers", workers, source,
                              target, "--", *OPTIONS)
        one, nothing_one = batch(1), batch(1, keep=True)
        two, nothing_two = batch(2), batch(2, keep=True)
        shutil.rmtree(target)
        target.mkdir()
        files = pathlib.Path(name) / "files"
        files.write_text("\0".join(str(path) for path in sorted(source.iterdir())))
        alone = seconds_of("xargs", "--null", "--arg-file", files, program, "render", "--quiet", "--out-dir", target, *OPTIONS)
    print(f"{count} files: one worker {one:.1f} s, two workers {two:.1f} s: {one / two:.2f} times\n"
          f"without what the engine takes where all is rendered ({nothing_one:.1f} s and {nothing_two:.1f} s): "
          f"{(one - nothing_one) / (two - nothing_two):.2f} times\n"
          f"without the engine: {alone:.1f} s")


if __name__ == "__main__":
    main()
