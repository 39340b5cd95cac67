"""A mapping service, and the cache of its answers."""

from __future__ import annotations

import atexit
import itertools
import json
import os
import weakref
from concurrent.futures import Future, InvalidStateError
from types import TracebackType
from typing import Any, Callable, Iterable, NamedTuple, SupportsIndex

from terncorekit import _ending
from terncorekit._arguments import venue_options, whole
from terncorekit._calls import call, given_text
from terncorekit._library import TextCallback, VenueCallback, library
from terncorekit.errors import TernError, error_from, error_of
from terncorekit.floors import Floors
from terncorekit.venue import Venue


class VenueName(NamedTuple):
    """A venue of a customer, by its names."""

    id: int
    external_id: str
    name: str


class Hub:
    """Loads venues of a customer from a mapping service, and keeps what it loads on disk.

    What the service does not answer is taken from what is kept. It is a context manager; venues
    that were loaded stay when it is closed. No request is sent before the first load. In a forked
    process it is closed: it stays with the one that opened it.

        with Hub("https://maps.example.com", customer_id=42, client_id="...",
                 client_secret="...") as hub:
            venue = hub.load([7])
    """

    def __init__(
        self,
        host: str,
        *,
        customer_id: SupportsIndex,
        client_id: str,
        client_secret: str,
        locale: str | None = None,
        geojson: bool = False,
        auto_reload: bool = True,
        cache_folder: str | os.PathLike[str] | None = None,
    ) -> None:
        """`host` is scheme and host; the credentials go to it only, and all hubs of a process share
        the last ones. `auto_reload=False` uses what is kept without asking the service.
        `cache_folder` is a folder for this hub alone; left out, it is one of the user's data.
        """
        options = {
            "host": host,
            "customerId": whole(customer_id, "customer_id"),
            "clientId": client_id,
            "clientSecret": client_secret,
            "geoJSON": geojson,
            "autoReloadCache": auto_reload,
        }
        if locale is not None:
            options["locale"] = locale
        if cache_folder is not None:
            options["cacheFolder"] = os.path.abspath(cache_folder)
        text = json.dumps(options, ensure_ascii=False)
        self._handle: int = call(library().tern_hub_open, given_text(text, "options"))
        self._finalizer = weakref.finalize(self, library().tern_hub_close, self._handle, None)
        _open.add(self)

    def venues(self) -> list[VenueName]:
        """The customer's venues."""
        handle = self._open_handle()
        text = _waited_for(lambda number: call(library().tern_hub_list, handle, _LISTED, number))
        return [
            VenueName(venue["id"], venue["externalId"], venue["name"])
            for venue in json.loads(text)["venues"]
        ]

    def load(self, venues: Iterable[SupportsIndex] | None = None) -> Venue:
        """Loads a venue with all its buildings, or several that are joined, as `Venue.open` does.

        Closing the hub on another thread ends the wait with an error.
        """
        options = venue_options(venues)
        handle = self._open_handle()
        venue = _waited_for(
            lambda number: call(library().tern_hub_load, handle, options, _LOADED, number)
        )
        return Venue(venue, Floors(None, None))

    def close(self) -> None:
        """Ends what is under way. Once or more often."""
        self._finalizer()

    @property
    def closed(self) -> bool:
        """Whether it was closed."""
        return not self._finalizer.alive

    def _open_handle(self) -> int:
        if self.closed:
            raise TernError("TN006", "the hub is closed")
        return self._handle

    def __enter__(self) -> Hub:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()


_open: weakref.WeakSet[Hub] = weakref.WeakSet()


@atexit.register
def _close_all() -> None:
    """Comes before what waits for loads to end."""
    for hub in list(_open):
        hub.close()


def _leave_to_parent() -> None:
    """In a forked process, where the threads that a hub needs are not."""
    for hub in list(_open):
        hub._finalizer.detach()


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_leave_to_parent)


# Who waits, by the number that goes through the library in place of an address. The two callbacks,
# _LOADED and _LISTED, live as long as the program: the library can never call one that has gone.
_waiting: dict[int, Future[Any]] = {}
_numbers = itertools.count(1)


def _waited_for(begin: Callable[[int], Any]) -> Any:
    """What a callback is told of the work that begins."""
    number = next(_numbers)
    future = _waiting[number] = Future()
    _ending.note(future)
    try:
        begin(number)
    except BaseException:
        _ending.forget(_waiting.pop(number, None))
        raise
    try:
        return future.result()
    except BaseException:
        # Somebody interrupts: a venue that comes yet has nobody who would close it.
        if not future.cancel() and future.exception() is None:
            _close_venue(future.result())
        raise


def _loaded(number: int, venue: int | None, error: bytes | None) -> None:
    future = _waiting.pop(number)
    try:
        if venue is None:
            future.set_exception(error_from((error or b"{}").decode("utf-8", "replace")))
        else:
            future.set_result(venue)
    except InvalidStateError:
        _close_venue(venue)
    finally:
        _ending.forget(future)


def _listed(number: int, text: bytes) -> None:
    future = _waiting.pop(number)
    said = text.decode("utf-8", "replace")
    error = error_of(json.loads(said))
    try:
        if error is not None:
            future.set_exception(error)
        else:
            future.set_result(said)
    except InvalidStateError:
        pass
    finally:
        _ending.forget(future)


_LOADED = VenueCallback(_loaded)
_LISTED = TextCallback(_listed)


def _close_venue(handle: Any) -> None:
    if isinstance(handle, int):
        library().tern_venue_close(handle, None)
