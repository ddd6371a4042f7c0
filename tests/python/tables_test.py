"""Tables, datasets and figures; and what is said where a package for them is missing."""

import sys
import unittest
from unittest import mock

import matplotlib
import matplotlib.figure
import numpy as np
import zucmtr
from support import Case

matplotlib.use("Agg")
from matplotlib import pyplot  # noqa: E402


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
        with mock.patch.dict(sys.modules, {"matplotlib.pyplot": None}):
            with self.assertRaises(zucmtr.MissingPackageError) as caught:
                record.plot()
        self.assertEqual(caught.exception.name, "matplotlib")


class FigureTest(Case):
    def setUp(self):
        super().setUp()
        self.addCleanup(pyplot.close, "all")

    def test_has_an_axis_for_each_circuit_and_one_for_the_states(self):
        record = zucmtr.open(self.record())
        figure = record.plot()
        self.assertEqual([axis.get_title(loc="left") for axis in figure.axes], ["Q1", "Q2", ""])
        self.assertEqual(figure.axes[1].get_ylabel(), "kV")
        self.assertEqual(figure.axes[1].lines[0].get_ydata().tolist(), [1.0, -2.0, 3.0, -4.0])
        self.assertEqual(figure.axes[2].get_xlabel(), "seconds from the trigger")
        self.assertEqual([text.get_text() for text in figure.axes[0].texts], ["trigger"])
        for chosen in (["Ub"], [1], [record.analog[1]], [("Q2", "B")]):
            self.assertEqual(len(record.plot(chosen, digital=False, figure=matplotlib.figure.Figure()).axes), 1)
        with self.assertRaises(zucmtr.ChannelError):
            record.plot(["Uc"])

    def test_shows_states_as_bars(self):
        axis = zucmtr.open(self.record()).plot().axes[-1]
        self.assertEqual([label.get_text() for label in axis.get_yticklabels()], ["Trip"])
        bars = [path.get_extents() for path in axis.collections[0].get_paths()]
        self.assertEqual([(bar.x0, bar.x1) for bar in bars], [(-0.001, 0.001)])

    def test_shows_a_span(self):
        record = zucmtr.open(self.record())
        figure = record.plot(span=(-0.0015, 0.0005))
        self.assertEqual(figure.axes[1].lines[0].get_xdata().tolist(), [-0.001, 0.0])
        self.assertEqual(figure.axes[0].get_xlim(), (-0.001, 0.0))
        self.assertEqual(len(figure.axes), 2)  # nothing changes within it
        with self.assertRaisesRegex(ValueError, r"no sample is from 1 to 2 s; the record is from -0.002 to 0.001 s"):
            record.plot(span=(1, 2))

    def test_of_a_long_record_shows_its_extremes_with_few_points(self):
        data = "".join(f"{i + 1},{i * 1000},{20000 if i == 12345 else i % 2},{'' if i < 50 else -i},0\n" for i in range(30000))
        path = self.record(data=data)
        path.write_text(path.read_text(encoding="utf-8").replace("1000,4\n", "1000,30000\n"), encoding="utf-8")
        spike, slope = (axis.lines[0].get_ydata() for axis in zucmtr.open(path).plot().axes)
        self.assertLessEqual(len(spike), 8000)
        self.assertEqual((spike.max(), spike.min()), (9999.0, -1.0))
        self.assertAlmostEqual(np.nanmin(slope), -29.999)

    def test_keeps_its_legend_beside_the_curves_and_its_texts_apart(self):
        figure = zucmtr.open(self.station()[0]).plot()
        figure.canvas.draw()
        boxes = []
        for axis in figure.axes:
            curves = axis.get_window_extent()
            if axis.get_legend():
                legend = axis.get_legend().get_window_extent()
                self.assertGreaterEqual(legend.x0, curves.x1)
                boxes.append(legend)
            boxes.append(axis.get_tightbbox(for_layout_only=True))
        self.assertLessEqual(max(box.x1 for box in boxes), figure.bbox.x1)
        self.assertGreaterEqual(min(box.x0 for box in boxes), 0)


if __name__ == "__main__":
    unittest.main()
