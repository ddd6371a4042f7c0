// Recordings converted into records.
#include "core/core.h"
#include "core/service.h"

#include "analysis/linedata.h"
#include "zucmtr/terminal/checks.h"

#include <QJsonDocument>

namespace core {

namespace {

// Nothing for None.
std::optional<bool> Is(const std::string& word, const char* yes)
{
    return word.empty() ? std::nullopt : std::optional<bool>(word == yes);
}

RecordForm FormOf(const py::dict& options)
{
    const auto word = [&options](const char* key) { return options[key].cast<std::string>(); };
    RecordForm form;
    form.isContainer = Is(word("form"), "cff");
    form.isBinary = Is(word("data"), "binary");
    form.is1999 = Is(word("revision"), "1999");
    form.isUtf8 = Is(word("encoding"), "utf8");
    return form;
}

py::bytes Convert(const std::string& file, const std::string& out, const std::string& ini,
                  const std::string& defaults, const std::string& device, const py::dict& options)
{
    WorkOrder order;
    order.out = FromPython(out);
    order.form = FormOf(options);
    order.again = options["again"].cast<bool>();
    order.replace = options["overwrite"].cast<bool>();
    order.salvage = options["salvage"].cast<bool>();
    order.sync = options["sync"].cast<bool>();
    const QString layout = FromPython(options["layout"].cast<std::string>());
    QByteArray json;
    {
        const py::gil_scoped_release released;
        const Recording recording{FromPython(file), QString(), QString()};
        DeviceChoice choice{FromPython(ini), FromPython(defaults), FromPython(device)};
        CompleteChoice(choice, {recording});
        if (!layout.isEmpty())
            order.layout = RecordLayout(layout);
        order.out = CheckedDirectory(QStringLiteral("out"), order.out);
        QJsonObject report = JsonOf(Service::Instance().Convert(choice, order, recording));
        if (report["error"].isString())
            report["error"] = InArguments(report["error"].toString());
        json = QJsonDocument(report).toJson(QJsonDocument::Compact);
    }
    return py::bytes(json.constData(), static_cast<size_t>(json.size()));
}

} // namespace

void AddConvert(py::module_& module)
{
    module.def("convert", &Convert, py::arg("file"), py::arg("out"), py::arg("ini"), py::arg("defaults"),
               py::arg("device"), py::arg("options"));
}

} // namespace core
