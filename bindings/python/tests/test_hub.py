"""Venues from a mapping service: that of the command, on this machine."""

import os
import subprocess
import sys
import threading

import pytest

from terncorekit import Hub, TernError, Venue, VenueName

ROUTE = '{"op":"route","from":22001,"to":14016}'


@pytest.fixture
def options(tmp_path):
    return {"customer_id": 1, "client_id": "local", "client_secret": "local",
            "cache_folder": tmp_path}


def test_lists_and_loads(service, options, shared_venue):
    with Hub(service, **options) as hub:
        assert hub.venues() == [VenueName(1, "venue-1", "Linden Plaza")]
        venue = hub.load([1])
    assert hub.closed
    with venue:
        assert venue.answer(ROUTE) == shared_venue.answer(ROUTE)
        picture = venue.route(22001, 14016).picture()
        assert "<polyline" in picture
        assert "<image" not in picture


def test_loads_the_only_venue(service, options):
    with Hub(service, locale="en-US", auto_reload=False, geojson=False, **options) as hub:
        with hub.load() as venue:
            assert isinstance(venue, Venue)


def test_loads_from_several_threads_follow_each_other(service, options, shared_venue):
    answers = []
    with Hub(service, **options) as hub:
        def load():
            with hub.load() as venue:
                answers.append(venue.answer(ROUTE))

        threads = [threading.Thread(target=load) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    assert answers == [shared_venue.answer(ROUTE)] * 4


def test_what_is_not_there_raises(service, options):
    with Hub(service, **options) as hub:
        with pytest.raises(TernError):
            hub.load([99])
        with pytest.raises(ValueError):
            hub.load([])


def test_wrong_credentials_raise(service, options):
    with Hub(service, **{**options, "client_secret": "wrong"}) as hub:
        with pytest.raises(TernError):
            hub.load()
        with pytest.raises(TernError):
            hub.venues()


def test_a_service_that_is_not_there_raises(options):
    with Hub("http://127.0.0.1:9", **options) as hub:
        with pytest.raises(TernError):
            hub.load()


def test_a_closed_hub_raises(service, options):
    hub = Hub(service, **options)
    hub.close()
    hub.close()
    with pytest.raises(TernError, match="closed"):
        hub.load()
    with pytest.raises(TernError, match="closed"):
        hub.venues()


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork here")
def test_a_fork_leaves_the_hub_to_its_parent(service, options):
    program = f"""
import os, terncorekit
hub = terncorekit.Hub({service!r}, customer_id=1, client_id="local", client_secret="local",
                      cache_folder={str(options["cache_folder"])!r})
hub.load().close()
child = os.fork()
if child == 0:
    try:
        hub.load()
    except terncorekit.TernError as error:
        assert error.message == "the hub is closed"
        raise SystemExit(7)
assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 7
hub.load().close()
"""
    subprocess.run([sys.executable, "-c", program], check=True, timeout=60)


def test_wrong_options_raise(options):
    with pytest.raises(TernError):
        Hub("", **options)
    with pytest.raises(TypeError):
        Hub("http://127.0.0.1", **{**options, "customer_id": "1"})
    with pytest.raises(TypeError):
        Hub("http://127.0.0.1", **{**options, "cache_folder": 7})
    with pytest.raises(TernError):
        Hub(7, **options)
