"""The notebook-style example of the docs runs as written and draws its picture."""
import os
import subprocess
import sys

from conftest import ROOT
from pngread import read_png


def test_the_notebook_example_summarises_and_draws_the_sound(tmp_path):
    picture = tmp_path / "sound.png"
    done = subprocess.run([sys.executable, str(ROOT / "docs" / "examples" / "notebook.py"),
                           str(picture)], env=dict(os.environ, DISPLAY=""),
                          capture_output=True, text=True, timeout=120)
    assert done.returncode == 0, done.stderr
    assert "count  100000.000000  100000.000000" in done.stdout
    assert "same memory on two reads: True" in done.stdout
    assert "['p(t)', '|p| max(t)']" in done.stdout
    assert read_png(picture)[:2] == (900, 500)
