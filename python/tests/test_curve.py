"""Curves and experiments: the numpy views of the vectors and how long they live, growth while
a view is alive, validity, pandas, and adding curves."""
import gc

import numpy
import pytest

import vyrbase


# ---- views of the vectors' own storage -------------------------------------------------------

def test_x_and_y_are_read_only_float64_views_sharing_one_storage(measured):
    _, _, curve = measured
    first, second = curve.y, curve.y
    assert first.dtype == numpy.float64 and first.shape == (5,)
    assert numpy.shares_memory(first, second)
    assert numpy.shares_memory(curve.x, curve.x)
    assert not numpy.shares_memory(curve.x, curve.y)
    assert not first.flags.writeable and not first.flags.owndata
    with pytest.raises(ValueError):
        first[0] = 1.0
    numpy.testing.assert_array_equal(curve.x, [0, 60, 120, 180, 240])
    numpy.testing.assert_array_equal(curve.y, [80.5, 71.25, 64, 58.5, 54])


def test_a_view_outlives_its_document_and_curve_objects(samples):
    doc = vyrbase.load(samples / "sound.vyr")
    y = doc.curves[0].y
    expected = numpy.array(y)
    del doc
    gc.collect()
    # The view holds the document: its values are still the document's, still readable.
    numpy.testing.assert_array_equal(y, expected)
    assert y.max() == expected.max()


def test_a_slice_of_a_view_outlives_the_view_and_the_document(measured):
    doc, experiment, curve = measured
    tail = curve.y[2:]
    del doc, experiment, curve, measured
    gc.collect()
    numpy.testing.assert_array_equal(tail, [64, 58.5, 54])


def test_curves_and_experiments_outlive_their_document_object(made):
    doc, experiment, curve = made
    del doc, made
    gc.collect()
    assert experiment.name == "Cooling" and experiment.curves == [curve]
    assert curve.y_unit == "°C" and len(curve) == 5


# ---- a vector that grows after a view was taken ----------------------------------------------

def test_add_point_appends_when_no_view_is_alive(made):
    _, _, curve = made
    curve.add_point(300, 50.5)
    numpy.testing.assert_array_equal(curve.x[-2:], [240, 300])
    numpy.testing.assert_array_equal(curve.y[-2:], [54, 50.5])
    assert len(curve) == 6 and bool(curve.valid[-1])


def test_growing_a_viewed_vector_raises_buffererror_and_the_view_stays_intact(measured):
    _, _, curve = measured
    y = curve.y
    before = numpy.array(y)
    # Enough points to move the storage, were growth allowed: the view would then dangle.
    for _ in range(3):
        with pytest.raises(BufferError, match="views"):
            curve.add_point(300, 50.5)
    assert len(curve) == 5
    numpy.testing.assert_array_equal(y, before)


def test_a_view_of_x_alone_also_blocks_growth(measured):
    _, _, curve = measured
    x = curve.x
    with pytest.raises(BufferError):
        curve.add_point(300, 50.5)
    del x
    curve.add_point(300, 50.5)
    assert len(curve) == 6


def test_an_array_derived_from_a_view_keeps_the_vector_from_growing(measured):
    _, _, curve = measured
    window = curve.y[1:3]
    with pytest.raises(BufferError):
        curve.add_point(300, 50.5)
    del window
    gc.collect()
    curve.add_point(300, 50.5)


def test_after_the_views_are_gone_the_vector_grows_past_its_storage(measured):
    _, _, curve = measured
    y = curve.y
    kept = numpy.array(y)
    del y
    for k in range(1000):
        curve.add_point(300 + k, 50 - k / 100)
    assert len(curve) == 1005
    grown = curve.y
    numpy.testing.assert_array_equal(grown[:5], kept)
    assert grown[-1] == pytest.approx(50 - 999 / 100)


def test_views_of_other_curves_do_not_block_growth(measured):
    _, experiment, curve = measured
    other = experiment.add_curve([1, 2], [3, 4], y=("P", "Pa"))
    views = (other.x, other.y)
    curve.add_point(300, 50.5)
    assert len(curve) == 6 and len(views[1]) == 2


# ---- validity and pandas ---------------------------------------------------------------------

def test_valid_is_a_bool_array_of_the_validity_marks(made):
    _, _, curve = made
    assert curve.valid.dtype == numpy.bool_
    numpy.testing.assert_array_equal(curve.valid, [True, True, False, True, True])


def test_invalid_points_read_as_nan_in_x_and_y(made):
    _, _, curve = made
    assert numpy.isnan(curve.y[2]) and numpy.isnan(curve.x[2])
    numpy.testing.assert_array_equal(curve.y, [80.5, 71.25, numpy.nan, 58.5, 54])
    # A copy, read-only, that does not hold the vector's length.
    assert not curve.y.flags.writeable
    y = curve.y
    curve.append(300, 50)
    assert len(y) == 5 and len(curve) == 6


def test_a_point_invalid_in_y_only_keeps_its_measured_x():
    curve = vyrbase.Document().add_experiment("E").add_curve(
        [0, 1, 2], [5, float("nan"), 7], x=("t", "s"), y=("U", "V"))
    numpy.testing.assert_array_equal(curve.x, [0, 1, 2])
    numpy.testing.assert_array_equal(curve.y, [5, numpy.nan, 7])
    numpy.testing.assert_array_equal(curve.valid, [True, False, True])
    assert numpy.shares_memory(curve.x, curve.x)


def test_to_pandas_leaves_invalid_points_out_and_keeps_point_numbers(made):
    _, _, curve = made
    frame = curve.to_pandas()
    assert list(frame.columns) == ["t(s)", "T(°C)"]
    assert list(frame.index) == [0, 1, 3, 4]
    assert list(frame["T(°C)"]) == [80.5, 71.25, 58.5, 54]
    assert frame["T(°C)"].mean() == pytest.approx((80.5 + 71.25 + 58.5 + 54) / 4)


def test_to_pandas_with_every_point_shows_invalid_ones_as_nan(made):
    _, _, curve = made
    frame = curve.to_pandas(valid_only=False)
    assert list(frame.index) == [0, 1, 2, 3, 4]
    numpy.testing.assert_array_equal(frame["t(s)"], [0, 60, numpy.nan, 180, 240])
    numpy.testing.assert_array_equal(frame["T(°C)"], [80.5, 71.25, numpy.nan, 58.5, 54])
    assert frame["T(°C)"].isna().sum() == 1


def test_to_pandas_names_columns_apart_when_quantity_and_unit_agree():
    curve = vyrbase.Document().add_experiment("E").add_curve([1, 2], [2, 4],
                                                             x=("L", "m"), y=("L", "m"))
    assert list(curve.to_pandas().columns) == ["x: L(m)", "y: L(m)"]


def test_notes_are_the_texts_attached_to_the_curve(samples):
    doc = vyrbase.load(samples / "oscillation.vyr")
    notes = {c.name: c.notes for c in doc.curves}
    assert notes["U"] == ["second maximum", "damping: 1/e after 4 ms"]
    assert notes["I"] == []


# ---- adding curves ---------------------------------------------------------------------------

def test_add_curve_takes_any_numpy_convertible_sequences():
    experiment = vyrbase.Document().add_experiment("E")
    curve = experiment.add_curve(range(4), numpy.arange(4, dtype=numpy.int32) * 2,
                                 x=("t", "s"), y=("v", "m/s"))
    numpy.testing.assert_array_equal(curve.y, [0, 2, 4, 6])
    assert (curve.name, curve.display_name) == ("v", "v(t)")
    assert curve.notes == [] and len(curve) == 4


def test_add_curve_copies_the_values(made):
    _, experiment, _ = made
    xs = numpy.array([1.0, 2.0, 3.0])
    curve = experiment.add_curve(xs, xs * 2, y=("P", "W"))
    xs[0] = 99
    assert curve.x[0] == 1.0 and not numpy.shares_memory(curve.x, xs)


def test_add_curve_of_existing_quantities_numbers_the_new_one_and_keeps_the_old(made):
    _, experiment, curve = made
    old = curve.y
    again = experiment.add_curve([1, 2], [3, 4], x=("t", "s"), y=("T", "°C"))
    assert again.y_quantity == "T1" and again != curve
    numpy.testing.assert_array_equal(old, [80.5, 71.25, numpy.nan, 58.5, 54])
    assert experiment.curves == [curve, again]


def test_add_curve_of_no_points():
    curve = vyrbase.Document().add_experiment("E").add_curve([], [])
    assert len(curve) == 0 and curve.y.shape == (0,) and curve.valid.shape == (0,)
    assert curve.to_pandas().empty


def test_add_curve_of_unequal_lengths_raises_valueerror(made):
    with pytest.raises(ValueError, match="equal length"):
        made[1].add_curve([1, 2, 3], [1, 2])
    with pytest.raises(ValueError, match="valid"):
        made[1].add_curve([1, 2], [1, 2], valid=[True])


@pytest.mark.parametrize("args, kwargs", [
    ((["a", "b"], [1, 2]), {}),
    (([1, 2], None), {}),
    (([[1, 2], [3, 4]], [[1, 2], [3, 4]]), {}),
    ((3.0, 4.0), {}),
    (([1, 2], [1, 2]), {"x": ("t",)}),
    (([1, 2], [1, 2]), {"y": ("U", 5)}),
    (([1, 2], [1, 2]), {"name": 7}),
    (([1, 2], [1, 2]), {"valid": [[True, False]]}),
    (([1, 2],), {}),
    (([1, 2], [1, 2]), {"colour": "red"}),
])
def test_add_curve_with_wrong_arguments_raises_typeerror(made, args, kwargs):
    with pytest.raises(TypeError):
        made[1].add_curve(*args, **kwargs)
    assert len(made[1].curves) == 1


def test_add_point_with_wrong_arguments_raises_typeerror(made):
    with pytest.raises(TypeError):
        made[2].add_point("x", 1)
    assert len(made[2]) == 5


def test_add_experiment_with_wrong_arguments_raises_typeerror():
    with pytest.raises(TypeError):
        vyrbase.Document().add_experiment(3)


def test_curves_compare_by_identity_in_the_document(made):
    doc, experiment, curve = made
    assert doc.curves[0] == curve and hash(doc.curves[0]) == hash(curve)
    assert doc.experiments[0] == experiment
    assert repr(curve) == "<vyrbase.Curve T(t), 5 points>"


# ---- values never measured -------------------------------------------------------------------

@pytest.mark.parametrize("bad", [float("nan"), float("inf"), float("-inf")])
def test_nan_and_infinities_given_to_add_curve_are_invalid_points(bad):
    curve = vyrbase.Document().add_experiment("E").add_curve(
        [0, 1, 2, 3], [bad, 2.5, bad, 4.0], x=("t", "s"), y=("U", "V"))
    numpy.testing.assert_array_equal(curve.valid, [False, True, False, True])
    numpy.testing.assert_array_equal(curve.y, [numpy.nan, 2.5, numpy.nan, 4.0])
    frame = curve.to_pandas()
    assert list(frame.index) == [1, 3]


def test_invalid_points_store_measured_numbers_that_keep_the_ranges(tmp_path):
    doc = vyrbase.Document()
    doc.add_experiment("E").add_curve([0, 1, 2, 3], [float("nan"), 20, float("inf"), 30],
                                      x=("t", "s"), y=("T", "K"))
    # The application's own export shows the numbers stored: an invalid point holds the
    # measured number before it (the first one at the start), never NaN or an infinity, which
    # the diagrams' automatic ranges would take in.
    doc.to_csv(tmp_path / "stored.csv", layout="experiments")
    rows = (tmp_path / "stored.csv").read_bytes().decode("utf-8").split("\r\n")[2:-1]
    assert [row.split(";")[1] for row in rows] == ["20", "20", "20", "30"]
    doc.to_csv(tmp_path / "table.csv")
    assert (tmp_path / "table.csv").read_bytes().decode("utf-8") == \
        "t (s);T (K)\r\n0;\r\n1;20\r\n2;\r\n3;30\r\n"


def test_append_adds_a_point_and_tells_the_diagrams(made):
    doc, _, curve = made
    before = doc.render(size=(300, 200))
    curve.append(300, 95)
    assert len(curve) == 6 and bool(curve.valid[-1])
    assert curve.x[-1] == 300 and curve.y[-1] == 95
    # The diagram took the new point into its range: the picture changed.
    assert doc.render(size=(300, 200)) != before


def test_append_of_nan_or_infinity_makes_an_invalid_point_of_that_vector(measured):
    _, _, curve = measured
    curve.append(300, float("nan"))
    curve.append(float("inf"), 40)
    curve.append(420, 38)
    numpy.testing.assert_array_equal(curve.valid[-3:], [False, False, True])
    numpy.testing.assert_array_equal(curve.x[-3:], [300, numpy.nan, 420])
    numpy.testing.assert_array_equal(curve.y[-3:], [numpy.nan, 40, 38])


def test_append_blocked_by_a_view_raises_buffererror(measured):
    _, _, curve = measured
    y = curve.y
    with pytest.raises(BufferError):
        curve.append(1, 2)
    del y
    curve.append(1, 2)
    assert len(curve) == 6


def test_leading_invalid_points_appended_take_the_first_measured_number(tmp_path):
    doc = vyrbase.Document()
    curve = doc.add_experiment("E").add_curve([], [], x=("t", "s"), y=("T", "K"))
    curve.append(0, float("nan"))
    curve.append(1, float("nan"))
    curve.append(2, 20)
    curve.append(3, float("inf"))
    numpy.testing.assert_array_equal(curve.y, [numpy.nan, numpy.nan, 20, numpy.nan])
    doc.to_csv(tmp_path / "stored.csv", layout="experiments")
    rows = (tmp_path / "stored.csv").read_bytes().decode("utf-8").split("\r\n")[2:-1]
    assert [row.split(";")[1] for row in rows] == ["20", "20", "20", "20"]
