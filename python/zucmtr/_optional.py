"""Packages that are asked for only when a call needs them."""

from __future__ import annotations

import importlib
from types import ModuleType

from ._errors import MissingPackageError


def optional(module: str, package: str) -> ModuleType:
    """Import a module, or say which package has to be installed for it."""
    try:
        return importlib.import_module(module)
    except ImportError as error:
        raise MissingPackageError(
            f"this needs the package {package}; install it with 'apt install python3-{package}' or "
            f"'pip install {package}'",
            name=package,
        ) from error
