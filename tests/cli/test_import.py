"""vyr import as a person uses it: the tables that spreadsheets, loggers and phone sensor apps
write become documents (looked at through vyr info --json and vyr csv), a document's CSV comes
back as the same table, and what is no table is refused on one line with nothing written."""
import json
import math
import os
import shutil
import subprocess
import tempfile
import time
import unittest

from pngread import pixel, read_png

VYR = os.environ["VYR"]
SAMPLES = os.environ["VYR_SAMPLES"]
EXIT_USAGE, EXIT_INPUT, EXIT_FORMAT, EXIT_OUTPUT = 2, 3, 4, 5


def run(*args):
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return subprocess.run([VYR, *args], capture_output=True, text=True, env=env, timeout=300)


class ImportTestCase(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vyr-import-")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.dir, name)

    def write(self, name, data):
        with open(self.path(name), "wb") as f:
            f.write(data)
        return self.path(name)

    def imported(self, name, data, *options):
        """Imports the table `data` written as `name`; answers the one document of
        vyr info --json of the result."""
        table = self.write(name, data)
        result = run("import", table, "--force", *options)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stderr, "")
        document = os.path.splitext(table)[0] + ".vyr"
        self.assertIn(document, result.stdout)
        info = run("info", "--json", document)
        self.assertEqual(info.returncode, 0, info.stderr)
        documents = json.loads(info.stdout)
        self.assertEqual(len(documents), 1)
        self.assertEqual(documents[0]["encoding"], "UTF-16LE")
        self.assertEqual(len(documents[0]["experiments"]), 1)
        self.assertEqual(documents[0]["experiments"][0]["name"], os.path.splitext(name)[0])
        return documents[0]

    def table_of(self, document):
        """The rows of vyr csv of a document, cells as text, the two title lines left out."""
        out = self.path("table-of.csv")
        result = run("csv", document, "-o", out, "--layout", "experiments")
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(out, encoding="utf-8", newline="") as f:
            return [line.split(";") for line in f.read().split("\r\n")[2:-1]]

    def assertCurves(self, document, expected):
        """expected: (quantity, unit, points, invalid points) of X, then of each curve's Y."""
        curves = document["experiments"][0]["curves"]
        self.assertEqual(len(curves), len(expected) - 1)
        for curve, (quantity, unit, points, invalid) in zip(curves, expected[1:]):
            self.assertEqual(curve["x"]["quantity"], expected[0][0])
            self.assertEqual(curve["x"]["unit"], expected[0][1])
            self.assertEqual(curve["y"]["quantity"], quantity)
            self.assertEqual(curve["y"]["unit"], unit)
            self.assertEqual(curve["name"], quantity)
            self.assertEqual(curve["points"], points)
            self.assertEqual(curve["invalid_points"], invalid)
            self.assertEqual(curve["diagrams"], [0])

    def assertRefused(self, result, code, *fragments):
        self.assertEqual(result.returncode, code, result.stderr)
        lines = result.stderr.strip().splitlines()
        self.assertEqual(len(lines), 1, result.stderr)
        self.assertTrue(lines[0].startswith("vyr: "), lines[0])
        for fragment in fragments:
            self.assertIn(fragment, lines[0])
        self.assertEqual(result.stdout, "")


class StylesTest(ImportTestCase):
    def test_french_spreadsheet_semicolons_decimal_commas_mark_and_crlf(self):
        doc = self.imported("mesures.csv", "\ufeffTemps (s);Tension (V);Intensité (mA)\r\n"
                            "0;1,5;-2\r\n0,1;2,25;\r\n0,2;NaN;3,5E-2\r\n".encode("utf-8"))
        self.assertCurves(doc, [("Temps", "s", 0, 0), ("Tension", "V", 3, 1),
                                ("Intensité", "mA", 3, 1)])
        tension = doc["experiments"][0]["curves"][0]
        self.assertEqual((tension["y"]["min"], tension["y"]["max"]), (1.5, 2.25))
        self.assertEqual(tension["x"]["max"], 0.2)
        # The invalid points hold their column's previous number; vyr csv writes them.
        self.assertEqual(self.table_of(self.path("mesures.vyr")),
                         [["0", "1.5", "-2"], ["0.1", "2.25", "-2"], ["0.2", "2.25", "0.035"]])

    def test_phone_sensor_app_quoted_headings_commas_and_exponents(self):
        doc = self.imported(
            "Accelerometer.csv",
            b'"Time (s)","Acceleration x (m/s^2)","Acceleration y (m/s^2)",'
            b'"Absolute acceleration (m/s^2)"\n'
            b"0.000000000E0,1.234000000E-1,-9.810000000E0,9.810776000E0\n"
            b"1.000000000E-2,-1.500000000E-1,-9.800000000E0,9.801148000E0\n"
            b"2.000000000E-2,2.500000000E-2,-9.790000000E0,9.790032000E0\n")
        self.assertCurves(doc, [("Time", "s", 0, 0), ("Acceleration x", "m/s^2", 3, 0),
                                ("Acceleration y", "m/s^2", 3, 0),
                                ("Absolute acceleration", "m/s^2", 3, 0)])
        self.assertEqual(doc["experiments"][0]["curves"][2]["display_name"],
                         "Absolute acceleration(Time)")
        self.assertEqual(self.table_of(self.path("Accelerometer.vyr"))[1],
                         ["0.01", "-0.15", "-9.8", "9.80115"])

    def test_logger_tabs_bracketed_units_settings_lines_and_holes(self):
        doc = self.imported("logger.txt", "Logger 7 export\nrate\t10 Hz\n"
                            "Time [s]\tT1 [°C]\tT2 [°C]\n"
                            "0\t21.5\t\n0.1\t\t22.0\n0.2\t21.7\t---\n0.3\t21.8\n".encode())
        self.assertCurves(doc, [("Time", "s", 0, 0), ("T1", "°C", 4, 1), ("T2", "°C", 4, 3)])
        t1 = doc["experiments"][0]["curves"][0]
        self.assertEqual((t1["y"]["min"], t1["y"]["max"]), (21.5, 21.8))
        # Holes hold their column's previous number (the next one before the first).
        self.assertEqual(self.table_of(self.path("logger.vyr")),
                         [["0", "21.5", "22"], ["0.1", "21.5", "22"], ["0.2", "21.7", "22"],
                          ["0.3", "21.8", "22"]])

    def test_bare_numbers_are_named_after_their_column_numbers(self):
        doc = self.imported("bare.dat", b"0 1.5  2.5\n1 1.6  2.4\n2 1.7  2.3\n3 1.8  2.2\n")
        self.assertCurves(doc, [("C1", "", 0, 0), ("C2", "", 4, 0), ("C3", "", 4, 0)])
        self.assertEqual(self.table_of(self.path("bare.vyr"))[3], ["3", "1.8", "2.2"])

    def test_iso_8859_1_heading_keeps_its_accents(self):
        doc = self.imported("chauffage.csv", "Durée (s);Température (°C);Pression/hPa\n"
                            "0;20,5;1013\n60;21,25;1012,5\n".encode("iso-8859-1"))
        self.assertCurves(doc, [("Durée", "s", 0, 0), ("Température", "°C", 2, 0),
                                ("Pression", "hPa", 2, 0)])
        self.assertEqual(self.table_of(self.path("chauffage.vyr")),
                         [["0", "20.5", "1013"], ["60", "21.25", "1012.5"]])

    def test_imported_curves_are_drawn(self):
        self.imported("drawn.csv", b"t (s);U (V)\n" +
                      b"".join(b"%d;%g\n" % (i, math.sin(i / 10)) for i in range(200)))
        picture = self.path("drawn.png")
        result = run("render", self.path("drawn.vyr"), "-o", picture, "--size", "400x300")
        self.assertEqual(result.returncode, 0, result.stderr)
        image = read_png(picture)
        # The first curve takes the palette's first colour, vermilion (213, 94, 0); the sine
        # crosses the whole plot.
        reddish = [x for y in range(300) for x in range(400)
                   if (lambda p: p[0] > 190 and 60 < p[1] < 120 and p[2] < 40)(pixel(image, x, y))]
        self.assertGreater(len(reddish), 200)
        self.assertGreater(max(reddish) - min(reddish), 250)


class RoundTripTest(ImportTestCase):
    def test_csv_of_every_sample_imports_into_the_same_table(self):
        for sample in ("oscillation", "pendulum", "spectrum", "signal", "sound"):
            with self.subTest(sample=sample):
                first, again = self.path(sample + ".csv"), self.path(sample + "-again.csv")
                document = self.path(sample + ".vyr")
                self.assertEqual(run("csv", os.path.join(SAMPLES, sample + ".vyr"), "-o",
                                     first, "--layout", "experiments").returncode, 0)
                result = run("import", first)
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertEqual(run("csv", document, "-o", again, "--layout",
                                     "experiments").returncode, 0)
                with open(first, "rb") as f:
                    a = f.read().split(b"\r\n")
                with open(again, "rb") as f:
                    b = f.read().split(b"\r\n")
                # The names line names the experiment, after the file now; the table is the
                # same byte for byte.
                self.assertEqual(b[0].split(b";")[0], sample.encode())
                self.assertEqual(len(a[0].split(b";")), len(b[0].split(b";")))
                self.assertEqual(a[1:], b[1:])
                self.assertGreater(len(b), 300)


class OptionsTest(ImportTestCase):
    def test_help_describes_the_command(self):
        self.assertIn("vyr import IN", run("--help").stdout)
        result = run("help", "import")
        self.assertEqual(result.returncode, 0)
        for option in ("--separator", "--decimal", "--encoding", "--skip", "--header", ".vyr"):
            self.assertIn(option, result.stdout)

    def test_each_option_overrides_its_detection(self):
        # A comma forced as separator: the semicolon is then part of a heading.
        doc = self.imported("sep.csv", b"x,a;b\n1,2;3\n4,5\n", "--separator", ",")
        self.assertCurves(doc, [("x", "", 0, 0), ("a;b", "", 2, 1)])
        doc = self.imported("dec.csv", b"x;y\n1.5;2,5\n2;3\n", "--decimal", ".")
        self.assertCurves(doc, [("x", "", 0, 0), ("y", "", 2, 1)])
        doc = self.imported("tab.csv", b"x\ty z\n1\t2 3\n2\t4\n", "--separator", "tab")
        self.assertCurves(doc, [("x", "", 0, 0), ("y z", "", 2, 1)])
        doc = self.imported("latin.csv", "x;é\n1;2\n".encode(), "--encoding", "ISO-8859-1")
        self.assertCurves(doc, [("x", "", 0, 0), ("Ã©", "", 1, 0)])
        doc = self.imported("skip.csv", b"1;2\n3;4\nt (s);U (V)\nx;5\n1;6\n", "--skip", "2",
                            "--header", "1")
        self.assertCurves(doc, [("t", "s", 0, 0), ("U", "V", 2, 1)])

    def test_quotes_let_the_comma_separate_and_mark_decimals(self):
        data = b'"t (s)","U (V)"\n"0,0","1,5"\n"0,5","1,75"\n'
        for options in ((), ("--separator", ",", "--decimal", ",")):
            with self.subTest(options=options):
                doc = self.imported("quoted.csv", data, *options)
                self.assertCurves(doc, [("t", "s", 0, 0), ("U", "V", 2, 0)])
                self.assertEqual(self.table_of(self.path("quoted.vyr"))[1][:2], ["0.5", "1.75"])

    def test_missing_marks_a_sentinel_number_as_an_invalid_point(self):
        data = b"t (s);T (K)\n0;290\n1;-999\n2;291\n"
        doc = self.imported("sentinel.csv", data)
        self.assertCurves(doc, [("t", "s", 0, 0), ("T", "K", 3, 0)])
        doc = self.imported("sentinel.csv", data, "--missing", "-999")
        self.assertCurves(doc, [("t", "s", 0, 0), ("T", "K", 3, 1)])
        table = self.write("bad.csv", data)
        self.assertRefused(run("import", table, "--missing", "none"), EXIT_USAGE, "--missing")

    def test_summary_names_x_and_why_the_columns_left_out_and_the_holes(self):
        table = self.write("station.csv", "STATION,DATE,TMP (°C),REMARK\n"
                           "ABC123,2026-04-01T00:00:00Z,5.2,eor\n"
                           "ABC123,2026-04-01T01:00:00Z,M,eor\n"
                           "ABC123,2026-04-01T02:00:00Z,4.8,eor\n".encode())
        result = run("import", table)
        self.assertEqual(result.returncode, 0, result.stderr)
        lines = result.stdout.splitlines()
        self.assertEqual(lines[1], '  X: column 2 "DATE", clock times or dates, as seconds from '
                                   'the first (start 2026-04-01T00:00:00Z): 0 invalid point(s)')
        self.assertIn('  left out: column 1 "STATION", text', lines)
        self.assertIn('  curve: column 3 "TMP (°C)": 1 invalid point(s)', lines)
        self.assertIn('  left out: column 4 "REMARK", text', lines)
        info = json.loads(run("info", "--json", self.path("station.vyr")).stdout)[0]
        self.assertEqual(info["experiments"][0]["curves"][0]["x"]["unit"], "s")
        rows = self.table_of(self.path("station.vyr"))
        self.assertEqual([row[0] for row in rows], ["0", "3600", "7200"])
        self.assertEqual([rows[0][1], rows[2][1]], ["5.2", "4.8"])

    def test_output_option_and_usage_errors(self):
        table = self.write("t.csv", b"x;y\n1;2\n")
        out = self.path("elsewhere.vyr")
        self.assertEqual(run("import", table, "-o", out).returncode, 0)
        self.assertTrue(os.path.exists(out))
        self.assertFalse(os.path.exists(self.path("t.vyr")))
        for args, fragment in (((), "one input"), ((table, table), "one input"),
                               ((table, "--separator", "ab"), "--separator"),
                               ((table, "--decimal", ";"), "--decimal"),
                               ((table, "--encoding", "ebcdic"), "--encoding"),
                               ((table, "--skip", "-1"), "--skip"),
                               ((table, "--bogus"), "--bogus")):
            with self.subTest(args=args):
                self.assertRefused(run("import", *args), EXIT_USAGE, fragment)
        # A table named .vyr would be replaced by its own document.
        named = self.write("table.vyr", b"x;y\n1;2\n")
        self.assertRefused(run("import", named), EXIT_USAGE, "-o")
        with open(named, "rb") as f:
            self.assertEqual(f.read(), b"x;y\n1;2\n")


class RefusalTest(ImportTestCase):
    def assertNothingWritten(self, before):
        self.assertEqual(sorted(os.listdir(self.dir)), before)

    def test_what_is_no_table_is_refused_with_nothing_written(self):
        cases = (
            ("empty.csv", b"", "empty"),
            ("blank.csv", b"\r\n  \n\t\n", "empty"),
            ("binary.csv", bytes(range(256)) * 8, "binary"),
            ("words.csv", b"name;value\nfoo;bar\nbaz;qux\n", "no row of numbers"),
        )
        for name, data, fragment in cases:
            with self.subTest(name=name):
                table = self.write(name, data)
                before = sorted(os.listdir(self.dir))
                self.assertRefused(run("import", table), EXIT_FORMAT, name, fragment)
                self.assertNothingWritten(before)

    def test_a_single_line_of_100_mb_is_refused_quickly(self):
        for name, piece in (("line.csv", b"1;2.5;"), ("text.csv", b"abcdefghij")):
            with self.subTest(name=name):
                table = self.path(name)
                with open(table, "wb") as f:
                    f.write(piece * (100 * 1024 * 1024 // len(piece) + 1))
                before = sorted(os.listdir(self.dir))
                start = time.monotonic()
                self.assertRefused(run("import", table), EXIT_FORMAT, "line 1",
                                   "longer than 1 MiB")
                self.assertLess(time.monotonic() - start, 60)
                self.assertNothingWritten(before)
                os.remove(table)

    def test_missing_input_and_unwritable_output(self):
        self.assertRefused(run("import", self.path("missing.csv")), EXIT_INPUT, "missing.csv")
        self.assertRefused(run("import", self.dir), EXIT_INPUT, "directory")
        table = self.write("t.csv", b"x;y\n1;2\n")
        self.assertRefused(run("import", table, "-o", self.path("no/such/dir.vyr")), EXIT_OUTPUT)

    def test_failed_import_leaves_an_existing_document_untouched(self):
        document = self.write("t.vyr", b"before")
        table = self.write("t.csv", b"no;numbers\n")
        self.assertRefused(run("import", table), EXIT_FORMAT)
        with open(document, "rb") as f:
            self.assertEqual(f.read(), b"before")


if __name__ == "__main__":
    unittest.main()
