"""Varno-S: saturation and overdrive with a dynamics section, for sound in NumPy arrays.

An array of sound is float32 with the shape (channels, frames), full scale at 1.0.
"""
from ._varno import Effect, __version__, presets, process_group

__all__ = ["Effect", "__version__", "presets", "process_group"]
