"""The explained pictures of vyr render: no text covers another, at any size down to 400x300 and
at any scale. The texts are read back from the PDF (pdftotext -bbox), whose words are the glyphs
cairo drew: every heading, graduation, axis title, note, title, tool label and legend entry."""
import glob
import os
import re
import shutil
import subprocess
import tempfile
import unittest

VYR = os.environ["VYR"]
SAMPLES = os.environ["VYR_SAMPLES"]

# pdftotext gives a word the height of its font's bounding box (1.55 em for the diagram's face),
# which reaches further down than the ascent and descent by which the painter measures and
# places its texts (1.16 em); the word's box is cut to that measure from its top.
MEASURED_HEIGHT = 1.164 / 1.55
# Words of one text touch where a space separates them; boxes that share no more than this
# (in points) do not cover each other.
TOUCH = 0.5

CASES = [("400x300", "1"), ("900x300", "1"), ("1200x800", "1"), ("600x400", "2"),
         ("400x300", "1.5")]

WORD = re.compile(r'<word xMin="([-\d.]+)" yMin="([-\d.]+)" xMax="([-\d.]+)" yMax="([-\d.]+)">'
                  r'(.*?)</word>')


def run(*args):
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return subprocess.run([VYR, *args], capture_output=True, text=True, env=env, timeout=120)


def words(pdf):
    """(text, (x0, y0, x1, y1)) of every word of the first page."""
    out = subprocess.run(["pdftotext", "-bbox", pdf, "-"], capture_output=True, text=True,
                         timeout=60).stdout
    found = []
    for m in WORD.finditer(out):
        x0, y0, x1, y1 = (float(v) for v in m.groups()[:4])
        found.append((m.group(5), (x0, y0, x1, y0 + (y1 - y0) * MEASURED_HEIGHT)))
    return found


def overlaps(a, b):
    return (min(a[2], b[2]) - max(a[0], b[0]) > TOUCH and
            min(a[3], b[3]) - max(a[1], b[1]) > TOUCH)


def collisions(found):
    pairs = []
    for i in range(len(found)):
        for j in range(i + 1, len(found)):
            if overlaps(found[i][1], found[j][1]):
                pairs.append((found[i][0], found[j][0]))
    return pairs


class LayoutTestCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        if not shutil.which("pdftotext"):
            raise unittest.SkipTest("pdftotext is missing (scripts/deps.sh test)")

    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vyr-layout-")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def render(self, sample, size, scale, *options):
        out = os.path.join(self.dir, "%s-%s-%s.pdf" % (os.path.basename(sample), size, scale))
        result = run("render", sample, "-o", out, "--size", size, "--scale", scale, *options)
        self.assertEqual(result.returncode, 0, result.stderr)
        return out


class NoTextCoversAnotherTest(LayoutTestCase):
    def test_every_sample_at_every_size_has_no_two_texts_over_each_other(self):
        samples = sorted(glob.glob(os.path.join(SAMPLES, "*.vyr")))
        self.assertEqual(len(samples), 6)
        for sample in samples:
            for size, scale in CASES:
                with self.subTest(sample=os.path.basename(sample), size=size, scale=scale):
                    found = words(self.render(sample, size, scale))
                    self.assertGreater(len(found), 5, "the picture has almost no text")
                    self.assertEqual(collisions(found), [])
                    width = int(size.split("x")[0])
                    outside = [text for text, box in found
                               if box[0] < -TOUCH or box[2] > width + TOUCH]
                    self.assertEqual(outside, [], "texts run off the picture")

    def test_the_check_sees_the_collisions_of_the_classic_picture(self):
        # The classic picture puts the heading over the top graduation and a note over a tool's
        # label: the same check must find them there.
        sample = os.path.join(SAMPLES, "oscillation.vyr")
        found = words(self.render(sample, "600x400", "2", "--plain"))
        self.assertNotEqual(collisions(found), [])

    def test_a_title_wider_than_the_picture_wraps_inside_it(self):
        # At 400x300 and scale 2 the signal's title is wider than the whole picture.
        sample = os.path.join(SAMPLES, "signal.vyr")
        plain = words(self.render(sample, "400x300", "2", "--plain"))
        self.assertTrue([t for t, box in plain if box[2] > 400 + TOUCH])
        found = words(self.render(sample, "400x300", "2"))
        title = [box for text, box in found if text in ("Light", "gate:", "cart", "passes")]
        self.assertEqual(len(title), 4)
        self.assertGreater(max(b[1] for b in title), min(b[1] for b in title), "not wrapped")
        for box in title:
            self.assertLessEqual(box[2], 400 + TOUCH)
