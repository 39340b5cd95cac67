"""The maps of a venue's floors, as its documents have them: what pictures are drawn on."""

from __future__ import annotations

import re
import threading
from dataclasses import dataclass
from math import isfinite
from typing import Any, Iterator, Mapping, NamedTuple, Sequence

from terncorekit.documents import Documents, decoded


class Frame(NamedTuple):
    """A rectangle in map units."""

    x: float
    y: float
    width: float
    height: float


@dataclass(frozen=True)
class Floor:
    """A floor with its map."""

    #: Of the building and of the floor.
    title: str
    #: Text of an SVG file, from who knows whom; empty where there is none.
    drawing: str
    #: What the drawing shows.
    frame: Frame | None
    #: Where the waypoints lie, by their ids.
    waypoints: Mapping[int, tuple[float, float]]


class Floors:
    """Floors by the ids of their maps, read from the documents when one is first wanted.

    Nothing in a document makes this fail: what is not as it should be is left out.
    """

    def __init__(self, documents: Documents | None, venues: Sequence[int] | None) -> None:
        self._documents = documents
        self._venues = venues
        self._lock = threading.Lock()
        self._floors: dict[int, Floor] | None = None

    def __getstate__(self) -> dict[str, Any]:
        return {**self.__dict__, "_lock": None}

    def __setstate__(self, state: dict[str, Any]) -> None:
        self.__dict__.update(state, _lock=threading.Lock())

    def get(self, map_id: int) -> Floor | None:
        """The floor of that map."""
        return self._all().get(map_id)

    def where(self, waypoint: int) -> tuple[int, tuple[float, float]] | None:
        """The map that a waypoint is on, and where."""
        for map_id, floor in self._all().items():
            if waypoint in floor.waypoints:
                return map_id, floor.waypoints[waypoint]
        return None

    def _all(self) -> dict[int, Floor]:
        with self._lock:
            if self._floors is None:
                read = {} if self._documents is None else dict(self._read(self._documents))
                self._floors = read
            return self._floors

    def _read(self, documents: Documents) -> Iterator[tuple[int, Floor]]:
        venues = self._venues
        if venues is None:
            venues = _ids(decoded(documents, "full.json").get("venues"))
        for venue in venues:
            folder = f"venue/{venue}"
            for number in _ids(decoded(documents, f"{folder}/full.json").get("buildings")):
                building = decoded(documents, f"{folder}/building/{number}/full.json")
                for floor in _items(building.get("floors")):
                    yield from _floor(_text(building.get("name")), floor)


def _floor(building: str, floor: dict[str, Any]) -> Iterator[tuple[int, Floor]]:
    plan = floor.get("map")
    if not isinstance(plan, dict) or not isinstance(plan.get("id"), int):
        return
    title = ", ".join(filter(None, [building, _text(floor.get("name"))]))
    drawing = _text(plan.get("svg"))
    waypoints = dict(_waypoints(plan.get("waypoints")))
    yield plan["id"], Floor(title, drawing, _frame_of(drawing), waypoints)


def _waypoints(batch: Any) -> Iterator[tuple[int, tuple[float, float]]]:
    for waypoint in _items(batch):
        at = waypoint.get("coordinates")
        if isinstance(waypoint.get("id"), int) and isinstance(at, list) and len(at) == 2:
            if all(isinstance(each, (int, float)) and isfinite(each) for each in at):
                yield waypoint["id"], (at[0], at[1])


def _frame_of(drawing: str) -> Frame | None:
    """What the first tag of a drawing says that it shows."""
    tag = re.search(r"<svg\b[^>]{0,4000}>", drawing)
    box = tag and re.search(r"\sviewBox\s*=\s*[\"']([^\"']{0,200})[\"']", tag.group())
    if not box:
        return None
    try:
        frame = Frame(*map(float, box.group(1).replace(",", " ").split()))
    except (TypeError, ValueError):
        return None
    is_usable = all(map(isfinite, frame)) and frame.width > 0 and frame.height > 0
    return frame if is_usable else None


def _text(value: Any) -> str:
    return value if isinstance(value, str) else ""


def _items(batch: Any) -> list[dict[str, Any]]:
    items = batch.get("items") if isinstance(batch, dict) else None
    return [item for item in items if isinstance(item, dict)] if isinstance(items, list) else []


def _ids(batch: Any) -> list[int]:
    return [item["id"] for item in _items(batch) if isinstance(item.get("id"), int)]
