"""The vyr command as a person or a script uses it: every command on the bundled samples and on
bad input, checking exit codes, messages and outputs."""
import csv
import json
import os
import resource
import shutil
import signal
import subprocess
import tempfile
import unittest
import xml.dom.minidom

from pngread import pixel, read_png

VYR = os.environ["VYR"]
SAMPLES = os.environ["VYR_SAMPLES"]
OSCILLATION = os.path.join(SAMPLES, "oscillation.vyr")
VOLTAGE_COLOUR = (200, 0, 0)  # the colour of the oscillation's voltage curve
EXIT_USAGE, EXIT_INPUT, EXIT_FORMAT, EXIT_OUTPUT = 2, 3, 4, 5


def run(*args, cwd=None):
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return subprocess.run([VYR, *args], capture_output=True, text=True, cwd=cwd, env=env,
                          timeout=300)


class VyrTestCase(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vyr-cli-")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.dir, name)

    def copy_sample(self, name="oscillation.vyr"):
        target = self.path(name)
        shutil.copy(os.path.join(SAMPLES, name), target)
        return target

    def assertFailsWith(self, result, code, *fragments):
        self.assertEqual(result.returncode, code, result.stderr)
        lines = result.stderr.strip().splitlines()
        self.assertEqual(len(lines), 1, result.stderr)
        self.assertTrue(lines[0].startswith("vyr: "), lines[0])
        for fragment in fragments:
            self.assertIn(fragment, lines[0])


class HelpTest(VyrTestCase):
    def test_help_lists_every_command(self):
        result = run("--help")
        self.assertEqual(result.returncode, 0)
        for command in ("info", "csv", "render", "convert", "demo"):
            self.assertIn("vyr " + command, result.stdout)

    def test_help_of_one_command(self):
        result = run("help", "render")
        self.assertEqual(result.returncode, 0)
        self.assertIn("--size WxH", result.stdout)

    def test_unknown_command_and_option_are_usage_errors(self):
        self.assertFailsWith(run("frobnicate"), EXIT_USAGE, "frobnicate", "unknown command")
        self.assertFailsWith(run("render", "--bogus", OSCILLATION), EXIT_USAGE, "--bogus")
        self.assertFailsWith(run("render", "--size", "12", OSCILLATION), EXIT_USAGE, "--size")
        self.assertFailsWith(run("convert", OSCILLATION), EXIT_USAGE, "convert")

    def test_no_arguments_prints_usage_and_fails(self):
        result = run()
        self.assertEqual(result.returncode, EXIT_USAGE)
        self.assertIn("usage", result.stderr)


class InfoTest(VyrTestCase):
    def test_info_without_file_describes_the_bundled_sample(self):
        result = run("info")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("oscillation.vyr", result.stdout)
        self.assertIn("encoding: UTF-16LE", result.stdout)
        self.assertIn("U(t)", result.stdout)

    def test_json_parses_and_holds_the_curves(self):
        result = run("info", "--json", OSCILLATION)
        self.assertEqual(result.returncode, 0, result.stderr)
        documents = json.loads(result.stdout)
        self.assertEqual(len(documents), 1)
        doc = documents[0]
        self.assertEqual(doc["encoding"], "UTF-16LE")
        curves = doc["experiments"][0]["curves"]
        voltage = next(c for c in curves if c["name"] == "U")
        self.assertEqual(voltage["points"], 1000)
        self.assertEqual(voltage["x"]["unit"], "s")
        self.assertEqual(voltage["y"]["unit"], "V")
        self.assertEqual(voltage["display_name"], "U(t)")
        self.assertAlmostEqual(voltage["y"]["max"], 5.0)
        self.assertTrue(doc["report"])
        self.assertTrue(doc["grid"])
        self.assertEqual(len(doc["pictures"]), 1)
        self.assertEqual(doc["pictures"][0]["width"], 160)
        self.assertEqual(len(doc["interval_tools"]), 2)
        self.assertGreaterEqual(len(doc["physiology_records"]), 1)

    def test_several_files_report_each_failure_and_go_on(self):
        missing = self.path("missing.vyr")
        result = run("info", "--json", missing, OSCILLATION, self.dir)
        self.assertEqual(result.returncode, EXIT_INPUT)
        self.assertEqual(len(json.loads(result.stdout)), 1)
        errors = result.stderr.strip().splitlines()
        self.assertEqual(len(errors), 2)
        self.assertEqual(errors[0], "vyr: %s: cannot open: No such file or directory" % missing)
        self.assertIn("Is a directory", errors[1])

    def test_a_document_that_can_be_read_only_once_is_described(self):
        # A named pipe gives its bytes once: the document is read once, and loaded from them.
        fifo = self.path("stream.vyr")
        os.mkfifo(fifo)
        with open(OSCILLATION, "rb") as f:
            content = f.read()
        pid = os.fork()
        if pid == 0:
            try:
                with open(fifo, "wb") as out:
                    out.write(content)
            finally:
                os._exit(0)
        try:
            result = run("info", "--json", fifo)
        finally:
            os.waitpid(pid, 0)
        self.assertEqual(result.returncode, 0, result.stderr)
        doc = json.loads(result.stdout)[0]
        self.assertEqual(doc["encoding"], "UTF-16LE")
        voltage = next(c for c in doc["experiments"][0]["curves"] if c["name"] == "U")
        self.assertEqual(voltage["points"], 1000)

    def test_big_endian_text_is_refused(self):
        target = self.path("be.vyr")
        with open(target, "wb") as f:
            f.write("\ufeff[manipulation]\r\n".encode("utf-16-be"))
        self.assertFailsWith(run("info", target), EXIT_FORMAT, "be.vyr", "big-endian")

    def test_a_file_that_is_not_a_document_is_refused(self):
        target = self.path("notes.txt")
        with open(target, "w") as f:
            f.write("shopping list\nmilk\n")
        self.assertFailsWith(run("info", target), EXIT_FORMAT, "notes.txt", "not a document")


class CsvTest(VyrTestCase):
    def test_csv_reads_back_with_pythons_csv_module(self):
        source = self.copy_sample()
        result = run("csv", source, "--layout", "experiments")
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(self.path("oscillation.csv"), "rb") as f:
            raw = f.read()
        self.assertFalse(raw.startswith(b"\xef\xbb\xbf"))
        rows = list(csv.reader(raw.decode("utf-8").splitlines(), delimiter=";"))
        self.assertEqual(rows[0][0], "RLC circuit")
        self.assertEqual(rows[1][:3], ["t(s)", "U(V)", "I(mA)"])
        self.assertEqual(len(rows), 2 + 1000)
        self.assertEqual(float(rows[2][0]), 0.0)
        self.assertAlmostEqual(float(rows[2][1]), 5.0)

    def test_the_default_table_keeps_every_abscissa_and_reads_back_the_same_numbers(self):
        source = self.copy_sample()
        self.assertEqual(run("csv", source).returncode, 0)
        with open(self.path("oscillation.csv"), encoding="utf-8", newline="") as f:
            text = f.read()
        rows = [line.split(";") for line in text.split("\r\n")[:-1]]
        self.assertEqual(rows[0], ["t (s)", "U (V)", "I (mA)"])
        self.assertEqual(len(rows), 1 + 1000)
        self.assertTrue(all(len(row) == 3 for row in rows))
        self.assertEqual(float(rows[1][1]), 5.0)
        # Imported and exported again: the same table, byte for byte.
        self.assertEqual(run("import", self.path("oscillation.csv"), "-o",
                             self.path("back.vyr")).returncode, 0)
        self.assertEqual(run("csv", self.path("back.vyr")).returncode, 0)
        with open(self.path("back.csv"), encoding="utf-8", newline="") as f:
            self.assertEqual(f.read(), text)

    def test_a_hole_is_an_empty_cell_and_nothing_is_rounded(self):
        table = self.path("p.csv")
        with open(table, "w", newline="") as f:
            f.write("t (s);T (°C);U (V)\n1000.001;75.2;1.2345678\n1000.002;70.8;1\n"
                    "1000.003;;0.5\n")
        self.assertEqual(run("import", table).returncode, 0)
        info = json.loads(run("info", "--json", self.path("p.vyr")).stdout)[0]
        x = info["experiments"][0]["curves"][0]["x"]
        self.assertEqual((x["min"], x["max"]), (1000.001, 1000.003))
        self.assertEqual(run("csv", self.path("p.vyr"), "-o", "-").stdout,
                         "t (s);T (°C);U (V)\n1000.001;75.2;1.2345678\n1000.002;70.8;1\n"
                         "1000.003;;0.5\n")
        layout = run("csv", self.path("p.vyr"), "--layout", "nested")
        self.assertFailsWith(layout, EXIT_USAGE, "--layout")

    def test_output_option_and_unwritable_output(self):
        out = self.path("data.csv")
        self.assertEqual(run("csv", OSCILLATION, "-o", out).returncode, 0)
        self.assertTrue(os.path.getsize(out) > 0)
        self.assertFailsWith(run("csv", OSCILLATION, "-o", self.path("no/such/dir.csv")),
                             EXIT_OUTPUT, "cannot write")

    def test_failed_write_leaves_the_existing_file_untouched(self):
        target = self.path("out.csv")
        with open(target, "w") as f:
            f.write("precious")

        def small_files():
            # Writes past 1000 bytes fail (EFBIG) instead of killing the process.
            resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)

        result = subprocess.run([VYR, "csv", OSCILLATION, "-o", target], capture_output=True,
                                text=True, preexec_fn=small_files, timeout=120)
        self.assertEqual(result.returncode, EXIT_OUTPUT, result.stderr)
        self.assertIn("cannot write", result.stderr)
        with open(target) as f:
            self.assertEqual(f.read(), "precious")
        self.assertEqual(os.listdir(self.dir), ["out.csv"])


class DefaultOutputTest(VyrTestCase):
    def test_an_output_named_by_default_never_replaces_a_file(self):
        table = self.path("phone.csv")
        with open(table, "w") as f:
            f.write("t (s);a (m/s^2)\n0;9.81\n0.01;9.8\n")
        self.assertEqual(run("import", table).returncode, 0)
        for args in (("csv", self.path("phone.vyr")), ("import", table),
                     ("render", self.path("phone.vyr"), "--size", "100x80")):
            target = self.path("phone.png") if args[0] == "render" else table
            if args[0] == "render":
                with open(target, "w") as f:
                    f.write("t (s);a (m/s^2)\n0;9.81\n0.01;9.8\n")
            with self.subTest(command=args[0]):
                with open(target if args[0] != "import" else self.path("phone.vyr"), "rb") as f:
                    before = f.read()
                result = run(*args)
                self.assertFailsWith(result, EXIT_OUTPUT, "-o", "--force")
                with open(target if args[0] != "import" else self.path("phone.vyr"), "rb") as f:
                    self.assertEqual(f.read(), before)
        with open(table) as f:
            self.assertEqual(f.read(), "t (s);a (m/s^2)\n0;9.81\n0.01;9.8\n")
        # --force replaces it; -o names it.
        self.assertEqual(run("csv", self.path("phone.vyr"), "--force").returncode, 0)
        with open(table) as f:
            self.assertEqual(f.read(), "t (s);a (m/s^2)\n0;9.81\n0.01;9.8\n")
        self.assertEqual(run("import", table, "--force").returncode, 0)
        self.assertEqual(run("render", self.path("phone.vyr"), "--size", "100x80",
                             "--force").returncode, 0)
        self.assertEqual(read_png(self.path("phone.png"))[0], 100)

    def test_import_and_convert_write_to_standard_output(self):
        table = self.path("t.csv")
        with open(table, "w") as f:
            f.write("x;y\n0.1;0.2\n")
        result = subprocess.run([VYR, "import", table, "-o", "-"], capture_output=True)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue(result.stdout.startswith(b"\xff\xfe["), result.stdout[:20])
        self.assertIn("0.1".encode("utf-16-le"), result.stdout)
        self.assertIn(b"1 row(s)", result.stderr)
        self.assertFalse(os.path.exists(self.path("-")))
        self.assertFalse(os.path.exists(self.path("t.vyr")))
        converted = subprocess.run([VYR, "convert", OSCILLATION, "-"], capture_output=True,
                                   cwd=self.dir)
        self.assertEqual(converted.returncode, 0, converted.stderr)
        self.assertTrue(converted.stdout.startswith(b"\xff\xfe"))
        self.assertIn("[manipulation]".encode("utf-16-le"), converted.stdout)
        self.assertEqual(os.listdir(self.dir), ["t.csv"])

    def test_convert_keeps_every_digit(self):
        table = self.path("p.csv")
        with open(table, "w") as f:
            f.write("t (s);p (hPa)\n1000.001;1013.25\n1000.002;1013.26\n")
        self.assertEqual(run("import", table).returncode, 0)
        self.assertEqual(run("convert", self.path("p.vyr"), self.path("q.vyr")).returncode, 0)
        with open(self.path("q.vyr"), "rb") as f:
            text = f.read().decode("utf-16")
        self.assertIn("\t1000.001\t1000.002\t", text)
        self.assertIn("\t1013.25\t1013.26\t", text)


class NotADocumentTest(VyrTestCase):
    def test_text_without_a_section_header_is_refused_but_a_blank_file_is_empty(self):
        cases = {"token.bin": b"\x8f\x13qz\xe1", "cut.bin": b"abc\x00[manipulation]\r\n",
                 "utf16.bin": b"\xff\xfe" + "random words".encode("utf-16-le")}
        for name, data in cases.items():
            with self.subTest(name=name):
                with open(self.path(name), "wb") as f:
                    f.write(data)
                self.assertFailsWith(run("info", self.path(name)), EXIT_FORMAT, name,
                                     "not a document")
                self.assertFailsWith(run("convert", self.path(name), self.path("o.vyr")),
                                     EXIT_FORMAT, "not a document")
        with open(self.path("blank.vyr"), "wb") as f:
            f.write(b"\r\n  \n")
        self.assertEqual(run("info", self.path("blank.vyr")).returncode, 0)


class RenderTest(VyrTestCase):
    def test_png_holds_the_curve_colour_inside_the_plot_only(self):
        out = self.path("osc.png")
        result = run("render", OSCILLATION, "-o", out, "--size", "600x400")
        self.assertEqual(result.returncode, 0, result.stderr)
        image = read_png(out)
        width, height = image[0], image[1]
        self.assertEqual((width, height), (600, 400))
        # The plot rectangle of a 600 x 400 picture at scale 1 (see VyrDiagramExport).
        left, top, right, bottom = 10, 10, 600 - 10 - 1, 400 - 10 - 1
        inside = outside = 0
        for y in range(height):
            for x in range(width):
                if pixel(image, x, y) == VOLTAGE_COLOUR:
                    if left <= x <= right and top <= y <= bottom:
                        inside += 1
                    else:
                        outside += 1
        self.assertGreater(inside, 100)
        self.assertEqual(outside, 0)

    def test_without_output_the_picture_is_named_after_the_input(self):
        source = self.copy_sample()
        self.assertEqual(run("render", source, "--size", "300x200").returncode, 0)
        self.assertTrue(os.path.exists(self.path("oscillation.png")))

    def test_an_invalid_points_number_stretches_no_axis(self):
        # Point 2 is invalid (validity byte 4) and holds 1e6, a number never measured.
        document = self.path("spike.vyr")
        with open(document, "w", encoding="utf-8", newline="") as f:
            f.write("[vecteur]\r\n\toid = 1\r\n\tnom = \"t\"\r\n"
                    "\tpoints = table 4 {\r\n\t0\t1\t2\t3\t\r\n\t}\r\n"
                    "[vecteur]\r\n\toid = 2\r\n\tnom = \"U\"\r\n"
                    "\tpoints = table 4 {\r\n\t1\t3\t1000000\t2\t\r\n\t}\r\n"
                    "\tvalidit\u00e9 = table 1 {\r\n\t4\t\r\n\t}\r\n"
                    "[courbe]\r\n\toid = 3\r\n\tnom = \"U\"\r\n\tvx = 1\r\n\tvy = 2\r\n"
                    "\tcouleur = 200\r\n\tstyle_ex = \"1|0|1|2|0|0\"\r\n\tdiagramme = 0\r\n"
                    "[manipulation]\r\n\toid = 4\r\n\tnom = \"E\"\r\n"
                    "\tcourbes = table 1 {\r\n\t3\t\r\n\t}\r\n")
        out = self.path("spike.png")
        result = run("render", document, "-o", out, "--size", "400x300")
        self.assertEqual(result.returncode, 0, result.stderr)
        image = read_png(out)
        rows = [y for y in range(image[1]) for x in range(image[0])
                if pixel(image, x, y) == VOLTAGE_COLOUR]
        self.assertTrue(rows)
        # Drawn on the range of 1 to 3 V, the line spans most of the plot's height; on a range
        # up to 1e6 it would be flat at the bottom.
        self.assertGreater(max(rows) - min(rows), image[1] // 2)

    def test_svg_is_well_formed_xml(self):
        out = self.path("osc.svg")
        result = run("render", OSCILLATION, "-o", out, "--grid", "--time-labels", "--scale", "2")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(subprocess.run(["xmllint", "--noout", out]).returncode, 0)
        self.assertEqual(xml.dom.minidom.parse(out).documentElement.tagName, "svg")

    def test_render_needs_no_display(self):
        out = self.path("headless.png")
        env = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
        result = subprocess.run([VYR, "render", OSCILLATION, "-o", out, "--size", "200x150"],
                                env=env, capture_output=True, text=True, timeout=120)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue(os.path.getsize(out) > 0)

    def test_bad_output_extension_and_diagram_are_usage_errors(self):
        self.assertFailsWith(run("render", OSCILLATION, "-o", self.path("x.gif")), EXIT_USAGE)
        self.assertFailsWith(run("render", OSCILLATION, "--diagram", "2"), EXIT_USAGE)
        # The sample uses one diagram: a second would be an empty picture.
        self.assertFailsWith(run("render", OSCILLATION, "--diagram", "1", "-o",
                                 self.path("d1.png")), EXIT_USAGE, "--diagram 1")
        self.assertFalse(os.path.exists(self.path("d1.png")))


class ConvertTest(VyrTestCase):
    def test_utf8_document_converts_to_canonical_utf16(self):
        utf8 = self.path("hand.vyr")
        # With its mark: without one, only a unit section marks a file as UTF-8.
        with open(utf8, "w", encoding="utf-8-sig") as f:
            f.write("[manipulation]\r\n\toid = 1\r\n\tnom = \"Température\"\r\n")
        out = self.path("canonical.vyr")
        result = run("convert", utf8, out)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(out, "rb") as f:
            raw = f.read()
        self.assertTrue(raw.startswith(b"\xff\xfe"))
        self.assertIn("Température", raw.decode("utf-16"))
        info = json.loads(run("info", "--json", out).stdout)[0]
        self.assertEqual(info["experiments"][0]["name"], "Température")

    def test_failed_conversion_writes_nothing(self):
        out = self.path("out.vyr")
        result = run("convert", self.path("missing.vyr"), out)
        self.assertEqual(result.returncode, EXIT_INPUT)
        self.assertFalse(os.path.exists(out))


class DemoTest(VyrTestCase):
    def test_demo_writes_documents_pictures_and_tables(self):
        result = run("demo", self.dir)
        self.assertEqual(result.returncode, 0, result.stderr)
        for name in ("oscillation", "sound", "spectrum", "pendulum", "signal", "fit"):
            for extension in ("vyr", "png", "csv"):
                self.assertTrue(os.path.exists(self.path(name + "." + extension)), name)
        sound = json.loads(run("info", "--json", self.path("sound.vyr")).stdout)[0]
        self.assertEqual(sound["experiments"][0]["curves"][0]["points"], 100000)
        pendulum = json.loads(run("info", "--json", self.path("pendulum.vyr")).stdout)[0]
        names = [c["name"] for c in pendulum["experiments"][0]["curves"]]
        self.assertTrue(any(n.startswith("XY_") for n in names), names)

    def test_demo_documents_match_the_bundled_samples(self):
        self.assertEqual(run("demo", self.dir).returncode, 0)
        for name in ("oscillation", "signal", "fit"):
            with open(self.path(name + ".vyr"), "rb") as made, \
                    open(os.path.join(SAMPLES, name + ".vyr"), "rb") as bundled:
                self.assertEqual(made.read(), bundled.read(), name)


if __name__ == "__main__":
    unittest.main()
