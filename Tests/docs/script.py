"""The scripts that measure what documents state, as modules."""
import importlib.machinery
import importlib.util
import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]


def script(name):
    """The script of that name in Scripts, whose file name has no ending."""
    loader = importlib.machinery.SourceFileLoader(name.replace("-", "_"), str(ROOT / "Scripts" / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    loader.exec_module(module)
    return module
