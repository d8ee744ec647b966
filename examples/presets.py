#!/usr/bin/env python3
"""Renders a WAV file of 16 bits with every factory preset: presets.py INPUT.wav FOLDER

Prints the peak and the largest gain reduction of each.
"""
from __future__ import annotations

import pathlib
import sys
import wave

import numpy as np
import varno
from numpy.typing import NDArray

FULL_SCALE = 32768
METER_RANGE_DB = 32.0  # a reduction meter's full scale


def read(path: pathlib.Path) -> tuple[NDArray[np.float32], int]:
    """Sound of shape (channels, frames), and its rate."""
    with wave.open(str(path)) as file:
        if file.getsampwidth() != 2:
            raise ValueError(f"{path}: has {8 * file.getsampwidth()} bits; expected 16")
        samples = np.frombuffer(file.readframes(file.getnframes()), np.int16)
        sound = samples.reshape(-1, file.getnchannels()).T.astype(np.float32) / np.float32(FULL_SCALE)
        return sound, file.getframerate()


def write(path: pathlib.Path, sound: NDArray[np.float32], rate: int) -> None:
    limited = np.clip(np.rint(sound * FULL_SCALE), -FULL_SCALE, FULL_SCALE - 1)
    with wave.open(str(path), "wb") as file:
        file.setparams((len(sound), 2, rate, 0, "NONE", ""))
        file.writeframes(limited.T.astype(np.int16).tobytes())


def main() -> None:
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    source, folder = map(pathlib.Path, sys.argv[1:])
    try:
        sound, rate = read(source)
        folder.mkdir(parents=True, exist_ok=True)
        for name in varno.presets():
            effect = varno.Effect(rate, len(sound), preset=name)
            result = effect(sound)
            write(folder / f"{name}.wav", result, rate)
            peak = 20 * np.log10(max(float(np.abs(result).max()), 1e-9))
            print(f"{name:20} {peak:6.1f} dBFS {METER_RANGE_DB * effect.meters['GRL']:6.1f} dB")
    except (OSError, EOFError, ValueError, wave.Error) as error:
        sys.exit(f"presets.py: {error}")


if __name__ == "__main__":
    main()
