// Records saved in the forms of export.
#include "core/core.h"

#include "forms/channelchoice.h"
#include "forms/fileerror.h"
#include "forms/notes.h"
#include "forms/spantext.h"
#include "forms/timewindow.h"
#include "zucmtr/commands/exportfile.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/terminal/command.h"

#include <cerrno>
#include <chrono>

namespace core {

namespace {

// The arguments of zucmtr.Record.save, for texts about them.
constexpr forms::OptionNames Arguments = {"form",     "data",          "revision", "encoding", "side",
                                          "time",     "decimal_comma", "start",    "stop",     "window",
                                          "channels", "every",         "rate",     "path"};

// Has the interpreter handle its signals now and then. Its lock may be with other threads for a while, so it
// is not asked for each time.
class Signals
{
public:
    // Whether a handler has raised an exception, which is then set in the calling thread.
    bool HaveRaised()
    {
        constexpr std::chrono::milliseconds pause{50};
        const auto now = std::chrono::steady_clock::now();
        if (now - asked < pause)
            return false;
        asked = now;
        const py::gil_scoped_acquire interpreter;
        return PyErr_CheckSignals() != 0;
    }

private:
    std::chrono::steady_clock::time_point asked = std::chrono::steady_clock::now();
};

template <class Value>
Value Get(const py::dict& options, const char* key)
{
    return options[key].cast<Value>();
}

forms::FormWords FormOf(const py::dict& options)
{
    const auto word = [&options](const char* key) { return Get<std::string>(options, key); };
    return {word("form"),
            word("data"),
            word("revision"),
            word("encoding"),
            word("side"),
            word("time"),
            Get<bool>(options, "decimal_comma")};
}

forms::PartWords PartOf(const py::dict& options)
{
    forms::PartWords part;
    part.from = Get<std::string>(options, "start");
    part.to = Get<std::string>(options, "stop");
    part.window = Get<std::string>(options, "window");
    part.channels = Get<std::vector<std::string>>(options, "channels");
    part.places = {Get<std::vector<size_t>>(options, "analog"), Get<std::vector<size_t>>(options, "digital")};
    part.changingOnly = Get<bool>(options, "changing_only");
    part.every = Get<std::optional<qint64>>(options, "every");
    part.rate = Get<std::optional<double>>(options, "rate");
    return part;
}

// What users did not ask for, and would not expect.
QStringList WarningsOf(const QString& file, const forms::Exported& exported)
{
    QStringList warnings;
    if (comtrade::IsRecordFile(file))
        warnings = forms::ForgivenLines(exported, Severity::Warning);
    for (const forms::Note& note : forms::NotesOf(exported))
        if (!note.isAskedFor)
            warnings << note.text;
    return warnings;
}

struct Saving
{
    QString file; // that was opened
    QString out;
    forms::FormWords form;
    ExportOrder order;
};

ExportResult Export(Saving& saving)
{
    const py::gil_scoped_release released;
    ExportOrder& order = saving.order;
    order.request = forms::RequestOf(saving.form, order.part, saving.out, Arguments);
    order.target = TargetsOf({saving.file}, saving.out, order.request.form, Arguments).front();
    Signals signals;
    order.isStopped = [&signals] { return signals.HaveRaised(); };
    return ExportFile(order, Arguments);
}

[[noreturn]] void Fail(const char* name, const QString& file, const QString& message)
{
    Raise(name, message.startsWith(file) ? message : file + QLatin1String(": ") + message);
    throw py::error_already_set();
}

[[noreturn]] void FailOfFile(const char* name, int code, const QString& message, const QString& path)
{
    RaiseFileError(name, code, message, path);
    throw py::error_already_set();
}

// The result, or the failure as an exception of Python. What is wrong with the source is left to others.
ExportResult Run(Saving& saving)
{
    try {
        return Export(saving);
    } catch (const forms::Stopped&) {
        throw py::error_already_set(); // that of a signal's handler
    } catch (const forms::WordError& error) {
        throw py::value_error(error.what());
    } catch (const PresentError& error) {
        FailOfFile("FilePresentError", EEXIST,
                   QStringLiteral("the file is there already; overwrite=True replaces it"), error.Message());
    } catch (const StagingError& error) {
        FailOfFile("FileError", error.code, error.Message(), saving.out);
    } catch (const forms::FileError& error) {
        FailOfFile("FileError", error.code, error.Message(), saving.out);
    } catch (const forms::NoSuchChannel& error) {
        Fail("ChannelError", saving.file, error.Message());
    } catch (const forms::FormError& error) {
        Fail("SaveError", saving.file, error.Message());
    } catch (const forms::MomentError& error) {
        Fail("SaveError", saving.file, error.Message());
    } catch (const forms::Different& error) {
        Fail("SaveError", saving.file, error.Message());
    } catch (const ConfigurationError& error) {
        Fail("SaveError", saving.file, error.Message());
    }
}

// file: that was opened; record: its .cfg or .cff.
py::tuple Save(const std::string& file, const std::string& record, const std::string& encoding,
               const std::string& out, const py::dict& options)
{
    Saving saving;
    saving.file = FromPython(file);
    saving.out = FromPython(out);
    saving.form = FormOf(options);
    saving.order.part = PartOf(options);
    saving.order.record = FromPython(record);
    saving.order.reading.encoding = FromPython(encoding);
    saving.order.replace = Get<bool>(options, "overwrite");
    const ExportResult result = Run(saving);
    py::list warnings;
    for (const QString& warning : WarningsOf(saving.file, result.exported))
        warnings.append(ToPython(warning));
    return py::make_tuple(ToPython(result.files.first()), warnings);
}

} // namespace

void AddSave(py::module_& module)
{
    module.def("save", &Save, py::arg("file"), py::arg("record"), py::arg("encoding"), py::arg("out"),
               py::arg("options"));
}

} // namespace core
