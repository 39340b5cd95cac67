"""What routes cost by the size of the venue: processor time of one job, and memory.

    routes.py TERN [WAYPOINTS...]

Routes lead between random waypoints, with all ways open. What loading takes is not in them.
"""

import json
import pathlib
import random
import resource
import subprocess
import sys
import tempfile

SIZES = [320, 1000, 3500, 10000, 100000]


def spent(tern, folder, requests):
    """Seconds of the processor and MB at the most that `tern batch` takes."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    command = ["/usr/bin/time", "-f", "%M", tern, "batch", "--data", str(folder)]
    done = subprocess.run(command, input=requests, capture_output=True, text=True, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    seconds = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    return seconds, int(done.stderr) / 1024


def waypoints_of(folder):
    return [
        waypoint["id"]
        for building in sorted(folder.glob("venue/1/building/*/full.json"))
        for floor in json.loads(building.read_text())["floors"]["items"]
        for waypoint in floor["map"]["waypoints"]["items"]
    ]


def routes_between(ids, count):
    draw = random.Random(1)
    pairs = ((draw.choice(ids), draw.choice(ids)) for _ in range(count))
    requests = ({"op": "route", "from": start, "to": goal} for start, goal in pairs)
    return "".join(json.dumps(request) + "\n" for request in requests)


def measure(tern, size, folder):
    subprocess.run([tern, "generate", "--out", folder, "--waypoints", str(size)], check=True,
                   stdout=subprocess.DEVNULL)
    ids = waypoints_of(folder)
    count = max(1000, 20_000_000 // len(ids))
    load, memory = spent(tern, folder, "")
    both, _ = spent(tern, folder, routes_between(ids, count))
    each = (both - load) / count
    documents = sum(file.stat().st_size for file in folder.rglob("*.json")) / 2**20
    costs = f"{load:12.2f} {memory:10.1f} {1 / each:15.0f} {each * 1e6:12.0f}"
    print(f"{len(ids):9} {documents:13.1f} {costs}", flush=True)


def main():
    tern, *sizes = sys.argv[1:]
    print("waypoints documents, MB load, seconds memory, MB routes a second s a million")
    for size in map(int, sizes or SIZES):
        with tempfile.TemporaryDirectory() as folder:
            measure(tern, size, pathlib.Path(folder, "venue"))


if __name__ == "__main__":
    main()
