"""The fit against SciPy's curve_fit (MINPACK) on NIST's nonlinear regression reference sets
(tests/data/nist), every set from both starting points: digits of agreement with the certified
values (the log relative error of the worst parameter; below 0 a wrong minimum).

    PYTHONPATH=build/release/python /usr/bin/python3 bench/nist_compare.py

Needs the built module vyrbase and Debian's python3-scipy; not run by the tests (those check the
library's side alone, tests/calc/VyrFitNistTest.cpp)."""
import glob
import math
import os
import re
import sys
import warnings

import numpy
from scipy.optimize import curve_fit

import vyrbase

HERE = os.path.dirname(os.path.abspath(__file__))
SETS = os.path.join(HERE, "..", "tests", "data", "nist")


def read(path):
    reference = {"x": [], "y": []}
    data = False
    for line in open(path, encoding="utf-8"):
        if line.startswith("#") or not line.strip():
            continue
        words = line.split()
        if data:
            reference["x"].append(float(words[0]))
            reference["y"].append(float(words[1]))
        elif words[0] == "model":
            reference["model"] = line.split(None, 1)[1].strip()
        elif words[0] in ("start1", "start2", "certified"):
            reference[words[0]] = [float(v) for v in words[1:]]
        elif words[0] == "data":
            data = True
    return reference


def digits(estimates, certified):
    worst = 11.0
    for a, c in zip(estimates, certified):
        if a is None or not math.isfinite(a):
            return float("nan")
        if a != c:
            worst = min(worst, -math.log10(abs(a - c) / abs(c)))
    return worst


def main():
    rows, ours, theirs = [], [], []
    for path in sorted(glob.glob(os.path.join(SETS, "*.txt"))):
        name = os.path.basename(path)[:-4]
        ref = read(path)
        names = ["b%d" % (k + 1) for k in range(len(ref["certified"]))]
        python = re.sub(r"\b(exp|ln|sqrt)\(", lambda m: "numpy.%s(" % {"ln": "log"}.get(
            m.group(1), m.group(1)), ref["model"].replace("^", "**"))
        model = eval("lambda x, %s: %s" % (", ".join(names), python))
        doc = vyrbase.Document()
        curve = doc.add_experiment(name).add_curve(ref["x"], ref["y"])
        for start in ("start1", "start2"):
            result = curve.fit(formula=ref["model"], start=dict(zip(names, ref[start])))
            mine = digits([result.params[n] for n in names], ref["certified"]) \
                if result.converged else float("nan")
            try:
                with warnings.catch_warnings(), numpy.errstate(all="ignore"):
                    warnings.simplefilter("ignore")
                    popt, _ = curve_fit(model, numpy.array(ref["x"]), numpy.array(ref["y"]),
                                        p0=ref[start], maxfev=100000)
                scipy = digits(popt, ref["certified"])
            except (RuntimeError, ValueError):
                scipy = float("nan")
            rows.append((name, start, mine, scipy))
            ours.append(mine)
            theirs.append(scipy)
    print("%-9s %-6s %8s %8s" % ("set", "start", "vyrbase", "scipy"))
    for name, start, mine, scipy in rows:
        print("%-9s %-6s %8.1f %8.1f" % (name, start, mine, scipy))
    for label, values in (("vyrbase", ours), ("scipy", theirs)):
        print("%s: %d of %d runs reach 6 digits, %d find no result, the worst %.1f" % (
            label, sum(v >= 6 for v in values), len(values),
            sum(not math.isfinite(v) for v in values),
            min(v for v in values if math.isfinite(v))))


if __name__ == "__main__":
    sys.exit(main())
