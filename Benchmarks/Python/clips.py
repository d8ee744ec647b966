#!/usr/bin/env python3
"""What a short clip costs in Python, beside a process of varno render for each: clips.py PROGRAM

Prints the time of a clip of 0.1 s (stereo, 48 kHz, float32): the median of many, of one effect for all clips, of a new
effect for each, and of a process for each with its files in a memory file system. PYTHONPATH names the package.
"""
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

import numpy as np
import varno

RATE, FRAMES = 48000, 4800


def median_ms(repetitions, work):
    times = []
    for _ in range(repetitions):
        start = time.perf_counter()
        work()
        times.append(time.perf_counter() - start)
    return 1000 * statistics.median(times)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    clip = (0.2 * np.random.default_rng(1).standard_normal((2, FRAMES))).astype(np.float32)
    effect = varno.Effect(RATE, 2, hot=0.5)
    with tempfile.TemporaryDirectory(dir="/dev/shm") as folder:
        source, result = pathlib.Path(folder) / "in.wav", pathlib.Path(folder) / "out.wav"
        raw = clip.T.tobytes()
        header = b"RIFF" + (36 + len(raw)).to_bytes(4, "little") + b"WAVEfmt " + bytes.fromhex("10000000 0300 0200 80bb0000 00dc0500 0800 2000")
        source.write_bytes(header + b"data" + len(raw).to_bytes(4, "little") + raw)
        one = median_ms(2000, lambda: effect(clip))
        new = median_ms(500, lambda: varno.Effect(RATE, 2, hot=0.5)(clip))
        process = median_ms(100, lambda: subprocess.run([sys.argv[1], "render", "--quiet", "--force", "--set", "Hot=0.5", source, result],
                                                        check=True))
    print(f"one effect for all clips   {one:8.3f} ms\na new effect for each      {new:8.3f} ms\n"
          f"a process for each         {process:8.3f} ms, {process / one:.0f} times the first")


if __name__ == "__main__":
    main()
