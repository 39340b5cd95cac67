"""What is answered: plain values that do not change.

Each keeps the answer in JSON that it was made of in `raw`. A picture of it is what a notebook
shows, and the text of an SVG file by `picture()`.
"""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Any, Iterator, NamedTuple

from terncorekit.floors import Floors
from terncorekit.pictures import Drawing, figure, table


class Spot(NamedTuple):
    """A point on a floor's map, in map units."""

    map_id: int
    x: float
    y: float


class Element(NamedTuple):
    """Something that is looked for."""

    #: "destination", "amenity" or "pathType".
    kind: str
    id: int


@dataclass(frozen=True)
class Segment:
    """A stretch of a route on one map. Its sums run from the route's start to the stretch's end."""

    map_id: int
    #: The id of the path type that leads on: a lift, stairs; None at the end.
    mover: int | None
    #: What the route has cost by here: map units, with what lifts and the like add to them.
    cost: float
    #: Map units walked by here.
    pixel_distance: float
    #: Millimetres walked by here; 0 where the map has no scale.
    millimetres: float
    #: The ids of the waypoints, in walking order.
    points: tuple[int, ...]
    #: Where they lie on the map, in map units.
    map_points: tuple[tuple[float, float], ...]
    raw: dict[str, Any] = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any]) -> Segment:
        return cls(
            map_id=raw["mapId"],
            mover=raw["mover"],
            cost=raw["cost"],
            pixel_distance=raw["pixelDistance"],
            millimetres=raw["mmDistance"],
            points=tuple(raw["points"]),
            map_points=tuple(map(_point, raw["mapPoints"])),
            raw=raw,
        )


class Drawn:
    """What can be seen as a picture."""

    _floors: Floors

    def _draw(self, drawing: Drawing) -> None:
        raise NotImplementedError

    def picture(self) -> str:
        """The answer on its floors, as the text of an SVG file.

        The floors are there where the venue was opened from documents; of a venue that a hub
        loaded the ways alone are drawn.
        """
        drawing = Drawing(self._floors)
        self._draw(drawing)
        return drawing.svg()

    def _repr_html_(self) -> str:
        return figure(self.picture(), str(self))


@dataclass(frozen=True)
class Route(Drawn):
    """A way, in segments; without any there is no way, and the route is false.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     route = venue.route(22001, 14016)
    >>> print(route)
    132 m over 4 floors
    >>> [segment.map_id for segment in route]
    [22, 12, 13, 14]
    >>> route.waypoints[0], route.waypoints[-1]
    (22001, 14016)
    """

    segments: tuple[Segment, ...]
    #: The list of segments in JSON.
    raw: list[dict[str, Any]] = field(repr=False, compare=False)
    _floors: Floors = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: list[dict[str, Any]], floors: Floors) -> Route:
        return cls(tuple(map(Segment.of, raw)), raw, floors)

    def __bool__(self) -> bool:
        return bool(self.segments)

    def __len__(self) -> int:
        return len(self.segments)

    def __iter__(self) -> Iterator[Segment]:
        return iter(self.segments)

    def __getitem__(self, index: int) -> Segment:
        return self.segments[index]

    @property
    def cost(self) -> float:
        """What all of it costs; 0 for none."""
        return self.segments[-1].cost if self.segments else 0.0

    @property
    def metres(self) -> float:
        """How long all of it is; 0 for none, and where maps have no scale."""
        return self.segments[-1].millimetres / 1000 if self.segments else 0.0

    @property
    def waypoints(self) -> tuple[int, ...]:
        """The ids of the waypoints from start to end."""
        return tuple(point for segment in self.segments for point in segment.points)

    def __str__(self) -> str:
        if not self.segments:
            return "no route"
        floors = len({segment.map_id for segment in self.segments})
        return f"{self.metres:.0f} m over {floors} floor{'s' * (floors > 1)}"

    def _draw(self, drawing: Drawing) -> None:
        drawing.route(self._lines())
        if self.segments:
            drawing.mark(self.segments[0].map_id, self.segments[0].map_points[0], "A")
            drawing.mark(self.segments[-1].map_id, self.segments[-1].map_points[-1], "B")

    def _lines(self) -> list[tuple[int, tuple[tuple[float, float], ...]]]:
        return [(segment.map_id, segment.map_points) for segment in self.segments]


@dataclass(frozen=True)
class Step:
    """One thing to do on the way."""

    #: "depart", "turn", "mover", "crossing" or "arrive".
    kind: str
    #: "left", "right", "slight left", "sharp right", "around" and the like; None for straight on.
    direction: str | None
    map_id: int
    #: The id of the waypoint where it is done.
    at: int
    #: Millimetres of walk to the next step.
    millimetres: float
    seconds: float
    #: The id of the path type that is taken: a lift, stairs.
    mover: int | None
    #: Where it leads.
    to_map_id: int | None
    landmark: Element | None
    #: The step in words.
    text: str
    raw: dict[str, Any] = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any]) -> Step:
        return cls(
            kind=raw["kind"],
            direction=raw["direction"],
            map_id=raw["mapId"],
            at=raw["at"],
            millimetres=raw["mm"],
            seconds=raw["seconds"],
            mover=raw["mover"],
            to_map_id=raw["toMapId"],
            landmark=element_of(raw["landmark"]),
            text=raw["text"],
            raw=raw,
        )


@dataclass(frozen=True)
class Directions(Drawn):
    """A route in steps that a person can follow; without a route there are none, and it is false.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     print(venue.directions(14016, 12025))
    Start at Foxglove Cameras
    Turn right at Wren Ice Cream
    Take the escalator down to First Floor
    Turn sharp left at Tidal Hair. Take the escalator down to Ground Floor
    Turn right at Bramble Beauty
    You have reached Poppy Records
    """

    route: Route
    steps: tuple[Step, ...]
    millimetres: float
    seconds: float
    raw: dict[str, Any] = field(repr=False, compare=False)
    _floors: Floors = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any], floors: Floors) -> Directions:
        steps = tuple(map(Step.of, raw["steps"]))
        return cls(Route.of(raw["route"], floors), steps, raw["mm"], raw["seconds"], raw, floors)

    def __bool__(self) -> bool:
        return bool(self.route)

    def __iter__(self) -> Iterator[Step]:
        return iter(self.steps)

    def __len__(self) -> int:
        return len(self.steps)

    def __str__(self) -> str:
        return "\n".join(step.text for step in self.steps) or "no route"

    def _draw(self, drawing: Drawing) -> None:
        self.route._draw(drawing)
        drawing.lines([step.text for step in self.steps])


@dataclass(frozen=True)
class Tour(Drawn):
    """A round of destinations in the order that is best.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     tour = venue.tour(12002, [42, 17, 25])
    >>> sorted(tour.destinations)
    [17, 25, 42]
    >>> len(tour.legs)
    3
    """

    #: The way to each destination from the one before.
    legs: tuple[Route, ...]
    #: The ids of those that are visited, in order.
    destinations: tuple[int, ...]
    raw: dict[str, Any] = field(repr=False, compare=False)
    _floors: Floors = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any], floors: Floors) -> Tour:
        legs = tuple(Route.of(leg, floors) for leg in raw["legs"])
        return cls(legs, tuple(raw["destinations"]), raw, floors)

    def __bool__(self) -> bool:
        return bool(self.destinations)

    @property
    def metres(self) -> float:
        """How long all of it is."""
        return sum(leg.metres for leg in self.legs)

    def __str__(self) -> str:
        return f"{self.metres:.0f} m to {len(self.destinations)} destinations"

    def _draw(self, drawing: Drawing) -> None:
        walked = [leg for leg in self.legs if leg]
        for number, leg in enumerate(walked, 1):
            drawing.route(leg._lines())
            if number == 1:
                drawing.mark(leg[0].map_id, leg[0].map_points[0], "A")
            drawing.mark(leg[-1].map_id, leg[-1].map_points[-1], str(number))


@dataclass(frozen=True)
class Nearest(Drawn):
    """What is nearest; false where nothing is.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     nearest = venue.nearest(22001, amenity=2)
    >>> nearest.waypoint, nearest.element
    (22012, Element(kind='amenity', id=2))
    """

    #: The id of the waypoint where it is reached.
    waypoint: int | None
    element: Element | None
    #: The way to it; None where straight lines were asked for.
    route: Route | None
    #: Straight lines: the ids of the waypoints where floors were changed, in order.
    connectors: tuple[int, ...]
    raw: dict[str, Any] = field(repr=False, compare=False)
    _floors: Floors = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any], floors: Floors) -> Nearest:
        route = Route.of(raw["route"], floors) if "route" in raw else None
        connectors = tuple(raw.get("connectors", ()))
        return cls(raw["waypoint"], element_of(raw["element"]), route, connectors, raw, floors)

    def __bool__(self) -> bool:
        return self.waypoint is not None

    def __str__(self) -> str:
        if self.element is None:
            return "nothing"
        return f"{self.element.kind} {self.element.id} at waypoint {self.waypoint}"

    def _draw(self, drawing: Drawing) -> None:
        if self.route:
            self.route._draw(drawing)
        elif self.waypoint is not None:
            drawing.waypoint(self.waypoint, "B")


class Reached(NamedTuple):
    """A waypoint that is within reach."""

    waypoint: int
    cost: float
    #: Of walk.
    millimetres: float


@dataclass(frozen=True)
class Reach(Drawn):
    """How far one gets: the waypoints within reach, the cheapest first.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     reach = venue.reach(22001, metres=10)
    >>> reach[1]
    Reached(waypoint=22026, cost=66, millimetres=3300)
    """

    reached: tuple[Reached, ...]
    raw: dict[str, Any] = field(repr=False, compare=False)
    _floors: Floors = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any], floors: Floors) -> Reach:
        reached = (Reached(each["waypoint"], each["cost"], each["mm"]) for each in raw["reached"])
        return cls(tuple(reached), raw, floors)

    def __len__(self) -> int:
        return len(self.reached)

    def __iter__(self) -> Iterator[Reached]:
        return iter(self.reached)

    def __getitem__(self, index: int) -> Reached:
        return self.reached[index]

    def __str__(self) -> str:
        return f"{len(self.reached)} waypoints"

    def _draw(self, drawing: Drawing) -> None:
        farthest = max((each.millimetres for each in self.reached), default=0) or 1
        for each in self.reached:
            drawing.dot(each.waypoint, each.millimetres / farthest)


@dataclass(frozen=True)
class Place:
    """Something with a name that one can go to."""

    #: "destination" or "amenity".
    kind: str
    id: int
    name: str
    map_ids: tuple[int, ...]
    #: The ids of the waypoints where it is reached.
    waypoints: tuple[int, ...]
    raw: dict[str, Any] = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any]) -> Place:
        return cls(
            kind=raw["kind"],
            id=raw["id"],
            name=raw["name"],
            map_ids=tuple(raw["mapIds"]),
            waypoints=tuple(raw["waypoints"]),
            raw=raw,
        )


@dataclass(frozen=True)
class Places:
    """Places, the best match first.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     places = venue.places("toys")
    >>> places[0].name, places[0].waypoints
    ('Everly Toys', (13020,))
    """

    places: tuple[Place, ...]
    raw: dict[str, Any] = field(repr=False, compare=False)

    @classmethod
    def of(cls, raw: dict[str, Any]) -> Places:
        return cls(tuple(map(Place.of, raw["places"])), raw)

    def __len__(self) -> int:
        return len(self.places)

    def __iter__(self) -> Iterator[Place]:
        return iter(self.places)

    def __getitem__(self, index: int) -> Place:
        return self.places[index]

    def _repr_html_(self) -> str:
        rows = [(place.name, place.kind, place.id, place.waypoints) for place in self.places]
        return table(("name", "kind", "id", "waypoints"), rows)


def _point(raw: list[float]) -> tuple[float, float]:
    return raw[0], raw[1]


def element_of(raw: dict[str, Any] | None) -> Element | None:
    """The element that an answer names."""
    return None if raw is None else Element(raw["kind"], raw["id"])
