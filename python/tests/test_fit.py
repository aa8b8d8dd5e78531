"""Curve.fit: built-in models with their own starting values, formulas with named parameters
and the experiment's variables, ranges, the fitted curve kept in the document, and refusals."""
import math
import re

import numpy
import pytest

import vyrbase


def test_damped_oscillation_of_the_rlc_sample(samples, tmp_path):
    doc = vyrbase.load(samples / "oscillation.vyr")
    u = next(c for c in doc.curves if c.y_quantity == "U")
    result = u.fit(model="damped")
    assert result.converged
    assert list(result.params) == ["A", "tau", "f", "phi", "C"]
    assert result.params["f"] == pytest.approx(500, rel=1e-6)
    assert result.params["tau"] == pytest.approx(0.004, rel=1e-6)
    assert result.params["phi"] == pytest.approx(math.pi / 2, abs=1e-6)
    assert 0 < result.uncertainties["f"] < 1e-3
    assert result.points == 1000
    assert result.r2 > 0.999999
    assert result.rss < 1e-6
    # The model is a curve of the experiment, with its note, and is saved with the document.
    fitted = result.curve
    assert fitted.y_quantity == "fit_U" and fitted.y_unit == "V"
    assert len(fitted) == 500
    t = numpy.array(fitted.x)
    expected = 5 * numpy.exp(-t / 0.004) * numpy.cos(2 * math.pi * 500 * t)
    numpy.testing.assert_allclose(fitted.y, expected, atol=1e-5)
    assert fitted.notes[0].startswith("y = A*exp(-x/tau)*sin(2*pi*f*x+phi)+C; R\u00b2 = ")
    assert re.match(r"A = 5\.0000000\d* \u00b1 [0-9.e-]+; tau = ", fitted.notes[1])
    path = tmp_path / "fitted.vyr"
    doc.save(path)
    again = vyrbase.load(path)
    assert any(c.y_quantity == "fit_U" and len(c.notes) == 2 for c in again.curves)


def test_formula_with_start_and_range(made):
    doc, experiment, _ = made
    t = numpy.linspace(0, 0.6, 40)
    fall = experiment.add_curve(t, 1.8 - 0.5 * 9.81 * t**2, x=("t", "s"), y=("y", "m"))
    result = fall.fit(formula="h - g/2*x^2", start={"g": 5, "h": 1}, x_range=(0, 0.3))
    assert result.converged
    assert result.params["g"] == pytest.approx(9.81, rel=1e-9)
    assert result.params["h"] == pytest.approx(1.8, rel=1e-9)
    assert result.points == 20


def test_no_result_gives_no_numbers(made):
    _, _, curve = made
    result = curve.fit(model="poly5")  # four valid points, six parameters
    assert not result.converged
    assert all(v is None for v in result.params.values())
    assert result.rss is None and result.r2 is None and result.curve is None
    assert "too few" in result.error


def test_refusals(made):
    _, _, curve = made
    with pytest.raises(ValueError):
        curve.fit()
    with pytest.raises(ValueError):
        curve.fit(model="exp", formula="a*x")
    with pytest.raises(ValueError, match="cubic"):
        curve.fit(model="cubic")
    with pytest.raises(ValueError, match="formula"):
        curve.fit(formula="a*")
    with pytest.raises(ValueError, match="k"):
        curve.fit(model="exp", start={"k": 1})
    with pytest.raises(ValueError):
        curve.fit(model="exp", x_range=(5, 1))
