# %% [markdown]
# # A recorded sound in a notebook
#
# Each `# %%` block is one notebook cell (paste them into Jupyter, or run the whole file with
# Debian's python: `/usr/bin/python3 docs/examples/notebook.py [OUT.png]`).
# It loads the bundled tuning-fork recording, summarises it with pandas, adds the envelope of
# the sound as a new curve and shows the document as the application draws it.

# %%
import pathlib
import sys

import numpy
import vyrbase

here = pathlib.Path(__file__).resolve().parent if "__file__" in globals() else pathlib.Path()
doc = vyrbase.load(here / "../../samples/sound.vyr")
sound = doc.curves[0]
print(doc, sound.display_name, f"{len(sound)} points")

# %% [markdown]
# `sound.x` and `sound.y` are numpy arrays over the document's own values: nothing is copied,
# and they are read-only.

# %%
print("loudest:", sound.y.max(), sound.y_unit, "at", sound.x[sound.y.argmax()], sound.x_unit)
print("same memory on two reads:", numpy.shares_memory(sound.y, sound.y))

# %%
frame = sound.to_pandas()
summary = frame.describe()
print(summary)

# %% [markdown]
# The envelope: the largest |p| over each 10 ms window, as a curve of its own in the same
# experiment, shown in the same diagram.

# %%
window = 441  # 10 ms at 44.1 kHz
envelope = frame["p(Pa)"].abs().rolling(window, center=True, min_periods=1).max()
doc.experiments[0].add_curve(sound.x, envelope, x=("t", "s"), y=("|p| max", "Pa"),
                             name="envelope")
print([c.display_name for c in doc.curves])

# %% [markdown]
# In a notebook, `doc` on the last line of a cell shows the picture (`_repr_png_`);
# `doc.render("sound.png")` or `doc.render("sound.svg")` writes it to a file.

# %%
in_notebook = "IPython" in sys.modules
out = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 and not in_notebook else None
if out:
    doc.render(out, size=(900, 500))
    print("picture:", out)
else:
    doc  # noqa: B018 (the notebook shows it)
