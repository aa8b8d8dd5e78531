"""The calculator from Python: statistics, derivative, integral, smoothing, spectrum and
calculated curves, checked against numpy computed on the same values."""
import math

import numpy
import pytest

import vyrbase


@pytest.fixture
def circuit():
    doc = vyrbase.Document()
    experiment = doc.add_experiment("Circuit")
    t = numpy.arange(200) * 1e-3
    u = experiment.add_curve(t, 5 * numpy.sin(2 * math.pi * 50 * t) + 1, x=("t", "s"),
                             y=("U", "V"))
    i = experiment.add_curve(t, 0.1 * t + 0.02, x=("t", "s"), y=("I", "A"))
    return doc, experiment, u, i


def test_stats_agree_with_numpy_over_a_range(made):
    _, _, curve = made
    s = curve.stats(x_range=(200, 50))
    x, y = numpy.array(curve.x), numpy.array(curve.y)
    keep = numpy.array(curve.valid) & (x >= 50) & (x <= 200)
    xs, ys = x[keep], y[keep]
    assert s["points"] == 2
    assert s["mean"] == pytest.approx(ys.mean(), rel=1e-15)
    assert s["sd"] == pytest.approx(ys.std(ddof=1), rel=1e-14)
    assert s["area"] == pytest.approx(numpy.trapz(ys, xs), rel=1e-14)
    slope, intercept = numpy.polyfit(xs, ys, 1)
    assert s["slope"] == pytest.approx(slope, rel=1e-12)
    assert s["intercept"] == pytest.approx(intercept, rel=1e-12)
    whole = curve.stats()
    assert whole["points"] == 4 and whole["min"] == 54 and whole["max"] == 80.5
    assert math.isnan(curve.stats(x_range=(1000, 2000))["mean"])


def test_derivative_and_integral_are_new_curves_in_their_units(circuit):
    doc, experiment, u, _ = circuit
    d = u.derivative()
    assert d.display_name == "dU/dt(t)" and d.y_unit == "V/s" and d.x_unit == "s"
    assert d in experiment.curves
    t, y = numpy.array(u.x), numpy.array(u.y)
    central = (y[2:] - y[:-2]) / (t[2:] - t[:-2])
    numpy.testing.assert_allclose(numpy.array(d.y)[1:-1], central, rtol=1e-12, atol=1e-9)
    q = u.integral(name="Q")
    assert q.y_quantity == "Q" and q.y_unit == "V\u00b7s"
    numpy.testing.assert_allclose(numpy.array(q.y)[-1], numpy.trapz(y, t), rtol=1e-12)
    s = u.smoothed(5)
    assert numpy.array(s.y)[10] == pytest.approx(y[8:13].mean(), rel=1e-14)
    with pytest.raises(ValueError):
        u.smoothed(0)


def test_spectrum_reads_the_sine_amplitude_at_its_frequency(circuit):
    _, _, u, _ = circuit
    s = u.spectrum()
    assert s.display_name == "U(f)" and s.x_unit == "Hz"
    f, a = numpy.array(s.x), numpy.array(s.y)
    k = int(numpy.argmax(a[1:])) + 1
    assert f[k] == pytest.approx(50.0)
    assert a[k] == pytest.approx(5.0, rel=1e-12)
    assert a[0] == pytest.approx(1.0, rel=1e-12)


def test_spectrum_of_uneven_steps_is_refused():
    doc = vyrbase.Document()
    c = doc.add_experiment("E").add_curve([0, 1, 2, 3.5, 4, 5], [0, 1, 0, 1, 0, 1],
                                          x=("t", "s"), y=("U", "V"))
    with pytest.raises(ValueError, match="uniformly"):
        c.spectrum()


def test_calc_multiplies_curves_and_binds_variables(circuit):
    doc, experiment, u, i = circuit
    p = experiment.calc("P = U*I")
    assert p.y_unit == "V\u00b7A"
    numpy.testing.assert_allclose(p.y, numpy.array(u.y) * numpy.array(i.y), rtol=1e-15)
    e = experiment.calc("E = 0.5*C*U^2", variables={"C": 1e-3}, unit="J")
    assert e.y_unit == "J"
    numpy.testing.assert_allclose(e.y, 0.5e-3 * numpy.array(u.y) ** 2, rtol=1e-14)
    with pytest.raises(ValueError, match="unknown name W"):
        experiment.calc("P = U*W")


def test_calc_will_not_pull_storage_from_under_a_view(circuit):
    _, experiment, _, _ = circuit
    p = experiment.calc("P = U*I")
    view = p.y
    with pytest.raises(BufferError):
        experiment.calc("P = 2*U*I")
    del view
    assert experiment.calc("P = 2*U*I") == p


def test_calc_result_survives_a_save(circuit, tmp_path):
    doc, experiment, _, _ = circuit
    experiment.calc("P = U*I")
    doc.save(tmp_path / "c.vyr")
    again = vyrbase.load(tmp_path / "c.vyr")
    names = [c.display_name for c in again.curves]
    assert "P(t)" in names
