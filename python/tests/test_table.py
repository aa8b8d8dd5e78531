"""vyrbase.import_table and vyrbase.from_pandas: tables made into documents as vyr import makes
them."""
import math

import numpy as np
import pandas as pd
import pytest

import vyrbase
from conftest import ROOT

TABLES = ROOT / "tests" / "data" / "tables"


def test_import_table_reads_a_table_as_vyr_import(tmp_path):
    path = tmp_path / "mesures.csv"
    path.write_bytes("Temps (s);Tension (V);Intensité (mA)\r\n0;1,5;-2\r\n0,1;2,25;\r\n"
                     .encode("utf-8"))
    doc = vyrbase.import_table(path)
    assert [e.name for e in doc.experiments] == ["mesures"]
    assert [(c.y_quantity, c.y_unit) for c in doc.curves] == [("Tension", "V"),
                                                             ("Intensité", "mA")]
    assert list(doc.curves[0].x) == [0, 0.1]
    assert list(doc.curves[0].y) == [1.5, 2.25]
    assert list(doc.curves[1].valid) == [True, False]


def test_import_table_finds_a_date_column_and_leaves_text_out():
    doc = vyrbase.import_table(TABLES / "station_date_in_middle.csv")
    assert [c.y_quantity for c in doc.curves] == ["TMP"]
    curve = doc.curves[0]
    assert (curve.x_quantity, curve.x_unit) == ("DATE", "s")
    assert list(curve.x) == [0, 3600, 7200]
    assert list(curve.valid) == [True, False, True]
    assert doc.experiments[0].comment == "start: 2026-04-01T00:00:00Z"


def test_import_table_settings():
    quoted = TABLES / "quoted_decimal_commas.csv"
    doc = vyrbase.import_table(quoted, separator=",", decimal=",")
    assert list(doc.curves[0].y) == [1.5, 1.75, 2]
    doc = vyrbase.import_table(TABLES / "stamps_with_sentinel.txt", missing=-999)
    tt = [c for c in doc.curves if c.y_quantity == "TT_TU"][0]
    assert list(tt.valid) == [True, False, True]
    doc = vyrbase.import_table(TABLES / "stamps_with_sentinel.txt")
    tt = [c for c in doc.curves if c.y_quantity == "TT_TU"][0]
    assert list(tt.valid) == [True, True, True]
    doc = vyrbase.import_table(TABLES / "no_heading.txt", separator="blank", skip=1)
    assert list(doc.curves[0].x) == [1, 2]
    doc = vyrbase.import_table(TABLES / "units_line_de.csv", encoding="iso-8859-1")
    assert doc.curves[0].y_unit == "V"
    for bad in ({"separator": "ab"}, {"decimal": ";"}, {"encoding": "ebcdic"}, {"skip": -1}):
        with pytest.raises(ValueError):
            vyrbase.import_table(quoted, **bad)


def test_import_table_refusals(tmp_path):
    with pytest.raises(FileNotFoundError):
        vyrbase.import_table(tmp_path / "missing.csv")
    words = tmp_path / "words.csv"
    words.write_bytes(b"name;value\nfoo;bar\n")
    with pytest.raises(ValueError, match="no row of numbers"):
        vyrbase.import_table(words)


def test_from_pandas_reads_headings_as_quantity_and_unit():
    df = pd.DataFrame({"t (s)": [0.0, 0.5, 1.0], "U (V)": [1.0, np.nan, 3.0],
                       "name": ["a", "b", "c"], "I [mA]": [10, 11, 12]})
    doc = vyrbase.from_pandas(df)
    assert [(c.x_quantity, c.x_unit, c.y_quantity, c.y_unit) for c in doc.curves] == [
        ("t", "s", "U", "V"), ("t", "s", "I", "mA")]
    assert list(doc.curves[0].x) == [0, 0.5, 1]
    assert list(doc.curves[0].valid) == [True, False, True]
    assert list(doc.curves[1].y) == [10, 11, 12]


def test_from_pandas_takes_any_column_as_x_and_datetimes_as_seconds():
    df = pd.DataFrame({"U (V)": [1.0, 2.0, 3.0],
                       "time": pd.to_datetime(["2026-04-01 23:59:30", "2026-04-02 00:00:30",
                                               None])})
    doc = vyrbase.from_pandas(df, x="time")
    curve = doc.curves[0]
    assert (curve.x_quantity, curve.x_unit) == ("time", "s")
    assert list(curve.x[:2]) == [0, 60]
    assert list(curve.valid) == [True, True, False]
    assert doc.experiments[0].comment == "start: 2026-04-01T23:59:30"
    with pytest.raises(KeyError):
        vyrbase.from_pandas(df, x="nope")
    with pytest.raises(TypeError):
        vyrbase.from_pandas([[1, 2]])


def test_from_pandas_round_trip_through_to_pandas():
    df = pd.DataFrame({"t (s)": [0.0, 1.0, 2.0], "T (K)": [290.125, 291.5, 292.0]})
    doc = vyrbase.from_pandas(df)
    back = doc.curves[0].to_pandas()
    assert list(back.iloc[:, 0]) == [0, 1, 2]
    assert list(back.iloc[:, 1]) == [290.125, 291.5, 292.0]
    assert not any(math.isnan(v) for v in back.iloc[:, 1])
