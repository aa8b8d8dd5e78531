"""vyr record as a lab uses it: rows from a pipe, a logger's growing file, a serial line, each
recorded exactly once with its values (read back with vyr csv and vyr info --json), through cut
lines, garbage, a file truncated under it, SIGTERM and a kill after a checkpoint; bad input
refused on one line."""
import csv
import io
import json
import os
import pty
import shutil
import signal
import subprocess
import tempfile
import time
import tty
import unittest

VYR = os.environ["VYR"]
EXIT_USAGE, EXIT_INPUT, EXIT_FORMAT, EXIT_OUTPUT = 2, 3, 4, 5


def environment():
    env = dict(os.environ)
    env.pop("DISPLAY", None)
    env.pop("WAYLAND_DISPLAY", None)
    return env


def run(*args, **kwargs):
    return subprocess.run([VYR, *args], capture_output=True, text=True, env=environment(),
                          timeout=60, **kwargs)


def start(*args, **kwargs):
    return subprocess.Popen([VYR, *args], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            text=True, env=environment(), **kwargs)


def rows_of(n, first=0):
    """n rows "t;U;I" whose values tell them apart: t = k/4, U = k*1.5 - 3, I = k^2."""
    return [(k / 4, k * 1.5 - 3, float(k * k)) for k in range(first, first + n)]


def text_of(rows, end="\n"):
    return "".join("%r;%r;%r%s" % (t, u, i, end) for t, u, i in rows)


def wait_for(condition, timeout=20.0, what="condition"):
    """Polls `condition` until it is true; fails after `timeout` seconds."""
    deadline = time.monotonic() + timeout
    while time.monotonic() < deadline:
        value = condition()
        if value:
            return value
        time.sleep(0.02)
    raise AssertionError("timed out waiting for " + what)


class RecordTestCase(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vyr-record-")
        self.out = self.path("out.vyr")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.dir, name)

    def columns(self, document):
        """The document's table as vyr csv writes it: heading -> the values of its non-empty
        cells, in order."""
        result = run("csv", document, "-o", "-")
        self.assertEqual(result.returncode, 0, result.stderr)
        table = list(csv.reader(io.StringIO(result.stdout), delimiter=";"))
        columns = {}
        for k, heading in enumerate(table[0]):
            columns[heading] = [float(row[k]) for row in table[1:] if k < len(row) and row[k]]
        return columns

    def info(self, document):
        result = run("info", "--json", document)
        self.assertEqual(result.returncode, 0, result.stderr)
        return json.loads(result.stdout)[0]

    def expect_rows(self, document, rows, headings=("t (s)", "U (V)", "I (mA)")):
        """Every row sent is in the document once, with its values."""
        columns = self.columns(document)
        for k, heading in enumerate(headings):
            self.assertEqual(columns[heading], [row[k] for row in rows], heading)

    def point_count(self, document):
        if not os.path.exists(document):
            return -1
        result = run("info", "--json", document)
        if result.returncode != 0:
            return -1
        curves = [c for e in json.loads(result.stdout)[0]["experiments"] for c in e["curves"]]
        return curves[0]["points"] if curves else 0

    def finish(self, process, timeout=30):
        """Waits for the recording to end by itself (its standard input, when a pipe, left as
        it is); answers its standard output."""
        process.wait(timeout=timeout)
        out, err = process.stdout.read(), process.stderr.read()
        process.stdout.close()
        process.stderr.close()
        if process.stdin:
            process.stdin.close()
        self.assertEqual(process.returncode, 0, err)
        self.assertEqual(err, "")
        return out


class PipeTest(RecordTestCase):
    def test_RowsFromAPipeAreEachRecordedOnceWithTheirValues(self):
        rows = rows_of(2000)
        process = start("record", "-", "-o", self.out, stdin=subprocess.PIPE)
        process.stdin.write("t (s);U (V);I (mA)\r\n")
        text = text_of(rows, "\r\n")
        # Pieces that cut lines anywhere, CR from LF included.
        for at in range(0, len(text), 997):
            process.stdin.write(text[at:at + 997])
            process.stdin.flush()
        process.stdin.close()
        out = self.finish(process)
        self.assertRegex(out, r"^.*out\.vyr: 2000 row\(s\), 0 skipped line\(s\), [0-9.]+ s, "
                              r"[0-9]+ rows/s \(end of input\)\n$")
        self.expect_rows(self.out, rows)
        document = self.info(self.out)
        self.assertEqual(len(document["experiments"]), 1)
        self.assertTrue(document["experiments"][0]["name"].startswith("stdin 20"))
        self.assertEqual([c["name"] for c in document["experiments"][0]["curves"]], ["U", "I"])

    def test_ANamedPipeIsReadToItsEnd(self):
        fifo = self.path("logger.fifo")
        os.mkfifo(fifo)
        rows = rows_of(1000)
        # Its opening waits for the writer, as any reader of a named pipe does.
        process = start("record", fifo, "--checkpoint", "0", cwd=self.dir)
        with open(fifo, "w") as writer:
            writer.write("t (s);U (V);I (mA)\n")
            text = text_of(rows)
            for at in range(0, len(text), 4096):
                writer.write(text[at:at + 4096])
                writer.flush()
        out = self.finish(process)
        self.assertTrue(out.startswith("logger.vyr: 1000 row(s), 0 skipped line(s), "), out)
        self.assertIn("(end of input)", out)
        self.expect_rows(self.path("logger.vyr"), rows)

    def test_GarbageLinesAmongRowsAreSkippedAndCounted(self):
        rows = rows_of(50)
        lines = ["t (s);U (V);I (mA)"]
        for k, row in enumerate(rows):
            lines.append(text_of([row]).rstrip("\n"))
            if k % 10 == 3:
                lines += ["\x1b[2Jboot v1.2 ready", "# a comment", "", "err;;"]
        result = run("record", "-", "-o", self.out, input="\n".join(lines) + "\n")
        self.assertEqual(result.returncode, 0, result.stderr)
        # Per ten rows: the boot line and "err;;" are no rows; the comment and the blank line
        # are not rows either, nor are they counted.
        self.assertIn("50 row(s), 10 skipped line(s)", result.stdout)
        self.expect_rows(self.out, rows)

    def test_TheRowLimitStopsTheRecording(self):
        process = start("record", "-", "-o", self.out, "--rows", "30", stdin=subprocess.PIPE)
        process.stdin.write("t (s);U (V);I (mA)\n" + text_of(rows_of(30)))
        process.stdin.flush()
        # The pipe stays open: the limit alone ends it.
        out = self.finish(process)
        self.assertIn("30 row(s)", out)
        self.assertIn("(--rows reached)", out)
        self.expect_rows(self.out, rows_of(30))

    def test_SigtermSavesEveryRowSent(self):
        rows = rows_of(500)
        process = start("record", "-", "-o", self.out, "--checkpoint", "0.1",
                        stdin=subprocess.PIPE)
        process.stdin.write("t (s);U (V);I (mA)\n" + text_of(rows[:100]))
        process.stdin.flush()
        wait_for(lambda: self.point_count(self.out) == 100, what="the first checkpoint")
        # The rest is in the pipe when the signal comes: it is read before the save.
        process.stdin.write(text_of(rows[100:]))
        process.stdin.flush()
        process.send_signal(signal.SIGTERM)
        out = self.finish(process)
        self.assertIn("500 row(s)", out)
        self.assertIn("(terminated)", out)
        self.expect_rows(self.out, rows)

    def test_AKillAfterACheckpointLeavesTheRowsUpToIt(self):
        rows = rows_of(300)
        process = start("record", "-", "-o", self.out, "--checkpoint", "0.1",
                        stdin=subprocess.PIPE)
        process.stdin.write("t (s);U (V);I (mA)\n" + text_of(rows))
        process.stdin.flush()
        wait_for(lambda: self.point_count(self.out) == 300, what="the checkpoint")
        process.kill()
        process.wait(timeout=30)
        for stream in (process.stdin, process.stdout, process.stderr):
            stream.close()
        self.assertEqual(process.returncode, -signal.SIGKILL)
        self.expect_rows(self.out, rows)
        self.assertEqual(self.info(self.out)["encoding"], "UTF-16LE")


class FileTest(RecordTestCase):
    def test_AGrowingFileWrittenInBurstsWithCutLines(self):
        log = self.path("logger.csv")
        rows = rows_of(400)
        text = text_of(rows)
        with open(log, "w") as f:
            f.write("t (s);U (V);I (mA)\n" + text[:50])
        process = start("record", log, "-o", self.out, "--rows", "400", "--checkpoint", "0.1")
        at = 50
        with open(log, "a") as f:
            while at < len(text):
                # Bursts of a few lines, each ending inside a line.
                f.write(text[at:at + 173])
                f.flush()
                at += 173
                time.sleep(0.005)
        out = self.finish(process)
        self.assertIn("400 row(s), 0 skipped line(s)", out)
        self.expect_rows(self.out, rows)
        self.assertTrue(self.info(self.out)["experiments"][0]["name"].startswith("logger 20"))

    def test_ATruncatedFileIsReadAgainAsANewExperiment(self):
        log = self.path("logger.csv")
        first = rows_of(5)
        with open(log, "w") as f:
            f.write("t (s);U (V);I (mA)\n" + text_of(first))
        process = start("record", log, "-o", self.out, "--checkpoint", "0.1", "--rows", "8")
        wait_for(lambda: self.point_count(self.out) == 5, what="the first rows saved")
        second = [(10.0, 20.0), (11.0, 21.0), (12.0, 22.0)]
        with open(log, "w") as f:  # truncates it
            f.write("x (m);P (W)\n" + "".join("%r;%r\n" % row for row in second))
        out = self.finish(process)
        self.assertIn("8 row(s)", out)
        document = self.info(self.out)
        self.assertEqual(len(document["experiments"]), 2)
        self.assertEqual([len(e["curves"]) for e in document["experiments"]], [2, 1])
        self.expect_rows(self.out, first)
        self.expect_rows(self.out, second, ("x (m)", "P (W)"))

    def test_AReplacedFileIsReadAgainAsANewExperiment(self):
        log = self.path("logger.csv")
        with open(log, "w") as f:
            f.write("t (s);U (V);I (mA)\n" + text_of(rows_of(3)))
        process = start("record", log, "-o", self.out, "--checkpoint", "0.1", "--rows", "5")
        wait_for(lambda: self.point_count(self.out) == 3, what="the first rows saved")
        with open(self.path("new.csv"), "w") as f:
            f.write("x (m);P (W)\n1;2\n3;4\n")
        os.rename(self.path("new.csv"), log)
        out = self.finish(process)
        self.assertIn("5 row(s)", out)
        self.expect_rows(self.out, [(1.0, 2.0), (3.0, 4.0)], ("x (m)", "P (W)"))

    def test_TheIdleLimitStopsAFollowedFile(self):
        log = self.path("quiet.csv")
        with open(log, "w") as f:
            f.write("t;U\n0;1\n1;2\n")
        result = run("record", log, "--idle", "0.3", cwd=self.dir)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("quiet.vyr: 2 row(s)", result.stdout)
        self.assertIn("(--idle reached)", result.stdout)
        # The default output: the source's name in the current directory, never replaced.
        again = run("record", log, "--idle", "0.3", cwd=self.dir)
        self.assertEqual(again.returncode, EXIT_OUTPUT)
        self.assertIn("--force", again.stderr)


class SerialTest(RecordTestCase):
    def test_ASerialLineThroughAPseudoTerminal(self):
        master, slave = pty.openpty()
        name = os.ttyname(slave)
        tty.setraw(slave)
        rows = rows_of(200)
        try:
            process = start("record", name, "-o", self.out, "--baud", "9600", "--rows", "200")
            text = ("t (s);U (V);I (mA)\r\n" + text_of(rows, "\r\n")).encode()
            for at in range(0, len(text), 61):
                os.write(master, text[at:at + 61])
            out = self.finish(process)
        finally:
            os.close(master)
            os.close(slave)
        self.assertIn("200 row(s), 0 skipped line(s)", out)
        self.expect_rows(self.out, rows)
        experiment = self.info(self.out)["experiments"][0]["name"]
        self.assertTrue(experiment.startswith(os.path.basename(name) + " 20"), experiment)

    def test_ListPortsAnswers(self):
        result = run("record", "--list-ports")
        self.assertEqual(result.returncode, 0, result.stderr)
        for line in result.stdout.splitlines():
            self.assertTrue(line.startswith("/dev/"), line)


class RefusalTest(RecordTestCase):
    def refused(self, code, *args, **kwargs):
        result = run("record", *args, **kwargs)
        self.assertEqual(result.returncode, code, result.stderr)
        self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)
        self.assertTrue(result.stderr.startswith("vyr: "), result.stderr)
        return result

    def test_BadOptionsAreRefused(self):
        for args in (["-", "--rows", "0"], ["-", "--rows", "2.5"], ["-", "--seconds", "x"],
                     ["-", "--idle", "-1"], ["-", "--checkpoint", "nan"],
                     ["-", "--baud", "12345"], ["-", "--separator", "ab"], ["-o", "-", "-"],
                     [], ["a", "b"], ["--list-ports", "-"]):
            self.refused(EXIT_USAGE, *args)

    def test_NothingRecordedWritesNothing(self):
        self.refused(EXIT_FORMAT, "-", "-o", self.out, input="")
        self.refused(EXIT_FORMAT, "-", "-o", self.out, input="only words\nand more\n")
        self.refused(EXIT_FORMAT, "-", "-o", self.out, input="t;U\n0;\0\n")
        self.assertFalse(os.path.exists(self.out))

    def test_AnOutputThatCannotBeWrittenIsToldBeforeRecording(self):
        result = self.refused(EXIT_OUTPUT, "-", "-o", self.path("none/out.vyr"), input="t;U\n0;1\n")
        self.assertIn("No such file or directory", result.stderr)
        self.refused(EXIT_OUTPUT, "-", "-o", self.dir, input="t;U\n0;1\n")

    def test_AMissingSourceIsRefused(self):
        result = self.refused(EXIT_INPUT, self.path("none.csv"), "-o", self.out)
        self.assertIn("No such file or directory", result.stderr)
        self.refused(EXIT_INPUT, self.dir, "-o", self.out)
        self.assertFalse(os.path.exists(self.out))


if __name__ == "__main__":
    unittest.main()
