"""Puts the shared library of a built tree into the wheel.

It is that of the preset "shared", or the file that the environment variable TERNCOREKIT_LIBRARY
names. All that is made on the way lies in build/python of the repository.
"""

import os
import re
import shutil
import sys
from pathlib import Path

from setuptools import setup
from setuptools.command.build_py import build_py
from setuptools.dist import Distribution
from wheel.bdist_wheel import bdist_wheel

REPOSITORY = Path(__file__).resolve().parents[2]
MADE = REPOSITORY / "build" / "python"
NAME = "libTernCoreKit" + {"darwin": ".dylib", "win32": ".dll"}.get(sys.platform, ".so")


def version():
    """The one that stands in CMakeLists.txt."""
    text = (REPOSITORY / "CMakeLists.txt").read_text()
    return re.search(r"^\s*VERSION ([0-9.]+)$", text, re.MULTILINE).group(1)


class BuildWithLibrary(build_py):
    """The modules, and the library beside them."""

    def run(self):
        super().run()
        named = os.environ.get("TERNCOREKIT_LIBRARY")
        library = Path(named or REPOSITORY / "build" / "shared" / NAME)
        if not library.exists():
            sys.exit(f"{library} is missing: cmake --preset shared && "
                     "cmake --build --preset shared --target TernCoreKit")
        shutil.copyfile(library, Path(self.build_lib, "terncorekit", NAME))


class WheelOfThisPlatform(bdist_wheel):
    """For any Python 3, since nothing in it is compiled against one."""

    def get_tag(self):
        return "py3", "none", super().get_tag()[2]


class WithLibrary(Distribution):
    """Not for every platform."""

    def has_ext_modules(self):
        return True


MADE.mkdir(parents=True, exist_ok=True)
setup(
    version=version(),
    distclass=WithLibrary,
    cmdclass={"build_py": BuildWithLibrary, "bdist_wheel": WheelOfThisPlatform},
    options={
        "build": {"build_base": str(MADE / "build")},
        "egg_info": {"egg_base": str(MADE)},
    },
)
