"""Many requests."""

import itertools
import json
import subprocess

import pytest

from terncorekit import TernError


def routes(count):
    for number in range(count):
        start, goal = 12001 + number % 20, 12003 + number * 7 % 25
        yield {"op": "route", "from": start, "to": goal, "id": number}


def with_blocks():
    """Routes, alternatives, and blocks that come and go between them."""
    for number, request in enumerate(routes(300)):
        yield json.dumps(request)
        if number % 3 == 0:
            yield json.dumps({**request, "op": "alternatives"})
        if number % 20 == 0:
            blocked = number % 40 == 0
            yield json.dumps({"op": "blockEntry", "node": 12054, "blocked": blocked})


@pytest.mark.parametrize("jobs", [1, 2, 5])
def test_answers_are_those_of_the_command(venue, tern, jobs):
    requests = [*with_blocks(), "no JSON", '{"op":"nothing"}', " \t\r\n", '{"op":"center"} \n']
    said = subprocess.run(
        [tern, "batch", "--data", "data/plaza"],
        input="".join(request.rstrip("\n") + "\n" for request in requests).encode(),
        capture_output=True, check=True).stdout
    answers = venue.batch(requests, jobs=jobs)
    assert "".join(answer + "\n" for answer in answers).encode() == said


@pytest.mark.parametrize("jobs", [1, 3, None])
def test_mappings_are_answered_by_mappings_in_order(shared_venue, jobs):
    answers = list(shared_venue.batch(routes(500), jobs=jobs))
    assert [answer["id"] for answer in answers] == list(range(500))
    assert answers[7]["route"] == shared_venue.ask(list(routes(8))[7])["route"]


def test_texts_and_mappings_may_be_mixed(shared_venue):
    answers = list(shared_venue.batch(['{"op":"center"}', {"op": "center"}]))
    assert json.loads(answers[0]) == answers[1]


def test_an_error_is_an_answer(shared_venue):
    answers = shared_venue.batch([{"op": "nothing"}, {"op": "center"}])
    assert [list(answer) for answer in answers] == [["error"], ["point"]]


@pytest.mark.parametrize("jobs,most", [(1, 10), (2, 10 + 2 * 64)])
def test_requests_are_read_as_answers_are_taken(shared_venue, jobs, most):
    read = itertools.count()
    endless = ({"op": "center", "id": next(read)} for _ in itertools.count())
    answers = shared_venue.batch(endless, jobs=jobs)
    assert [next(answers)["id"] for _ in range(10)] == list(range(10))
    assert next(read) <= most
    answers.close()


@pytest.mark.parametrize("jobs", [1, 3])
def test_what_cannot_be_read_comes_after_the_answers_before_it(shared_venue, jobs):
    def requests():
        yield from routes(20)
        raise ZeroDivisionError

    answers = shared_venue.batch(requests(), jobs=jobs)
    assert [next(answers)["id"] for _ in range(20)] == list(range(20))
    with pytest.raises(ZeroDivisionError):
        next(answers)


@pytest.mark.parametrize("jobs", [1, 3])
@pytest.mark.parametrize("wrong", [7, b"{}", ["op"], {"op": float("nan")}, {"op": object()}, "\0"])
def test_what_is_no_request_raises(shared_venue, jobs, wrong):
    answers = shared_venue.batch([{"op": "center"}, wrong], jobs=jobs)
    assert "point" in next(answers)
    with pytest.raises((TypeError, ValueError)):
        next(answers)


def test_wrong_arguments_raise_at_once(shared_venue):
    for requests in ("{}", {"op": "center"}, 7, None):
        with pytest.raises(TypeError):
            shared_venue.batch(requests)
    with pytest.raises(ValueError):
        shared_venue.batch([], jobs=0)
    with pytest.raises(TypeError):
        shared_venue.batch([], jobs="2")
    with pytest.raises(TypeError):
        shared_venue.batch([], progress=7)


@pytest.mark.parametrize("jobs", [1, 2])
def test_progress_is_told(shared_venue, jobs):
    told = []
    list(shared_venue.batch(list(routes(5)), jobs=jobs, progress=lambda *each: told.append(each)))
    assert told == [(done, 5) for done in range(1, 6)]
    told.clear()
    list(shared_venue.batch(routes(2), jobs=jobs, progress=lambda *each: told.append(each)))
    assert told == [(1, None), (2, None)]


def test_what_progress_raises_ends_the_batch(shared_venue):
    def stop(done, total):
        raise KeyboardInterrupt

    with pytest.raises(KeyboardInterrupt):
        list(shared_venue.batch(routes(5), jobs=2, progress=stop))


def test_progress_as_a_bar(shared_venue, capsys):
    answers = list(shared_venue.batch(list(routes(5)), progress=True))
    assert len(answers) == 5
    try:
        import tqdm  # noqa: F401
    except ImportError:
        assert capsys.readouterr().err == ""
    else:
        assert "5/5" in capsys.readouterr().err


def test_a_batch_of_a_venue_that_is_closed_meanwhile_raises(venue):
    answers = venue.batch(routes(10))
    next(answers)
    venue.close()
    with pytest.raises(TernError, match="closed"):
        next(answers)
