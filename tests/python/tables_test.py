"""Tables, datasets and figures; and what is said where a package for them is missing."""

import sys
import unittest
from unittest import mock

import matplotlib
import numpy as np
import zucmtr
from support import Case

matplotlib.use("Agg")


class TableTest(Case):
    def test_of_pandas_has_a_column_for_each_channel(self):
        table = zucmtr.open(self.record()).to_dataframe()
        self.assertEqual(list(table.columns), ["Ia", "Ub", "Trip"])
        self.assertEqual(table.index.name, "time")
        self.assertEqual(table.index.tolist(), [-0.002, -0.001, 0.0, 0.001])
        np.testing.assert_array_equal(table["Ia"], [4, np.nan, -16, 19])
        self.assertEqual(table["Trip"].tolist(), [0, 1, 1, 0])
        self.assertEqual(table.attrs["units"], {"Ia": "A", "Ub": "kV"})
        self.assertEqual(table.attrs["trigger"], "2024-01-31T12:00:00+03:00")

    def test_names_channels_of_one_name_by_their_numbers(self):
        path = self.record()
        text = path.read_text(encoding="utf-8").replace("2,Ub,", "2,Ia,").replace("1,Trip,", "1,,")
        path.write_text(text, encoding="utf-8")
        self.assertEqual(list(zucmtr.open(path).to_dataframe().columns), ["Ia (A1)", "Ia (A2)", "D1"])

    def test_of_xarray_has_units(self):
        data = zucmtr.open(self.record()).to_xarray()
        self.assertEqual(list(data.data_vars), ["Ia", "Ub", "Trip"])
        self.assertEqual(data["Ub"].attrs, {"units": "kV", "phase": "B", "circuit": "Q2", "number": 2})
        self.assertEqual(data["Ub"].sel(time=0.001).item(), -4.0)
        self.assertEqual(data["Trip"].values.tolist(), [False, True, True, False])
        self.assertEqual(data.attrs["station"], "Подстанция")

    def test_of_a_missing_package_names_it(self):
        record = zucmtr.open(self.record())
        for module, call in (("pandas", record.to_dataframe), ("xarray", record.to_xarray)):
            with mock.patch.dict(sys.modules, {module: None}):
                with self.assertRaises(zucmtr.MissingPackageError) as caught:
                    call()
            self.assertEqual(caught.exception.name, module)
            self.assertIn(f"apt install python3-{module}", str(caught.exception))


class FigureTest(Case):
    def test_has_an_axis_for_each_circuit_and_one_for_the_states(self):
        record = zucmtr.open(self.record())
        figure = record.plot()
        self.assertEqual([axis.get_title(loc="left") for axis in figure.axes], ["Q1", "Q2", ""])
        self.assertEqual(figure.axes[1].lines[0].get_ydata().tolist(), [1.0, -2.0, 3.0, -4.0])
        self.assertEqual(len(record.plot(["Ub"], digital=False, figure=matplotlib.figure.Figure()).axes), 1)


if __name__ == "__main__":
    unittest.main()
