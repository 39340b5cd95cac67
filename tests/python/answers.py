"""Answers requests as `tern batch` does, through the Python package.

  answers.py FOLDER VENUE... <requests >answers
"""
import sys

from terncorekit import Venue, use_host

folder, *venues = sys.argv[1:]
sys.stdin.reconfigure(encoding="utf-8", newline="\n")
sys.stdout.reconfigure(encoding="utf-8", newline="\n")
use_host(log=lambda line: None)
with Venue.open(folder, venues=map(int, venues)) as venue:
    for answer in venue.batch(sys.stdin, jobs=2):
        print(answer)
