"""Finds the shared library and declares what is called of it.

It is looked for where `use_library` says; where the environment variable TERNCOREKIT_LIBRARY does;
beside this file, where a wheel has it; and where the system keeps its libraries.
"""

from __future__ import annotations

import ctypes
import os
import sys
import threading
from ctypes import CFUNCTYPE, POINTER, c_bool, c_char_p, c_int32, c_size_t, c_void_p
from pathlib import Path
from typing import Any

# The TERN_INTERFACE_VERSION of what is declared here.
INTERFACE_VERSION = 1

_SUFFIX = {"darwin": ".dylib", "win32": ".dll"}.get(sys.platform, ".so")
PACKAGED = Path(__file__).with_name("libTernCoreKit" + _SUFFIX)

# Callbacks: context, and what it is told. Texts that are lent come as c_char_p, which copies them.
DocumentCallback = CFUNCTYPE(None, c_void_p, c_char_p, c_void_p)
VenueCallback = CFUNCTYPE(None, c_void_p, c_void_p, c_char_p)
TextCallback = CFUNCTYPE(None, c_void_p, c_char_p)

_ERROR = POINTER(c_void_p)

# Name, result, arguments. A handle is a c_void_p, and so is a text that has to be freed.
_FUNCTIONS: list[tuple[str, Any, list[Any]]] = [
    ("tern_version", c_char_p, []),
    ("tern_interface_version", c_int32, []),
    ("tern_text_free", None, [c_void_p]),
    ("tern_give", c_bool, [c_void_p, c_char_p, c_size_t, _ERROR]),
    ("tern_venue_open_folder", c_void_p, [c_char_p, c_char_p, _ERROR]),
    ("tern_venue_open_documents", c_void_p, [DocumentCallback, c_void_p, c_char_p, _ERROR]),
    ("tern_venue_answer", c_void_p, [c_void_p, c_char_p]),
    ("tern_venue_close", c_bool, [c_void_p, _ERROR]),
    ("tern_hub_open", c_void_p, [c_char_p, _ERROR]),
    ("tern_hub_load", c_bool, [c_void_p, c_char_p, VenueCallback, c_void_p, _ERROR]),
    ("tern_hub_list", c_bool, [c_void_p, TextCallback, c_void_p, _ERROR]),
    ("tern_hub_close", c_bool, [c_void_p, _ERROR]),
    ("tern_http_complete", c_bool, [c_void_p, c_void_p, _ERROR]),
    ("tern_set_host", c_bool, [c_void_p, _ERROR]),
]

_lock = threading.Lock()
_chosen: str | None = None
_loaded: ctypes.CDLL | None = None


def use_library(path: str | os.PathLike[str]) -> None:
    """Takes the shared library from that file. To be called before anything else is."""
    global _chosen
    with _lock:
        if _loaded is not None:
            raise RuntimeError("the library is loaded already")
        _chosen = os.fspath(path)


def library() -> ctypes.CDLL:
    """The library, loaded when it is first needed. Its functions run without Python's lock."""
    global _loaded
    if _loaded is None:
        with _lock:
            if _loaded is None:
                _loaded = _declared(_load())
    return _loaded


def _load() -> ctypes.CDLL:
    named = _chosen or os.environ.get("TERNCOREKIT_LIBRARY")
    if named:
        return ctypes.CDLL(named)
    if PACKAGED.exists():
        return ctypes.CDLL(str(PACKAGED))
    names = ["libTernCoreKit.so.5"] if _SUFFIX == ".so" else []
    for name in [*names, "libTernCoreKit" + _SUFFIX]:
        try:
            return ctypes.CDLL(name)
        except OSError:
            continue
    raise OSError(
        "the shared library TernCoreKit was not found: install it, or name its file in the "
        "environment variable TERNCOREKIT_LIBRARY"
    )


def _declared(loaded: ctypes.CDLL) -> ctypes.CDLL:
    try:
        for name, result, arguments in _FUNCTIONS:
            function = getattr(loaded, name)
            function.restype = result
            function.argtypes = arguments
    except AttributeError as missing:
        raise OSError(f"this library is not TernCoreKit, or one too old: {missing}") from None
    if loaded.tern_interface_version() < INTERFACE_VERSION:
        raise OSError("this version of the library TernCoreKit is too old")
    return loaded


def version() -> str:
    """The version of the library that is called.

    >>> import terncorekit
    >>> terncorekit.version().split(".")[0]
    '5'
    """
    said: bytes = library().tern_version()
    return said.decode()
