"""What vyr says is true: outputs land where the user expects and never replace the input or
the bundled samples, axis numbers agree with the unit beside them, time labels appear when
asked, no resource name ("IDS_...") reaches an output, and -o - means standard output."""
import csv
import hashlib
import json
import os
import shutil
import subprocess
import unittest

from pngread import read_png
from test_vyr import EXIT_OUTPUT, EXIT_USAGE, OSCILLATION, SAMPLES, VYR, VyrTestCase, run


def curve_document(curves, experiment=True):
    """A UTF-8 document (with its mark) holding one curve per (quantity x, unit x, values x,
    quantity y, unit y, values y) entry; without `experiment` it has no experiment section, so
    that loading gives it the default one."""
    lines = []
    oid = 100
    curve_oids = []
    for x_name, x_unit, xs, y_name, y_unit, ys in curves:
        vectors = []
        for name, unit, values in ((x_name, x_unit, xs), (y_name, y_unit, ys)):
            unit_oid, vector_oid = oid, oid + 1
            oid += 2
            lines += ["[unité]", "\toid = %d" % unit_oid, '\tsymbole = "%s"' % unit,
                      '\tgrandeur = ""', '\tvariable = ""', "\tech_min = 0", "\tech_max = 0", ""]
            lines += ["[vecteur]", "\toid = %d" % vector_oid, '\tnom = "%s"' % name,
                      "\tunité = %d" % unit_oid, "\tpoints = table %d {" % len(values),
                      "\t" + "\t".join(repr(float(v)) for v in values), "\t}", ""]
            vectors.append(vector_oid)
        curve_oid = oid
        oid += 1
        lines += ["[courbe]", "\toid = %d" % curve_oid, '\tnom = "%s"' % y_name,
                  "\tvx = %d" % vectors[0], "\tvy = %d" % vectors[1], "\tcouleur = 255", ""]
        curve_oids.append(curve_oid)
    if experiment:
        lines += ["[manipulation]", "\toid = %d" % oid, '\tnom = "Bench"',
                  "\tcourbes = table %d {" % len(curve_oids),
                  "\t" + "\t".join(str(c) for c in curve_oids), "\t}", ""]
    return "\r\n".join(lines) + "\r\n"


def ramp(lo, hi, count=50):
    return [lo + (hi - lo) * i / (count - 1) for i in range(count)]


class TruthTestCase(VyrTestCase):
    def write_document(self, name, curves, experiment=True):
        target = self.path(name)
        with open(target, "w", encoding="utf-8-sig", newline="") as f:
            f.write(curve_document(curves, experiment))
        return target

    def copy_oscillation(self, name):
        target = self.path(name)
        shutil.copy(OSCILLATION, target)
        return target

    def picture_text(self, source, *options):
        """The texts of the PDF picture of `source`, as pdftotext reads them back."""
        if not shutil.which("pdftotext"):
            self.skipTest("pdftotext is missing (poppler-utils: scripts/deps.sh test)")
        out = self.path(os.path.basename(source) + "%d.pdf" % len(os.listdir(self.dir)))
        result = run("render", source, "-o", out, "--size", "600x400", *options)
        self.assertEqual(result.returncode, 0, result.stderr)
        text = subprocess.run(["pdftotext", out, "-"], capture_output=True, text=True,
                              timeout=120)
        self.assertEqual(text.returncode, 0, text.stderr)
        return text.stdout

    def render(self, source, *options):
        """The picture's size and a digest of its pixels."""
        out = self.path(os.path.basename(source) + "%d.png" % len(os.listdir(self.dir)))
        result = run("render", source, "-o", out, "--size", "400x300", *options)
        self.assertEqual(result.returncode, 0, result.stderr)
        return pixels(out)


def pixels(png):
    width, height, _, rows = read_png(png)
    return width, height, hashlib.sha256(b"".join(rows)).hexdigest()


class DefaultOutputTest(TruthTestCase):
    def test_without_file_the_output_goes_to_the_current_directory_and_is_announced(self):
        work = self.path("work")
        os.mkdir(work)
        before = {n: os.stat(os.path.join(SAMPLES, n)).st_mtime_ns for n in os.listdir(SAMPLES)}
        for command, name in (("render", "oscillation.png"), ("csv", "oscillation.csv")):
            result = run(command, *(["--size", "120x90"] if command == "render" else []),
                         cwd=work)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(result.stdout.strip(), name)
            self.assertTrue(os.path.getsize(os.path.join(work, name)) > 0, name)
        # Not one file of the bundled samples was written.
        after = {n: os.stat(os.path.join(SAMPLES, n)).st_mtime_ns for n in os.listdir(SAMPLES)}
        self.assertEqual(before, after)
        with open(os.path.join(work, "oscillation.csv"), encoding="utf-8") as f:
            self.assertEqual(next(csv.reader(f, delimiter=";"))[:3],
                             ["t (s)", "U (V)", "I (mA)"])

    def test_a_named_input_gets_its_output_beside_it_and_the_path_printed(self):
        source = self.copy_sample()
        result = run("csv", source)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout.strip(), self.path("oscillation.csv"))
        result = run("csv", source, "-o", self.path("named.csv"))
        self.assertEqual(result.stdout, "")

    def test_an_output_that_is_the_input_is_refused_under_any_spelling(self):
        source = self.copy_oscillation("lab.vyr")
        with open(source, "rb") as f:
            original = f.read()
        os.symlink(source, self.path("link.vyr"))
        os.link(source, self.path("hard.vyr"))
        for spelling in ("lab.vyr", "./lab.vyr", source, "link.vyr", "hard.vyr",
                         "../%s/lab.vyr" % os.path.basename(self.dir)):
            result = run("csv", "lab.vyr", "-o", spelling, cwd=self.dir)
            self.assertFailsWith(result, EXIT_USAGE, "input itself")
        # Documents named like the outputs they would give by default, or are asked to give.
        table, picture = self.path("data.csv"), self.path("picture.png")
        for path in (table, picture):
            shutil.copy(source, path)
        self.assertFailsWith(run("csv", table), EXIT_USAGE, "input itself")
        self.assertFailsWith(run("render", picture), EXIT_USAGE, "input itself")
        self.assertFailsWith(run("render", picture, "-o", "./picture.png", cwd=self.dir),
                             EXIT_USAGE, "input itself")
        for path in (source, table, picture):
            with open(path, "rb") as f:
                self.assertEqual(f.read(), original, path)


class StandardOutputTest(TruthTestCase):
    def test_csv_to_standard_output_writes_no_file(self):
        result = subprocess.run([VYR, "csv", OSCILLATION, "-o", "-"], capture_output=True,
                                cwd=self.dir, timeout=120)
        self.assertEqual(result.returncode, 0, result.stderr)
        rows = list(csv.reader(result.stdout.decode("utf-8").splitlines(), delimiter=";"))
        self.assertEqual(rows[0], ["t (s)", "U (V)", "I (mA)"])
        self.assertEqual(len(rows), 1 + 1000)
        self.assertEqual(os.listdir(self.dir), [])

    def test_render_to_standard_output_is_the_same_png(self):
        out = self.path("osc.png")
        self.assertEqual(run("render", OSCILLATION, "-o", out, "--size", "300x200").returncode, 0)
        result = subprocess.run([VYR, "render", OSCILLATION, "-o", "-", "--size", "300x200"],
                                capture_output=True, cwd=self.dir, timeout=120)
        self.assertEqual(result.returncode, 0, result.stderr)
        piped = self.path("piped.png")
        with open(piped, "wb") as f:
            f.write(result.stdout)
        self.assertEqual(pixels(piped), pixels(out))
        self.assertFalse(os.path.exists(self.path("-")))

    def test_a_full_standard_output_is_an_output_error(self):
        with open("/dev/full", "w") as full:
            result = subprocess.run([VYR, "csv", OSCILLATION, "-o", "-"], stdout=full,
                                    stderr=subprocess.PIPE, text=True, cwd=self.dir,
                                    timeout=120)
        self.assertFailsWith(result, EXIT_OUTPUT, "standard output", "No space left on device")
        self.assertEqual(os.listdir(self.dir), [])


class GridTest(TruthTestCase):
    def test_the_diagrams_setting_stands_unless_an_option_forces_it(self):
        plain = self.render(OSCILLATION)
        self.assertEqual(self.render(OSCILLATION, "--no-grid"), plain)
        self.assertNotEqual(self.render(OSCILLATION, "--grid"), plain)
        self.assertFailsWith(run("render", OSCILLATION, "--grid", "--no-grid"), EXIT_USAGE,
                             "--no-grid")

    def test_help_tells_each_behaviour(self):
        render = run("help", "render").stdout
        for fragment in ("--no-grid", "-o -", "current directory", "input itself",
                         "--time-labels", "agree"):
            self.assertIn(fragment, render)
        csv_help = run("help", "csv").stdout
        for fragment in ("-o -", "current directory", "input itself"):
            self.assertIn(fragment, csv_help)
        self.assertIn("Experiment 1", run("help", "info").stdout)


class AxisUnitTest(TruthTestCase):
    """Two curves of the same shape, one a thousand times smaller than the other, drawn under
    the same unit label: the pictures can only be equal if the numbers disagree with the unit
    for one of them."""

    def assertScaledCurvesDiffer(self, unit, small, large):
        pictures = []
        for name, values in (("small.vyr", small), ("large.vyr", large)):
            source = self.write_document(name, [("t", "s", ramp(0, 10), "v", unit, values)])
            pictures.append(self.render(source))
        self.assertNotEqual(pictures[0], pictures[1], unit)

    def test_units_that_take_no_prefix_show_their_numbers_unscaled(self):
        # The pendulum's speed, and a slowly warming liquid.
        self.assertScaledCurvesDiffer("m/s", ramp(-0.74, 0.66), ramp(-740, 660))
        self.assertScaledCurvesDiffer("\u00b0C", ramp(0.001, 0.005), ramp(1, 5))
        self.assertScaledCurvesDiffer("%", ramp(0.001, 0.005), ramp(1, 5))
        self.assertScaledCurvesDiffer("m2", ramp(0.001, 0.005), ramp(1, 5))

    def test_a_prefix_that_tells_the_divisor_draws_what_the_prefixed_unit_draws(self):
        # 0.001..0.005 V is labelled 1..5 under mV: the same picture as 1..5 mV.
        volts = self.write_document("v.vyr", [("t", "s", ramp(0, 10), "U", "V",
                                               ramp(0.001, 0.005))])
        millivolts = self.write_document("mv.vyr", [("t", "s", ramp(0, 10), "U", "mV",
                                                     ramp(1, 5))])
        self.assertEqual(self.render(volts), self.render(millivolts))


class ExplainedPictureTest(TruthTestCase):
    def test_a_quantity_without_a_unit_is_drawn_on_its_own_range_and_named(self):
        # x 100..300 against y 10..30, neither with a unit.
        plain_table = self.write_document("xy.vyr", [("x", "", ramp(100, 300), "y", "",
                                                      ramp(10, 30))])
        explained = self.picture_text(plain_table).split()
        for number in ("160", "200", "240", "20"):
            self.assertIn(number, explained)
        self.assertIn("x", explained)
        self.assertIn("y", explained)
        self.assertNotIn("()", " ".join(explained))
        # The classic picture keeps 0..1.05 on both axes.
        classic = self.picture_text(plain_table, "--plain").split()
        self.assertIn("0.5", classic)
        self.assertNotIn("200", classic)

    def test_y_unit_chooses_the_left_axis(self):
        two = self.write_document("two.vyr", [("t", "s", ramp(0, 10), "U", "V", ramp(0, 5)),
                                              ("t", "s", ramp(0, 10), "I", "mA", ramp(0, 30))])
        default = self.picture_text(two)
        self.assertLess(default.index("(V)"), default.index("(mA)"))
        chosen = self.picture_text(two, "--y-unit", "mA")
        self.assertLess(chosen.index("(mA)"), chosen.index("(V)"))
        self.assertFailsWith(run("render", two, "--y-unit", "Pa", "-o", self.path("x.png")),
                             EXIT_USAGE, "no curve in Pa", "mA")
        self.assertFalse(os.path.exists(self.path("x.png")))

    def test_units_are_typeset_only_in_the_explained_picture(self):
        accel = self.write_document("a.vyr", [("t", "us", ramp(0, 10), "a", "m/s^2",
                                               ramp(0, 5))])
        self.assertIn("m/s\u00b2", self.picture_text(accel))
        self.assertIn("\u00b5s", self.picture_text(accel))
        plain = self.picture_text(accel, "--plain")
        self.assertIn("m/s^2", plain)
        self.assertNotIn("m/s\u00b2", plain)


class TimeLabelTest(TruthTestCase):
    def test_time_labels_change_a_long_recording(self):
        # 226,755 s: labelled in days and hours with the option, in ks without it.
        source = self.write_document("long.vyr", [("t", "s", ramp(0, 226755), "T", "\u00b0C",
                                                   ramp(18, 24))])
        self.assertNotEqual(self.render(source, "--time-labels"), self.render(source))

    def test_a_long_recording_reads_in_days_and_hours(self):
        # The axis title and graduations the picture carries: days and hours every 6 hours
        # with the option, kiloseconds without it.
        source = self.write_document("long.vyr", [("t", "s", ramp(0, 226755), "T", "\u00b0C",
                                                   ramp(18, 24))])
        labelled = self.picture_text(source, "--time-labels")
        self.assertIn("t (d:h)", labelled)
        for label in ("0:06", "0:18", "1:00", "2:12"):
            self.assertIn(label, labelled)
        self.assertNotIn("IDS_", labelled)
        plain = self.picture_text(source)
        self.assertIn("t (ks)", plain)
        self.assertNotIn("1:00", plain)

    def test_time_labels_leave_a_short_recording_alone(self):
        # Below a minute the seconds stay seconds.
        source = self.write_document("short.vyr", [("t", "s", ramp(0, 30), "T", "\u00b0C",
                                                    ramp(18, 24))])
        self.assertEqual(self.render(source, "--time-labels"), self.render(source))


class ResourceNameTest(TruthTestCase):
    """No resource name reaches an output: a file without an experiment gets the default one,
    whose name used to be the untranslated "IDS_EXPERIENCE1"."""

    def documents(self):
        empty = self.path("empty.vyr")
        open(empty, "w").close()
        headerless = self.write_document("headerless.vyr", [("t", "s", ramp(0, 90), "U", "V",
                                                             ramp(0, 1))], experiment=False)
        return empty, headerless

    def test_info_names_the_default_experiment(self):
        for source in self.documents():
            result = run("info", source)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertNotIn("IDS_", result.stdout)
            self.assertIn('"Experiment 1"', result.stdout)
            doc = json.loads(run("info", "--json", source).stdout)[0]
            self.assertEqual(doc["experiments"][0]["name"], "Experiment 1")

    def test_pictures_carry_no_resource_name(self):
        for source in self.documents():
            text = self.picture_text(source, "--time-labels", "--diagram", "all")
            self.assertNotIn("IDS_", text)
        # The curve of the file without an experiment is drawn, with its titles.
        self.assertIn("t (min:s)", text)

    def test_csv_names_the_default_experiment(self):
        _, headerless = self.documents()
        result = subprocess.run([VYR, "csv", headerless, "-o", "-", "--layout", "experiments"],
                                capture_output=True, cwd=self.dir, timeout=120)
        self.assertEqual(result.returncode, 0, result.stderr)
        text = result.stdout.decode("utf-8")
        self.assertNotIn("IDS_", text)
        self.assertEqual(next(csv.reader(text.splitlines(), delimiter=";"))[0], "Experiment 1")


if __name__ == "__main__":
    unittest.main()
