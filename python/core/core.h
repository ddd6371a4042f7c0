// The parts of the extension module; zucmtr/_core.pyi describes them for Python.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <QByteArray>
#include <QString>

namespace core {

namespace py = pybind11;

void AddErrors(py::module_& module);
void AddRecord(py::module_& module);
void AddConvert(py::module_& module);
void AddSave(py::module_& module);

/// A text of the program with the arguments of the module in place of its options: "data", and not "--data".
QString InArguments(const QString& text);

/// Sets an exception of the package (zucmtr/_errors.py) by its name, for an error_already_set to be thrown.
void Raise(const char* name, const QString& message);
void RaiseFileError(const char* name, int code, const QString& message, const QString& path);

/// Texts in both directions. Python's are UTF-8 on their way.
py::str ToPython(const QString& text);
QString FromPython(const std::string& text);

/// A read-only array over memory that `owner` keeps alive.
template <class Number>
py::array ViewOf(const Number* numbers, size_t count, const py::handle& owner)
{
    py::array view(py::dtype::of<Number>(), {count}, {sizeof(Number)}, numbers, owner);
    view.attr("setflags")(py::arg("write") = false);
    return view;
}

/// An array that owns the numbers, without a copy of them; read-only.
template <class Number>
py::array ArrayOf(std::vector<Number>&& numbers)
{
    auto* const kept = new std::vector<Number>(std::move(numbers));
    const py::capsule owner(kept, [](void* memory) { delete static_cast<std::vector<Number>*>(memory); });
    return ViewOf(kept->data(), kept->size(), owner);
}

} // namespace core
