"""Tests of vyr-view, the desktop viewer, as a person uses it.

The test starts its own virtual display (Xvfb) and runs the viewer on it with a script of user
actions (vyr-view --script): opening a document, ticking curves in the side panel, dragging and
clicking in a diagram, menu commands. The viewer answers through its "state" report and through
screenshots that the toolkit takes: the diagram window rendered into a bitmap, and the document
window as the screen shows it. The oscillation sample draws its voltage curve in (200, 0, 0).

Run by CTest (tests/viewer/CMakeLists.txt), which gives VYR_VIEW, VYR and VYR_SAMPLES. When Xvfb
cannot start, the test says why and exits with 77, which CTest reports as skipped.
"""
import os
import select
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "cli"))
from pngread import read_png  # noqa: E402

VIEWER = os.environ.get("VYR_VIEW", "")
VYR = os.environ.get("VYR", "")
SAMPLES = os.environ.get("VYR_SAMPLES", "")
VOLTAGE = (200, 0, 0)
# A curve note's fill: the inner colour of the voltage curve's.
NOTE_FILL = (249, 229, 229)
# The title box's fill, and the colour the "preview" command puts around the page.
TITLE_FILL = (255, 244, 229)
AROUND_THE_PAGE = (0, 0, 128)
# The plot lies 10 pixels inside a diagram's window (as in an exported picture).
PLOT_MARGIN = 10
SKIP = 77


def start_display():
    """Starts Xvfb on a display number it picks itself; answers (process, ":N") or (None, why)."""
    xvfb = shutil.which("Xvfb")
    if not xvfb:
        return None, "Xvfb is not installed (scripts/deps.sh test installs it)"
    read_end, write_end = os.pipe()
    try:
        process = subprocess.Popen(
            [xvfb, "-displayfd", str(write_end), "-screen", "0", "1280x1024x24", "-nolisten",
             "tcp"], pass_fds=(write_end,), stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE)
    except OSError as error:
        return None, "Xvfb cannot be started: %s" % error
    finally:
        os.close(write_end)
    number = b""
    while not number.endswith(b"\n"):
        ready, _, _ = select.select([read_end], [], [], 20)
        chunk = os.read(read_end, 16) if ready else b""
        if not chunk:
            break
        number += chunk
    os.close(read_end)
    if not number.strip().isdigit():
        process.kill()
        _, err = process.communicate()
        return None, "Xvfb did not start: %s" % err.decode(errors="replace").strip()[-300:]
    return process, ":" + number.strip().decode()


class Run:
    """One run of the viewer on a script: exit status, output, the state reports, files made."""

    def __init__(self, status, out, err, states, folder):
        self.status, self.out, self.err, self.states, self.folder = status, out, err, states, folder

    def path(self, name):
        return os.path.join(self.folder, name)


def parse_states(out):
    states = []
    for line in out.splitlines():
        key, sep, value = line.partition(": ")
        if not sep:
            key, value = line.rstrip(":"), ""
        if key == "title":
            states.append({})
        if states:
            states[-1][key] = value
    return states


def names(value):
    return [n for n in value.split(", ") if n]


def voltage_pixels(path, area=None):
    """How many pixels have exactly the voltage curve's colour in `area` (x, y, width, height),
    by default the plot of a diagram window's picture."""
    width, height, channels, rows = read_png(path)
    if area is None:
        area = (PLOT_MARGIN, PLOT_MARGIN, width - 2 * PLOT_MARGIN, height - 2 * PLOT_MARGIN)
    left, top, w, h = area
    count = 0
    for y in range(top, top + h):
        row = rows[y]
        for x in range(left, left + w):
            i = x * channels
            if row[i] == VOLTAGE[0] and row[i + 1] == VOLTAGE[1] and row[i + 2] == VOLTAGE[2]:
                count += 1
    return count


def plot_in_window(state):
    """The plot of the active diagram inside the picture of its whole document window."""
    x, y, w, h = map(int, state["window-canvas"].split())
    return (x + PLOT_MARGIN, y + PLOT_MARGIN, w - 2 * PLOT_MARGIN, h - 2 * PLOT_MARGIN)


def pixels_of(path, colour, upper_half=False):
    """Every pixel of that colour, row by row (only in the picture's upper half when asked)."""
    width, height, channels, rows = read_png(path)
    return [(x, y) for y in range(height // 2 if upper_half else height) for x in range(width)
            if tuple(rows[y][x * channels:x * channels + 3]) == colour]


def voltage_trough(path):
    """The lowest pixel of the voltage curve in the left third of a diagram window's picture:
    its deepest point (-3.9 V at 1 ms), away from the notes and from the current's curve."""
    width, _, _, _ = read_png(path)
    return max((p for p in pixels_of(path, VOLTAGE) if p[0] < width // 3), key=lambda p: p[1])


def png_size(path):
    width, height, _, _ = read_png(path)
    return width, height


class ViewerTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="vyr-view-test-")
        self.document = os.path.join(self.folder, "oscillation.vyr")
        shutil.copy(os.path.join(SAMPLES, "oscillation.vyr"), self.document)

    def tearDown(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def run_viewer(self, commands, open_sample=True, expect_status=0, files=(),
                   look=("--plain",)):
        """Runs the viewer on a script. The pixels most tests count are those of the classic
        picture (the current curve grey on the voltage's axis), so they ask for it; look=()
        keeps the viewer's own, explained picture."""
        script = os.path.join(self.folder, "script.txt")
        with open(script, "w", encoding="utf-8") as f:
            f.write("\n".join(["size 900 600"] + commands if open_sample else commands) + "\n")
        arguments = ([VIEWER, *look, "--script", script] +
                     ([self.document] if open_sample else []) + list(files))
        done = subprocess.run(arguments, cwd=self.folder, capture_output=True, text=True,
                              timeout=90)
        run = Run(done.returncode, done.stdout, done.stderr, parse_states(done.stdout),
                  self.folder)
        if expect_status is not None:
            self.assertEqual(run.status, expect_status,
                             "status %d\nstdout:\n%s\nstderr:\n%s" %
                             (run.status, run.out, run.err))
        return run

    # ---- opening and showing -------------------------------------------------------------

    def test_opens_the_sample_and_paints_the_voltage_inside_the_plot(self):
        run = self.run_viewer(["state", "screenshot shot.png", "grab window.png"])
        state = run.states[0]
        self.assertEqual(state["title"], "oscillation.vyr - vyr-view")
        self.assertEqual(state["modified"], "no")
        self.assertEqual(names(state["listed"]), ["U(t)", "I(t)"])
        self.assertEqual(names(state["checked"]), ["U(t)", "I(t)"])
        self.assertEqual(names(state["plotted"]), ["U(t)", "I(t)"])
        self.assertEqual(state["uy"], "V")
        self.assertGreater(voltage_pixels(run.path("shot.png")), 500)
        # What the screen shows: the whole document window, side panel and menus included.
        width, height = png_size(run.path("window.png"))
        self.assertGreaterEqual(width, 900)
        self.assertGreaterEqual(height, 600)
        self.assertGreater(voltage_pixels(run.path("window.png"), plot_in_window(state)), 500)

    def test_unticking_a_curve_hides_it_and_ticking_shows_it_again(self):
        run = self.run_viewer([
            "uncheck U(t)", "state", "screenshot hidden.png", "grab hidden-window.png",
            "check U(t)", "state",
            # Shown again, the voltage comes after the current; its unit becomes the main one
            # again through the next Y unit (it is drawn in grey on another unit's axis).
            "menu next-y", "state", "screenshot shown.png"])
        hidden, shown, main_again = run.states
        self.assertEqual(names(hidden["checked"]), ["I(t)"])
        self.assertEqual(names(hidden["plotted"]), ["I(t)"])
        self.assertEqual(names(hidden["listed"]), ["U(t)", "I(t)"])
        self.assertEqual(voltage_pixels(run.path("hidden.png")), 0)
        self.assertEqual(voltage_pixels(run.path("hidden-window.png"), plot_in_window(hidden)), 0)
        self.assertEqual(names(shown["checked"]), ["U(t)", "I(t)"])
        self.assertEqual(shown["uy"], "mA")
        self.assertEqual(main_again["uy"], "V")
        self.assertGreater(voltage_pixels(run.path("shown.png")), 500)
        # Visibility is not a change of the document.
        self.assertEqual(main_again["modified"], "no")

    def test_the_explained_picture_draws_the_current_in_its_colour_until_plain_is_chosen(self):
        run = self.run_viewer(["screenshot explained.png", "menu plain", "state",
                               "screenshot plain.png", "menu plain", "screenshot again.png"],
                              look=())
        current = (0, 90, 200)
        grey = (185, 185, 185)
        explained = len(pixels_of(run.path("explained.png"), current))
        self.assertGreater(explained, 300)
        # No grey curve: a few edge pixels of other drawings may happen to be that grey.
        self.assertLess(len(pixels_of(run.path("explained.png"), grey)), 30)
        self.assertEqual(len(pixels_of(run.path("plain.png"), current)), 0)
        self.assertGreater(len(pixels_of(run.path("plain.png"), grey)), 300)
        self.assertEqual(len(pixels_of(run.path("again.png"), current)), explained)
        # The voltage keeps its colour in both.
        self.assertGreater(voltage_pixels(run.path("explained.png")), 500)
        self.assertGreater(voltage_pixels(run.path("plain.png")), 500)

    def test_unticking_an_experiment_hides_all_its_curves(self):
        run = self.run_viewer(["uncheck RLC circuit", "state", "check RLC circuit", "state"])
        none, both = run.states
        self.assertEqual(names(none["checked"]), [])
        self.assertEqual(names(none["plotted"]), [])
        self.assertEqual(sorted(names(both["checked"])), ["I(t)", "U(t)"])

    # ---- mouse -----------------------------------------------------------------------------

    def test_dragging_a_rectangle_zooms_and_a_double_click_restores(self):
        run = self.run_viewer([
            "state", "screenshot before.png", "drag 200 150 400 350", "state",
            "screenshot zoomed.png", "dclick 300 300", "state"])
        before, zoomed, restored = run.states
        self.assertEqual(before["zoomed"], "no")
        self.assertEqual(zoomed["zoomed"], "yes")
        self.assertEqual(restored["zoomed"], "no")
        x0, x1, y0, y1 = map(float, before["current-scale"].split())
        z0, z1, w0, w1 = map(float, zoomed["current-scale"].split())
        self.assertTrue(x0 < z0 < z1 < x1 and y0 < w0 < w1 < y1, zoomed["current-scale"])
        # The rectangle spanned 200 of the plot's pixels across: the range shrinks by as much.
        width, height = png_size(run.path("before.png"))
        expected = 200.0 / (width - 2 * PLOT_MARGIN - 1)
        self.assertAlmostEqual((z1 - z0) / (x1 - x0), expected, delta=0.01)
        self.assertEqual(restored["current-scale"], before["current-scale"])
        with open(run.path("before.png"), "rb") as a, open(run.path("zoomed.png"), "rb") as b:
            self.assertNotEqual(a.read(), b.read())

    def test_the_real_mouse_zooms_and_restores_through_the_display(self):
        # The same gestures through the display server (the toolkit's UI simulator): the window
        # takes the pointer, holds it while the button is down, and gets a real double click.
        run = self.run_viewer(["state", "real-drag 200 150 400 350", "state",
                               "real-dclick 300 300", "state"])
        before, zoomed, restored = run.states
        self.assertEqual(zoomed["zoomed"], "yes")
        x0, x1, _, _ = map(float, before["current-scale"].split())
        z0, z1, _, _ = map(float, zoomed["current-scale"].split())
        self.assertTrue(x0 < z0 < z1 < x1, zoomed["current-scale"])
        self.assertEqual(restored["zoomed"], "no")

    def test_a_small_drag_is_a_click_and_does_not_zoom(self):
        run = self.run_viewer(["drag 300 300 302 301", "state"])
        self.assertEqual(run.states[0]["zoomed"], "no")

    def test_the_status_bar_follows_the_pointer(self):
        run = self.run_viewer(["screenshot shot.png"])
        target = voltage_trough(run.path("shot.png"))
        run = self.run_viewer(["hover %d %d" % target, "state", "hover 3 3", "state"])
        on_curve, outside = run.states
        coordinates, _, under = on_curve["status"].partition(" | ")
        # Real coordinates in the active curve's quantities and units.
        self.assertRegex(coordinates, r"^t = -?[0-9.]+ s   U = -?[0-9.]+ V$")
        # The curve and point under the pointer: the voltage's lowest point, near -3.9 V.
        self.assertRegex(under, r"^U\(t\), point [0-9]+: t = [0-9.e-]+ s, U = -3\.[0-9]+ V$")
        # Outside the plot (and its 6-pixel margin) nothing is reported.
        self.assertEqual(outside["status"], " | ")

    def test_the_arrow_of_the_vertical_axis_steps_the_main_unit(self):
        # The vertical axis stands at t = 0, the left edge of the plot; its arrow at the top.
        run = self.run_viewer(["state", "click %d %d" % (PLOT_MARGIN + 2, PLOT_MARGIN), "state",
                               "click %d %d" % (PLOT_MARGIN + 2, PLOT_MARGIN), "state"])
        self.assertEqual([s["uy"] for s in run.states], ["V", "mA", "V"])

    def test_clicking_a_curve_selects_it(self):
        run = self.run_viewer(["screenshot shot.png"])
        width, height = png_size(run.path("shot.png"))
        # Then far from the curves, the notes, the axes' arrows and the axes.
        run = self.run_viewer(["click %d %d" % voltage_trough(run.path("shot.png")), "state",
                               "click %d %d" % (width * 3 // 4, height - 20), "state"])
        self.assertEqual(run.states[0]["selection"], "curve U(t)")
        self.assertEqual(run.states[1]["selection"], "")

    # ---- notes and title (the sample has two notes on the voltage and a title) -------------

    def test_a_note_is_selected_dragged_deleted_and_restored(self):
        run = self.run_viewer(["state", "screenshot notes.png"])
        self.assertEqual(run.states[0]["notes"], "3")
        # The upper note ("second maximum"), by its fill.
        pink = pixels_of(run.path("notes.png"), NOTE_FILL, upper_half=True)
        # Rows of a box hold many such pixels; a lone one is a shade of anti-aliasing.
        rows = {y for _, y in pink if sum(1 for _, v in pink if v == y) >= 20}
        box = [(x, y) for x, y in pink if y in rows]
        self.assertTrue(box, "the note's box is not painted")
        bx, by = box[len(box) // 2]
        # The box's own rectangle: the fill of a note elsewhere does not count.
        x0, x1 = min(p[0] for p in box), max(p[0] for p in box)
        y0, y1 = min(p[1] for p in box), max(p[1] for p in box)

        def pink_in_box(path):
            return [(x, y) for x, y in pixels_of(path, NOTE_FILL, upper_half=True)
                    if x0 <= x <= x1 and y0 <= y <= y1]

        self.assertGreater(len(pink_in_box(run.path("notes.png"))), 500)

        run = self.run_viewer([
            "click %d %d" % (bx, by), "state",
            "drag %d %d %d %d" % (bx, by, bx + 150, by + 80), "state", "screenshot moved.png",
            "menu delete", "state", "screenshot deleted.png", "menu undo", "state",
            "menu redo", "state"])
        selected, moved, deleted, undone, redone = run.states
        self.assertEqual(selected["selection"], "note second maximum")
        # State 1: selected.
        self.assertTrue(selected["selected-note"].startswith("state 1 at "))
        self.assertTrue(moved["selected-note"].startswith("state 1 at "))
        before = list(map(float, selected["selected-note"].split()[-2:]))
        after = list(map(float, moved["selected-note"].split()[-2:]))
        self.assertGreater(after[0], before[0])  # moved right: later in time
        self.assertLess(after[1], before[1])  # moved down: lower voltage
        self.assertEqual(moved["modified"], "yes")
        self.assertEqual(deleted["notes"], "2")
        self.assertEqual(deleted["can-undo"], "yes")
        self.assertEqual(undone["notes"], "3")
        self.assertEqual(undone["can-redo"], "yes")
        self.assertEqual(redone["notes"], "2")
        # Selected, the note's box is drawn in the selection colours instead of the pink.
        self.assertEqual(pink_in_box(run.path("moved.png")), [])
        self.assertEqual(pink_in_box(run.path("deleted.png")), [])
        # The other note is untouched.
        self.assertTrue(pixels_of(run.path("deleted.png"), NOTE_FILL))
        # While it moves (state 2) the diagram draws only its leader line; the viewer draws the
        # box under the pointer.
        run = self.run_viewer([
            "down %d %d" % (bx, by), "move %d %d" % (bx + 60, by + 40),
            "move %d %d" % (bx + 120, by + 80), "state", "screenshot moving.png",
            "up %d %d" % (bx + 120, by + 80), "state"])
        moving, dropped = run.states
        self.assertTrue(moving["selected-note"].startswith("state 2 at "), moving)
        self.assertTrue(dropped["selected-note"].startswith("state 1 at "), dropped)
        self.assertEqual(moving["selected-note"][len("state 2"):],
                         dropped["selected-note"][len("state 1"):])
        self.assertEqual(pink_in_box(run.path("moving.png")), [])

    def test_the_title_is_dragged_deleted_and_restored(self):
        title = "Damped oscillation of an RLC circuit"
        run = self.run_viewer(["state", "screenshot title.png"])
        self.assertEqual(run.states[0]["diagram-title"], title)
        width, height = png_size(run.path("title.png"))
        plot_w, plot_h = width - 2 * PLOT_MARGIN, height - 2 * PLOT_MARGIN
        # The sample's title box starts at 30 % and 2 % of the plot; a point inside its margin.
        x = int(PLOT_MARGIN + plot_w * 0.30) + 5
        y = int(PLOT_MARGIN + plot_h * 0.02) + 5
        run = self.run_viewer([
            "click %d %d" % (x, y), "state", "drag %d %d %d %d" % (x, y, x + 100, y + 150),
            "state", "menu delete", "state", "menu undo", "state"])
        selected, moved, deleted, undone = run.states
        self.assertEqual(selected["selection"], "title " + title)
        fx, fy = map(float, moved["selected-note"].split()[-2:])
        self.assertAlmostEqual(fx, 0.30 + 100.0 / plot_w, delta=0.005)
        self.assertAlmostEqual(fy, 0.02 + 150.0 / plot_h, delta=0.005)
        self.assertEqual(deleted["diagram-title"], "")
        self.assertEqual(undone["diagram-title"], title)

    # ---- interval tools (the sample's "T" spans 4 to 6 ms and -1.5 to 1.5 V) ---------------

    def test_a_click_near_an_interval_tool_selects_it_and_one_inside_does_not(self):
        run = self.run_viewer(["state", "screenshot tool.png"])
        state = run.states[0]
        width, height = png_size(run.path("tool.png"))
        xmin, xmax, ymin, ymax = map(float, state["current-scale"].split())
        left, top = PLOT_MARGIN, PLOT_MARGIN
        right, bottom = width - PLOT_MARGIN - 1, height - PLOT_MARGIN - 1

        def pixel(x, y):
            return (round(left + (x - xmin) * (right - left) / (xmax - xmin)),
                    round(bottom + (y - ymin) * (top - bottom) / (ymax - ymin)))

        edge_x, middle_y = pixel(0.004, 0.0)
        # Inside, away from both curves and more than 20 pixels from every edge.
        inside_x, inside_y = pixel(0.0048, 0.5)
        self.assertGreater(inside_x - edge_x, 20)
        self.assertGreater(pixel(0.006, 0.0)[0] - inside_x, 20)
        self.assertGreater(inside_y - pixel(0.0, 1.5)[1], 20)
        run = self.run_viewer([
            # 5 pixels left of the tool's left edge: caught.
            "click %d %d" % (edge_x - 5, middle_y), "state",
            # Deep inside it is more than 20 pixels from every edge: missed, and the selection
            # goes.
            "click %d %d" % (inside_x, inside_y), "state"])
        near, inside = run.states
        self.assertEqual(near["selection"], "interval tool T")
        self.assertEqual(inside["selection"], "")
        # An interval tool is not deleted through the undoable commands: Delete stays off.
        run = self.run_viewer(["click %d %d" % (edge_x - 5, middle_y), "menu delete"],
                              expect_status=1)
        self.assertIn("the menu item is disabled", run.err)

    def test_save_keeps_every_digit(self):
        # A document in UTF-8 whose times "%g" would round to 1000.
        with open(self.document, "w", encoding="utf-8", newline="") as f:
            f.write("[vecteur]\r\n\toid = 1\r\n\tnom = \"t\"\r\n"
                    "\tpoints = table 2 {\r\n\t1000.001\t1000.002\t\r\n\t}\r\n"
                    "[vecteur]\r\n\toid = 2\r\n\tnom = \"U\"\r\n"
                    "\tpoints = table 2 {\r\n\t1.2345678\t1\t\r\n\t}\r\n"
                    "[courbe]\r\n\toid = 3\r\n\tnom = \"U\"\r\n\tvx = 1\r\n\tvy = 2\r\n"
                    "[manipulation]\r\n\toid = 4\r\n\tnom = \"E\"\r\n"
                    "\tcourbes = table 1 {\r\n\t3\t\r\n\t}\r\n")
        self.run_viewer(["saveas exact.vyr"])
        with open(os.path.join(self.folder, "exact.vyr"), "rb") as f:
            text = f.read().decode("utf-16")
        self.assertIn("\t1000.001\t1000.002\t", text)
        self.assertIn("\t1.2345678\t1\t", text)

    # ---- deleting with undo ----------------------------------------------------------------

    def test_deleting_a_curve_can_be_undone_and_redone(self):
        run = self.run_viewer([
            "state", "select U(t)", "state", "menu delete", "state", "screenshot deleted.png",
            "menu undo", "state", "screenshot undone.png", "menu redo", "state", "menu undo",
            "state"])
        opened, selected, deleted, undone, redone, again = run.states
        self.assertEqual(selected["selection"], "curve U(t)")
        self.assertEqual(names(deleted["listed"]), ["I(t)"])
        self.assertEqual(deleted["title"], "oscillation.vyr * - vyr-view")
        self.assertEqual(deleted["modified"], "yes")
        self.assertEqual((deleted["can-undo"], deleted["can-redo"]), ("yes", "no"))
        self.assertEqual(voltage_pixels(run.path("deleted.png")), 0)
        # Undo puts the curve back as it was: in its place in the list, shown, and the
        # document unmodified, since it was unmodified before the deletion.
        self.assertEqual(names(opened["listed"]), ["U(t)", "I(t)"])
        self.assertEqual(names(undone["listed"]), names(opened["listed"]))
        self.assertEqual(names(undone["checked"]), names(opened["checked"]))
        self.assertIn("U(t)", names(undone["checked"]))
        self.assertEqual(undone["uy"], opened["uy"])
        self.assertEqual(undone["modified"], "no")
        self.assertEqual(undone["title"], "oscillation.vyr - vyr-view")
        self.assertEqual((undone["can-undo"], undone["can-redo"]), ("no", "yes"))
        self.assertGreater(voltage_pixels(run.path("undone.png")), 500)
        self.assertEqual(names(redone["listed"]), ["I(t)"])
        self.assertEqual(redone["modified"], "yes")
        self.assertEqual(names(again["listed"]), ["U(t)", "I(t)"])
        self.assertEqual(again["modified"], "no")

    def test_undoing_a_deletion_keeps_an_earlier_change_modified(self):
        run = self.run_viewer([
            "select I(t)", "menu delete", "select U(t)", "menu delete", "menu undo", "state"])
        undone, = run.states
        self.assertEqual(names(undone["listed"]), ["U(t)"])
        self.assertIn("U(t)", names(undone["checked"]))
        self.assertEqual(undone["modified"], "yes")

    def test_deleting_an_experiment_can_be_undone(self):
        run = self.run_viewer(["select RLC circuit", "menu delete", "state", "menu undo",
                               "state"])
        deleted, undone = run.states
        self.assertEqual(names(deleted["listed"]), [])
        self.assertEqual(sorted(names(undone["listed"])), ["I(t)", "U(t)"])

    def test_delete_without_a_selection_is_disabled(self):
        run = self.run_viewer(["menu delete"], expect_status=1)
        self.assertIn("script line 2: menu delete: the menu item is disabled", run.err)

    def test_undo_with_nothing_to_undo_is_disabled(self):
        run = self.run_viewer(["menu undo"], expect_status=1)
        self.assertIn("menu undo: the menu item is disabled", run.err)

    # ---- scale, diagrams ----------------------------------------------------------------

    def test_the_scale_type_follows_the_side_panel(self):
        run = self.run_viewer(["scale standard", "state", "scale manual", "state",
                               "scale auto", "state"])
        self.assertEqual([(s["scale"], s["panel-scale"]) for s in run.states],
                         [("1", "1"), ("2", "2"), ("0", "0")])

    def test_a_second_diagram_gets_its_own_window(self):
        run = self.run_viewer([
            "menu two-diagrams", "state", "check U(t)", "state", "screenshot second.png",
            "diagram 0", "state", "menu two-diagrams", "state"])
        two, shown, first, one = run.states
        self.assertEqual((two["diagrams"], two["windows"], two["active-diagram"]), ("2", "2", "1"))
        # The side panel speaks for the active diagram, which shows nothing yet.
        self.assertEqual(names(two["checked"]), [])
        self.assertEqual(names(shown["plotted"]), ["U(t)"])
        self.assertGreater(voltage_pixels(run.path("second.png")), 500)
        self.assertEqual(first["active-diagram"], "0")
        self.assertEqual(sorted(names(first["checked"])), ["I(t)", "U(t)"])
        self.assertEqual((one["diagrams"], one["windows"]), ("1", "1"))

    # ---- analysis --------------------------------------------------------------------------

    def test_fit_of_the_selected_curve_over_the_zoom_is_kept_and_drawn(self):
        run = self.run_viewer([
            "drag 200 150 500 450", "select U(t)", "state", "screenshot before.png",
            "fit damped", "fit cubic", "state", "screenshot after.png", "saveas fitted.vyr"])
        zoomed, fitted = run.states
        x0, x1 = map(float, zoomed["current-scale"].split()[:2])
        lines = [line[len("fit: "):] for line in run.out.splitlines() if line.startswith("fit: ")]
        self.assertEqual(lines[0], "y = A*exp(-x/tau)*sin(2*pi*f*x+phi)+C")
        values = dict(line.split(" = ", 1) for line in lines[1:6])
        self.assertAlmostEqual(float(values["f"].split()[0]), 500.0, places=3)
        self.assertAlmostEqual(float(values["tau"].split()[0]), 0.004, places=6)
        # Only the points the zoom shows: the voltage has one every 20 us.
        points = int(lines[6].split(", ")[1].split()[0])
        self.assertAlmostEqual(points, (x1 - x0) / 2e-5, delta=2)
        self.assertEqual(lines[7], 'unknown model "cubic"')
        # The fitted curve is drawn in the same zoom, and the document is changed.
        self.assertEqual(fitted["zoomed"], "yes")
        self.assertEqual(fitted["current-scale"], zoomed["current-scale"])
        self.assertEqual(names(fitted["plotted"]), ["U(t)", "I(t)", "fit_U(t)"])
        self.assertEqual(fitted["modified"], "yes")
        fit_colour = (120, 0, 0)  # the voltage's colour, darker
        # (a few pixels of the voltage's antialiased edges have it too)
        self.assertLess(len(pixels_of(run.path("before.png"), fit_colour)), 20)
        self.assertGreater(len(pixels_of(run.path("after.png"), fit_colour)), 300)
        if VYR:
            info = subprocess.run([VYR, "info", "--json", run.path("fitted.vyr")],
                                  capture_output=True, text=True, check=True).stdout
            self.assertIn('"fit_U"', info)

    def test_fit_without_a_selected_curve_stops_the_script(self):
        run = self.run_viewer(["fit damped"], expect_status=1)
        self.assertIn("no curve is selected", run.err)

    # ---- files -----------------------------------------------------------------------------

    def test_save_as_and_export_write_the_files(self):
        run = self.run_viewer([
            "select U(t)", "menu delete", "state", "saveas saved.vyr", "state",
            "export picture.png", "export picture.svg", "export picture.pdf",
            "export data.csv"])
        deleted, saved = run.states
        self.assertEqual(deleted["modified"], "yes")
        self.assertEqual(saved["title"], "saved.vyr - vyr-view")
        self.assertEqual(saved["modified"], "no")
        with open(run.path("picture.png"), "rb") as f:
            self.assertEqual(f.read(8), b"\x89PNG\r\n\x1a\n")
        self.assertEqual(voltage_pixels(run.path("picture.png")), 0)
        with open(run.path("picture.svg"), encoding="utf-8") as f:
            self.assertIn("<svg", f.read())
        with open(run.path("picture.pdf"), "rb") as f:
            self.assertEqual(f.read(5), b"%PDF-")
        # The lossless table: the remaining curve with its abscissa, every number in full.
        with open(run.path("data.csv"), encoding="utf-8") as f:
            rows = [line.rstrip("\n").split(";") for line in f]
        self.assertEqual(rows[0], ["t (s)", "I (mA)"])
        self.assertEqual(len(rows), 1 + 1000)
        self.assertEqual(rows[1][0], "0")
        with open(run.path("saved.vyr"), "rb") as f:
            self.assertEqual(f.read(2), b"\xff\xfe")
        # No temporary file is left beside the targets.
        self.assertEqual([n for n in os.listdir(self.folder) if n.endswith(".tmp")], [])
        if VYR:
            info = subprocess.run([VYR, "info", run.path("saved.vyr")], capture_output=True,
                                  text=True, check=True).stdout
            self.assertIn('curve 5 "I"', info)
            self.assertNotIn('"U"', info)

    def test_save_keeps_the_file_when_the_folder_is_missing(self):
        run = self.run_viewer(["saveas missing/saved.vyr"], expect_status=1)
        self.assertIn("missing/saved.vyr: cannot write: No such directory", run.err)
        self.assertFalse(os.path.exists(run.path("missing")))

    def test_export_refuses_an_unknown_extension(self):
        run = self.run_viewer(["export picture.bmp"], expect_status=1)
        self.assertIn("cannot export: the name must end in .png, .svg, .pdf or .csv", run.err)
        self.assertFalse(os.path.exists(run.path("picture.bmp")))

    # ---- printing ----------------------------------------------------------------------------

    def preview_colours(self, path):
        """What a rendered preview page holds: the bounding box of the paper, the voltage's
        pixels, the current's (grey, on another unit's axis), and the title box (its fill's
        bounding box and the dark pixels of its text inside it)."""
        width, height, channels, rows = read_png(path)
        paper = [width, height, -1, -1]
        voltage = grey = 0
        fill = [width, height, -1, -1]
        for y in range(height):
            row = rows[y]
            for x in range(width):
                p = tuple(row[x * channels:x * channels + 3])
                if p == AROUND_THE_PAGE:
                    continue
                if p == (255, 255, 255):
                    paper = [min(paper[0], x), min(paper[1], y), max(paper[2], x),
                             max(paper[3], y)]
                elif p == VOLTAGE:
                    voltage += 1
                elif p[0] == p[1] == p[2] and 170 <= p[0] <= 200:
                    grey += 1
                elif p == TITLE_FILL:
                    fill = [min(fill[0], x), min(fill[1], y), max(fill[2], x), max(fill[3], y)]
        text = 0
        for y in range(max(fill[1], 0), fill[3] + 1):
            for x in range(max(fill[0], 0), fill[2] + 1):
                if max(rows[y][x * channels:x * channels + 3]) < 80:
                    text += 1
        return {"paper": paper, "voltage": voltage, "grey": grey, "title": fill, "text": text}

    def test_print_preview_shows_each_diagram_on_its_page(self):
        run = self.run_viewer(["preview page1.png", "menu two-diagrams", "diagram 1",
                               "check U(t)", "preview two1.png 1", "preview two2.png 2"])
        self.assertEqual(run.out.count("preview-pages: 1"), 1, run.out)
        self.assertEqual(run.out.count("preview-pages: 2"), 2, run.out)

        page = self.preview_colours(run.path("page1.png"))
        left, top, right, bottom = page["paper"]
        self.assertGreater(right - left, 300)
        self.assertGreater(page["voltage"], 500)
        self.assertGreater(page["grey"], 300)
        # The title near the top of the page, in its box, its text scaled with the printer's
        # resolution (9 points a unit of scale): at the preview's 100 % a box of a dozen pixels;
        # painted unscaled in the printer's pixels it would be two or three.
        t_left, t_top, t_right, t_bottom = page["title"]
        self.assertGreater(t_top, top)
        self.assertLess(t_bottom, top + (bottom - top) // 4)
        self.assertGreaterEqual(t_bottom - t_top, 10)
        self.assertGreater(t_right - t_left, (right - left) // 5)
        self.assertGreater(page["text"], 200)
        # Inside the margins: the ink keeps clear of the paper's edges.
        self.assertGreater(t_left, left + 20)

        # Two diagrams, two pages: the first as before, the second (the voltage alone) without
        # the title, which belongs to the first.
        first, second = (self.preview_colours(run.path(n)) for n in ("two1.png", "two2.png"))
        self.assertGreater(first["voltage"], 500)
        self.assertGreater(first["text"], 200)
        self.assertGreater(second["voltage"], 500)
        self.assertLess(second["grey"], first["grey"] // 4)
        self.assertEqual(second["title"][2], -1)

    def test_print_preview_has_no_page_beyond_the_diagrams(self):
        run = self.run_viewer(["preview page2.png 2"], expect_status=1)
        self.assertIn("preview-pages: 1", run.out)
        self.assertIn("the preview page was not rendered", run.err)
        self.assertFalse(os.path.exists(run.path("page2.png")))

    def test_menu_save_writes_over_the_document(self):
        before = os.path.getsize(self.document)
        run = self.run_viewer(["select I(t)", "menu delete", "menu save", "state"])
        self.assertEqual(run.states[0]["modified"], "no")
        self.assertLess(os.path.getsize(self.document), before)

    def test_closing_and_opening_again(self):
        run = self.run_viewer(["select U(t)", "menu delete", "menu close",
                               "open oscillation.vyr", "state"])
        # Closing dropped the change (a script is never asked to save).
        self.assertEqual(sorted(names(run.states[0]["listed"])), ["I(t)", "U(t)"])
        self.assertEqual(run.states[0]["modified"], "no")

    def test_closing_a_window_with_two_diagrams_closes_the_whole_document(self):
        for close in ("menu close", "close-window"):
            run = self.run_viewer(["menu two-diagrams", "state", close, "open oscillation.vyr",
                                   "state"])
            two, reopened = run.states
            self.assertEqual(two["windows"], "2")
            # A fresh document from the file: had the second window outlived the first, the
            # open document would have been reused, with its two diagrams.
            self.assertEqual((reopened["diagrams"], reopened["windows"]), ("1", "1"), close)
            # Neither a message of the viewer nor a sanitizer report.
            self.assertNotIn("vyr-view:", run.err)
            self.assertNotIn("Sanitizer", run.err)

    # ---- tables ----------------------------------------------------------------------------
    def write_table(self, name, text):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as f:
            f.write(text)
        return path

    RAMP = "Zeit;Spannung\ns;V\n0;0\n1;2\n2;4\n3;6\n4;8\n"

    def test_a_table_on_the_command_line_opens_as_vyr_import_reads_it(self):
        table = self.write_table("mesures.csv", self.RAMP)
        run = self.run_viewer(["size 900 600", "state", "export picture.png"],
                              open_sample=False, files=[table])
        state = run.states[0]
        self.assertEqual(names(state["listed"]), ["Spannung(Zeit)"])
        self.assertEqual(names(state["plotted"]), ["Spannung(Zeit)"])
        self.assertEqual(state["uy"], "V")
        # Saved, it becomes the lab document beside the table; the table stays as it was.
        self.assertEqual(state["file"], "mesures.vyr")
        self.assertEqual(state["modified"], "no")
        with open(table, encoding="utf-8") as f:
            self.assertEqual(f.read(), self.RAMP)
        # The first imported curve is drawn in the palette's first colour, vermilion, as vyr
        # import colours it, not in the library's red.
        picture = run.path("picture.png")
        self.assertGreater(len(pixels_of(picture, (213, 94, 0))), 100)
        self.assertEqual(len(pixels_of(picture, (255, 0, 0))), 0)

    def test_file_open_offers_tables_and_opens_one(self):
        self.write_table("logger.txt", "Time\tTemperature (\u00b0C)\n23:59:30\t20.5\n"
                                       "23:59:45\t20.4\n00:00:00\t20.3\n")
        run = self.run_viewer(["open logger.txt", "state"], open_sample=False)
        state = run.states[0]
        self.assertIn("Text table (*.csv;*.txt;*.tsv;*.dat)", state["open-types"])
        self.assertIn("Lab document (*.vyr)", state["open-types"])
        self.assertEqual(names(state["listed"]), ["Temperature(Time)"])
        self.assertEqual(state["comment"], "start: 23:59:30")
        self.assertEqual(state["file"], "logger.vyr")

    def test_a_dropped_table_opens(self):
        self.write_table("dropped.csv", self.RAMP)
        run = self.run_viewer(["drop dropped.csv", "state"])
        self.assertEqual(names(run.states[0]["listed"]), ["Spannung(Zeit)"])
        self.assertEqual(run.states[0]["file"], "dropped.vyr")

    def test_a_file_that_is_no_table_is_reported(self):
        self.write_table("words.csv", "name;value\nfoo;bar\n")
        run = self.run_viewer(["open words.csv"], open_sample=False, expect_status=1)
        self.assertIn("words.csv: not a table: no row of numbers", run.err)

    def test_a_missing_document_is_reported(self):
        run = self.run_viewer(["open nowhere.vyr"], open_sample=False, expect_status=1)
        self.assertIn("nowhere.vyr: cannot open: No such file or directory", run.err)
        self.assertIn("script line 1: open nowhere.vyr: the document was not opened", run.err)

    def test_a_file_that_is_not_a_document_is_reported(self):
        with open(os.path.join(self.folder, "notes.vyr"), "w") as f:
            f.write("shopping list\nmilk\n")
        run = self.run_viewer(["open notes.vyr"], open_sample=False, expect_status=1)
        self.assertIn("notes.vyr: not a document", run.err)

    def test_bytes_without_a_section_header_are_not_a_document(self):
        # Read by the library as an empty document: one token, and a text a zero byte cuts.
        for name, data in (("token.vyr", b"\x8f\x13qz\xe1"),
                           ("cut.vyr", b"abc\x00[manipulation]\r\n")):
            with self.subTest(name=name):
                with open(os.path.join(self.folder, name), "wb") as f:
                    f.write(data)
                run = self.run_viewer(["open " + name], open_sample=False, expect_status=1)
                self.assertIn(name + ": not a document: no section header", run.err)

    def test_a_missing_script_is_reported(self):
        done = subprocess.run([VIEWER, "--script", "nowhere.txt"], cwd=self.folder,
                              capture_output=True, text=True, timeout=90)
        self.assertEqual(done.returncode, 2)
        self.assertIn("vyr-view: nowhere.txt: cannot open the script", done.stderr)

    def test_unknown_commands_stop_the_script(self):
        run = self.run_viewer(["fly away", "state"], expect_status=1)
        self.assertIn("script line 2: fly away: unknown command", run.err)
        self.assertEqual(run.states, [])


def main():
    if not VIEWER or not os.path.exists(VIEWER):
        print("vyr-view is not built (VYR_VIEW=%r)" % VIEWER)
        return 1
    display, where = start_display()
    if display is None:
        print("SKIPPED: no virtual display: %s" % where)
        return SKIP
    os.environ["DISPLAY"] = where
    os.environ.pop("WAYLAND_DISPLAY", None)
    try:
        program = unittest.main(argv=[sys.argv[0]] + sys.argv[1:], exit=False, verbosity=2)
    finally:
        display.terminate()
        display.wait()
    return 0 if program.result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
