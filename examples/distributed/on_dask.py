"""The campaign on Dask distributed.

    on_dask.py DATA OUT                       a worker for each core of this machine
    on_dask.py DATA OUT --workers 2
    on_dask.py DATA OUT --scheduler tcp://host:8786
"""

from __future__ import annotations

import argparse
import sys
from pathlib import Path

from distributed import Client, LocalCluster, UploadFile, as_completed

import campaign


def run(client: Client, data: Path, out: Path) -> None:
    """Does the campaign on the client's workers, whoever of them comes or goes."""
    # Also for workers that come later.
    client.register_worker_plugin(UploadFile(campaign.__file__))
    venues = campaign.venues_in(data)
    tasks = sum(client.gather(client.map(campaign.plan, [data] * len(venues), venues)), [])
    under_way = client.map(campaign.work, [data] * len(tasks), [out] * len(tasks), tasks)
    for done, future in enumerate(as_completed(under_way), 1):
        future.result()
        print(f"\r{done} of {len(tasks)} tasks", end="", file=sys.stderr, flush=True)
    print(file=sys.stderr)
    summaries = client.gather(client.map(campaign.summary, [out] * len(venues), venues))
    campaign.summarise(out, summaries)


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawTextHelpFormatter
    )
    parser.add_argument("data", type=Path)
    parser.add_argument("out", type=Path)
    where = parser.add_mutually_exclusive_group()
    where.add_argument("--workers", type=int)
    where.add_argument("--scheduler")
    words = parser.parse_args()
    data, out = words.data.resolve(), words.out.resolve()
    if words.scheduler:
        with Client(words.scheduler) as client:
            run(client, data, out)
    else:
        cluster = LocalCluster(words.workers, threads_per_worker=1, dashboard_address=None)
        with cluster, Client(cluster) as client:
            run(client, data, out)


if __name__ == "__main__":
    main()
