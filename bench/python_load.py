#!/usr/bin/python3
"""What `import vyrbase` costs on a large document, against `vyr info` of the same document.

Makes a document of one curve of 10^6 points through the module (saved like any document), then
measures, each in fresh processes, medians over --runs:

- time: vyrbase.load(path) and curve.y.max() inside Debian's python (interpreter start and
  imports apart, and also with them), against the whole `vyr info` process on the same file.
  Claim: load + y.max() <= 1.3 x vyr info.
- peak memory: the peak resident memory that load + y.max() adds to the python process, against
  the peak that the same document adds to `vyr info` (its peak less that of vyr info on a
  one-point document): what the document itself needs to be loaded. Claim: <= 1.1 x. A copy of y
  (8 MB) would show: the same figure with numpy.array(curve.y) is printed as a control.
- zero copy: numpy.shares_memory between two reads of curve.y.

Usage: bench/python_load.py [--build build/release] [--points 1000000] [--runs 7]
(build the targets vyr and vyrbase_python first). Exits 1 when a claim does not hold.
"""
import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]

# Runs in a child python: loads the document, reads y.max(), and prints the seconds that took,
# the resident memory before and the peak after (bytes), and whether two reads share memory.
CHILD = r"""
import json, sys, time
t0 = time.perf_counter()
import numpy, vyrbase
t1 = time.perf_counter()

def status(key):
    with open("/proc/self/status") as f:
        for line in f:
            if line.startswith(key):
                return int(line.split()[1]) * 1024
    return -1

def reset_peak():
    with open("/proc/self/clear_refs", "w") as f:
        f.write("5")  # the peak starts again from the resident set

reset_peak()
before = status("VmRSS:")
t2 = time.perf_counter()
doc = vyrbase.load(sys.argv[1])
curve = doc.curves[0]
t3 = time.perf_counter()
load_peak = status("VmHWM:")
after_load = status("VmRSS:")
reset_peak()
t4 = time.perf_counter()
top = (numpy.array(curve.y) if sys.argv[2] == "copy" else curve.y).max()
t5 = time.perf_counter()
read_peak = status("VmHWM:")
print(json.dumps({
    "seconds": (t3 - t2) + (t5 - t4), "process": t5 - t0, "imports": t1 - t0,
    "peak_added": max(load_peak, read_peak) - before, "held": after_load - before,
    "read_added": read_peak - after_load, "shared": bool(numpy.shares_memory(curve.y, curve.y)),
}))
"""


def run_child(python, env, path, mode):
    return json.loads(subprocess.run([python, "-c", CHILD, str(path), mode], env=env, check=True,
                                     capture_output=True, text=True).stdout)


def run_vyr(vyr, path):
    """Wall seconds and peak resident bytes of one `vyr info` process."""
    start = time.perf_counter()
    process = subprocess.Popen([vyr, "info", str(path)], stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - start
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit(f"vyr info {path} failed")
    return seconds, usage.ru_maxrss * 1024


def make_document(env, python, path, points):
    script = f"""
import numpy, vyrbase
t = numpy.arange({points}) / 44100.0
rng = numpy.random.default_rng(42)
p = numpy.exp(-0.8 * t) * numpy.sin(2 * numpy.pi * 440 * t) + rng.normal(0, 0.01, t.size)
doc = vyrbase.Document()
doc.add_experiment("Sound").add_curve(t, p, x=("t", "s"), y=("p", "Pa"))
doc.save({str(path)!r})
"""
    subprocess.run([python, "-c", script], env=env, check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--points", type=int, default=1000000)
    parser.add_argument("--runs", type=int, default=7)
    args = parser.parse_args()
    build = (ROOT / args.build).resolve()
    vyr = build / "tools" / "vyr"
    python = "/usr/bin/python3"
    env = dict(os.environ, PYTHONPATH=str(build / "python"), DISPLAY="", WAYLAND_DISPLAY="")

    with tempfile.TemporaryDirectory() as tmp:
        big, small = pathlib.Path(tmp) / "big.vyr", pathlib.Path(tmp) / "small.vyr"
        make_document(env, python, big, args.points)
        make_document(env, python, small, 1)
        run_vyr(vyr, big)  # the file into the page cache for both
        vyr_runs = [run_vyr(vyr, big) for _ in range(args.runs)]
        vyr_small = [run_vyr(vyr, small)[1] for _ in range(3)]
        views = [run_child(python, env, big, "view") for _ in range(args.runs)]
        copies = [run_child(python, env, big, "copy") for _ in range(3)]

    def median(runs, key):
        return statistics.median(r[key] for r in runs)

    vyr_time = statistics.median(r[0] for r in vyr_runs)
    vyr_added = statistics.median(r[1] for r in vyr_runs) - statistics.median(vyr_small)
    load_time = median(views, "seconds")
    shared = all(r["shared"] for r in views)
    mb = 1e6
    data = 2 * 8 * args.points
    print(f"document: one curve of {args.points} points ({data / mb:.0f} MB of values)")
    print(f"vyr info (whole process):            {vyr_time * 1000:7.1f} ms median of {args.runs}")
    print(f"python load + y.max():               {load_time * 1000:7.1f} ms  "
          f"ratio {load_time / vyr_time:.2f} (claim <= 1.30)")
    print(f"python process (start, imports {median(views, 'imports') * 1000:.0f} ms, load, max):"
          f" {median(views, 'process') * 1000:.1f} ms  "
          f"ratio {median(views, 'process') / vyr_time:.2f}")
    print(f"peak added by the document, vyr info: {vyr_added / mb:6.1f} MB")
    print(f"peak added by load + y.max():         {median(views, 'peak_added') / mb:6.1f} MB  "
          f"ratio {median(views, 'peak_added') / vyr_added:.2f} (claim <= 1.10)")
    print(f"held after load:                      {median(views, 'held') / mb:6.1f} MB")
    print(f"peak added by y.max() after load:     {median(views, 'read_added') / mb:6.1f} MB; "
          f"with a copy of y (control): {median(copies, 'read_added') / mb:.1f} MB")
    print(f"numpy.shares_memory between two reads of y: {shared}")
    ok = (load_time <= 1.3 * vyr_time and median(views, "peak_added") <= 1.1 * vyr_added and
          shared and median(views, "read_added") < data / 4)
    print("claims hold" if ok else "a claim does not hold")
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
