"""How the library is found."""

import os
import subprocess
import sys
from pathlib import Path

import pytest

import terncorekit
from terncorekit._library import PACKAGED


def said(program, **environment):
    """What a Python of its own prints."""
    run = subprocess.run([sys.executable, "-c", "import terncorekit\n" + program],
                         env={**os.environ, **environment}, capture_output=True, text=True)
    return run.stdout.strip() or run.stderr.strip().splitlines()[-1]


def test_version_is_the_librarys():
    assert len(terncorekit.version().split(".")) == 3


def test_the_environment_names_it(tmp_path):
    program = "print(terncorekit.version())"
    copy = tmp_path / "library.so"
    copy.symlink_to(os.path.abspath("build/shared/libTernCoreKit.so"))
    assert said(program, TERNCOREKIT_LIBRARY=str(copy)) == terncorekit.version()
    assert said(program, TERNCOREKIT_LIBRARY=str(tmp_path / "none")).startswith("OSError")


def test_a_program_names_it():
    library = os.path.abspath("build/shared/libTernCoreKit.so")
    program = f"terncorekit.use_library({library!r}); print(terncorekit.version())"
    assert said(program, TERNCOREKIT_LIBRARY="/none") == terncorekit.version()


def test_it_is_not_named_twice():
    terncorekit.version()
    with pytest.raises(RuntimeError):
        terncorekit.use_library("/none")


def test_another_library_is_refused():
    import ctypes.util
    another = ctypes.util.find_library("c")
    assert "not TernCoreKit" in said("terncorekit.version()", TERNCOREKIT_LIBRARY=another)


def test_importing_needs_no_library():
    assert said("print('there')", TERNCOREKIT_LIBRARY="/none") == "there"


def test_the_package_is_typed_and_brings_its_library():
    assert PACKAGED.with_name("py.typed").exists()
    assert PACKAGED.exists() or "TERNCOREKIT_LIBRARY" in os.environ
    assert Path(terncorekit.__file__).parent == PACKAGED.parent
