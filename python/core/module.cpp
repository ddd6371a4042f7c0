#include "core/core.h"

#include <QTextCodec>

namespace {

// What releases the interpreter's lock could not take it again: pybind11 takes that of the main interpreter.
bool IsSubinterpreter()
{
    return PyInterpreterState_Get() != PyInterpreterState_Main();
}

constexpr const char* Refusal = "zucmtr works in the main interpreter alone, not in sub-interpreters";

// For the package: a module that is loaded already is not made again for a sub-interpreter.
void RefuseSubinterpreter()
{
    if (IsSubinterpreter())
        throw pybind11::import_error(Refusal);
}

void Fill(pybind11::module_& module)
{
    // Paths are UTF-8 whatever the locale says, as everywhere in this project.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    module.attr("version") = ZUCMTR_VERSION;
    module.def("refuse_subinterpreter", &RefuseSubinterpreter);
    core::AddErrors(module);
    core::AddRecord(module);
    core::AddConvert(module);
    core::AddSave(module);
}

} // namespace

// PYBIND11_MODULE, with a check before pybind11 waits for a lock that a sub-interpreter's thread has.
extern "C" PYBIND11_EXPORT PyObject* PyInit__core()
{
    if (IsSubinterpreter()) {
        PyErr_SetString(PyExc_ImportError, Refusal);
        return nullptr;
    }
    PYBIND11_CHECK_PYTHON_VERSION
    PYBIND11_ENSURE_INTERNALS_READY
    static pybind11::module_::module_def definition;
    auto module = pybind11::module_::create_extension_module("_core", nullptr, &definition);
    try {
        Fill(module);
        return module.ptr();
    }
    PYBIND11_CATCH_INIT_EXCEPTIONS
}
