"""vyr --version and vyr version print the version that the project's CMakeLists.txt declares in
project(), read here from the source tree itself."""
import os
import re
import subprocess
import unittest

VYR = os.environ["VYR"]
SOURCE = os.path.dirname(os.path.abspath(os.environ["VYR_SAMPLES"]))


def declared_version():
    with open(os.path.join(SOURCE, "CMakeLists.txt"), encoding="utf-8") as f:
        match = re.search(r"project\(\s*VyrBase\s+VERSION\s+([0-9.]+)", f.read())
    return match.group(1)


class VersionTest(unittest.TestCase):
    def test_both_spellings_print_the_declared_version(self):
        expected = "vyr %s\n" % declared_version()
        for spelling in ("--version", "version"):
            with self.subTest(spelling=spelling):
                result = subprocess.run([VYR, spelling], capture_output=True, text=True,
                                        timeout=60)
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertEqual(result.stdout, expected)
                self.assertEqual(result.stderr, "")

    def test_the_help_tells_how_to_ask_for_it(self):
        result = subprocess.run([VYR, "--help"], capture_output=True, text=True, timeout=60)
        self.assertIn("vyr --version", result.stdout)


if __name__ == "__main__":
    unittest.main()
