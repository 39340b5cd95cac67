"""What went wrong, as an exception."""

from __future__ import annotations

import json
from typing import Any, Mapping


class TernError(Exception):
    """An error of the library, with the library's own code.

    TN001: the service was not reached. TN002: it refused. TN003: what should be JSON is none.
    TN006: a wrong argument. TN007: nothing was found. TN008: everything else, want of memory
    included.

    >>> from terncorekit import TernError, Venue
    >>> try:
    ...     Venue.open("data/nowhere")
    ... except TernError as error:
    ...     print(error.code, error.message)
    TN007 there is no folder data/nowhere
    """

    def __init__(self, code: str, message: str, description: str = "") -> None:
        super().__init__(code, message, description)
        #: Such as "TN006".
        self.code = code
        #: One line that says what it is in this case.
        self.message = message
        #: What the code means in general.
        self.description = description

    def __str__(self) -> str:
        return f"{self.code}: {self.message}"


def error_of(answer: Mapping[str, Any]) -> TernError | None:
    """The error that an answer holds; None when it holds none."""
    error = answer.get("error")
    if not isinstance(error, dict):
        return None
    return TernError(*(str(error.get(name, "")) for name in ("code", "message", "description")))


def error_from(text: str) -> TernError:
    """The error of a text that is one."""
    return error_of(json.loads(text)) or TernError("TN008", text)
