// A record whose samples are read when they are first asked for.
#include "core/core.h"
#include "core/forks.h"
#include "core/service.h"

#include "analysis/oscillogram.h"
#include "analysis/summary.h"
#include "analysis/timeaxis.h"
#include "comtrade/moment.h"
#include "comtrade/samples.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/host/recordsource.h"

#include <QJsonDocument>

#include <cmath>
#include <memory>
#include <mutex>
#include <numeric>

namespace core {

namespace {

using comtrade::Configuration;

// Threads may ask for samples at once: one of them reads, the others wait without the interpreter's lock.
//
// A child process reads from the files itself, as the place up to which its parent has read is one for both;
// and leaves it to its parent to remove the temporary record of a recording.
class Record : public Forkable
{
public:
    Record(std::unique_ptr<RecordSource> source_, const comtrade::ReadingOptions& options_)
        : options(options_), source(std::move(source_)),
          record(std::make_unique<comtrade::Record>(source->Path(), options)), config(record->Config()),
          header(record->HeaderText()), information(record->Information())
    {}

    ~Record() override
    {
        if (isInherited)
            static_cast<void>(source.release());
        if (isStale)
            static_cast<void>(record.release());
    }

    // A recording is converted into a temporary record.
    static std::shared_ptr<Record> Open(const std::string& path, const std::string& encoding,
                                        const std::string& ini, const std::string& defaults,
                                        const std::string& device)
    {
        const py::gil_scoped_release released;
        comtrade::ReadingOptions options;
        options.encoding = FromPython(encoding);
        const QString file = FromPython(path);
        const DeviceChoice choice{FromPython(ini), FromPython(defaults), FromPython(device)};
        std::unique_ptr<RecordSource> source;
        const auto take = [&] { source = std::make_unique<RecordSource>(file, choice, false); };
        if (comtrade::IsRecordFile(file))
            take();
        else
            Service::Instance().Alone(take);
        return std::make_shared<Record>(std::move(source), options);
    }

    // What happened, as JSON.
    QByteArray Summary(const QString& lineFile)
    {
        const std::lock_guard lock(mutex);
        const LineData data = LoadLines(lineFile, source->Ini(), source->Path());
        return QJsonDocument(analysis::JsonOf(analysis::Summarise({source->Path(), data.lines, data.path})))
            .toJson(QJsonDocument::Compact);
    }

    const Configuration& Config() const { return config; }
    const QString& Header() const { return header; }
    const QString& Path() const { return source->Path(); }
    const QByteArray& Information() const { return information; }

    // To be called without the interpreter's lock.
    const comtrade::Samples& Samples()
    {
        const std::lock_guard lock(mutex);
        if (!samples) {
            if (isStale) {
                static_cast<void>(record.release()); // perhaps in the middle of a sample
                isStale = false;
                record = std::make_unique<comtrade::Record>(source->Path(), options);
            }
            samples = std::make_unique<comtrade::Samples>(*record);
            forgiven = record->Forgiven();
            record.reset(); // with its open file and buffers
        }
        return *samples;
    }

    comtrade::Findings Forgiven()
    {
        const std::lock_guard lock(mutex);
        return record ? record->Forgiven() : forgiven;
    }

    // Seconds from the trigger, one for each sample.
    std::vector<double> Times()
    {
        const comtrade::Samples& all = Samples();
        const auto count = static_cast<size_t>(all.Count());
        std::vector<double> times(count);
        const analysis::TimeAxis axis = AxisOf(all);
        for (size_t i = 0; i < count; ++i)
            times[i] = axis.TimeOf(static_cast<qint64>(i));
        return times;
    }

private:
    analysis::TimeAxis AxisOf(const comtrade::Samples& all) const
    {
        if (!analysis::IsStamped(config))
            return analysis::TimeAxis::FromRates(config);
        std::vector<double> seconds;
        seconds.reserve(all.Stamps().size());
        for (const qint64 stamp : all.Stamps())
            seconds.push_back(stamp != comtrade::Block::NoTime
                                  ? static_cast<double>(stamp) * config.StampSeconds()
                              : seconds.empty() ? 0.0
                                                : seconds.back());
        return analysis::TimeAxis::FromStamps(config, std::move(seconds));
    }

    void InChild() override
    {
        new (&mutex) std::mutex;
        isInherited = true;
        isStale = record != nullptr;
    }

    const comtrade::ReadingOptions options;
    std::mutex mutex;
    std::unique_ptr<RecordSource> source;
    bool isInherited = false;                 // from the parent process
    bool isStale = false;                     // `record` is the parent's
    std::unique_ptr<comtrade::Record> record; // until the samples are read
    const Configuration config;
    const QString header;
    const QByteArray information;
    std::unique_ptr<comtrade::Samples> samples;
    comtrade::Findings forgiven;
    const ForkableIsComplete complete{*this};
};

const comtrade::Samples& SamplesOf(Record& record)
{
    const py::gil_scoped_release released;
    return record.Samples();
}

// The samples know no bounds of their own.
void CheckPlace(size_t channel, size_t count)
{
    if (channel >= count)
        throw py::index_error("there is no such channel");
}

// A read-only array of so many numbers that `fill` writes, without the interpreter's lock.
template <class Number, class Fill>
py::array Filled(qint64 count, Fill fill)
{
    py::array_t<Number> array(count);
    Number* const numbers = array.mutable_data();
    {
        const py::gil_scoped_release released;
        fill(numbers);
    }
    array.attr("setflags")(py::arg("write") = false);
    return std::move(array);
}

py::array CodesOf(const py::object& self, size_t channel)
{
    auto& record = self.cast<Record&>();
    CheckPlace(channel, record.Config().analog.size());
    const comtrade::Samples& samples = SamplesOf(record);
    return std::visit(
        [&self](const auto& codes) -> py::array { return ViewOf(codes.data(), codes.size(), self); },
        samples.Analog(channel));
}

// (a * code + b) * factor, NaN where the value is missing.
py::array ValuesOf(Record& record, size_t channel, double factor)
{
    CheckPlace(channel, record.Config().analog.size());
    return Filled<double>(SamplesOf(record).Count(), [&](double* values) {
        const comtrade::AnalogChannel& about = record.Config().analog[channel];
        record.Samples().Values(channel, {about.a, about.b, factor}, values);
    });
}

py::array StatesOf(Record& record, size_t channel)
{
    CheckPlace(channel, record.Config().states.size());
    return Filled<quint8>(SamplesOf(record).Count(),
                          [&](quint8* states) { record.Samples().Unpack(channel, states); });
}

int StateOf(Record& record, size_t channel, size_t sample)
{
    CheckPlace(channel, record.Config().states.size());
    const comtrade::Samples& samples = SamplesOf(record);
    if (sample >= static_cast<size_t>(samples.Count()))
        throw py::index_error();
    return samples.State(channel, sample);
}

py::tuple ChangesOf(Record& record, size_t channel)
{
    CheckPlace(channel, record.Config().states.size());
    comtrade::Changes changes;
    {
        const py::gil_scoped_release released;
        changes = record.Samples().ChangesOf(channel);
    }
    return py::make_tuple(ArrayOf(std::move(changes.samples)), ArrayOf(std::move(changes.states)));
}

py::array TimesOf(Record& record)
{
    std::vector<double> times;
    {
        const py::gil_scoped_release released;
        times = record.Times();
    }
    return ArrayOf(std::move(times));
}

// The sample numbers as stored.
py::array NumbersOf(Record& record)
{
    std::vector<quint32> numbers;
    {
        const py::gil_scoped_release released;
        const comtrade::Samples& samples = record.Samples();
        const comtrade::View<quint32> stored = samples.Numbers();
        numbers.assign(stored.begin(), stored.end());
        if (numbers.empty()) {
            numbers.resize(static_cast<size_t>(samples.Count()));
            std::iota(numbers.begin(), numbers.end(), 1U);
        }
    }
    return ArrayOf(std::move(numbers));
}

py::tuple MomentOf(const comtrade::TimeStamp& stamp)
{
    return py::make_tuple(stamp.date.year(), stamp.date.month(), stamp.date.day(), stamp.nanoseconds);
}

py::list AnalogOf(const Configuration& config)
{
    py::list channels;
    for (const comtrade::AnalogChannel& channel : config.analog) {
        py::dict fields;
        fields["number"] = channel.number;
        fields["name"] = ToPython(channel.name);
        fields["phase"] = ToPython(channel.phase);
        fields["circuit"] = ToPython(channel.circuit);
        fields["unit"] = ToPython(channel.unit);
        fields["a"] = channel.a;
        fields["b"] = channel.b;
        fields["skew"] = channel.skew;
        fields["min"] = channel.min;
        fields["max"] = channel.max;
        fields["primary"] = channel.primary;
        fields["secondary"] = channel.secondary;
        fields["side"] = channel.primaryValues ? "P" : "S";
        fields["primary_factor"] = analysis::PrimaryFactor(channel);
        channels.append(fields);
    }
    return channels;
}

py::list DigitalOf(const Configuration& config)
{
    py::list channels;
    for (const comtrade::StateChannel& channel : config.states) {
        py::dict fields;
        fields["number"] = channel.number;
        fields["name"] = ToPython(channel.name);
        fields["phase"] = ToPython(channel.phase);
        fields["circuit"] = ToPython(channel.circuit);
        fields["normal"] = channel.normalState ? 1 : 0;
        channels.append(fields);
    }
    return channels;
}

py::dict ConfigurationOf(const Record& record)
{
    const Configuration& config = record.Config();
    py::dict fields;
    fields["station"] = ToPython(config.station);
    fields["device"] = ToPython(config.device);
    fields["revision"] = static_cast<int>(config.revision);
    fields["data_type"] = ToPython(comtrade::NameOf(config.dataType));
    fields["frequency"] = config.lineFrequency;
    py::list rates;
    for (const comtrade::SampleRate& rate : config.rates)
        rates.append(py::make_tuple(rate.hertz, rate.lastSample));
    fields["rates"] = rates;
    fields["start"] = MomentOf(config.start);
    fields["trigger"] = MomentOf(config.trigger);
    const std::optional<int> offset = comtrade::UtcOffset(config);
    fields["utc_offset"] = offset ? py::object(py::int_(*offset)) : py::none();
    fields["analog"] = AnalogOf(config);
    fields["digital"] = DigitalOf(config);
    return fields;
}

py::list ForgivenOf(Record& record)
{
    static const char* const severities[] = {"note", "warning", "error"};
    const comtrade::Findings forgiven = record.Forgiven();
    py::list findings;
    for (const comtrade::Finding& finding : forgiven.All())
        findings.append(py::make_tuple(ToPython(finding.file), finding.line, finding.column,
                                       severities[static_cast<int>(finding.severity)], finding.reason,
                                       ToPython(finding.text)));
    return findings;
}

py::bytes BytesOf(const QByteArray& bytes)
{
    return py::bytes(bytes.constData(), static_cast<size_t>(bytes.size()));
}

py::bytes SummaryOf(Record& record, const std::string& lineFile)
{
    QByteArray json;
    {
        const py::gil_scoped_release released;
        json = record.Summary(FromPython(lineFile));
    }
    return BytesOf(json);
}

} // namespace

void AddRecord(py::module_& module)
{
    py::class_<Record, std::shared_ptr<Record>>(module, "Record")
        .def(py::init(&Record::Open), py::arg("path"), py::arg("encoding"), py::arg("ini"),
             py::arg("defaults"), py::arg("device"))
        .def("configuration", &ConfigurationOf)
        .def("path", [](const Record& record) { return ToPython(record.Path()); })
        .def("header", [](const Record& record) { return ToPython(record.Header()); })
        .def("information", [](const Record& record) { return BytesOf(record.Information()); })
        .def("count", [](Record& record) { return SamplesOf(record).Count(); })
        .def("memory", [](Record& record) { return SamplesOf(record).MemorySize(); })
        .def("codes", &CodesOf, py::arg("channel"))
        .def("values", &ValuesOf, py::arg("channel"), py::arg("factor"))
        .def("states", &StatesOf, py::arg("channel"))
        .def("state", &StateOf, py::arg("channel"), py::arg("sample"))
        .def("changes", &ChangesOf, py::arg("channel"))
        .def("times", &TimesOf)
        .def("numbers", &NumbersOf)
        .def("summary", &SummaryOf, py::arg("lines"))
        .def("forgiven", &ForgivenOf);
}

} // namespace core
