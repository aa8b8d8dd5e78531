"""Shared fixtures of the vyrbase module's tests: the bundled samples and small documents made
through the module itself."""
import os
import pathlib
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
# The PNG reader the command-line tests look at pictures with.
sys.path.insert(0, str(ROOT / "tests" / "cli"))


@pytest.fixture(scope="session")
def samples():
    return pathlib.Path(os.environ.get("VYR_SAMPLES", ROOT / "samples"))


@pytest.fixture
def made(tmp_path):
    """A new document with one experiment and one curve of five points, point 2 invalid."""
    import vyrbase

    doc = vyrbase.Document()
    experiment = doc.add_experiment("Cooling")
    curve = experiment.add_curve([0, 60, 120, 180, 240], [80.5, 71.25, 64, 58.5, 54],
                                 x=("t", "s"), y=("T", "°C"), name="cooling",
                                 valid=[True, True, False, True, True])
    return doc, experiment, curve


@pytest.fixture
def measured():
    """A new document with one experiment and one curve of five points, every point valid."""
    import vyrbase

    doc = vyrbase.Document()
    experiment = doc.add_experiment("Cooling")
    curve = experiment.add_curve([0, 60, 120, 180, 240], [80.5, 71.25, 64, 58.5, 54],
                                 x=("t", "s"), y=("T", "°C"), name="cooling")
    return doc, experiment, curve
