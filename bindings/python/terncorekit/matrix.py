"""How far it is from each of many waypoints to each of many."""

from __future__ import annotations

from dataclasses import dataclass
from math import inf
from typing import TYPE_CHECKING, Any, Callable, Mapping

from terncorekit.pictures import table
from terncorekit.progress import Progress, reporting

if TYPE_CHECKING:
    from numpy import float64
    from numpy.typing import NDArray

    Table = NDArray[float64]

Rows = list[list[Any]]

# Of one request: rows that are asked together share what is prepared for them, and are in memory as
# text and as objects, too.
PAIRS_AT_ONCE = 250_000


@dataclass(frozen=True, eq=False)
class Matrix:
    """Costs and lengths between waypoints: a row for each start, a column for each goal.

    The tables are numpy arrays of float64, and lists of lists where numpy is not installed. Where
    there is no way, and for waypoints that do not exist, a cell is infinite.

    >>> from terncorekit import Venue
    >>> with Venue.open("data/plaza") as venue:
    ...     matrix = venue.matrix([22001, 12002], [14016, 11001, 99999])
    >>> for row in matrix.millimetres:
    ...     print([float(cell) for cell in row])
    [131988.56, 135594.4, inf]
    [51853.105, 28100.0, inf]
    """

    starts: tuple[int, ...]
    goals: tuple[int, ...]
    #: What the cheapest way costs.
    costs: Table
    #: How long it is, in millimetres of walk.
    millimetres: Table

    def _repr_html_(self) -> str:
        rows = [
            (start, *(_metres(cell) for cell in row[:MOST_SHOWN]))
            for start, row in zip(self.starts[:MOST_SHOWN], self.millimetres)
        ]
        return table(("metres", *map(str, self.goals[:MOST_SHOWN])), rows)


# Rows and columns in a notebook.
MOST_SHOWN = 20


def matrix_of(
    ask: Callable[[Mapping[str, Any]], dict[str, Any]],
    request: Mapping[str, Any],
    progress: Progress,
) -> Matrix:
    """The matrix of a request, asked some rows at a time."""
    starts, goals = request["from"], request["to"]
    together = max(1, PAIRS_AT_ONCE // max(1, len(goals)))
    costs, lengths = _Table(len(starts), len(goals)), _Table(len(starts), len(goals))
    with reporting(progress, len(starts), "rows") as report:
        # Without starts it is asked too, so that a request that is wrong is refused.
        for first in range(0, max(1, len(starts)), together):
            some = starts[first : first + together]
            answer = ask({**request, "from": some})
            costs.put(first, answer["costs"])
            lengths.put(first, answer["mmDistances"])
            report(first + len(some))
    return Matrix(tuple(starts), tuple(goals), costs.cells, lengths.cells)


class _Table:
    """Cells that are filled some rows at a time."""

    cells: Any

    def __init__(self, height: int, width: int) -> None:
        try:
            import numpy
        except ImportError:
            self.cells = []
            return
        self.cells = numpy.empty((height, width))

    def put(self, first: int, rows: Rows) -> None:
        """The rows from `first` on, with None where there is no way."""
        if isinstance(self.cells, list):
            self.cells += [[inf if cell is None else float(cell) for cell in row] for row in rows]
        elif rows:
            part = self.cells[first : first + len(rows)]
            # None reads as "not a number", which no answer holds.
            part[:] = rows
            part[part != part] = inf


def _metres(millimetres: float) -> str:
    return "\u2013" if millimetres == inf else f"{millimetres / 1000:.1f}"
