"""Venues: from where they come, and how they go."""

import gc
import json
import os
import subprocess
import sys
import threading
import weakref
from pathlib import Path

import pytest

from terncorekit import Spot, TernError, Venue

ROUTE = '{"op":"route","from":22001,"to":14016}'


def read(path):
    file = Path("data/plaza", path)
    return file.read_bytes() if file.exists() else None


@pytest.fixture(scope="module")
def documents():
    folder = Path("data/plaza")
    return {str(file.relative_to(folder)): file.read_text() for file in folder.rglob("*.json")}


@pytest.fixture(scope="module")
def joined_folder(tern, tmp_path_factory):
    folder = tmp_path_factory.mktemp("joined") / "venues"
    subprocess.run([tern, "generate", "--out", folder, "--venues", "2", "--shops", "10"],
                   check=True, capture_output=True)
    return folder


@pytest.mark.parametrize("path", ["data/plaza", b"data/plaza", Path("data/plaza")])
def test_opens_a_folder(path, shared_venue):
    with Venue.open(path, venues=[1]) as venue:
        assert venue.answer(ROUTE) == shared_venue.answer(ROUTE)


def test_opens_documents_of_a_mapping(documents, shared_venue):
    with Venue.from_documents(documents) as venue:
        assert venue.answer(ROUTE) == shared_venue.answer(ROUTE)
        assert venue.route(22001, 14016).picture() == shared_venue.route(22001, 14016).picture()


def test_opens_documents_of_a_function(shared_venue):
    with Venue.from_documents(read, venues=(1,)) as venue:
        assert venue.answer(ROUTE) == shared_venue.answer(ROUTE)


def test_names_the_document_that_is_missing(documents):
    del documents["venue/1/building/2/full.json"]
    with pytest.raises(TernError, match="venue/1/building/2/full.json: was not given") as raised:
        Venue.from_documents(documents)
    assert raised.value.code == "TN007"
    assert raised.value.description


@pytest.mark.parametrize("failure", [ZeroDivisionError, KeyboardInterrupt, SystemExit])
@pytest.mark.parametrize("number", [0, 2])
def test_what_the_function_raises_comes_out(failure, number):
    calls = []

    def fail(path):
        calls.append(path)
        if len(calls) > number:
            raise failure
        return read(path)

    with pytest.raises(failure):
        Venue.from_documents(fail)
    assert len(calls) == number + 1


def test_a_document_of_another_kind_raises():
    with pytest.raises(TypeError, match="full.json"):
        Venue.from_documents(lambda path: 7)


def test_broken_documents_raise():
    for broken in (b"", b"{", b"\xff\xfe\0", b"[]", b"[" * 100_000, b'{"venues":7}'):
        with pytest.raises(TernError):
            Venue.from_documents(lambda path: broken)


def test_a_function_may_open_another_venue(shared_venue):
    def nested(path):
        with Venue.open("data/plaza") as inner:
            assert inner.answer(ROUTE) == shared_venue.answer(ROUTE)
        return read(path)

    with Venue.from_documents(nested) as venue:
        assert venue.answer(ROUTE) == shared_venue.answer(ROUTE)


def test_joined_venues_are_one(joined_folder):
    ids = sorted(int(folder.name) for folder in (joined_folder / "venue").iterdir())
    assert len(ids) == 2
    with Venue.open(joined_folder, venues=ids) as venue:
        with pytest.raises(TernError, match="joined"):
            Venue.open(joined_folder, venues=ids)
        with pytest.raises(TernError, match="venue"):
            venue.places()
        first, second = (venue.places(venue=number)[0] for number in ids)
        route = venue.route(first.waypoints[0], second.waypoints[0])
        assert route
        assert "<image" in route.picture()
        assert venue.reach(first.waypoints[0], metres=5, venue=ids[0])
    with Venue.open(joined_folder, venues=ids) as venue:
        assert venue.route(first.waypoints[0], second.waypoints[0]) == route


def test_wrong_folders_raise(tmp_path):
    for path in (tmp_path, tmp_path / "none", "/dev/null", "", "data/plaza/full.json"):
        with pytest.raises(TernError):
            Venue.open(path)


def test_paths_that_are_none_raise():
    for path in (None, 7, object(), ["data/plaza"]):
        with pytest.raises(TypeError):
            Venue.open(path)
    for path in ("data/plaza\0x", "\ud800", b"\xff"):
        with pytest.raises(ValueError):
            Venue.open(path)


def test_venues_that_are_none_raise():
    for venues in ("1", 1, [None], [1.0], [True]):
        with pytest.raises(TypeError):
            Venue.open("data/plaza", venues=venues)
    for venues in ([], [2**64]):
        with pytest.raises(ValueError):
            Venue.open("data/plaza", venues=venues)
    for venues in ([99], [1, 1], [-1]):
        with pytest.raises(TernError):
            Venue.open("data/plaza", venues=venues)


def test_documents_that_are_none_raise():
    for documents in (None, 7, "data/plaza", [b"{}"]):
        with pytest.raises(TypeError):
            Venue.from_documents(documents)


def test_a_closed_venue_raises():
    with Venue.open("data/plaza") as venue:
        assert not venue.closed
    assert venue.closed
    venue.close()
    with pytest.raises(TernError, match="closed") as raised:
        venue.route(22001, 14016)
    assert raised.value.code == "TN006"
    with pytest.raises(TernError):
        venue.answer(ROUTE)


def test_answers_outlive_their_venue():
    with Venue.open("data/plaza") as venue:
        route = venue.route(22001, 14016)
    assert "<image" in route.picture()


def test_a_venue_that_goes_is_closed():
    venue = Venue.open("data/plaza")
    finalizer, gone = venue._finalizer, weakref.ref(venue)
    del venue
    gc.collect()
    assert gone() is None
    assert not finalizer.alive


def test_a_program_that_ends_closes():
    program = "from terncorekit import Venue; venue = Venue.open('data/plaza'); venue.route(1, 2)"
    subprocess.run([sys.executable, "-c", program], check=True)


def test_a_program_that_ends_while_a_venue_is_opened():
    program = """
import threading, time
from terncorekit import Venue
asked = threading.Event()
def read(path):
    asked.set()
    time.sleep(0.2)
threading.Thread(target=Venue.from_documents, args=(read,), daemon=True).start()
asked.wait()
"""
    subprocess.run([sys.executable, "-c", program], check=True, timeout=60)


def test_requests_that_are_none_raise(shared_venue):
    for wrong in (None, 7, b"{}", {"op": "center"}):
        with pytest.raises(TypeError):
            shared_venue.answer(wrong)
    for wrong in ("\0", '{"op":"\ud800"}'):
        with pytest.raises(ValueError):
            shared_venue.answer(wrong)
    for wrong in (None, 7, "center"):
        with pytest.raises((TypeError, ValueError)):
            shared_venue.ask(wrong)


def test_requests_that_mean_nothing_are_answered_so(shared_venue):
    for text in ("", "{", "[]", "7", '{"op":7}', '{"op":"route"}', "[" * 100_000, "\ufffe"):
        assert json.loads(shared_venue.answer(text))["error"]["code"] == "TN006"


def test_arguments_of_other_kinds_raise(shared_venue):
    for wrong in (None, "22001", 1.5, True, object()):
        with pytest.raises(TypeError):
            shared_venue.route(wrong, 14016)
        with pytest.raises(TypeError):
            shared_venue.route(22001, [wrong])
        with pytest.raises(TypeError):
            shared_venue.route(22001, 14016, accessibility=wrong)
        with pytest.raises(TypeError):
            shared_venue.matrix([22001], [wrong])
        with pytest.raises(TypeError):
            shared_venue.tour(22001, [wrong])
    for wrong in (None, "7", [7], True):
        with pytest.raises(TypeError):
            shared_venue.reach(22001, metres=wrong)
    with pytest.raises(TypeError):
        shared_venue.places(7)
    with pytest.raises(TypeError):
        shared_venue.directions(22001, 14016, language=7)


def test_numbers_out_of_range_raise(shared_venue):
    for wrong in (2**63, -(2**63) - 1, 10**30):
        with pytest.raises(ValueError):
            shared_venue.route(wrong, 14016)
    for wrong in (float("nan"), float("inf"), 10**400):
        with pytest.raises((ValueError, OverflowError)):
            shared_venue.reach(22001, metres=wrong)


def test_looking_for_nothing_raises(shared_venue):
    for sought in ({}, {"amenity": [2]}, {"amenity": 2, "destination": 31},
                   {"amenity": 2, "accessibility": 0}):
        with pytest.raises(TypeError):
            shared_venue.nearest(Spot(22, 400, 300), **sought)
    with pytest.raises(TernError):
        shared_venue.nearest(22001)


def test_ids_at_the_edges_are_answered(shared_venue):
    for edge in (0, -1, 2**31, 2**63 - 1, -(2**63)):
        assert not shared_venue.route(edge, edge + 1 if edge < 0 else edge - 1)


def test_threads_ask_one_venue_at_once(shared_venue):
    requests = [json.dumps({"op": "route", "from": 12001 + number % 20, "to": 14001 + number % 30})
                for number in range(400)]
    expected = [shared_venue.answer(request) for request in requests]
    barrier = threading.Barrier(4)
    answers = {}

    def ask(thread):
        barrier.wait()
        answers[thread] = [shared_venue.answer(request) for request in requests]

    threads = [threading.Thread(target=ask, args=(number,)) for number in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert [answers[number] for number in range(4)] == [expected] * 4


def test_the_library_runs_without_pythons_lock():
    """While one thread opens a venue, which asks this function, another one answers."""
    with Venue.open("data/plaza") as other:
        def wait(path):
            thread = threading.Thread(target=other.answer, args=(ROUTE,))
            thread.start()
            thread.join(60)
            assert not thread.is_alive()
            return read(path)

        Venue.from_documents(wait).close()


def test_closing_while_others_ask_ends_in_answers_or_errors(venue):
    expected = venue.answer(ROUTE)
    others = []

    def ask():
        try:
            for _ in range(10_000):
                if venue.answer(ROUTE) != expected:
                    others.append("another answer")
        except TernError as error:
            others.append(error.code)

    threads = [threading.Thread(target=ask) for _ in range(3)]
    for thread in threads:
        thread.start()
    venue.close()
    for thread in threads:
        thread.join()
    assert others == ["TN006"] * 3


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork here")
def test_a_fork_asks_and_opens_and_leaves_the_parent_alone(venue):
    expected = venue.answer(ROUTE)
    request = '{"op":"matrix","from":[22001,12001,12002],"to":[14016,11001]}'
    table = venue.answer(request)
    child = os.fork()
    if child == 0:
        status = 1
        try:
            same = venue.answer(ROUTE) == expected and venue.answer(request) == table
            venue.close()
            with Venue.open("data/plaza") as own:
                same = same and own.answer(ROUTE) == expected
            status = 0 if same else 2
        finally:
            os._exit(status)
    assert os.waitpid(child, 0)[1] == 0
    assert venue.answer(ROUTE) == expected
