"""Answers as values."""

import pickle

import pytest

from terncorekit import Element, Route, Spot, TernError

FROM, TO = 22001, 14016


def asked(venue, op, **fields):
    return venue.ask({"op": op, **fields})


def test_route_is_that_of_the_request(shared_venue):
    raw = asked(shared_venue, "route", **{"from": FROM, "to": TO})["route"]
    route = shared_venue.route(FROM, TO)
    assert route.raw == raw
    last = raw[-1]
    assert (route.cost, route.metres) == (last["cost"], last["mmDistance"] / 1000)
    assert route[-1].map_points[-1] == tuple(last["mapPoints"][-1])
    assert [segment.mover for segment in route] == [segment["mover"] for segment in raw]
    assert len(route) == len(raw)


def test_route_that_does_not_exist_is_false(shared_venue):
    route = shared_venue.route(FROM, 99999)
    assert not route
    assert (len(route), route.cost, route.metres, route.waypoints) == (0, 0.0, 0.0, ())
    assert str(route) == "no route"


def test_route_to_several_is_the_cheapest(shared_venue):
    one, other = shared_venue.route(FROM, 14016), shared_venue.route(FROM, 13020)
    assert shared_venue.route(FROM, (14016, 13020)) == min(one, other, key=lambda each: each.cost)


def test_accessibility_changes_the_route(shared_venue):
    for level in (0, 100):
        route = shared_venue.route(FROM, TO, accessibility=level)
        request = {"from": FROM, "to": TO, "accessibility": level}
        assert route.raw == asked(shared_venue, "route", **request)["route"]
    assert shared_venue.route(FROM, TO, accessibility=0).cost > shared_venue.route(FROM, TO).cost


def test_directions_walk_as_long_as_their_route(shared_venue):
    directions = shared_venue.directions(FROM, TO)
    assert directions.route == shared_venue.route(FROM, TO)
    assert (directions.steps[0].kind, directions.steps[-1].kind) == ("depart", "arrive")
    walked = sum(step.millimetres for step in directions)
    assert walked == pytest.approx(directions.millimetres)
    assert directions.millimetres == pytest.approx(directions.route.metres * 1000)
    assert directions.seconds > 0
    assert any(isinstance(step.landmark, Element) for step in directions)


def test_directions_come_in_other_languages(shared_venue):
    texts = {language: str(shared_venue.directions(FROM, TO, language=language))
             for language in ("en", "de", "ja")}
    assert len(set(texts.values())) == 3


def test_directions_without_a_route_are_false(shared_venue):
    directions = shared_venue.directions(FROM, 99999)
    assert not directions
    assert directions.steps == ()


def test_tour_visits_every_destination(shared_venue):
    visited = [42, 17, 25, 6]
    tour = shared_venue.tour(12002, visited)
    assert sorted(tour.destinations) == [6, 17, 25, 42]
    assert tour.legs[0].waypoints[0] == 12002
    assert tour.metres == pytest.approx(sum(leg.metres for leg in tour.legs))
    assert tour.raw == asked(shared_venue, "tour", **{"from": 12002, "destinations": visited})


def test_tour_of_nothing_is_false(shared_venue):
    assert not shared_venue.tour(12002, [])


def test_nearest_by_walk_has_its_route(shared_venue):
    nearest = shared_venue.nearest(FROM, amenity=2, accessibility=0)
    assert nearest.element == Element("amenity", 2)
    assert nearest.route == shared_venue.route(FROM, nearest.waypoint, accessibility=0)


def test_nearest_of_several_kinds(shared_venue):
    both = shared_venue.nearest(FROM, amenity=[2, 5], destination=31)
    each = [
        shared_venue.nearest(FROM, amenity=[2, 5]), shared_venue.nearest(FROM, destination=31)
    ]
    assert both.route.cost == min(one.route.cost for one in each)


def test_nearest_from_a_spot_has_no_route(shared_venue):
    nearest = shared_venue.nearest(Spot(11, 400, 300), destination=31)
    assert nearest.route is None
    assert nearest.waypoint == 13020
    assert nearest.connectors
    assert nearest.raw["element"] == {"kind": "destination", "id": 31}


def test_nearest_of_nothing_there_is_false(shared_venue):
    assert not shared_venue.nearest(99999, amenity=2)


def test_nearest_of_what_does_not_exist_raises(shared_venue):
    for start in (FROM, Spot(22, 400, 300)):
        with pytest.raises(TernError, match="element must be") as raised:
            shared_venue.nearest(start, amenity=99999)
        assert raised.value.code == "TN006"


def test_reach_keeps_to_its_limits(shared_venue):
    reach = shared_venue.reach(FROM, metres=30)
    assert reach[0] == (FROM, 0, 0)
    assert all(each.millimetres <= 30_000 for each in reach)
    assert [each.cost for each in reach] == sorted(each.cost for each in reach)
    assert len(shared_venue.reach(FROM, cost=100)) < len(reach)
    assert len(shared_venue.reach([FROM, TO], metres=30)) > len(reach)


def test_places_are_found_by_name(shared_venue):
    everything = shared_venue.places()
    assert len(everything) == len({(place.kind, place.id) for place in everything})
    found = shared_venue.places("TOYS")
    assert [place.name for place in found] == ["Everly Toys"]
    assert found[0] in tuple(everything)


def test_answers_do_not_change(shared_venue):
    route = shared_venue.route(FROM, TO)
    with pytest.raises(AttributeError):
        route.segments = ()


def test_answers_can_be_pickled_with_their_floors(shared_venue):
    route = shared_venue.route(FROM, TO)
    copy = pickle.loads(pickle.dumps(route))
    assert isinstance(copy, Route)
    assert copy == route
    assert copy.picture() == route.picture()


def test_errors_can_be_pickled(shared_venue):
    with pytest.raises(TernError) as raised:
        shared_venue.ask({"op": "route"})
    copy = pickle.loads(pickle.dumps(raised.value))
    assert (copy.code, copy.message) == (raised.value.code, raised.value.message)
    assert str(copy) == str(raised.value)
