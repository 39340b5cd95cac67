"""Texts on their way over the C interface, and errors on their way back."""

from __future__ import annotations

import ctypes
from typing import Any, Callable

from terncorekit._library import library
from terncorekit.errors import error_from


def given_text(text: str, name: str) -> bytes:
    """A text as C takes it: UTF-8 that ends with a NUL, and so holds none.

    A ValueError where that cannot be, UnicodeEncodeError included.
    """
    given = text.encode("utf-8")
    if b"\0" in given:
        raise ValueError(f"the {name} holds a NUL")
    return given


def taken_text(address: int) -> str:
    """A text that the library returned, which is freed."""
    try:
        return ctypes.string_at(address).decode("utf-8", "replace")
    finally:
        library().tern_text_free(address)


def call(function: Callable[..., Any], *arguments: Any) -> Any:
    """What a function returns whose last argument is where it puts its error."""
    error = ctypes.c_void_p()
    result = function(*arguments, ctypes.byref(error))
    if error.value:
        raise error_from(taken_text(error.value))
    return result
