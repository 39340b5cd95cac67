"""Writes requests of every kind about the venues of a folder, the same for the same words.

  requests.py FOLDER COUNT SEED VENUE...
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


def main(folder, count, seed, *numbers):
    draw = Draw(int(seed))
    venues = [Venue(folder, number) for number in numbers]
    kinds = [kind for kind, (_, weight) in KINDS.items() for _ in range(weight)]
    for _ in range(int(count)):
        kind = draw.one(kinds)
        venue = draw.one(venues)
        request = {"op": kind, **KINDS[kind][0](draw, venue)}
        if len(venues) > 1:
            if kind == "route" and draw.below(2):
                request["to"] = draw.one(draw.one(venues).ids)
            else:
                request["venue"] = venue.id
        print(json.dumps(request))


main(*sys.argv[1:])
