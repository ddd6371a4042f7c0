// Failures of the C++ code as exceptions of the package (zucmtr/_errors.py).
#include "core/core.h"

#include "comtrade/record.h"
#include "text/error.h"

#include <QMap>
#include <QRegularExpression>

namespace core {

py::str ToPython(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return py::str(bytes.constData(), static_cast<size_t>(bytes.size()));
}

QString FromPython(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString InArguments(const QString& text)
{
    static const QMap<QString, QString> others = {{"again", "again=True"},      {"from", "start"},
                                                  {"out-encoding", "encoding"}, {"replace", "overwrite=True"},
                                                  {"salvage", "salvage=True"},  {"to", "stop"}};
    static const QRegularExpression option(QStringLiteral("(?<![^\\s(])--([a-z][a-z-]*)"));
    QString renamed;
    QString::size_type end = 0;
    for (auto found = option.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString name = match.captured(1);
        renamed += text.mid(end, match.capturedStart() - end) +
                   others.value(name, QString(name).replace(QLatin1Char('-'), QLatin1Char('_')));
        end = match.capturedEnd();
    }
    return renamed + text.mid(end);
}

void Raise(const char* name, const QString& message)
{
    const py::object failure =
        py::module_::import("zucmtr._errors").attr("failure")(name, ToPython(InArguments(message)));
    PyErr_SetObject(py::type::of(failure).ptr(), failure.ptr());
}

void RaiseFileError(const char* name, int code, const QString& message, const QString& path)
{
    const py::object type = py::module_::import("zucmtr._errors").attr(name);
    PyErr_SetObject(type.ptr(), py::make_tuple(code, ToPython(message), ToPython(path)).ptr());
}

void AddErrors(py::module_& /*module*/)
{
    py::register_exception_translator([](std::exception_ptr failure) {
        try {
            if (failure)
                std::rethrow_exception(failure);
        } catch (const comtrade::Error& error) {
            Raise("RecordError", error.Message());
        } catch (const text::Error& error) {
            Raise("ConversionError", error.Message());
        }
    });
}

} // namespace core
