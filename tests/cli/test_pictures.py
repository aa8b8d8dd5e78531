"""The pictures vyr render writes, looked at by their pixels: the SVG (rasterised by rsvg-convert)
and the PDF (rasterised by pdftoppm) of every bundled sample must show what the PNG of the same
diagram at the same size shows. Also the PDF's pages, page size and embedded fonts."""
import glob
import os
import shutil
import subprocess
import tempfile
import unittest

from PIL import Image

VYR = os.environ["VYR"]
SAMPLES = os.environ["VYR_SAMPLES"]
EXIT_USAGE = 2

# The comparison in cells of CELL x CELL pixels: a cell is inked when its mean grey differs from
# the background by more than INKED; the cells inked in either picture agree when their means
# differ by at most AGREE, and at least AGREEING of them must; the amount of ink, the number of
# inked cells, may differ by INK_RATIO. Ink is counted in cells rather than summed in grey
# levels: the rasterisers draw the same strokes with different weights (pdftoppm snaps a
# one-pixel stroke to whole pixels where cairo blends it over two, so the 2,359 strokes of the
# sound sample come out 29 % darker in grey levels while 99 % of its cells agree).
CELL = 4
INKED = 16
AGREE = 48
AGREEING = 0.80
INK_RATIO = 0.20

SIZE = (1200, 800)
VOLTAGE = (200, 0, 0)  # the oscillation's voltage curve
CURRENT = (0, 90, 200)  # the oscillation's current curve, in its own colour when alone


def run(*args):
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return subprocess.run([VYR, *args], capture_output=True, text=True, env=env, timeout=120)


def tool(*args):
    return subprocess.run(list(args), capture_output=True, text=True, timeout=120)


def cells(path):
    """The mean grey of every CELL x CELL cell of a picture, and the picture's size."""
    with Image.open(path) as image:
        grey = image.convert("L")
        return grey.size, list(grey.reduce(CELL).getdata())


def compare(reference, other):
    """(fraction of inked cells that agree, ink of `other` / ink of `reference`)."""
    counts = {}
    for value in reference:
        counts[value] = counts.get(value, 0) + 1
    background = max(counts, key=counts.get)
    inked = agreeing = 0
    ink_reference = ink_other = 0
    for a, b in zip(reference, other):
        a_inked, b_inked = abs(a - background) > INKED, abs(b - background) > INKED
        ink_reference += a_inked
        ink_other += b_inked
        if a_inked or b_inked:
            inked += 1
            agreeing += abs(a - b) <= AGREE
    return agreeing / max(inked, 1), ink_other / max(ink_reference, 1)


def rasterise(path, out_png):
    """The SVG or PDF at `path` as a PNG of its own size (96 px per inch for the SVG, whose unit
    is the CSS pixel; 72 for the PDF, whose page is in points)."""
    if path.endswith(".svg"):
        result = tool("rsvg-convert", "-o", out_png, path)
    else:
        stem = out_png[:-len(".png")]
        result = tool("pdftoppm", "-r", "72", "-png", "-singlefile", path, stem)
    if result.returncode != 0:
        raise AssertionError("%s failed: %s" % (path, result.stderr))
    return out_png


def colour_count(path, colour, tolerance=40):
    with Image.open(path) as image:
        rgb = image.convert("RGB")
        return sum(1 for p in rgb.getdata()
                   if all(abs(p[i] - colour[i]) <= tolerance for i in range(3)))


class PicturesTestCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        for program in ("rsvg-convert", "pdftoppm", "pdfinfo", "pdffonts"):
            if not shutil.which(program):
                raise unittest.SkipTest("%s is missing (scripts/deps.sh test)" % program)

    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vyr-pictures-")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.dir, name)

    def render(self, sample, extension, *options):
        stem = os.path.splitext(os.path.basename(sample))[0]
        out = self.path("%s%s.%s" % (stem, "".join(options).replace("-", ""), extension))
        result = run("render", sample, "-o", out, *options)
        self.assertEqual(result.returncode, 0, result.stderr)
        return out


class VectorPicturesMatchThePngTest(PicturesTestCase):
    def assertMatches(self, sample, extension, *options):
        png = self.render(sample, "png", *options)
        vector = self.render(sample, extension, *options)
        raster = rasterise(vector, vector + ".png")
        size, reference = cells(png)
        other_size, other = cells(raster)
        self.assertEqual(other_size, size, "%s is not drawn at the PNG's size" % vector)
        agreeing, ink = compare(reference, other)
        message = "%s: %.1f %% of the inked cells agree, ink %.2f of the PNG's" % (
            os.path.basename(vector), 100 * agreeing, ink)
        self.assertGreaterEqual(agreeing, AGREEING, message)
        self.assertLessEqual(abs(ink - 1), INK_RATIO, message)

    def test_every_sample_as_svg_shows_what_the_png_shows(self):
        samples = sorted(glob.glob(os.path.join(SAMPLES, "*.vyr")))
        self.assertEqual(len(samples), 6)
        for sample in samples:
            with self.subTest(sample=os.path.basename(sample)):
                self.assertMatches(sample, "svg")

    def test_every_sample_as_pdf_shows_what_the_png_shows(self):
        for sample in sorted(glob.glob(os.path.join(SAMPLES, "*.vyr"))):
            with self.subTest(sample=os.path.basename(sample)):
                self.assertMatches(sample, "pdf")

    def test_scaled_pictures_with_a_grid_match_too(self):
        sample = os.path.join(SAMPLES, "oscillation.vyr")
        for extension in ("svg", "pdf"):
            with self.subTest(extension=extension):
                self.assertMatches(sample, extension, "--grid", "--scale", "1.5",
                                   "--size", "900x600")

    def test_the_comparison_tells_an_empty_picture_from_the_png(self):
        # A picture of the background alone (as the broken SVG was) must fail the comparison.
        png = self.render(os.path.join(SAMPLES, "oscillation.vyr"), "png")
        size, reference = cells(png)
        agreeing, ink = compare(reference, [255] * len(reference))
        self.assertLess(agreeing, AGREEING)
        self.assertGreater(abs(ink - 1), INK_RATIO)


class VectorContentTest(PicturesTestCase):
    def test_svg_draws_curves_as_paths_and_text_as_glyphs_in_pixels(self):
        svg = self.render(os.path.join(SAMPLES, "oscillation.vyr"), "svg")
        with open(svg, encoding="utf-8") as f:
            text = f.read()
        self.assertIn('width="1200px"', text)
        self.assertIn('height="800px"', text)
        self.assertNotIn("<image", text)  # vectors, not a picture inside a picture
        self.assertIn("stroke:rgb(78.431373%,0%,0%)", text)  # the voltage curve, (200, 0, 0)
        self.assertIn("<symbol", text)  # glyphs of the labels, notes and title

    def test_pdf_is_one_page_the_size_of_the_picture_with_its_fonts_embedded(self):
        pdf = self.render(os.path.join(SAMPLES, "signal.vyr"), "pdf", "--size", "640x480")
        info = tool("pdfinfo", pdf).stdout
        self.assertIn("Pages:           1", info)
        self.assertIn("Page size:       640 x 480 pts", info)
        fonts = tool("pdffonts", pdf).stdout.splitlines()[2:]
        self.assertTrue(fonts, "the PDF has no fonts: its texts are missing")
        for line in fonts:
            self.assertEqual(line.split()[-5], "yes", "font not embedded: " + line)

    def test_diagram_all_writes_one_page_per_diagram(self):
        # The oscillation with its current curve moved to a second diagram.
        with open(os.path.join(SAMPLES, "oscillation.vyr"), "rb") as f:
            text = f.read().decode("utf-16")
        block = text.index("\toid = 5\r\n")
        end = text.index("[", block)
        moved = (text[block:end].replace("diagramme = 0", "diagramme = 1")
                 .replace("table 2 {\r\n\t1\t0\t", "table 2 {\r\n\t0\t1\t"))
        self.assertNotEqual(moved, text[block:end])
        two = self.path("two.vyr")
        with open(two, "wb") as f:
            f.write((text[:block] + moved + text[end:]).encode("utf-16"))

        pdf = self.path("two.pdf")
        result = run("render", two, "--diagram", "all", "-o", pdf)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("Pages:           2", tool("pdfinfo", pdf).stdout)
        pages = []
        for page in (1, 2):
            stem = self.path("page%d" % page)
            tool("pdftoppm", "-r", "72", "-png", "-singlefile", "-f", str(page), "-l", str(page),
                 pdf, stem)
            pages.append(stem + ".png")
        # Each diagram on its own page: the voltage on the first, the current on the second.
        self.assertGreater(colour_count(pages[0], VOLTAGE), 500)
        self.assertEqual(colour_count(pages[0], CURRENT), 0)
        self.assertGreater(colour_count(pages[1], CURRENT), 500)
        self.assertEqual(colour_count(pages[1], VOLTAGE), 0)

    def test_diagram_all_needs_a_pdf(self):
        result = run("render", os.path.join(SAMPLES, "oscillation.vyr"), "--diagram", "all",
                     "-o", self.path("all.png"))
        self.assertEqual(result.returncode, EXIT_USAGE)
        self.assertIn("pdf", result.stderr)
        self.assertFalse(os.path.exists(self.path("all.png")))

    def test_an_unknown_picture_format_is_a_usage_error(self):
        result = run("render", os.path.join(SAMPLES, "oscillation.vyr"), "-o",
                     self.path("out.gif"))
        self.assertEqual(result.returncode, EXIT_USAGE)
        self.assertIn(".pdf", result.stderr)


if __name__ == "__main__":
    unittest.main()
