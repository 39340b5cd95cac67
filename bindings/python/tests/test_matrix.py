"""Matrices."""

import sys
from math import inf

import pytest

from terncorekit import TernError, matrix

STARTS, GOALS = list(range(12001, 12021)), [14016, 13020, 11001, 99999]


def cells(table):
    return [[float(cell) for cell in row] for row in table]


def expected(venue, name):
    answer = venue.ask({"op": "matrix", "from": STARTS, "to": GOALS})
    return [[inf if cell is None else cell for cell in row] for row in answer[name]]


def test_matrix_holds_the_cells_of_the_answer(shared_venue):
    made = shared_venue.matrix(STARTS, GOALS)
    assert (made.starts, made.goals) == (tuple(STARTS), tuple(GOALS))
    assert cells(made.costs) == expected(shared_venue, "costs")
    assert cells(made.millimetres) == expected(shared_venue, "mmDistances")


def test_matrix_is_made_of_what_is_there(shared_venue):
    costs = shared_venue.matrix(STARTS, GOALS).costs
    if sys.modules.get("numpy"):
        assert (costs.dtype, costs.shape) == ("float64", (20, 4))
    else:
        assert isinstance(costs, list)
        assert isinstance(costs[0], list)


def test_matrix_says_what_a_route_says(shared_venue):
    made = shared_venue.matrix([22001], [14016], accessibility=0)
    route = shared_venue.route(22001, 14016, accessibility=0)
    assert float(made.costs[0][0]) == route.cost
    assert float(made.millimetres[0][0]) == pytest.approx(route[-1].millimetres, rel=1e-6)


def test_matrix_in_parts_is_the_same(shared_venue, monkeypatch):
    whole = shared_venue.matrix(STARTS, GOALS)
    monkeypatch.setattr(matrix, "PAIRS_AT_ONCE", 12)
    told = []
    parts = shared_venue.matrix(STARTS, GOALS, progress=lambda *each: told.append(each))
    assert cells(parts.costs) == cells(whole.costs)
    assert cells(parts.millimetres) == cells(whole.millimetres)
    assert told == [(done, 20) for done in (3, 6, 9, 12, 15, 18, 20)]


def test_matrix_without_starts_or_goals_is_empty(shared_venue):
    assert cells(shared_venue.matrix([], GOALS).costs) == []
    assert cells(shared_venue.matrix(STARTS[:2], []).costs) == [[], []]


def test_matrix_takes_arrays(shared_venue):
    numpy = pytest.importorskip("numpy")
    made = shared_venue.matrix(numpy.array(STARTS), numpy.array(GOALS, dtype="int32"))
    assert cells(made.costs) == expected(shared_venue, "costs")


def test_matrix_shows_as_a_table(shared_venue):
    page = shared_venue.matrix([22001], [14016, 99999])._repr_html_()
    assert "<td>132.0</td><td>\u2013</td>" in page


def test_matrix_of_a_closed_venue_raises(venue):
    venue.close()
    with pytest.raises(TernError):
        venue.matrix([], [])
