"""Writes requests of every kind about the venues of a folder, the same for the same words.

  requests.py FOLDER COUNT SEED VENUE...

COUNT are about ways, points and blocks; behind them 600 are about names, steps and distances.
"""
import json
import pathlib
import sys


class Draw:
    """Numbers that do not depend on the version of Python."""

    def __init__(self, seed):
        self.state = seed

    def below(self, limit):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % limit

    def one(self, items):
        return items[self.below(len(items))]

    def some(self, items, most):
        return [self.one(items) for _ in range(1 + self.below(most))]

    def between(self, low, high, steps=1000):
        return low + (high - low) * (self.below(steps) / steps)


class Venue:
    def __init__(self, folder, number):
        root = pathlib.Path(folder) / "venue" / number
        self.id = int(number)
        self.document = json.loads((root / "full.json").read_text())
        self.maps, self.waypoints, self.paths = [], [], []
        for file in sorted(root.glob("building/*/full.json")):
            for floor in json.loads(file.read_text())["floors"]["items"]:
                self.maps.append(floor["map"]["id"])
                self.waypoints += floor["map"]["waypoints"]["items"]
                self.paths += [path["waypointIds"] for path in floor["map"]["paths"]["items"]]
        self.waypoints.sort(key=lambda waypoint: waypoint["id"])
        self.ids = [waypoint["id"] for waypoint in self.waypoints]
        self.elements = {kind: self.list_of(kind + "s") for kind in
                         ("destination", "amenity", "pathType")}
        self.elements["amenity"] = self.list_of("amenities")
        self.names = [item["name"] for kind in ("destinations", "amenities")
                      for item in self.document.get(kind, {}).get("items", []) if item["name"]]

    def list_of(self, name):
        return [item["id"] for item in self.document.get(name, {}).get("items", [])]


def accessibility(draw):
    return draw.one([0, 1, 2, 10, 100, 100])


def waypoint(draw, venue):
    return draw.one(venue.ids) if draw.below(50) else 999999


def route(draw, venue):
    return {"from": waypoint(draw, venue), "to": waypoint(draw, venue),
            "accessibility": accessibility(draw)}


def route_to_any(draw, venue):
    return {"from": waypoint(draw, venue), "to": draw.some(venue.ids, 5),
            "accessibility": accessibility(draw)}


def alternatives(draw, venue):
    request = route(draw, venue)
    if draw.below(2):
        request["options"] = {"optimalPathMatchRatio": draw.between(0.1, 1, 20)}
    return request


def tour(draw, venue):
    return {"from": waypoint(draw, venue), "accessibility": accessibility(draw),
            "destinations": draw.some(venue.elements["destination"], 6)}


def element(draw, venue):
    kind = draw.one(["destination", "destination", "amenity", "pathType"])
    return kind, draw.one(venue.elements[kind]) if draw.below(30) else 999999


def spot(draw, venue):
    x, y = draw.one(venue.waypoints)["coordinates"]
    return [x + draw.between(-40, 40) / 3, y + draw.between(-40, 40) / 3]


def nearest(draw, venue):
    kind, number = element(draw, venue)
    return {"map": draw.one(venue.maps), "at": spot(draw, venue), kind: number}


def nearest_on_map(draw, venue):
    kind, number = element(draw, venue)
    plural = {"amenity": "amenities"}.get(kind, kind + "s")
    return {"from": waypoint(draw, venue), "toMap": draw.one(venue.maps),
            "accessibility": accessibility(draw), plural: [number, element(draw, venue)[1]]}


def closest(draw, venue):
    return {"map": draw.one(venue.maps), "at": spot(draw, venue)}


def closest_by_route(draw, venue):
    return {"candidates": draw.some(venue.ids, 4), "to": waypoint(draw, venue),
            "accessibility": accessibility(draw)}


def convert(draw, venue):
    names = ["EPSG:4326", "EPSG:3857", "tern:local"]
    source = draw.one(names)
    point = {"EPSG:4326": [draw.between(-180, 180, 10**6), draw.between(-89, 89, 10**6)],
             "EPSG:3857": [draw.between(-2e7, 2e7, 10**6), draw.between(-2e7, 2e7, 10**6)],
             "tern:local": spot(draw, venue)}[source]
    if source == "EPSG:4326" and draw.below(2):
        top, left = venue.document["coordinates"]["topLeft"]
        point = [left + draw.between(-0.001, 0.001), top + draw.between(-0.001, 0.001)]
    return {"point": point, "from": source, "to": draw.one(names)}


def center(draw, venue):
    return {}


def solve(draw, venue):
    size = 2 + draw.below(8)
    return {"matrix": [[draw.between(0, 500) / 7 for _ in range(size)] for _ in range(size)]}


def neighbors(draw, venue):
    return {"node": waypoint(draw, venue)}


def block_edge(draw, venue):
    path = draw.one(venue.paths)
    return {"from": path[0], "to": path[-1], "blocked": draw.below(3) == 0}


def block_node(draw, venue):
    return {"node": draw.one(venue.ids), "blocked": draw.below(4) == 0}


KINDS = {
    "route": (route, 8), "routeToAny": (route_to_any, 4), "alternatives": (alternatives, 4),
    "tour": (tour, 4), "nearest": (nearest, 4), "nearestOnMap": (nearest_on_map, 4),
    "closest": (closest, 3), "closestByRoute": (closest_by_route, 3), "convert": (convert, 12),
    "center": (center, 1), "solve": (solve, 2), "neighbors": (neighbors, 3),
    "blockEdge": (block_edge, 2), "blockEntry": (block_node, 1), "blockExit": (block_node, 1),
}


def without_a_letter(draw, name):
    place = draw.below(len(name))
    return name[:place] + name[place + 1:]


def with_a_letter(draw, name):
    place = draw.below(len(name) + 1)
    return name[:place] + draw.one("aeéstz東") + name[place:]


def with_another_letter(draw, name):
    return with_a_letter(draw, without_a_letter(draw, name))


def with_letters_swapped(draw, name):
    place = draw.below(len(name))
    return name[:place] + name[place + 1:place + 2] + name[place:place + 1] + name[place + 2:]


def a_part(draw, name):
    place = draw.below(len(name))
    return name[place:place + 1 + draw.below(6)]


def a_beginning(draw, name):
    return name[:1 + draw.below(len(name))]


def in_capitals(draw, name):
    return name.upper()


def with_accents(draw, name):
    marks = ["\u0301", "\u0308", "\u0323\u0304"]
    return "".join(each + draw.one(marks) if draw.below(3) == 0 else each for each in name)


def with_letters_of_accents(draw, name):
    return name.translate(str.maketrans("aceinouAEO", "àçéîñöúÅÊØ"))


def in_wide_letters(draw, name):
    return "".join(chr(ord(each) + 0xFEE0) if "!" <= each <= "~" else each for each in name)


def with_spaces(draw, name):
    return draw.one([" ", "\t", "\u00a0", "\u3000"]) + name.replace(" ", "  ") + " "


def as_it_is(draw, name):
    return name


TYPED = [as_it_is, without_a_letter, with_a_letter, with_another_letter, with_letters_swapped,
         a_part, a_beginning, a_beginning, in_capitals, with_accents, with_letters_of_accents,
         in_wide_letters, with_spaces]
OTHER_TEXTS = ["", " ", "東京", "ｶﾞﾗｽ", "Καφές", "аптека", "قهوة", "Straße", "ﬁsh", "İ", "🚇",
               "\u0301", "q" * 300]


def places(draw, venue):
    if draw.below(20) == 0:
        return {}
    if draw.below(8) == 0:
        return {"text": draw.one(OTHER_TEXTS)}
    return {"text": draw.one(TYPED)(draw, draw.one(venue.names))}


def directions(draw, venue):
    languages = ["en", "en", "en-US", "en-US", "de", "fr", "es", "ja", "ja", "de-AT", "xx"]
    return {**route(draw, venue), "language": draw.one(languages)}


def matrix(draw, venue):
    some = [waypoint(draw, venue) for _ in range(1 + draw.below(5))]
    return {"from": some, "to": draw.some(venue.ids, 6), "accessibility": accessibility(draw)}


def reach(draw, venue):
    start = draw.one([waypoint(draw, venue), draw.some(venue.ids, 3)])
    limits = draw.one([{"metres": draw.between(0, 40)}, {"cost": draw.between(0, 400)},
                       {"metres": draw.between(0, 40), "cost": draw.between(0, 400)}])
    return {"from": start, **limits, "accessibility": accessibility(draw)}


def nearest_by_walk(draw, venue):
    kind, number = element(draw, venue)
    sought = {kind: number}
    if draw.below(2):
        sought = {"destinations": draw.some(venue.elements["destination"], 4),
                  "amenities": draw.some(venue.elements["amenity"], 2)}
    return {"from": waypoint(draw, venue), **sought, "accessibility": accessibility(draw)}


TELLING = {
    "places": (places, 8), "directions": (directions, 6), "matrix": (matrix, 2),
    "reach": (reach, 2), "nearestByWalk": (nearest_by_walk, 3), "routeToAny": (route_to_any, 2),
}
TELLING_COUNT = 600

def main(folder, count, seed, *numbers):
    draw = Draw(int(seed))
    venues = [Venue(folder, number) for number in numbers]
    ask(draw, venues, KINDS, int(count))
    ask(draw, venues, TELLING, TELLING_COUNT)


def ask(draw, venues, kinds, count):
    names = [kind for kind, (_, weight) in kinds.items() for _ in range(weight)]
    for _ in range(count):
        kind = draw.one(names)
        venue = draw.one(venues)
        request = {"op": kind, **kinds[kind][0](draw, venue)}
        if len(venues) > 1:
            if kind == "route" and draw.below(2):
                request["to"] = draw.one(draw.one(venues).ids)
            else:
                request["venue"] = venue.id
        # Letters as they are, and as JSON can write them otherwise.
        print(json.dumps(request, ensure_ascii=kind != "places" or draw.below(2) == 0))


main(*sys.argv[1:])
