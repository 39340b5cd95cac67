"""Where the documents of a venue come from."""

from __future__ import annotations

import json
from pathlib import Path
from typing import Any, Callable, Mapping, Union

#: A document in JSON: its bytes, its text, or None when there is none.
Document = Union[bytes, str, None]

#: The documents of a venue folder by their paths, such as "venue/1/full.json", or what gives them.
Documents = Union[Mapping[str, Union[bytes, str]], Callable[[str], Document]]


def bytes_of(documents: Documents, path: str) -> bytes | None:
    """The document of that path; None when there is none."""
    document = documents(path) if callable(documents) else documents.get(path)
    if document is None:
        return None
    if isinstance(document, str):
        return document.encode("utf-8")
    if isinstance(document, (bytes, bytearray, memoryview)):
        return bytes(document)
    raise TypeError(f"{path}: a document is bytes or a text, not {type(document).__name__}")


class Folder:
    """The documents of a folder."""

    def __init__(self, path: str) -> None:
        self._path = Path(path)

    def __call__(self, path: str) -> bytes | None:
        try:
            return (self._path / path).read_bytes()
        except OSError:
            return None


def decoded(documents: Documents, path: str) -> dict[str, Any]:
    """A document that is a JSON object; an empty one where there is none that can be read."""
    try:
        document = json.loads(bytes_of(documents, path) or b"{}")
    except (ValueError, RecursionError):
        return {}
    return document if isinstance(document, dict) else {}
