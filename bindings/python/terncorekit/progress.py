"""How far long work has come."""

from __future__ import annotations

from contextlib import contextmanager
from importlib import import_module
from typing import Any, Callable, Iterator, Union

#: Called with how much is done and how much there is, which is None where nobody knows. True asks
#: for a bar of tqdm, which is left out where tqdm is not installed; None and False for nothing.
Progress = Union[Callable[[int, Union[int, None]], Any], bool, None]

Report = Callable[[int], Any]


@contextmanager
def reporting(progress: Progress, total: int | None, unit: str) -> Iterator[Report]:
    """A function to be told how much is done."""
    if progress is True:
        with _bar(total, unit) as report:
            yield report
    elif callable(progress):
        tell = progress
        yield lambda done: tell(done, total)
    else:
        yield lambda done: None


def checked(progress: Progress) -> Progress:
    """The same, or a TypeError."""
    if progress is None or isinstance(progress, bool) or callable(progress):
        return progress
    raise TypeError("progress must be a function, True or None")


@contextmanager
def _bar(total: int | None, unit: str) -> Iterator[Report]:
    try:
        tqdm = import_module("tqdm.auto").tqdm
    except ImportError:
        yield lambda done: None
        return
    with tqdm(total=total, unit=f" {unit}") as bar:
        yield lambda done: bar.update(done - bar.n)
