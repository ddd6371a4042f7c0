#include "forms/exporting.h"

#include "forms/comparison.h"
#include "forms/comtradetext.h"
#include "forms/csvstream.h"
#include "forms/csvwriter.h"
#include "forms/digest.h"
#include "forms/information.h"
#include "forms/matstream.h"
#include "forms/matwriter.h"
#include "forms/pipeline.h"
#include "forms/rawdata.h"
#include "forms/readingback.h"
#include "forms/resampling.h"
#include "text/texts.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <cstring>

using comtrade::Block;
using comtrade::Configuration;
using comtrade::DataType;

namespace forms {

namespace {

// One export: passes through the record until what is needed to write it is known.
class Exporter
{
public:
    Exporter(const Source& source_, const Request& request_, const QString& base_)
        : source(source_), request(request_), base(base_)
    {}

    Exported Run();

private:
    void OpenSource();
    void MakePlan();
    void Survey();
    bool Write();
    void Compare(const Configuration& config, const Digest& written, const std::optional<Digest>& found);
    Digest DigestOfWritten(const Configuration& config) const;
    std::optional<RawData> Unchanged(const Pipeline& pipeline, const Configuration& config) const;
    void WriteRaw(const RawData& raw, const Configuration& config);
    [[noreturn]] void FailWithDifference(const Configuration& config);
    void CompareRecord(const comtrade::Record& record, const Configuration& config) const;
    void Keep(const Pipeline& pipeline, const Configuration& config, qint64 samples);
    std::unique_ptr<Writer> NewWriter(const Configuration& config) const;
    std::unique_ptr<Stream> ReadBack(const Configuration& config) const;
    Texts TextsOf(const comtrade::Record& record, const Configuration& config);
    QString InformationOf(const comtrade::Record& record, const Configuration& config);
    void Look() const;
    void CountSource();
    bool NeedsCodes() const;
    bool IsContainer() const { return request.form == Form::Cff; }
    bool IsComtrade() const { return request.form == Form::Cfg || IsContainer(); }

    const Source& source;
    Request request;
    const QString base;
    Plan plan;
    Texts texts;
    QString sampling; // what was done to the samples; empty: nothing
    Exported result;
};

void Exporter::Look() const
{
    if (source.isStopped && source.isStopped())
        throw Stopped();
}

// The text with one more line at its end.
QString WithLine(QString text, const QString& line)
{
    if (line.isEmpty())
        return text;
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1String("\r\n");
    return text + line + QLatin1String("\r\n");
}

// The texts in the encoding of the record. A CFG file has no field for comments, so what was done to the
// samples is said in the HDR file.
Texts Exporter::TextsOf(const comtrade::Record& record, const Configuration& config)
{
    const auto encoded = [this](const QByteArray& bytes, const QString& text, const QString& what,
                                const QString& line = {}) {
        const bool isUtf8 = request.comtrade.encoding == QByteArray("UTF-8");
        if (line.isEmpty() && (bytes.isEmpty() || (isUtf8 && text.toUtf8() == bytes)))
            return bytes;
        return Encoded(WithLine(text, line), request.comtrade.encoding, what);
    };
    if (!IsComtrade())
        return {};
    return {encoded(record.Header(), record.HeaderText(), Tr("export", "HDR"), sampling),
            encoded(record.Information(), InformationOf(record, config), Tr("export", "INF"))};
}

// As it is, as long as the configuration says the same.
QString Exporter::InformationOf(const comtrade::Record& record, const Configuration& config)
{
    QString text = record.InformationText();
    const QString lines = ConfigurationText(config);
    if (text.isEmpty() || lines == ConfigurationText(record.Config()))
        return text;
    comtrade::Findings ignored;
    comtrade::Places places;
    comtrade::ParseConfiguration(lines, base, &ignored, 1, &places);
    const Information information = InformationFor(text, places, plan.channels);
    result.equipmentLeftOut = information.isEquipmentLeftOut;
    return information.text;
}

// The samples that the data of the source have, whatever the configuration announces.
void Exporter::CountSource()
{
    Pipeline pipeline(source, request, Plan(), Pipeline::End::Source);
    Block block;
    qint64 count = 0;
    while (pipeline.Last().Next(block)) {
        count += static_cast<qint64>(block.count);
        Look();
    }
    if (count != pipeline.Last().Config().SampleCount())
        plan.total = count;
}

// What the codes are before they get the form's.
void Exporter::OpenSource()
{
    Pipeline pipeline(source, request, plan, Pipeline::End::Sampled);
    const Configuration& config = pipeline.Record().Config();
    result.sourceType = pipeline.Last().Config().dataType;
    if (!IsResampled(request, config)) {
        if (request.every > 1)
            sampling = EveryNthText(config, request.every);
        return;
    }
    sampling = ResamplingText(config, request.rate);
    // Values between samples are real numbers, but the record keeps its form.
    if (!request.comtrade.data)
        request.comtrade.data = config.dataType;
}

void Exporter::MakePlan()
{
    const bool hasSpan = request.span.from || request.span.to;
    if (!request.channels.isEmpty() || !request.places.IsEmpty())
        plan.channels = Choose(Pipeline(source, request, plan, Pipeline::End::Source).Last().Config(),
                               request.channels, request.places);
    if (!hasSpan)
        return;
    Pipeline pipeline(source, request, plan, Pipeline::End::Sampled);
    const Configuration& config = pipeline.Last().Config();
    plan.extent = ExtentOf(request.span, config, &pipeline.Last());
    // What lies beyond the announced samples may be in the span, too.
    if (!plan.total && plan.extent->first + plan.extent->count >= config.SampleCount()) {
        CountSource();
        if (plan.total)
            MakePlan();
    }
}

// Whether new codes may be needed: those of the source are real numbers.
bool Exporter::NeedsCodes() const
{
    return IsComtrade() && result.sourceType == DataType::Float32 &&
           request.comtrade.data.value_or(DataType::Float32) != DataType::Float32;
}

// A pass that finds the states that change and the range of the codes.
void Exporter::Survey()
{
    Pipeline pipeline(source, request, plan, Pipeline::End::Kept);
    Stream& kept = pipeline.Last();
    const Configuration& config = kept.Config();
    std::vector<CodeRange> ranges(config.analog.size());
    std::vector<quint8> first;
    std::vector<bool> changes(config.states.size());
    Block block;
    while (kept.Next(block)) {
        Look();
        Extend(ranges, block);
        if (first.empty())
            first.assign(block.states.begin(), block.states.begin() + static_cast<ptrdiff_t>(changes.size()));
        for (size_t i = 0; i < block.count * changes.size(); ++i)
            if (block.states[i] != first[i % changes.size()])
                changes[i % changes.size()] = true;
    }
    QStringList lost;
    if (NeedsCodes() || !plan.codes.empty())
        plan.codes = NewCodesFor(TargetOf(config, request, lost), config.dataType, ranges);
    if (!request.changingOnly)
        return;
    ChannelSet all = plan.channels ? *plan.channels : AllChannels(config);
    std::vector<size_t> changing;
    for (size_t i = 0; i < changes.size(); ++i)
        if (changes[i])
            changing.push_back(all.states[i]);
    result.statesLeftOut = all.states.size() - changing.size();
    all.states = std::move(changing);
    plan.channels = std::move(all);
}

std::unique_ptr<Writer> Exporter::NewWriter(const Configuration& config) const
{
    if (request.form == Form::Csv)
        return std::make_unique<CsvWriter>(base + QStringLiteral(".csv"), config, request.csv);
    if (request.form == Form::Mat)
        return std::make_unique<MatWriter>(base + QStringLiteral(".mat"), config);
    return std::make_unique<ComtradeWriter>(base, IsContainer(), config, request.comtrade.encoding, texts);
}

std::unique_ptr<Stream> Exporter::ReadBack(const Configuration& config) const
{
    if (request.form == Form::Csv)
        return std::make_unique<CsvStream>(base + QStringLiteral(".csv"), config, request.csv);
    if (request.form == Form::Mat)
        return std::make_unique<MatStream>(base + QStringLiteral(".mat"), config);
    comtrade::ReadingOptions reading = comtrade::Strict();
    reading.encoding = QString::fromLatin1(request.comtrade.encoding);
    return std::make_unique<RecordStream>(base + EndingsOf(IsContainer(), texts).first(), reading);
}

// False if the number of samples turns out to be another one than announced.
bool Exporter::Write()
{
    Pipeline pipeline(source, request, plan, Pipeline::End::Form);
    Stream& stream = pipeline.Last();
    const Configuration config = stream.Config();
    texts = TextsOf(pipeline.Record().Record(), config);
    if (const std::optional<RawData> raw = Unchanged(pipeline, config)) {
        WriteRaw(*raw, config);
        Keep(pipeline, config, config.SampleCount());
        return true;
    }
    const std::unique_ptr<Writer> writer = NewWriter(config);
    const QString data = base + QStringLiteral(".dat");
    std::optional<ReadingBack> readingBack;
    if (request.form == Form::Cfg)
        readingBack.emplace(data, 0, config);
    Digest digest(config.analog.size(), config.states.size());
    Block block;
    while (stream.Next(block)) {
        Look();
        digest.Add(block);
        writer->Write(block);
        if (readingBack)
            readingBack->Written(static_cast<ComtradeWriter&>(*writer).DataSize());
    }
    pipeline.Stop();
    writer->Finish();
    if (digest.Samples() != config.SampleCount() && !plan.total)
        return false;
    Look();
    const std::optional<Digest> found = readingBack ? readingBack->Finish() : std::nullopt;
    const bool isWhole = found && QFileInfo(data).size() == static_cast<ComtradeWriter&>(*writer).DataSize();
    Compare(config, digest, isWhole ? found : std::nullopt);
    Keep(pipeline, config, digest.Samples());
    return true;
}

void Exporter::Keep(const Pipeline& pipeline, const Configuration& config, qint64 samples)
{
    result.samples = samples;
    result.resampling = sampling;
    result.lost = pipeline.Lost();
    result.rounded = pipeline.Rounded();
    result.forgiven = pipeline.Record().Record().Forgiven();
    result.announced = pipeline.Record().Config().SampleCount();
    result.total = plan.total.value_or(result.announced);
    result.config = config;
}

// The data of the source if all of their bytes are those of the target.
std::optional<RawData> Exporter::Unchanged(const Pipeline& pipeline, const Configuration& config) const
{
    const Configuration& stored = pipeline.Record().Config();
    const bool isWhole =
        !plan.total && !plan.extent && !plan.channels && plan.codes.empty() && sampling.isEmpty();
    if (request.form != Form::Cfg || !isWhole || config.dataType != stored.dataType)
        return std::nullopt;
    return RawDataOf(source.path, pipeline.Record().Record());
}

// As the bytes are the same, so are the codes that the same configuration makes of them.
void Exporter::WriteRaw(const RawData& raw, const Configuration& config)
{
    ComtradeWriter writer(base, IsContainer(), config, request.comtrade.encoding, texts);
    ReadRaw(raw, [&](const QByteArray& records) {
        Look();
        writer.WriteBytes(records);
    });
    writer.Finish();
    Look();
    try {
        const std::unique_ptr<Stream> back = ReadBack(config);
        const comtrade::Record& record = static_cast<const RecordStream&>(*back).Record();
        CompareRecord(record, config);
        const std::optional<RawData> written =
            RawDataOf(base + EndingsOf(IsContainer(), texts).first(), record);
        if (!written || !AreSame(raw, *written))
            FailWithDifference(config);
    } catch (const comtrade::Error& error) {
        throw Different(error.Message());
    }
}

// Only after a difference is it worth the time to find the place.
void Exporter::FailWithDifference(const Configuration& config)
{
    Pipeline again(source, request, plan, Pipeline::End::Form);
    const std::unique_ptr<Stream> back = ReadBack(config);
    throw Different(DifferenceOf(again.Last(), *back));
}

void Exporter::CompareRecord(const comtrade::Record& record, const Configuration& config) const
{
    CompareTexts({config, texts}, {record.Config(), {record.Header(), record.Information()}}, IsContainer());
}

// The digest of what was written, with its texts compared.
Digest Exporter::DigestOfWritten(const Configuration& config) const
{
    const std::unique_ptr<Stream> back = ReadBack(config);
    if (IsComtrade())
        CompareRecord(static_cast<const RecordStream&>(*back).Record(), config);
    Ahead ahead(*back);
    Digest digest(config.analog.size(), config.states.size());
    Block block;
    while (ahead.Next(block)) {
        Look();
        digest.Add(block);
    }
    return digest;
}

// What was read back before the end need not be read again, but for the texts.
void Exporter::Compare(const Configuration& config, const Digest& written, const std::optional<Digest>& found)
{
    try {
        if (found == written) {
            const std::unique_ptr<Stream> back = ReadBack(config);
            CompareRecord(static_cast<const RecordStream&>(*back).Record(), config);
        } else if (DigestOfWritten(config) != written)
            FailWithDifference(config);
    } catch (const comtrade::Error& error) {
        throw Different(error.Message());
    }
}

Exported Exporter::Run()
{
    OpenSource();
    MakePlan();
    if (request.changingOnly || NeedsCodes())
        Survey();
    for (bool isWritten = false; !isWritten;) {
        try {
            isWritten = Write();
            if (!isWritten) {
                CountSource();
                plan.total = plan.total.value_or(0);
                MakePlan();
            }
        } catch (const NotWhole&) {
            if (!plan.codes.empty())
                throw;
            plan.codes.resize(1);
            Survey();
        }
    }
    for (size_t i = 0; i < plan.codes.size(); ++i)
        if (plan.codes[i].isNeeded)
            result.newScales.push_back({i, std::fabs(result.config.analog[i].a) / 2});
    result.files = request.form == Form::Csv   ? QStringList{QStringLiteral(".csv")}
                   : request.form == Form::Mat ? QStringList{QStringLiteral(".mat")}
                                               : EndingsOf(IsContainer(), texts);
    return result;
}

} // namespace

Exported Export(const Source& source, const Request& request, const QString& base)
{
    return Exporter(source, request, base).Run();
}

} // namespace forms
