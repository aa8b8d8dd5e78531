"""Every command of vyr that writes, in every output format, on a disk that is full, read-only
or missing the directory: exit code 5, one line on stderr that says why, the file that was there
byte for byte as it was, and nothing left beside it. The disk is a small tmpfs that the test
mounts (which needs root; the tests are skipped otherwise)."""
import os
import shutil
import subprocess
import tempfile
import unittest

VYR = os.environ["VYR"]
SAMPLES = os.environ["VYR_SAMPLES"]
OSCILLATION = os.path.join(SAMPLES, "oscillation.vyr")
# A table of another tool, which vyr import makes into a document.
TABLE = os.path.join(SAMPLES, "pendulum.csv")
EXIT_OUTPUT = 5
PREVIOUS = b"the previous file, which no failure may touch\n" * 20

# Every command that writes a file, by the name of its output: (name, arguments given the
# output's path).
WRITERS = [
    ("render.png", lambda out: ["render", OSCILLATION, "-o", out]),
    ("render.svg", lambda out: ["render", OSCILLATION, "-o", out]),
    ("render.pdf", lambda out: ["render", OSCILLATION, "-o", out]),
    ("pages.pdf", lambda out: ["render", OSCILLATION, "--diagram", "all", "-o", out]),
    ("data.csv", lambda out: ["csv", OSCILLATION, "-o", out]),
    ("copy.vyr", lambda out: ["convert", OSCILLATION, out]),
    ("table.vyr", lambda out: ["import", TABLE, "-o", out]),
]


def run(*args):
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return subprocess.run([VYR, *args], capture_output=True, text=True, env=env, timeout=120)


def fill(directory):
    """Writes into a file of `directory` until the file system refuses one more byte."""
    chunk = b"\0" * 4096
    with open(os.path.join(directory, "filler"), "wb", buffering=0) as f:
        try:
            while True:
                f.write(chunk)
        except OSError:
            pass
        try:
            while True:
                f.write(b"\0")
        except OSError:
            pass


class FullDiskTest(unittest.TestCase):
    def setUp(self):
        self.mount = tempfile.mkdtemp(prefix="vyr-disk-")
        result = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", self.mount],
                                capture_output=True, text=True)
        if result.returncode != 0:
            os.rmdir(self.mount)
            self.skipTest("cannot mount a tmpfs (needs root): " + result.stderr.strip())

    def tearDown(self):
        subprocess.run(["umount", self.mount], capture_output=True)
        shutil.rmtree(self.mount, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.mount, name)

    def entries(self):
        return sorted(os.listdir(self.mount))

    def assertFailsWith(self, result, reason):
        self.assertEqual(result.returncode, EXIT_OUTPUT, result.stderr)
        lines = result.stderr.strip().splitlines()
        self.assertEqual(len(lines), 1, result.stderr)
        self.assertTrue(lines[0].startswith("vyr: "), lines[0])
        self.assertIn("cannot write: " + reason, lines[0])

    def test_every_writer_works_on_the_disk_before_it_is_full(self):
        # So that the failures below are the disk's doing, not the command's.
        for name, args in WRITERS:
            with self.subTest(output=name):
                result = run(*args(self.path(name)))
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertGreater(os.path.getsize(self.path(name)), 0)
                os.remove(self.path(name))

    def test_a_full_disk_leaves_an_existing_file_byte_for_byte(self):
        for name, args in WRITERS:
            with open(self.path(name), "wb") as f:
                f.write(PREVIOUS)
        fill(self.mount)
        before = self.entries()
        for name, args in WRITERS:
            with self.subTest(output=name):
                self.assertFailsWith(run(*args(self.path(name))), "No space left on device")
                with open(self.path(name), "rb") as f:
                    self.assertEqual(f.read(), PREVIOUS)
                self.assertEqual(self.entries(), before)

    def test_a_full_disk_makes_no_new_file(self):
        fill(self.mount)
        for name, args in WRITERS:
            with self.subTest(output=name):
                self.assertFailsWith(run(*args(self.path(name))), "No space left on device")
                self.assertEqual(self.entries(), ["filler"])

    def test_demo_on_a_full_disk_tells_each_failure_and_leaves_nothing(self):
        fill(self.mount)
        result = run("demo", self.mount)
        self.assertEqual(result.returncode, EXIT_OUTPUT, result.stderr)
        lines = result.stderr.strip().splitlines()
        self.assertEqual(len(lines), 6, result.stderr)  # one for each sample it builds
        for line in lines:
            self.assertIn("cannot write: No space left on device", line)
        self.assertEqual(self.entries(), ["filler"])

    def test_a_read_only_disk_leaves_an_existing_file(self):
        for name, args in WRITERS:
            with open(self.path(name), "wb") as f:
                f.write(PREVIOUS)
        result = subprocess.run(["mount", "-o", "remount,ro", self.mount], capture_output=True)
        self.assertEqual(result.returncode, 0, result.stderr)
        for name, args in WRITERS:
            with self.subTest(output=name):
                self.assertFailsWith(run(*args(self.path(name))), "Read-only file system")
                with open(self.path(name), "rb") as f:
                    self.assertEqual(f.read(), PREVIOUS)

    def test_a_missing_directory_is_told(self):
        for name, args in WRITERS:
            with self.subTest(output=name):
                self.assertFailsWith(run(*args(self.path("missing/" + name))),
                                     "No such directory")
                self.assertEqual(self.entries(), [])


if __name__ == "__main__":
    unittest.main()
