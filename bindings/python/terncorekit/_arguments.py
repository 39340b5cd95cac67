"""Arguments, looked at before the library is asked."""

from __future__ import annotations

import json
import operator
from typing import Any, Iterable, Mapping, SupportsFloat, SupportsIndex

# Made once: json.dumps would make one for each request.
_ENCODER = json.JSONEncoder(ensure_ascii=False, allow_nan=False, separators=(",", ":"))


def whole(value: SupportsIndex, name: str) -> int:
    """A whole number, one of numpy's too. True is none."""
    if isinstance(value, bool):
        raise TypeError(f"{name} must be a whole number, not a bool")
    try:
        number = operator.index(value)
    except TypeError:
        kind = type(value).__name__
        raise TypeError(f"{name} must be a whole number, not {kind}") from None
    if not -(2**63) <= number < 2**63:
        raise ValueError(f"{name} does not fit into 64 bits")
    return number


def wholes(values: Iterable[SupportsIndex], name: str) -> list[int]:
    """A list of whole numbers from anything that can be gone through, but a text."""
    if isinstance(values, (str, bytes)) or not isinstance(values, Iterable):
        raise TypeError(f"{name} must be a list of whole numbers, not {type(values).__name__}")
    return [whole(value, name) for value in values]


def one_or_more(
    value: SupportsIndex | Iterable[SupportsIndex], name: str
) -> int | list[int]:
    """A whole number or a list of them."""
    if isinstance(value, Iterable):
        return wholes(value, name)
    return whole(value, name)


def number(value: SupportsFloat, name: str) -> float:
    """A finite number. A text is none, though float() would read it."""
    if isinstance(value, (str, bytes, bool)) or not hasattr(value, "__float__"):
        raise TypeError(f"{name} must be a number, not {type(value).__name__}")
    given = float(value)
    if given - given != 0:
        raise ValueError(f"{name} is not finite")
    return given


def request_text(request: Mapping[str, Any]) -> str:
    """A request in JSON. A TypeError or ValueError where it cannot be written in it."""
    return _ENCODER.encode(dict(request))


def venue_options(venues: Iterable[SupportsIndex] | None) -> bytes | None:
    """The options by which venues are opened and loaded; None leaves the choice to the library."""
    if venues is None:
        return None
    ids = wholes(venues, "venues")
    if not ids:
        raise ValueError("venues must name at least one, or be None")
    return json.dumps({"venues": ids}).encode()
