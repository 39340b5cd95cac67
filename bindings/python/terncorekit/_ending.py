"""The end of the program, while the library may still call Python.

A thread that wants to run Python then is ended where it stands. Where the library called it, C++
answers that by ending the process as a crash would. So what the library may call is noted here as
long as it may, and the end waits for it. By then hubs are closed: there is little to wait for.
"""

from __future__ import annotations

import atexit
import os
import time

LONGEST_WAIT = 60.0

_noted: set[object] = set()
_was_noted = False


def note(what: object) -> None:
    """The library may call Python on behalf of this."""
    global _was_noted
    _was_noted = True
    _noted.add(what)


def forget(what: object) -> None:
    """It will not any more, once the function that says so has returned."""
    _noted.discard(what)


if hasattr(os, "register_at_fork"):
    # What the library's threads are about in the parent is not done in a child.
    os.register_at_fork(after_in_child=_noted.clear)


@atexit.register
def _wait() -> None:
    """Comes after what closes hubs and lets hosts go, which is registered later."""
    end = time.monotonic() + LONGEST_WAIT
    while _noted and time.monotonic() < end:
        time.sleep(0.001)
    if _was_noted:
        # For the last function to return.
        time.sleep(0.01)
