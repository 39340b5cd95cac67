"""Indoor maps and wayfinding: routes, tours, what is nearest, how far it is.

>>> from terncorekit import Venue
>>> with Venue.open("data/plaza") as venue:
...     toys = venue.places("toys")[0]
...     print(venue.directions(22001, toys.waypoints[0]).steps[-1].text)
You have reached Everly Toys
"""

from terncorekit._library import use_library, version
from terncorekit.answers import (
    Directions,
    Element,
    Nearest,
    Place,
    Places,
    Reach,
    Reached,
    Route,
    Segment,
    Spot,
    Step,
    Tour,
)
from terncorekit.errors import TernError
from terncorekit.host import HttpRequest, HttpResponse, use_host
from terncorekit.hub import Hub, VenueName
from terncorekit.matrix import Matrix
from terncorekit.venue import Venue

__all__ = [
    "Directions",
    "Element",
    "HttpRequest",
    "HttpResponse",
    "Hub",
    "Matrix",
    "Nearest",
    "Place",
    "Places",
    "Reach",
    "Reached",
    "Route",
    "Segment",
    "Spot",
    "Step",
    "TernError",
    "Tour",
    "Venue",
    "VenueName",
    "use_host",
    "use_library",
    "version",
]
