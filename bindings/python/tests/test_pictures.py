"""Pictures, of names and drawings that mean no good."""

import base64
import json
import re
import xml.etree.ElementTree
from pathlib import Path

import pytest

from terncorekit import Spot, Venue

EVIL = "<script>alert(1)</script>\"'>]]>&amp;\x00\x07\ud800\ufffe"
SVG = "{http://www.w3.org/2000/svg}"


def answers(venue):
    return [
        venue.route(22001, 14016),
        venue.directions(22001, 14016),
        venue.tour(12002, [42, 17, 25]),
        venue.nearest(22001, amenity=2),
        venue.nearest(Spot(22, 400, 300), amenity=2),
        venue.reach(22001, metres=50),
    ]


def parsed(picture):
    return xml.etree.ElementTree.fromstring(picture)


def changed_documents(change):
    """The sample's documents, each map or record through a function."""
    def walk(value):
        if isinstance(value, dict):
            return change({key: walk(each) for key, each in value.items()})
        return [walk(each) for each in value] if isinstance(value, list) else value

    folder = Path("data/plaza")
    return {str(file.relative_to(folder)): json.dumps(walk(json.loads(file.read_text())))
            for file in folder.rglob("*.json")}


def test_pictures_show_floors_and_ways(shared_venue):
    route = shared_venue.route(22001, 14016)
    root = parsed(route.picture())
    assert len(root.findall(f".//{SVG}image")) == len({segment.map_id for segment in route})
    titles = [text.text for text in root.findall(f"{SVG}text")]
    assert titles[0] == "Harbour Hall, Ground Floor"
    line = root.find(f".//{SVG}polyline").get("points").split()
    assert [tuple(map(float, point.split(","))) for point in line] == list(route[0].map_points)


def test_every_answer_has_a_picture(shared_venue):
    for answer in answers(shared_venue):
        root = parsed(answer.picture())
        assert root.findall(f".//{SVG}image")
        assert root.findall(f".//{SVG}circle")


def test_answers_without_anything_have_pictures_too(shared_venue):
    for answer in (shared_venue.route(1, 2), shared_venue.tour(1, []),
                   shared_venue.reach(1, metres=1), shared_venue.nearest(1, amenity=2)):
        assert not parsed(answer.picture()).findall(f".//{SVG}image")
        assert answer._repr_html_().startswith("<img ")


def test_a_notebook_gets_one_image(shared_venue):
    for answer in answers(shared_venue):
        page = answer._repr_html_()
        match = re.fullmatch(r'<img style="[^"<>]*" alt="[^"<>]*" src="data:image/svg\+xml;base64,'
                             r'([A-Za-z0-9+/=]+)">', page)
        assert base64.b64decode(match.group(1)).decode() == answer.picture()


def test_names_cannot_leave_their_place(monkeypatch):
    def rename(record):
        return {**record, "name": EVIL} if "name" in record else record

    documents = changed_documents(rename)
    # The library refuses half a character; Python's reader would not.
    clean = {path: text.replace("\\ud800", "") for path, text in documents.items()}
    with Venue.from_documents(clean) as venue:
        venue._floors._documents = documents
        for answer in answers(venue):
            root = parsed(answer.picture())
            assert not root.findall(f".//{SVG}script")
            assert "<script" not in answer._repr_html_()
            assert any("<script>" in text.text for text in root.findall(f"{SVG}text"))
        page = venue.places()._repr_html_()
        assert "<script" not in page
        assert "&lt;script&gt;alert(1)&lt;/script&gt;" in page


@pytest.mark.parametrize("drawing", [
    "", "<svg", "<svg viewBox='0 0'>", "<svg viewBox='0 0 -1 5'>", "<svg viewBox='0 0 nan 5'>",
    "<svg viewBox='0 0 1e308 1e-308'>", "<svg viewBox='x'><script>alert(1)</script>", 7, None,
    "<svg viewBox='0 0 2400 2240'/></image><script>alert(1)</script>",
])
def test_drawings_cannot_leave_their_place(drawing):
    def redraw(record):
        return {**record, "svg": drawing} if "svg" in record else record

    with Venue.from_documents(changed_documents(redraw)) as venue:
        for answer in answers(venue):
            assert not parsed(answer.picture()).findall(f".//{SVG}script")


def test_documents_that_went_wrong_leave_the_ways(shared_venue):
    route = shared_venue.route(22001, 14016)
    for document in (None, "", "[]", "{", "[" * 100_000, '{"venues":{"items":[{"id":1}]}}',
                     '{"buildings":{"items":[7,{"id":"x"}]},"venues":{"items":7}}',
                     '{"floors":{"items":[{"map":{"id":22,"waypoints":{"items":[{"id":1,'
                     '"coordinates":["x",1e999]}]}}}]}}'):
        with Venue.from_documents(lambda path: Path("data/plaza", path).read_bytes()) as venue:
            venue._floors._documents = lambda path: document
            again = venue.route(22001, 14016)
        root = parsed(again.picture())
        assert not root.findall(f".//{SVG}image")
        assert root.findall(f".//{SVG}polyline")
        assert again == route
