"""vyr-view --follow: rows fed through a pipe appear in the diagram as they arrive (its pictures
and state looked at while the recording goes on), the repaints stay at 30 a second or fewer
however fast the rows come, the user can hide a curve and zoom meanwhile, --window shows the
last seconds, and File > Save keeps what was recorded.

Run by CTest like test_viewer.py (its virtual display and helpers), with VYR_VIEW and VYR."""
import csv
import io
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import test_viewer  # noqa: E402
from test_viewer import SKIP, parse_states, read_png  # noqa: E402

def red_pixels(path):
    """The pixels of the first curve (red, as every new curve, with the shades its smoothed
    edges take) in a diagram window's picture, as fractions (0..1) of its width and height from
    the top left corner; the red name of the Y axis, at the left edge, left out."""
    width, height, channels, rows = read_png(path)
    found = []
    for y in range(height):
        row = rows[y]
        for x in range(int(width * 0.06), width):
            r, g, b = row[x * channels:x * channels + 3]
            if r >= 180 and g <= 110 and b <= 110:
                found.append((x / width, y / height))
    return found


class FollowTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="vyr-follow-test-")

    def tearDown(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.folder, name)

    def start(self, commands, *options):
        """Starts the viewer following its standard input with a script; answers the process,
        whose standard input the test writes rows into."""
        script = self.path("script.txt")
        with open(script, "w", encoding="utf-8") as f:
            f.write("\n".join(["size 900 600"] + commands) + "\n")
        return subprocess.Popen(
            [test_viewer.VIEWER, "--script", script, "--follow", "-", *options],
            cwd=self.folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, text=True)

    def read_state(self, process):
        """Reads the viewer's output up to the end of its next state report."""
        lines = []
        while True:
            line = process.stdout.readline()
            if not line:
                self.fail("the viewer ended early: " + process.stderr.read())
            lines.append(line)
            if line.startswith("follow-window:"):
                return parse_states("".join(lines))[0]

    def finish(self, process):
        if not process.stdin.closed:
            process.stdin.close()
        process.wait(timeout=90)
        out, err = process.stdout.read(), process.stderr.read()
        self.assertEqual(process.returncode, 0, "stdout:\n%s\nstderr:\n%s" % (out, err))
        return parse_states(out)

    def test_rows_fed_through_a_pipe_appear_in_the_picture(self):
        process = self.start(["wait-rows 100", "state", "screenshot first.png",
                              "saveas saved.vyr", "wait-rows 300", "state",
                              "screenshot second.png", "wait-end", "state"])
        # A sawtooth between 0 and 9, then a level at 30: the level shows only once it came.
        process.stdin.write("t (s);U (V)\n")
        process.stdin.write("".join("%d;%d\n" % (i, i % 10) for i in range(100)))
        process.stdin.flush()
        first = self.read_state(process)
        process.stdin.write("".join("%d;30\n" % i for i in range(100, 300)))
        process.stdin.close()
        second, end = [self.read_state(process) for _ in range(2)]
        self.finish(process)

        self.assertEqual(first["follow-rows"], "100")
        self.assertEqual(first["plotted"], "U(t)")
        self.assertEqual(first["title"], "stdin * - vyr-view")
        x0, x1, _, y1 = map(float, first["current-scale"].split())
        self.assertLessEqual(x1, 99.5)
        self.assertLess(y1, 30)
        # The sawtooth spans the plot's width in the first picture.
        red = red_pixels(self.path("first.png"))
        self.assertGreater(len(red), 150)
        self.assertGreater(max(x for x, _ in red) - min(x for x, _ in red), 0.8)

        self.assertEqual(second["follow-rows"], "300")
        x0, x1, _, y1 = map(float, second["current-scale"].split())
        self.assertGreaterEqual(x1, 299)
        self.assertGreaterEqual(y1, 30)
        # In the second the sawtooth is squeezed into the lower part of the left third, and the
        # level at 30 runs along the top of the rest.
        red = red_pixels(self.path("second.png"))
        right = [y for x, y in red if x > 0.5]
        left = [y for x, y in red if x < 0.3]
        self.assertGreater(len(right), 100)
        self.assertLess(max(right), 0.25)
        self.assertGreater(len(left), 50)
        self.assertGreater(min(left), 0.5)
        self.assertEqual(end["follow-state"], "ended (end of input)")
        self.assertIn("Recording ended (end of input): 300 rows", end["status"])

        # File > Save while it recorded kept the rows that had come.
        exported = subprocess.run([test_viewer.VYR, "csv", self.path("saved.vyr"), "-o", "-"],
                                  capture_output=True, text=True, timeout=60)
        self.assertEqual(exported.returncode, 0, exported.stderr)
        table = list(csv.reader(io.StringIO(exported.stdout), delimiter=";"))
        self.assertEqual(table[0], ["t (s)", "U (V)"])
        rows = [(float(t), float(u)) for t, u in table[1:]]
        self.assertGreaterEqual(len(rows), 100)
        self.assertEqual(rows, [(i, i % 10 if i < 100 else 30) for i in range(len(rows))])

    def test_fast_rows_repaint_at_most_thirty_times_a_second_and_the_user_acts(self):
        process = self.start(["wait-rows 1", "uncheck U(t)", "drag 200 150 400 350", "state",
                              "screenshot hidden.png", "check U(t)", "wait-end", "state"],
                             "--seconds", "2.5")
        process.stdin.write("t (s);U (V);I (A)\n")
        # As fast as the pipe takes them, for the whole recording.
        deadline = time.monotonic() + 6
        i = 0
        try:
            while time.monotonic() < deadline:
                process.stdin.write("".join("%d;%d;%d\n" % (k, k % 100, -(k % 50))
                                            for k in range(i, i + 2000)))
                process.stdin.flush()
                i += 2000
            process.stdin.close()
        except BrokenPipeError:
            pass  # the viewer stopped reading at --seconds and quit after the script
        process.wait(timeout=90)
        out, err = process.stdout.read(), process.stderr.read()
        self.assertEqual(process.returncode, 0, "stdout:\n%s\nstderr:\n%s" % (out, err))
        acting, end = parse_states(out)
        # Meanwhile, the user hid the voltage and zoomed.
        self.assertEqual(acting["plotted"], "I(t)")
        self.assertEqual(acting["zoomed"], "yes")
        self.assertEqual(red_pixels(self.path("hidden.png")), [])
        self.assertEqual(end["follow-state"], "ended (--seconds reached)")
        rows, paints = int(end["follow-rows"]), int(end["follow-paints"])
        seconds = float(end["follow-seconds"])
        self.assertGreater(rows, 5000)
        self.assertGreater(paints, 5)
        self.assertLessEqual(paints, 30 * seconds + 3, "%d paints in %.2f s" % (paints, seconds))

    def test_a_window_shows_the_last_seconds(self):
        process = self.start(["wait-end", "state", "screenshot window.png"], "--window", "50")
        process.stdin.write("t (s);U (V)\n" + "".join("%d;%d\n" % (i, i) for i in range(300)))
        states = self.finish(process)
        state = states[0]
        self.assertEqual(state["follow-window"], "on")
        self.assertEqual(state["zoomed"], "yes")
        x0, x1, _, _ = map(float, state["current-scale"].split())
        self.assertAlmostEqual(x0, 249, delta=0.5)
        self.assertAlmostEqual(x1, 299, delta=0.5)
        # The line of U = t rises across the whole plot: only the last 50 s are in it.
        red = red_pixels(self.path("window.png"))
        self.assertGreater(len(red), 300)
        self.assertGreater(max(x for x, _ in red) - min(x for x, _ in red), 0.8)

    def test_a_source_that_cannot_be_opened_is_told(self):
        script = self.path("script.txt")
        with open(script, "w") as f:
            f.write("state\n")
        done = subprocess.run([test_viewer.VIEWER, "--script", script, "--follow",
                               self.path("none.csv")], capture_output=True, text=True,
                              timeout=60)
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("none.csv: cannot open: No such file or directory", done.stderr)
        done = subprocess.run([test_viewer.VIEWER, "--follow", "-", "--window", "x"],
                              capture_output=True, text=True, timeout=60)
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("--window wants a duration in seconds above 0", done.stderr)


if __name__ == "__main__":
    # The viewer tests' own runner: it starts the virtual display and runs this module's tests.
    sys.exit(test_viewer.main())
