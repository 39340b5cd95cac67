"""How much longer the step-free way is, between all places of many venues.

The work of the campaign, without whatever spreads it over machines. A task is a block of rows of
one venue's matrix and writes one file, whole or not at all, that is always the same: so a task may
be done twice, and one whose worker died is done again by another.

    campaign.py plan DATA                     the tasks, one a line
    campaign.py work DATA OUT [TASK...]       does them; without any those of standard input
    campaign.py sum DATA OUT                  the table of all venues, when all tasks are done

DATA is a folder of venues, as `tern import --all` and `tern generate` write it. OUT gets
venue=ID/rows-FIRST.csv with a line for each pair of places, and venues.csv. All machines see both.
"""

from __future__ import annotations

import argparse
import csv
import os
import statistics
import sys
from functools import lru_cache
from math import inf
from pathlib import Path
from typing import Iterable, Iterator, NamedTuple

from terncorekit import Venue

# A worker keeps so many venues that it has loaded, those that it used last.
VENUES_KEPT = 64
# Some seconds of work: little is lost with a worker, and handing on costs nothing beside it.
PAIRS_IN_A_TASK = 40_000

ALL_WAYS = 100
STEP_FREE = 0


class Task(NamedTuple):
    """Rows of a venue's matrix. As a text it is "venue:first:rows"."""

    venue: int
    first: int
    rows: int

    @classmethod
    def read(cls, text: str) -> Task:
        return cls(*map(int, text.split(":")))

    def __str__(self) -> str:
        return f"{self.venue}:{self.first}:{self.rows}"


class Door(NamedTuple):
    """A place, and the waypoint that stands for it."""

    place: str
    waypoint: int


def venues_in(data: Path) -> list[int]:
    """The ids of all venues of the folder."""
    return sorted(int(folder.name) for folder in (data / "venue").iterdir())


@lru_cache(VENUES_KEPT)
def opened(data: Path, venue: int) -> tuple[Venue, list[Door]]:
    """A venue with the doors of its places, loaded once."""
    loaded = Venue.open(data, venues=[venue])
    doors = [
        Door(f"{place.kind} {place.id}", place.waypoints[0])
        for place in loaded.places()
        if place.waypoints
    ]
    return loaded, sorted(doors)


def plan(data: Path, venue: int) -> list[Task]:
    """The tasks of a venue."""
    places = len(opened(data, venue)[1])
    rows = max(1, PAIRS_IN_A_TASK // max(1, places))
    return [Task(venue, first, min(rows, places - first)) for first in range(0, places, rows)]


def work(data: Path, out: Path, task: Task) -> None:
    """Does a task."""
    venue, doors = opened(data, task.venue)
    starts = doors[task.first : task.first + task.rows]
    of_all, step_free = (
        venue.matrix(
            [door.waypoint for door in starts],
            [door.waypoint for door in doors],
            accessibility=level,
        ).millimetres
        for level in (ALL_WAYS, STEP_FREE)
    )
    lines = ["from,to,metres,stepFreeMetres\n"]
    for start, row, step_free_row in zip(starts, of_all, step_free):
        for goal, walk, detour in zip(doors, row, step_free_row):
            if goal != start:
                lines.append(f"{start.place},{goal.place},{metres(walk)},{metres(detour)}\n")
    write(out / f"venue={task.venue}" / f"rows-{task.first:06}.csv", lines)


def metres(millimetres: float) -> str:
    """Nothing where there is no way."""
    return "" if millimetres == inf else f"{millimetres / 1000:.3f}"


def write(path: Path, lines: Iterable[str]) -> None:
    """Writes a file that is there when it is whole."""
    path.parent.mkdir(parents=True, exist_ok=True)
    unfinished = path.with_name(f".{path.name}.{os.uname().nodename}.{os.getpid()}")
    with open(unfinished, "w", encoding="utf-8") as file:
        file.writelines(lines)
    unfinished.replace(path)


def summarise(out: Path, summaries: Iterable[str]) -> None:
    """Writes the table of all venues, and takes away what killed workers have left unfinished."""
    for unfinished in out.glob("venue=*/.rows-*"):
        unfinished.unlink(missing_ok=True)
    header = "venue,pairs,noWay,noStepFreeWay,medianRatio,ninetiethRatio,mostMoreMetres\n"
    write(out / "venues.csv", [header, *summaries])


def summary(out: Path, venue: int) -> str:
    """The line of a venue."""
    pairs = list(pairs_of(out, venue))
    both = [(walk, detour) for walk, detour in pairs if walk is not None and detour is not None]
    ratios = sorted(detour / walk for walk, detour in both if walk > 0)
    numbers = [
        len(pairs),
        sum(walk is None for walk, _ in pairs),
        sum(walk is not None and detour is None for walk, detour in pairs),
    ]
    shares = [
        f"{statistics.median(ratios):.4f}" if ratios else "",
        f"{ratios[(len(ratios) - 1) * 9 // 10]:.4f}" if ratios else "",
        f"{max(detour - walk for walk, detour in both):.3f}" if both else "",
    ]
    return ",".join(map(str, [venue, *numbers, *shares])) + "\n"


def pairs_of(out: Path, venue: int) -> Iterator[tuple[float | None, float | None]]:
    """Metres of walk and of step-free walk of each pair of places; None where there is no way."""
    for path in sorted(out.glob(f"venue={venue}/rows-*.csv")):
        with open(path, encoding="utf-8", newline="") as file:
            for line in csv.DictReader(file):
                walk, detour = line["metres"], line["stepFreeMetres"]
                yield float(walk) if walk else None, float(detour) if detour else None


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawTextHelpFormatter
    )
    parser.add_argument("what", choices=["plan", "work", "sum"])
    parser.add_argument("data", type=Path)
    parser.add_argument("out", type=Path, nargs="?")
    parser.add_argument("tasks", nargs="*", type=Task.read)
    words = parser.parse_args()
    if words.out is None and words.what != "plan":
        parser.error("where to?")
    if words.what == "plan":
        for venue in venues_in(words.data):
            for task in plan(words.data, venue):
                print(task)
    elif words.what == "work":
        for task in words.tasks or map(Task.read, map(str.strip, sys.stdin)):
            work(words.data, words.out, task)
    else:
        summarise(words.out, (summary(words.out, venue) for venue in venues_in(words.data)))


if __name__ == "__main__":
    main()
