"""What venues take in memory while they stay loaded: of one process that opens the same one fifty
times.

    memory.py OPENS TERN [WAYPOINTS...]    a program that opens, and the command
"""

import pathlib
import subprocess
import sys
import tempfile

from routes import waypoints_of

SIZES = [1000, 10000]
TIMES = 50


def measure(opens, tern, size, folder):
    subprocess.run([tern, "generate", "--out", folder, "--waypoints", str(size)], check=True,
                   stdout=subprocess.DEVNULL)
    said = subprocess.run([opens, folder, str(TIMES)], check=True, capture_output=True, text=True)
    each = int(said.stdout)
    count = len(waypoints_of(folder))
    print(f"{count:9} {each / 2**20:9.2f} {each / count / 1024:14.2f}", flush=True)


def main():
    opens, tern, *sizes = sys.argv[1:]
    print("waypoints venue, MB KB a waypoint")
    for size in map(int, sizes or SIZES):
        with tempfile.TemporaryDirectory() as folder:
            measure(opens, tern, size, pathlib.Path(folder, "venue"))


main()
