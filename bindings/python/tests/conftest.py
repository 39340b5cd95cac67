"""What the tests share. They run from the repository's root, over the sample venue.

The environment variable TERN names the command; TERN_TEST_WITHOUT names modules that are taken for
not installed.
"""

import os
import re
import subprocess
import sys

for missing in filter(None, os.environ.get("TERN_TEST_WITHOUT", "").split(",")):
    sys.modules[missing] = None

import pytest  # noqa: E402

from terncorekit import Venue  # noqa: E402

PLAZA = "data/plaza"


@pytest.fixture(scope="session")
def shared_venue():
    with Venue.open(PLAZA) as venue:
        yield venue


@pytest.fixture
def venue():
    """One of the test's own, which it may close or block."""
    with Venue.open(PLAZA) as venue:
        yield venue


@pytest.fixture(scope="session")
def tern():
    """The command."""
    return os.environ.get("TERN", "build/shared/tern")


@pytest.fixture(scope="session")
def service(tern):
    """The address of a local service over the sample."""
    with subprocess.Popen([tern, "serve", "--data", "data/plaza", "--port", "0"],
                          stdout=subprocess.PIPE, text=True) as process:
        try:
            yield re.search(r" at (http\S+)", process.stdout.readline()).group(1)
        finally:
            process.terminate()
