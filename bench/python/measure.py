"""Prints how long Python takes beside those who ask the same without it, in turns.

  measure.py ASK TERN FOLDER WAYPOINTS    a program that asks by C, the command, a large venue
"""
import json
import statistics
import subprocess
import sys
import time

from terncorekit import Venue

ROUNDS = 9
ask, tern, mall, size = sys.argv[1:]
PLAZA = "data/plaza"


def seconds(work, times, clock=time.process_time):
    """Those of the processor, which others who want it do not change much."""
    begin = clock()
    for _ in range(times):
        work()
    return (clock() - begin) / times


def told(name, rounds):
    """A line for each round's (Python's, the peer's) seconds."""
    ratios = sorted(ours / peers for ours, peers in rounds)
    ours, peers = (statistics.median(each) for each in zip(*rounds))
    print(f"{name}: {ours * 1e6:.1f} us, peer {peers * 1e6:.1f} us, ratio "
          f"{statistics.median(ratios):.2f} ({ratios[0]:.2f} to {ratios[-1]:.2f})")


def routes(name, folder, start, goal, times):
    """A call beside the same request by C, which makes a text and no more."""
    request = {"op": "route", "from": start, "to": goal, "accessibility": 100}
    text = json.dumps(request, separators=(",", ":"))

    def by_c():
        said = subprocess.run([ask, folder, text, str(times)], capture_output=True, check=True)
        return float(said.stdout) / 1e9

    with Venue.open(folder) as venue:
        pairs = [(seconds(lambda: venue.route(start, goal), times), by_c()) for _ in range(ROUNDS)]
        told(f"route, {name}", pairs)
        pairs = [(seconds(lambda: venue.answer(text), times), by_c()) for _ in range(ROUNDS)]
        told(f"answer, {name}", pairs)


def matrix():
    """Arrays, beside the line that the command answers; both are loaded, and both use all cores, so
    that it is the clock on the wall that tells.
    """
    with Venue.open(mall) as venue:
        ids = venue.reach(first_waypoint(venue), metres=1e6).reached
        some = [each.waypoint for each in ids[:: len(ids) // 300][:300]]
        text = json.dumps({"op": "matrix", "from": some, "to": some})
        told("matrix 300 x 300", [
            (seconds(lambda: venue.matrix(some, some), 1, time.perf_counter), by_command(text))
            for _ in range(ROUNDS)
        ])


def first_waypoint(venue):
    return next(place.waypoints[0] for place in venue.places() if place.waypoints)


def by_command(text):
    """The seconds between a line to `tern batch` and its answer."""
    with subprocess.Popen([tern, "batch", "--data", mall], stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, text=True) as command:
        ready(command)
        begin = time.perf_counter()
        ready(command, text)
        return time.perf_counter() - begin


def ready(command, text='{"op":"center"}'):
    command.stdin.write(text + "\n")
    command.stdin.flush()
    command.stdout.readline()


routes("sample", PLAZA, 22001, 14016, 2000)
with Venue.open(mall) as far:
    reached = far.reach(first_waypoint(far), metres=1e6)
routes(f"{size} waypoints", mall, reached[0].waypoint, reached[len(reached) // 2].waypoint, 200)
matrix()
