"""A loaded venue that answers."""

from __future__ import annotations

import json
import os
import weakref
from types import TracebackType
from typing import Any, Iterable, Iterator, Mapping, SupportsFloat, SupportsIndex, TypeVar
from typing import Union, overload

from terncorekit import _ending
from terncorekit._arguments import number, one_or_more, request_text, venue_options, whole, wholes
from terncorekit._calls import call, given_text, taken_text
from terncorekit._library import DocumentCallback, library
from terncorekit.answers import Directions, Nearest, Places, Reach, Route, Spot, Tour
from terncorekit.batch import answers_of, may_block
from terncorekit.documents import Documents, Folder, bytes_of
from terncorekit.errors import TernError, error_from, error_of
from terncorekit.floors import Floors
from terncorekit.matrix import Matrix, matrix_of
from terncorekit.progress import Progress, checked

#: One id or several.
Goal = Union[SupportsIndex, Iterable[SupportsIndex]]
Request = TypeVar("Request", bound=Mapping[str, Any])


class Venue:
    """A venue, or several that are joined by their exits, ready to be asked.

    It is a context manager. One that is not closed is closed when it goes, or with the program.
    Once closed it raises a TernError, and so does every answer that says what is wrong. Any number
    of threads may ask one venue at once; Python's lock is not held while the library answers.

    Waypoints are named by their ids. `accessibility` is 100 for all ways, 0 for those that a
    wheelchair can take. Of joined venues every request but a route names its `venue`.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     print(venue.route(22001, 14016))
    132 m over 4 floors
    """

    def __init__(self, handle: int, floors: Floors) -> None:
        """Use `open`, `from_documents` or `Hub.load`. The handle is the library's."""
        self._handle = handle
        self._floors = floors
        self._has_blocks = False
        self._finalizer = weakref.finalize(self, library().tern_venue_close, handle, None)

    @classmethod
    def open(
        cls, path: str | bytes | os.PathLike[Any], *, venues: Iterable[SupportsIndex] | None = None
    ) -> Venue:
        """Opens a venue folder; it may take seconds.

        `venues` are the ids of those to open; left out, it is the only one of the folder. Several
        are joined. One such set may be open at a time in a process.
        """
        folder = os.fsdecode(path)
        given = given_text(folder, "path")
        options = None if venues is None else wholes(venues, "venues")
        handle = call(library().tern_venue_open_folder, given, venue_options(options))
        return cls(handle, Floors(Folder(os.path.abspath(folder)), options))

    @classmethod
    def from_documents(
        cls, documents: Documents, *, venues: Iterable[SupportsIndex] | None = None
    ) -> Venue:
        """Opens a venue from documents: a mapping of paths such as "venue/1/full.json" to bytes or
        texts, or a function that is called with a path and gives None where there is none.

        What that function raises comes out of here. It is called again when the floors are first
        needed for a picture.

        >>> from pathlib import Path
        >>> from terncorekit import Venue
        >>> def read(path):
        ...     return Path("data/plaza", path).read_bytes()
        >>> with Venue.from_documents(read) as venue:
        ...     print(venue.route(22001, 14016))
        132 m over 4 floors
        """
        if not callable(documents) and not isinstance(documents, Mapping):
            raise TypeError("documents must be a mapping or a function")
        options = None if venues is None else wholes(venues, "venues")
        handle = _opened(documents, venue_options(options))
        return cls(handle, Floors(documents, options))

    def close(self) -> None:
        """Closes the venue, once or more often. Answers under way on other threads are finished."""
        self._finalizer()

    @property
    def closed(self) -> bool:
        """Whether it was closed."""
        return not self._finalizer.alive

    def __enter__(self) -> Venue:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<terncorekit.Venue {'closed' if self.closed else 'open'}>"

    def answer(self, text: str) -> str:
        """The answer to a request in JSON, as `tern batch` gives it, byte for byte. An error is an
        answer, too.

        >>> from terncorekit import Venue
        >>> with Venue.open("data/plaza") as venue:
        ...     venue.answer('{"op":"closest","map":11,"at":[400,300]}')
        '{"waypoint":11010}'
        """
        if not isinstance(text, str):
            raise TypeError(f"a request is a text here, not {type(text).__name__}")
        given = given_text(text, "request")
        if may_block(text):
            self._has_blocks = True
        answer = taken_text(library().tern_venue_answer(self._handle, given))
        # Asked last, since another thread may close it meanwhile.
        if self.closed and answer.startswith('{"error":'):
            raise error_from(answer)
        return answer

    def ask(self, request: Mapping[str, Any]) -> dict[str, Any]:
        """The answer to any request of `tern batch`; an error in it is raised.

        >>> from terncorekit import Venue
        >>> with Venue.open("data/plaza") as venue:
        ...     venue.ask({"op": "closest", "map": 11, "at": [400, 300]})
        {'waypoint': 11010}
        """
        answer: dict[str, Any] = json.loads(self.answer(request_text(request)))
        error = error_of(answer)
        if error is not None:
            raise error
        return answer

    def route(
        self, start: SupportsIndex, goal: Goal, *, accessibility: SupportsIndex = 100
    ) -> Route:
        """The cheapest way to a waypoint, or to whichever of several is the cheapest to reach.

        >>> from terncorekit import Venue
        >>> with Venue.open("data/plaza") as venue:
        ...     route = venue.route(22001, venue.places("toys")[0].waypoints)
        >>> route.waypoints[-1], round(route.metres)
        (13020, 147)
        """
        to = one_or_more(goal, "goal")
        request = {
            "op": "routeToAny" if isinstance(to, list) else "route",
            "from": whole(start, "start"),
            "to": to,
            "accessibility": whole(accessibility, "accessibility"),
        }
        return Route.of(self.ask(request)["route"], self._floors)

    def directions(
        self,
        start: SupportsIndex,
        goal: SupportsIndex,
        *,
        accessibility: SupportsIndex = 100,
        language: str = "en",
        venue: SupportsIndex | None = None,
    ) -> Directions:
        """The same way in steps that a person can follow, in "en", "de", "fr", "es" or "ja"."""
        if not isinstance(language, str):
            raise TypeError("language must be a text")
        request = {
            "op": "directions",
            "from": whole(start, "start"),
            "to": whole(goal, "goal"),
            "accessibility": whole(accessibility, "accessibility"),
            "language": language,
        }
        return Directions.of(self._asked(request, venue), self._floors)

    def tour(
        self,
        start: SupportsIndex,
        destinations: Iterable[SupportsIndex],
        *,
        accessibility: SupportsIndex = 100,
        venue: SupportsIndex | None = None,
    ) -> Tour:
        """The best order to visit destinations, by their ids, with the way to each."""
        request = {
            "op": "tour",
            "from": whole(start, "start"),
            "destinations": wholes(destinations, "destinations"),
            "accessibility": whole(accessibility, "accessibility"),
        }
        return Tour.of(self._asked(request, venue), self._floors)

    def nearest(
        self,
        start: SupportsIndex | Spot,
        *,
        destination: Goal | None = None,
        amenity: Goal | None = None,
        path_type: Goal | None = None,
        accessibility: SupportsIndex | None = None,
        venue: SupportsIndex | None = None,
    ) -> Nearest:
        """What is nearest of destinations, amenities and path types, by their ids.

        From a waypoint it is the nearest by walk, with the way. From a `Spot` it is the nearest in
        straight lines, floor by floor, of one element; `accessibility` is not asked for there.

        >>> from terncorekit import Spot, Venue
        >>> with Venue.open("data/plaza") as venue:
        ...     venue.nearest(Spot(22, 400, 300), amenity=2).waypoint
        22012
        """
        sought = {
            name: one_or_more(value, name)
            for name, value in (
                ("destination", destination),
                ("amenity", amenity),
                ("pathType", path_type),
            )
            if value is not None
        }
        if isinstance(start, Spot):
            if accessibility is not None:
                raise TypeError("straight lines have no accessibility")
            request = _nearest_of_spot(start, sought)
        else:
            level = 100 if accessibility is None else accessibility
            request = {
                "op": "nearestByWalk",
                "from": whole(start, "start"),
                **_sought_by_walk(sought),
                "accessibility": whole(level, "accessibility"),
            }
        return Nearest.of(self._asked(request, venue), self._floors)

    def matrix(
        self,
        starts: Iterable[SupportsIndex],
        goals: Iterable[SupportsIndex],
        *,
        accessibility: SupportsIndex = 100,
        venue: SupportsIndex | None = None,
        progress: Progress = None,
    ) -> Matrix:
        """Costs and lengths from each start to each goal.

        As numpy arrays where numpy is there; where there is no way a cell is infinite. `progress`
        is told of the rows.
        """
        request = {
            "op": "matrix",
            "from": wholes(starts, "starts"),
            "to": wholes(goals, "goals"),
            "accessibility": whole(accessibility, "accessibility"),
        }
        return matrix_of(lambda part: self._asked(part, venue), request, checked(progress))

    def reach(
        self,
        start: Goal,
        *,
        metres: SupportsFloat | None = None,
        cost: SupportsFloat | None = None,
        accessibility: SupportsIndex = 100,
        venue: SupportsIndex | None = None,
    ) -> Reach:
        """How far one gets from a waypoint, or from any of several, within so many metres of walk
        or at that cost, or both.
        """
        request: dict[str, Any] = {
            "op": "reach",
            "from": one_or_more(start, "start"),
            "accessibility": whole(accessibility, "accessibility"),
        }
        if metres is None and cost is None:
            raise TypeError("reach wants metres or cost")
        if metres is not None:
            request["metres"] = number(metres, "metres")
        if cost is not None:
            request["cost"] = number(cost, "cost")
        return Reach.of(self._asked(request, venue), self._floors)

    def places(self, text: str = "", *, venue: SupportsIndex | None = None) -> Places:
        """Destinations and amenities by name, whatever its case and accents, the best match first;
        without a text all of them.
        """
        if not isinstance(text, str):
            raise TypeError("the text of a search must be a text")
        return Places.of(self._asked({"op": "places", "text": text}, venue))

    @overload
    def batch(
        self, requests: Iterable[str], *, jobs: int | None = 1, progress: Progress = None
    ) -> Iterator[str]: ...

    @overload
    def batch(
        self, requests: Iterable[Request], *, jobs: int | None = 1, progress: Progress = None
    ) -> Iterator[dict[str, Any]]: ...

    def batch(
        self, requests: Iterable[Any], *, jobs: int | None = 1, progress: Progress = None
    ) -> Iterator[Any]:
        """Answers requests as `tern batch` does: lazily, in order, an error as an answer.

        The answer to a mapping is a dict. A text in JSON, such as a line of a file, is answered by
        a text; a blank one is passed over. With `jobs` so many threads answer side by side, None is
        one for each core: the answers are the same. Some requests are read ahead then, never all.

        >>> from terncorekit import Venue
        >>> with Venue.open("data/plaza") as venue:
        ...     for answer in venue.batch({"op": "neighbors", "node": id} for id in (11001, 99999)):
        ...         print(len(answer["neighbors"]))
        4
        0
        """
        threads = os.cpu_count() or 1 if jobs is None else whole(jobs, "jobs")
        if threads < 1:
            raise ValueError("jobs must be at least 1")
        if isinstance(requests, (str, bytes, Mapping)) or not isinstance(requests, Iterable):
            raise TypeError("requests must be several: a list, a file, or whatever gives them")
        return answers_of(
            self.answer, requests, threads, checked(progress), lambda: self._has_blocks
        )

    def _asked(self, request: Mapping[str, Any], venue: SupportsIndex | None) -> dict[str, Any]:
        if venue is None:
            return self.ask(request)
        return self.ask({**request, "venue": whole(venue, "venue")})


def _nearest_of_spot(spot: Spot, sought: Mapping[str, int | list[int]]) -> dict[str, Any]:
    if len(sought) != 1 or isinstance(next(iter(sought.values())), list):
        raise TypeError("in straight lines one element is looked for at a time")
    at = [number(spot.x, "x"), number(spot.y, "y")]
    return {"op": "nearest", "map": whole(spot.map_id, "map_id"), "at": at, **sought}


def _sought_by_walk(sought: Mapping[str, int | list[int]]) -> Mapping[str, int | list[int]]:
    """One element, or the lists of several."""
    if len(sought) == 1 and not isinstance(next(iter(sought.values())), list):
        return sought
    plural = {"destination": "destinations", "amenity": "amenities", "pathType": "pathTypes"}
    return {plural[kind]: ids if isinstance(ids, list) else [ids] for kind, ids in sought.items()}


def _opened(documents: Documents, options: bytes | None) -> int:
    """The handle of a venue from documents."""
    failures: list[BaseException] = []

    def give(context: int | None, path: bytes, sink: int) -> None:
        if failures:
            return
        try:
            document = bytes_of(documents, path.decode("utf-8"))
            if document is not None:
                call(library().tern_give, sink, document, len(document))
        except BaseException as failure:
            # It may not cross the library; it goes on where the library was called.
            failures.append(failure)

    # Who calls has the callback until the call returns, and nobody calls it later.
    _ending.note(give)
    try:
        handle: int = call(
            library().tern_venue_open_documents, DocumentCallback(give), None, options
        )
    except TernError:
        if failures:
            raise failures[0] from None
        raise
    finally:
        _ending.forget(give)
    if failures:
        library().tern_venue_close(handle, None)
        raise failures[0]
    return handle
