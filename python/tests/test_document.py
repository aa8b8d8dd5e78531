"""vyrbase.load, vyrbase.Document and what a document does: its experiments and curves, saving,
CSV export and pictures."""
import shutil
import subprocess
import sys

import numpy
import pytest

import vyrbase
from pngread import pixel, read_png


def test_load_reads_the_experiments_and_curves_of_a_sample(samples):
    doc = vyrbase.load(samples / "sound.vyr")
    assert [e.name for e in doc.experiments] == ["Sound of a tuning fork"]
    (curve,) = doc.curves
    assert doc.experiments[0].curves == [curve]
    assert (curve.name, curve.display_name) == ("p", "p(t)")
    assert (curve.x_quantity, curve.x_unit, curve.y_quantity, curve.y_unit) == ("t", "s", "p", "Pa")
    assert curve.colour == (30, 120, 30)
    assert len(curve) == len(curve.x) == len(curve.y) == 100000
    assert curve.x[1] == pytest.approx(1 / 44100, rel=1e-5)
    assert 0.5 < curve.y.max() < 1.0


def test_load_takes_a_str_path_as_well_as_a_path_object(samples):
    assert len(vyrbase.load(str(samples / "pendulum.vyr")).curves) == len(
        vyrbase.load(samples / "pendulum.vyr").curves)


def test_a_new_document_is_empty_and_has_two_diagrams():
    doc = vyrbase.Document()
    assert doc.experiments == [] and doc.curves == []
    for diagram in (0, 1):
        assert doc.render(diagram=diagram, size=(64, 48))[:8] == b"\x89PNG\r\n\x1a\n"


def test_add_experiment_answers_the_existing_experiment_of_that_name():
    doc = vyrbase.Document()
    first = doc.add_experiment("Pendulum")
    assert doc.add_experiment("Pendulum") == first
    second = doc.add_experiment("Spring")
    assert [e.name for e in doc.experiments] == ["Pendulum", "Spring"]
    assert second != first


def test_document_curves_lists_the_curves_of_every_experiment():
    doc = vyrbase.Document()
    a = doc.add_experiment("A").add_curve([1, 2], [3, 4], y=("U", "V"))
    b = doc.add_experiment("B").add_curve([1, 2], [5, 6], y=("I", "A"))
    assert doc.curves == [a, b]
    assert repr(doc) == "<vyrbase.Document: 2 experiment(s), 2 curve(s)>"


def test_save_then_load_gives_back_names_values_validity_and_colour(made, tmp_path):
    doc, _, curve = made
    path = tmp_path / "cooling.vyr"
    doc.save(path)
    assert path.read_bytes()[:2] == b"\xff\xfe"
    back = vyrbase.load(path)
    assert [e.name for e in back.experiments] == ["Cooling"]
    (again,) = back.curves
    assert (again.name, again.x_quantity, again.x_unit, again.y_quantity, again.y_unit) == (
        "cooling", "t", "s", "T", "°C")
    numpy.testing.assert_array_equal(again.x, curve.x)
    numpy.testing.assert_array_equal(again.y, curve.y)
    numpy.testing.assert_array_equal(again.valid, [True, True, False, True, True])
    # The first colour of the palette for curves made in numbers.
    assert again.colour == curve.colour == (213, 94, 0)


def test_save_of_a_loaded_sample_keeps_its_notes(samples, tmp_path):
    doc = vyrbase.load(samples / "oscillation.vyr")
    doc.save(tmp_path / "copy.vyr")
    notes = {c.name: c.notes for c in vyrbase.load(tmp_path / "copy.vyr").curves}
    assert notes == {c.name: c.notes for c in doc.curves}
    assert "second maximum" in notes["U"]


def test_save_into_a_missing_folder_raises_oserror_and_writes_nothing(made, tmp_path):
    doc, _, _ = made
    with pytest.raises(OSError, match="cannot write"):
        doc.save(tmp_path / "missing" / "x.vyr")
    assert not (tmp_path / "missing").exists()


def test_to_csv_writes_the_columns_of_the_export(made, tmp_path):
    doc, _, _ = made
    doc.to_csv(tmp_path / "cooling.csv", layout="experiments")
    lines = (tmp_path / "cooling.csv").read_bytes().decode("utf-8").split("\r\n")
    assert lines[:4] == ["Cooling;", "t(s);T(°C)", "0;80.5", "60;71.25"]
    # Invalid points are exported with their numbers, as the export always did.
    assert lines[4] == "120;64"


def test_a_file_without_an_experiment_gets_the_default_one_named_in_english(made, tmp_path):
    # The library names it through the toolkit's translations; the module brings the texts, so
    # no resource name ("IDS_...") reaches the document or its CSV.
    empty = tmp_path / "empty.vyr"
    empty.write_bytes(b"")
    assert [e.name for e in vyrbase.load(empty).experiments] == ["Experiment 1"]
    # The curves of a file without an experiment section go into the default experiment.
    doc, _, _ = made
    doc.save(tmp_path / "cooling.vyr")
    text = (tmp_path / "cooling.vyr").read_bytes().decode("utf-16")
    start = text.index("[manipulation]")
    end = text.index("\r\n\r\n", start) + 4
    headerless = tmp_path / "headerless.vyr"
    headerless.write_bytes(b"\xff\xfe" + (text[:start] + text[end:]).encode("utf-16-le"))
    loaded = vyrbase.load(headerless)
    assert [e.name for e in loaded.experiments] == ["Experiment 1"]
    assert [c.name for c in loaded.experiments[0].curves] == ["cooling"]
    loaded.to_csv(tmp_path / "headerless.csv", layout="experiments")
    exported = (tmp_path / "headerless.csv").read_bytes().decode("utf-8")
    assert "IDS_" not in exported
    assert exported.split("\r\n")[0] == "Experiment 1;"


def test_to_csv_writes_a_table_that_keeps_every_number_and_leaves_holes_empty(made, tmp_path):
    doc, experiment, _ = made
    experiment.add_curve([0.5, 1.5], [1 / 3, 1013.25 + 1e-9], x=("t", "s"), y=("p", "hPa"))
    doc.to_csv(tmp_path / "table.csv")
    text = (tmp_path / "table.csv").read_bytes().decode("utf-8")
    assert text == ("t (s);T (°C);t (s);p (hPa)\r\n"
                    "0;80.5;0.5;0.3333333333333333\r\n"
                    "60;71.25;1.5;1013.250000001\r\n"
                    ";;;\r\n"
                    "180;58.5;;\r\n"
                    "240;54;;\r\n")
    with pytest.raises(ValueError, match="layout"):
        doc.to_csv(tmp_path / "other.csv", layout="columns")


def test_values_through_save_load_and_csv_are_bit_identical(tmp_path):
    values = numpy.array([1000.001, 1000.002, 1 / 44100, 0.1, 1e-300, 5e-324, 1013.26, -0.0])
    doc = vyrbase.Document()
    doc.add_experiment("E").add_curve(values, values[::-1] * 3, x=("t", "s"), y=("U", "V"))
    doc.save(tmp_path / "exact.vyr")
    back = vyrbase.load(tmp_path / "exact.vyr").curves[0]
    assert numpy.array(back.x).tobytes() == values.tobytes()
    assert numpy.array(back.y).tobytes() == (values[::-1] * 3).tobytes()
    text = (tmp_path / "exact.vyr").read_bytes().decode("utf-16")
    assert "\t1000.001\t1000.002\t" in text
    vyrbase.load(tmp_path / "exact.vyr").to_csv(tmp_path / "exact.csv")
    rows = (tmp_path / "exact.csv").read_bytes().decode("utf-8").split("\r\n")[1:-1]
    assert numpy.array([float(r.split(";")[0]) for r in rows]).tobytes() == values.tobytes()


@pytest.mark.parametrize("data", [b"\x8f\x13qz\xe1", b"abc\x00[manipulation]\r\n"])
def test_load_of_bytes_without_a_section_header_raises_valueerror(tmp_path, data):
    path = tmp_path / "random.bin"
    path.write_bytes(data)
    with pytest.raises(ValueError, match="not a document"):
        vyrbase.load(path)


def test_to_csv_into_a_missing_folder_raises_oserror(made, tmp_path):
    with pytest.raises(OSError):
        made[0].to_csv(tmp_path / "missing" / "x.csv")


# ---- pictures --------------------------------------------------------------------------------

def red_pixels(path):
    """Pixels of the curve's red, anti-aliased edges included; the axes are black."""
    image = read_png(path)
    width, height = image[0], image[1]
    return sum(1 for y in range(height) for x in range(width)
               if (lambda r, g, b: r > 200 and g < 140 and b < 140)(*pixel(image, x, y)))


def test_render_without_a_path_answers_the_png_of_the_curves(made, tmp_path):
    doc, _, _ = made
    png = doc.render(size=(320, 240))
    (tmp_path / "made.png").write_bytes(png)
    width, height = read_png(tmp_path / "made.png")[:2]
    assert (width, height) == (320, 240)
    # The curve is drawn in its own red; an empty document shows none of it.
    assert red_pixels(tmp_path / "made.png") > 200
    (tmp_path / "empty.png").write_bytes(vyrbase.Document().render(size=(320, 240)))
    assert red_pixels(tmp_path / "empty.png") == 0


def test_new_curves_take_the_next_colours_of_the_palette_not_red_again():
    doc = vyrbase.Document()
    experiment = doc.add_experiment("E")
    colours = [experiment.add_curve([0, 1], [k, k + 1], y=("Q%d" % k, "V")).colour
               for k in range(8)]
    assert colours[:3] == [(213, 94, 0), (0, 114, 178), (0, 158, 115)]
    assert len(set(colours[:7])) == 7 and (255, 0, 0) not in colours
    assert colours[7] == colours[0]


def blue_pixels(path):
    image = read_png(path)
    width, height = image[:2]
    return sum(1 for y in range(height) for x in range(width)
               if (lambda r, g, b: r < 60 and 90 < g < 140 and b > 150)(*pixel(image, x, y)))


def test_render_explains_the_picture_unless_plain(tmp_path):
    doc = vyrbase.Document()
    experiment = doc.add_experiment("E")
    experiment.add_curve([0, 1, 2], [0, 2, 1], x=("t", "s"), y=("U", "V"))
    experiment.add_curve([0, 1, 2], [0, 10, 30], x=("t", "s"), y=("I", "mA"))
    # The second curve, in another unit, keeps its blue in the explained picture and has a
    # scale of its own right of the plot; the plain picture draws it grey.
    (tmp_path / "explained.png").write_bytes(doc.render(size=(400, 300)))
    (tmp_path / "plain.png").write_bytes(doc.render(size=(400, 300), plain=True))
    assert blue_pixels(tmp_path / "explained.png") > 150
    assert blue_pixels(tmp_path / "plain.png") == 0
    # The diagram's own look is put back after each picture.
    assert doc.render(size=(400, 300), plain=True) == (tmp_path / "plain.png").read_bytes()
    without = doc.render(size=(400, 300), legend=False)
    assert without != (tmp_path / "explained.png").read_bytes()


def test_render_y_unit_chooses_the_left_axis_and_refuses_a_unit_without_curves(tmp_path):
    doc = vyrbase.Document()
    experiment = doc.add_experiment("E")
    experiment.add_curve([0, 1, 2], [0, 2, 1], x=("t", "s"), y=("U", "V"))
    experiment.add_curve([0, 1, 2], [0, 10, 30], x=("t", "s"), y=("I", "mA"))
    assert doc.render(size=(400, 300), y_unit="mA") != doc.render(size=(400, 300))
    assert doc.render(size=(400, 300), y_unit="V") == doc.render(size=(400, 300))
    with pytest.raises(ValueError, match="no curve in Pa"):
        doc.render(size=(400, 300), y_unit="Pa")


def test_repr_png_is_the_default_picture(made):
    doc, _, _ = made
    assert doc._repr_png_() == doc.render()


def test_render_to_a_file_follows_its_extension(made, tmp_path):
    doc, _, _ = made
    assert doc.render(tmp_path / "a.png", size=(200, 150)) is None
    assert read_png(tmp_path / "a.png")[:2] == (200, 150)
    doc.render(str(tmp_path / "a.SVG"), size=(200, 150))
    svg = (tmp_path / "a.SVG").read_text()
    assert "<svg" in svg and 'width="200' in svg
    # The curve is in the picture as a path stroked in its colour, the palette's vermilion.
    assert "rgb(83.529412%,36.862745%,0%)" in svg
    doc.render(tmp_path / "a.pdf", size=(200, 150))
    pdf = (tmp_path / "a.pdf").read_bytes()
    assert pdf.startswith(b"%PDF") and b"/MediaBox [ 0 0 200 150 ]" in pdf
    if shutil.which("pdftoppm"):
        subprocess.run(["pdftoppm", "-png", "-r", "72", "-singlefile", str(tmp_path / "a.pdf"),
                        str(tmp_path / "pdfpage")], check=True)
        assert read_png(tmp_path / "pdfpage.png")[:2] == (200, 150)
        assert red_pixels(tmp_path / "pdfpage.png") > 50


def test_render_scale_makes_a_picture_of_the_same_size(made, tmp_path):
    doc, _, _ = made
    (tmp_path / "s.png").write_bytes(doc.render(size=(200, 150), scale=2.0))
    assert read_png(tmp_path / "s.png")[:2] == (200, 150)


@pytest.mark.parametrize("kwargs, message", [
    ({"size": (8, 8)}, "size"),
    ({"size": (100, 30000)}, "size"),
    ({"scale": 0.0}, "scale"),
    ({"scale": float("nan")}, "scale"),
    ({"diagram": 2}, "diagram"),
    ({"path": "picture.bmp"}, "png, svg, pdf"),
    ({"path": "picture"}, "png, svg, pdf"),
])
def test_render_refuses_values_it_cannot_paint_with_valueerror(made, kwargs, message, tmp_path):
    if "path" in kwargs:
        kwargs["path"] = tmp_path / kwargs["path"]
    with pytest.raises(ValueError, match=message):
        made[0].render(**kwargs)
    assert list(tmp_path.iterdir()) == []


@pytest.mark.parametrize("kwargs", [
    {"size": "big"}, {"size": (100,)}, {"size": (100.5, 100)}, {"diagram": "0"},
    {"scale": "2"}, {"path": 42},
])
def test_render_refuses_arguments_of_the_wrong_type_with_typeerror(made, kwargs):
    with pytest.raises(TypeError):
        made[0].render(**kwargs)


def test_render_into_a_missing_folder_raises_oserror(made, tmp_path):
    with pytest.raises(OSError, match="cannot write"):
        made[0].render(tmp_path / "missing" / "a.png")


# ---- errors of load ---------------------------------------------------------------------------

def test_load_of_a_missing_file_raises_filenotfounderror(tmp_path):
    with pytest.raises(FileNotFoundError) as error:
        vyrbase.load(tmp_path / "absent.vyr")
    assert error.value.filename == tmp_path / "absent.vyr"


def test_load_of_a_directory_raises_isadirectoryerror(tmp_path):
    with pytest.raises(IsADirectoryError):
        vyrbase.load(tmp_path)


def test_load_of_a_text_that_is_no_document_raises_valueerror_with_the_reason(tmp_path):
    path = tmp_path / "notes.txt"
    path.write_text("shopping list\neggs\nmilk\n")
    with pytest.raises(ValueError, match="not a document: no section header"):
        vyrbase.load(path)


def test_load_of_big_endian_text_raises_valueerror_naming_it(tmp_path):
    path = tmp_path / "be.vyr"
    path.write_bytes("[manipulation]\nnom=\"E\"\n".encode("utf-16-be").join([b"\xfe\xff", b""]))
    with pytest.raises(ValueError, match="big-endian"):
        vyrbase.load(path)


@pytest.mark.parametrize("path", [42, None, ["a.vyr"]])
def test_load_of_something_that_is_no_path_raises_typeerror(path):
    with pytest.raises(TypeError):
        vyrbase.load(path)


def test_the_module_needs_no_display():
    env = {"PATH": "/usr/bin:/bin", "PYTHONPATH": ":".join(sys.path)}
    script = "import vyrbase; print(len(vyrbase.Document().render(size=(32, 32))) > 0)"
    done = subprocess.run([sys.executable, "-c", script], env=env, capture_output=True,
                          text=True, timeout=60)
    assert (done.returncode, done.stdout) == (0, "True\n"), done.stderr


@pytest.mark.parametrize("method", ["save", "to_csv"])
def test_save_and_to_csv_of_something_that_is_no_path_raise_typeerror(made, method):
    with pytest.raises(TypeError):
        getattr(made[0], method)(3.5)
