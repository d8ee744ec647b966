"""Renders with the programs of both systems and compares what they give, byte by byte.

usage: compare.py module|clap --native BUILD --windows BUILD --results FOLDER -- EMULATOR...

BUILD are folders of builds; EMULATOR is the command that runs programs of Windows here. Each instruction set that the
routine is compiled for is rendered with once on Windows, and compared with this system's fastest.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys

# As VARNO_SIMD names them; one that this processor lacks is ignored, and the fastest renders again.
INSTRUCTION_SETS = ["avx512", "avx2", "baseline", "emulated"]
SAMPLE_BYTES = 4
LONGEST_S = 900


def fail(text):
    sys.exit(f"FAILED: {text}")


def arguments_of(kind, build, output, presets):
    if kind == "clap":
        return [build / "clap/varno-s/varno-s.clap", output, presets]
    return [build / "Varno-S.aaxplugin", output]


def run(command, environment):
    """The rows that a program prints, split."""
    done = subprocess.run([str(word) for word in command], env={**os.environ, **environment}, text=True, timeout=LONGEST_S,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    if done.returncode != 0:
        fail(f"{command} ended with {done.returncode}: {done.stderr}")
    return [line.split() for line in done.stdout.splitlines()]


def parts_of(rows):
    return [(row[1], int(row[2]), int(row[3])) for row in rows if row[0] == "part"]


def first_difference(expected, found, parts):
    """Where two contents differ, as text; None where they do not."""
    for name, offset, size in parts:
        ours, theirs = expected[offset:offset + size], found[offset:offset + size]
        if ours != theirs:
            differing = [place for place in range(0, size, SAMPLE_BYTES)
                         if ours[place:place + SAMPLE_BYTES] != theirs[place:place + SAMPLE_BYTES]]
            place = differing[0]
            return (f"{name}: {len(differing)} of {(size + SAMPLE_BYTES - 1) // SAMPLE_BYTES} values differ, the first one is "
                    f"number {place // SAMPLE_BYTES}: here {ours[place:place + SAMPLE_BYTES].hex()}, "
                    f"Windows {theirs[place:place + SAMPLE_BYTES].hex()}")
    return None


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("kind", choices=["module", "clap"])
    parser.add_argument("--native", type=pathlib.Path, required=True)
    parser.add_argument("--windows", type=pathlib.Path, required=True)
    parser.add_argument("--results", type=pathlib.Path, required=True)
    parser.add_argument("emulator", nargs="+")
    options = parser.parse_args()
    shutil.rmtree(options.results, ignore_errors=True)
    presets = options.results / "presets"
    presets.mkdir(parents=True)
    for preset in (options.windows / "clap/varno-s/resources/presets").iterdir():
        # With characters that no code page of Windows has.
        shutil.copy(preset, presets / f"Größe ☃ {preset.name}")
    program = f"Tests/Windows/varno_bits_{options.kind}"

    here = options.results / "here.bits"
    rows = run([options.native / program, *arguments_of(options.kind, options.native, here, presets)], {"VARNO_SIMD": ""})
    parts = parts_of(rows)
    expected = here.read_bytes()
    samples = sum(size for name, _, size in parts if name.endswith("-sound")) // SAMPLE_BYTES
    if samples == 0:
        fail("nothing was rendered")
    for instructions in INSTRUCTION_SETS:
        output = options.results / f"{instructions}.bits"
        rows = run([*options.emulator, options.windows / f"{program}.exe",
                    *arguments_of(options.kind, options.windows, output, presets)], {"VARNO_SIMD": instructions})
        if parts_of(rows) != parts:
            fail(f"{instructions}: the parts of the outputs differ")
        difference = first_difference(expected, output.read_bytes(), parts)
        if difference:
            fail(f"{instructions}: {difference}")
        if options.kind == "clap" and ["window", "no"] not in rows:
            fail("the plug-in offers a window")
        print(f"{instructions}: {samples} of {samples} samples equal, and {len(expected) - samples * SAMPLE_BYTES} other bytes")


if __name__ == "__main__":
    main()
