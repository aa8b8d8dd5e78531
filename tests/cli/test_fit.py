"""vyr fit as a person and a script use it: the RLC sample's damped oscillation fitted with its
own starting values, the JSON a script reads, the fitted curve and its note kept in a document
(the input itself updated safely), and every refusal on one line with its own exit code."""
import json
import math
import os
import re
import shutil
import subprocess
import tempfile
import unittest

VYR = os.environ["VYR"]
SAMPLES = os.environ["VYR_SAMPLES"]
EXIT_USAGE, EXIT_INPUT, EXIT_NO_RESULT = 2, 3, 6


def run(*args):
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return subprocess.run([VYR, *args], capture_output=True, text=True, env=env, timeout=300)


class FitTestCase(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vyr-fit-")
        self.oscillation = os.path.join(SAMPLES, "oscillation.vyr")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def fit_json(self, *args):
        result = run("fit", self.oscillation, "--json", *args)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stderr, "")
        return json.loads(result.stdout)

    def test_damped_oscillation_found_without_starting_values(self):
        # The sample's voltage is 5 exp(-t / 4 ms) cos(2 pi 500 t): phi = pi/2.
        fit = self.fit_json("--curve", "U(t)", "--model", "damped")
        p = fit["parameters"]
        self.assertEqual(list(p), ["A", "tau", "f", "phi", "C"])
        self.assertAlmostEqual(p["A"]["value"], 5.0, places=4)
        self.assertAlmostEqual(p["tau"]["value"] * 1000, 4.0, places=4)
        self.assertAlmostEqual(p["f"]["value"], 500.0, places=3)
        self.assertAlmostEqual(p["phi"]["value"], math.pi / 2, places=5)
        self.assertTrue(fit["converged"])
        self.assertEqual(fit["points"], 1000)
        self.assertGreater(fit["r2"], 0.999999)
        for name in p:
            self.assertGreater(p[name]["uncertainty"], 0.0)
            self.assertLess(p[name]["uncertainty"], 1e-3)

    def test_text_output_lists_parameters_with_uncertainties(self):
        result = run("fit", self.oscillation, "--curve", "U", "--model", "damped")
        self.assertEqual(result.returncode, 0, result.stderr)
        lines = result.stdout.splitlines()
        self.assertEqual(lines[0], "U(t): y = A*exp(-x/tau)*sin(2*pi*f*x+phi)+C")
        name, value, uncertainty = re.fullmatch(r"(\w+) = (\S+) \u00b1 (\S+)", lines[3]).groups()
        self.assertEqual(name, "f")
        self.assertAlmostEqual(float(value), 500.0, places=4)
        self.assertLess(float(uncertainty), 1e-4)
        self.assertTrue(any(line.startswith("R\u00b2 = ") for line in lines))
        self.assertTrue(lines[-1].startswith("RSS = "))

    def test_formula_with_starts_over_a_range(self):
        fit = self.fit_json("--curve", "U", "--formula", "A*exp(-x/tau)*cos(w*x)",
                            "--start", "A=4, tau=0.003,w=3000", "--from", "0", "--to", "0.01")
        p = fit["parameters"]
        self.assertAlmostEqual(p["w"]["value"], 2 * math.pi * 500, places=2)
        self.assertEqual(fit["points"], 501)

    def test_saved_with_its_note_into_the_input_itself(self):
        document = os.path.join(self.dir, "rlc.vyr")
        shutil.copy(self.oscillation, document)
        result = run("fit", document, "--curve", "U", "--model", "damped", "-o", document)
        self.assertEqual(result.returncode, 0, result.stderr)
        info = json.loads(run("info", "--json", document).stdout)[0]
        curves = {c["name"]: c for c in info["experiments"][0]["curves"]}
        self.assertIn("fit_U", curves)
        self.assertEqual(curves["fit_U"]["points"], 500)
        notes = [n for n in info["notes"] if "fit_U" in json.dumps(n)]
        self.assertEqual(len(notes), 2, info["notes"])
        self.assertTrue(notes[0]["text"].startswith("y = A*exp(-x/tau)*sin(2*pi*f*x+phi)+C; R"))
        self.assertRegex(notes[1]["text"], r"^A = 5\.0000000\d* \u00b1 [0-9.e-]+; tau = ")

    def test_refusals_on_one_line(self):
        cases = [
            (["fit", self.oscillation, "--curve", "U", "--model", "cubic"], EXIT_USAGE),
            (["fit", self.oscillation, "--curve", "Z", "--model", "exp"], EXIT_USAGE),
            (["fit", self.oscillation, "--model", "exp"], EXIT_USAGE),
            (["fit", self.oscillation, "--curve", "U"], EXIT_USAGE),
            (["fit", self.oscillation, "--curve", "U", "--model", "exp", "--formula", "a*x"],
             EXIT_USAGE),
            (["fit", self.oscillation, "--curve", "U", "--formula", "a*"], EXIT_USAGE),
            (["fit", self.oscillation, "--curve", "U", "--model", "exp", "--start", "k=1"],
             EXIT_USAGE),
            (["fit", self.oscillation, "--curve", "U", "--model", "exp", "--from", "x"],
             EXIT_USAGE),
            (["fit", os.path.join(self.dir, "missing.vyr"), "--curve", "U", "--model", "exp"],
             EXIT_INPUT),
            (["fit", self.oscillation, "--curve", "U", "--model", "poly5", "--from", "5"],
             EXIT_NO_RESULT),
        ]
        for args, code in cases:
            with self.subTest(args=args):
                result = run(*args)
                self.assertEqual(result.returncode, code, result.stderr)
                self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)
                self.assertTrue(result.stderr.startswith("vyr: "), result.stderr)
                self.assertEqual(result.stdout, "")

    def test_an_unknown_curve_is_told_with_the_curves_there_are(self):
        result = run("fit", self.oscillation, "--curve", "Z", "--model", "exp")
        self.assertEqual(result.returncode, EXIT_USAGE, result.stderr)
        self.assertIn("no curve Z", result.stderr)
        self.assertIn("U(t)", result.stderr)

    def test_the_curve_is_found_by_its_display_name_too(self):
        result = run("fit", self.oscillation, "--curve", "U(t)", "--model", "damped", "--json")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertGreater(json.loads(result.stdout)["r2"], 0.9)

    def test_no_result_in_json_carries_no_numbers(self):
        result = run("fit", self.oscillation, "--curve", "U", "--model", "poly5", "--from", "5",
                     "--json")
        self.assertEqual(result.returncode, EXIT_NO_RESULT)
        fit = json.loads(result.stdout)
        self.assertFalse(fit["converged"])
        self.assertTrue(all(v["value"] is None for v in fit["parameters"].values()))
        self.assertIsNone(fit["rss"])


if __name__ == "__main__":
    unittest.main()
