"""vyr calc, vyr spectrum and vyr stats on the bundled samples and on bad input: the values
they compute checked against the document's own columns (through vyr csv) and against numbers
computed here independently."""
import csv
import io
import json
import math
import os
import shutil
import subprocess
import tempfile
import unittest

VYR = os.environ["VYR"]
SAMPLES = os.environ["VYR_SAMPLES"]
OSCILLATION = os.path.join(SAMPLES, "oscillation.vyr")
SOUND = os.path.join(SAMPLES, "sound.vyr")
EXIT_USAGE, EXIT_INPUT = 2, 3


def run(*args):
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return subprocess.run([VYR, *args], capture_output=True, text=True, env=env, timeout=300)


def columns(document):
    """The document's CSV as {header: [values]} (empty cells as None)."""
    result = run("csv", document, "--layout", "experiments", "-o", "-")
    assert result.returncode == 0, result.stderr
    rows = list(csv.reader(io.StringIO(result.stdout), delimiter=";"))
    header = rows[1]
    table = {name: [] for name in header}
    for row in rows[2:]:
        for name, cell in zip(header, row):
            table[name].append(float(cell) if cell else None)
    return table


def curves(document):
    result = run("info", "--json", document)
    assert result.returncode == 0, result.stderr
    return {c["display_name"]: c for e in json.loads(result.stdout)[0]["experiments"]
            for c in e["curves"]}


class CalcTestCase(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vyr-calc-")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.dir, name)

    def assertFailsWith(self, result, code, *fragments):
        self.assertEqual(result.returncode, code, result.stderr)
        lines = result.stderr.strip().splitlines()
        self.assertEqual(len(lines), 1, result.stderr)
        self.assertTrue(lines[0].startswith("vyr: "), lines[0])
        for fragment in fragments:
            self.assertIn(fragment, lines[0])

    def table(self, name, text):
        path = self.path(name)
        with open(path, "w") as f:
            f.write(text)
        return path


class CalcTest(CalcTestCase):
    def test_product_of_two_curves_is_saved_with_its_unit(self):
        out = self.path("power.vyr")
        result = run("calc", OSCILLATION, "P = U*I", "-o", out)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("P(t)", result.stdout)
        made = curves(out)["P(t)"]
        self.assertEqual(made["y"]["unit"], "V\u00b7mA")
        self.assertEqual(made["points"], 1000)
        t = columns(out)
        for u, i, p in zip(t["U(V)"], t["I(mA)"], t["P(V\u00b7mA)"]):
            self.assertAlmostEqual(p, u * i, delta=1e-5 * max(1.0, abs(u * i)))

    def test_unit_option_names_the_unit(self):
        out = self.path("power.vyr")
        self.assertEqual(run("calc", OSCILLATION, "P = U*I/1000", "--unit", "W", "-o",
                             out).returncode, 0)
        self.assertEqual(curves(out)["P(t)"]["y"]["unit"], "W")

    def test_variable_option_enters_the_formula(self):
        out = self.path("energy.vyr")
        result = run("calc", OSCILLATION, "E = 0.5*C*U^2", "--var", "C=2e-6", "-o", out)
        self.assertEqual(result.returncode, 0, result.stderr)
        t = columns(out)
        for u, e in zip(t["U(V)"], t["E()"]):
            self.assertAlmostEqual(e, 1e-6 * u * u, delta=1e-5 * max(1e-12, 1e-6 * u * u))

    def test_derivative_of_the_sample_agrees_with_central_differences(self):
        out = self.path("slope.vyr")
        self.assertEqual(run("calc", OSCILLATION, "dU = deriv(U)", "-o", out).returncode, 0)
        t = columns(out)
        x, u, d = t["t(s)"], t["U(V)"], t["dU(V/s)"]
        for k in (1, 100, 500, 998):
            expected = (u[k + 1] - u[k - 1]) / (x[k + 1] - x[k - 1])
            self.assertAlmostEqual(d[k], expected, delta=1e-5 * abs(expected) + 1e-3)

    def test_output_may_update_the_input_in_place(self):
        doc = self.path("oscillation.vyr")
        shutil.copy(OSCILLATION, doc)
        self.assertEqual(run("calc", doc, "P = U*I", "-o", doc).returncode, 0)
        self.assertIn("P(t)", curves(doc))
        self.assertIn("U(t)", curves(doc))

    def test_refused_expression_leaves_the_input_as_it_was(self):
        doc = self.path("oscillation.vyr")
        shutil.copy(OSCILLATION, doc)
        with open(doc, "rb") as f:
            before = f.read()
        for expression, fragment in (("P = U*Z", "unknown name Z"), ("P U", "NAME = EXPR"),
                                     ("P = U*", ""), ("U = smooth(U, 3)", "already exists"),
                                     ("P = smooth(U, -2)", "whole number")):
            self.assertFailsWith(run("calc", doc, expression, "-o", doc), EXIT_USAGE, fragment)
        with open(doc, "rb") as f:
            self.assertEqual(f.read(), before)

    def test_bad_arguments(self):
        self.assertFailsWith(run("calc", OSCILLATION), EXIT_USAGE)
        self.assertFailsWith(run("calc", OSCILLATION, "P = U", "--var", "C"), EXIT_USAGE, "--var")
        self.assertFailsWith(run("calc", OSCILLATION, "P = U", "--var", "2x=1"), EXIT_USAGE)
        self.assertFailsWith(run("calc", self.path("missing.vyr"), "P = U"), EXIT_INPUT)
        self.assertFailsWith(run("calc", OSCILLATION, "P = U", "--experiment", "none"),
                             EXIT_USAGE, "no experiment")

    def test_empty_cells_stay_invalid_in_the_result(self):
        first = self.path("a.csv")
        self.table("a.csv", "t (s);U (V);I (A)\n0;1;\n1;1;10\n2;1;\n3;1;30\n4;1;\n")
        doc = self.path("a.vyr")
        self.assertEqual(run("import", first, "-o", doc).returncode, 0)
        # I is measured at 1 and 3 only; its empty cells are invalid points of the same
        # abscissas, and stay invalid in U*I.
        self.assertEqual(run("calc", doc, "P = U*I", "-o", doc).returncode, 0)
        made = curves(doc)["P(t)"]
        self.assertEqual(made["points"], 5)
        self.assertEqual(made["invalid_points"], 3)
        valid = json.loads(run("stats", doc, "--curve", "P", "--json").stdout)
        self.assertEqual((valid["points"], valid["min"], valid["max"]), (2, 10, 30))


class SpectrumTest(CalcTestCase):
    def test_tuning_fork_reads_440_hz(self):
        out = self.path("spectrum.vyr")
        result = run("spectrum", SOUND, "--curve", "p", "-o", out)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("Hz", result.stdout)
        made = curves(out)["p(f)"]
        self.assertEqual(made["x"]["unit"], "Hz")
        self.assertEqual(made["y"]["unit"], "Pa")
        self.assertAlmostEqual(made["x"]["max"], 22050, delta=1)
        stats = json.loads(run("stats", out, "--curve", "p(f)", "--json").stdout)
        peak = json.loads(run("stats", out, "--curve", "p(f)", "--from", "430", "--to", "450",
                              "--json").stdout)
        self.assertEqual(peak["max"], stats["max"])
        self.assertIn("strongest 440.1", result.stdout)

    def test_sine_amplitude_is_read_at_its_frequency(self):
        rows = ["t (s);y (V)"]
        for i in range(1000):
            t = i / 1000
            rows.append("%.6f;%.9f" % (t, 0.5 + 2 * math.sin(2 * math.pi * 50 * t)))
        doc = self.path("sine.vyr")
        self.assertEqual(run("import", self.table("sine.csv", "\n".join(rows) + "\n"), "-o",
                             doc).returncode, 0)
        self.assertEqual(run("spectrum", doc, "--curve", "y", "-o", doc).returncode, 0)
        at50 = json.loads(run("stats", doc, "--curve", "y(f)", "--from", "49.5", "--to", "50.5",
                              "--json").stdout)
        at0 = json.loads(run("stats", doc, "--curve", "y(f)", "--to", "0.5", "--json").stdout)
        self.assertEqual(at50["points"], 1)
        self.assertAlmostEqual(at50["mean"], 2.0, delta=1e-5)
        self.assertAlmostEqual(at0["mean"], 0.5, delta=1e-5)

    def test_uneven_steps_are_refused_with_a_message(self):
        doc = self.path("uneven.vyr")
        self.table("uneven.csv", "t (s);y (V)\n0;1\n1;2\n2;1\n3.5;2\n4;1\n5;2\n")
        self.assertEqual(run("import", self.path("uneven.csv"), "-o", doc).returncode, 0)
        self.assertFailsWith(run("spectrum", doc, "--curve", "y"), EXIT_USAGE, "uniformly")
        self.assertFailsWith(run("spectrum", doc, "--curve", "nothing"), EXIT_USAGE,
                             "no curve nothing", "y(t)")
        self.assertFailsWith(run("spectrum", doc), EXIT_USAGE, "--curve")


class StatsTest(CalcTestCase):
    def test_json_agrees_with_values_computed_here(self):
        t = columns(OSCILLATION)
        pairs = [(x, u) for x, u in zip(t["t(s)"], t["U(V)"]) if 0.004 <= x <= 0.006]
        n = len(pairs)
        mean = sum(u for _, u in pairs) / n
        sd = math.sqrt(sum((u - mean) ** 2 for _, u in pairs) / (n - 1))
        area = sum((pairs[k][0] - pairs[k - 1][0]) * (pairs[k][1] + pairs[k - 1][1]) / 2
                   for k in range(1, n))
        mx = sum(x for x, _ in pairs) / n
        slope = (sum((x - mx) * (u - mean) for x, u in pairs) /
                 sum((x - mx) ** 2 for x, _ in pairs))
        result = run("stats", OSCILLATION, "--curve", "U(t)", "--from", "0.006", "--to", "0.004",
                     "--json")
        self.assertEqual(result.returncode, 0, result.stderr)
        s = json.loads(result.stdout)
        self.assertEqual(sorted(s), sorted(["points", "mean", "sd", "min", "max", "area",
                                            "slope", "intercept"]))
        self.assertEqual(s["points"], n)
        self.assertAlmostEqual(s["mean"], mean, delta=1e-12)
        self.assertAlmostEqual(s["sd"], sd, delta=1e-12)
        self.assertEqual(s["min"], min(u for _, u in pairs))
        self.assertEqual(s["max"], max(u for _, u in pairs))
        self.assertAlmostEqual(s["area"], area, delta=1e-15)
        self.assertAlmostEqual(s["slope"], slope, delta=1e-9 * abs(slope))
        self.assertAlmostEqual(s["intercept"], mean - slope * mx, delta=1e-9)

    def test_interval_tool_gives_the_range(self):
        by_tool = run("stats", OSCILLATION, "--curve", "U", "--tool", "T", "--json")
        self.assertEqual(by_tool.returncode, 0, by_tool.stderr)
        by_bounds = run("stats", OSCILLATION, "--curve", "U", "--from", "0.004", "--to", "0.006",
                        "--json")
        self.assertEqual(json.loads(by_tool.stdout), json.loads(by_bounds.stdout))
        self.assertFailsWith(run("stats", OSCILLATION, "--curve", "U", "--tool", "none"),
                             EXIT_USAGE, "no interval tool labelled none")
        self.assertFailsWith(run("stats", OSCILLATION, "--curve", "U", "--tool", "T", "--from",
                                 "0"), EXIT_USAGE, "--tool")

    def test_text_names_units_and_empty_range_gives_nulls(self):
        result = run("stats", OSCILLATION, "--curve", "I")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("points     1000", result.stdout)
        self.assertIn("mA\u00b7s", result.stdout)
        self.assertIn("mA/s", result.stdout)
        empty = json.loads(run("stats", OSCILLATION, "--curve", "I", "--from", "5", "--json")
                           .stdout)
        self.assertEqual(empty["points"], 0)
        self.assertIsNone(empty["mean"])

    def test_bad_arguments(self):
        self.assertFailsWith(run("stats", OSCILLATION, "--curve", "U", "--from", "x"),
                             EXIT_USAGE, "--from")
        self.assertFailsWith(run("stats", OSCILLATION), EXIT_USAGE, "--curve")
        self.assertFailsWith(run("stats", OSCILLATION, "--curve", "W"), EXIT_USAGE, "no curve W")


if __name__ == "__main__":
    unittest.main()
