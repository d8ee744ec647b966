from collections.abc import Sequence
from os import PathLike
from typing import TypeAlias

import numpy
from numpy.typing import NDArray

# float32 of shape (channels, frames)
_Sound: TypeAlias = NDArray[numpy.float32]

__version__: str

class Effect:
    def __init__(self, rate: float, channels: int, *, preset: str | PathLike[str] | None = None, quality: str = "1x",
                 **parameters: float | str) -> None: ...
    def __call__(self, clip: _Sound, *, out: _Sound | None = None) -> _Sound: ...
    def process(self, block: _Sound, *, out: _Sound | None = None) -> _Sound: ...
    def reset(self) -> None: ...
    def set(self, **parameters: float | str) -> None: ...
    def load_preset(self, preset: str | PathLike[str]) -> None: ...
    @property
    def rate(self) -> float: ...
    @property
    def channels(self) -> int: ...
    @property
    def quality(self) -> str: ...
    @property
    def latency(self) -> int: ...
    @property
    def meters(self) -> dict[str, float]: ...
    preset: str
    state: bytes
    bypass: float
    bypass_on: bool
    gain: float
    gain_db: float
    hp: float
    hp_on: bool
    band: float
    band_on: bool
    atk: float
    atk_ms: float
    rls: float
    rls_ms: float
    asw: float
    asw_on: bool
    uk: float
    uk_on: bool
    volume: float
    volume_db: float
    hot: float
    hot_percent: float
    ratio: float
    ratio_curve: int
    mix: float
    mix_percent: float
    hsw: float
    hsw_on: bool
    linksw: float
    linksw_on: bool

def process_group(effects: Sequence[Effect], blocks: Sequence[_Sound]) -> list[_Sound]: ...
def presets() -> dict[str, str]: ...
