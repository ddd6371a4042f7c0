#include "zucmtr/commands/recordpair.h"

#include "comtrade/mark.h"
#include "explain/file.h"
#include "text/error.h"
#include "text/texts.h"
#include "verify/agreement.h"
#include "verify/source.h"
#include "verify/verifier.h"
#include "verify/wholeness.h"
#include "zucmtr/host/host.h"
#include "zucmtr/host/recordform.h"
#include "zucmtr/host/recordsource.h"
#include "zucmtr/terminal/command.h"

#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

#include <algorithm>

namespace {

// The texts of the configuration; of a container those before its data.
QByteArray TextsOf(const QString& record)
{
    constexpr qint64 most = qint64{16} << 20;
    constexpr qint64 step = 4096;
    QFile file(record);
    QByteArray texts;
    if (!file.open(QIODevice::ReadOnly))
        return texts;
    while (!file.atEnd() && texts.size() < most) {
        const QByteArray line = file.readLine(step);
        const std::optional<comtrade::Mark> mark = comtrade::MarkOf(line);
        if (mark && mark->kind == QLatin1String("DAT"))
            break;
        texts += line;
    }
    return texts;
}

// Nothing if the texts are the same in both encodings. A few damaged letters do not make another encoding.
std::optional<bool> IsUtf8(const QByteArray& texts)
{
    const auto letters =
        std::count_if(texts.begin(), texts.end(), [](char byte) { return (byte & 0x80) != 0; });
    if (letters == 0)
        return std::nullopt;
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(texts.constData(), texts.size(), &state);
    constexpr qint64 few = 8; // one in so many
    return state.invalidChars * few < letters;
}

RecordForm FormOfRecord(const QString& record, const comtrade::Configuration& configuration)
{
    RecordForm form;
    form.isContainer = QFileInfo(record).suffix().compare(QLatin1String("cff"), Qt::CaseInsensitive) == 0;
    form.isBinary = configuration.dataType != comtrade::DataType::Ascii;
    form.is1999 = configuration.revision == comtrade::Revision::R1999;
    form.isUtf8 = IsUtf8(TextsOf(record));
    return form;
}

// Whether the converter writes records of this form and with such names at all.
bool IsConvertersForm(const QString& record, const comtrade::Configuration& configuration)
{
    const QString suffix = QFileInfo(record).suffix();
    const bool isContainer = suffix == QLatin1String("cff");
    return (isContainer || suffix == QLatin1String("cfg")) &&
           (configuration.dataType == comtrade::DataType::Ascii ||
            configuration.dataType == comtrade::DataType::Binary) &&
           (!isContainer || configuration.revision != comtrade::Revision::R1999);
}

comtrade::Finding Wrong(const QString& record, const char* word, const QString& text)
{
    comtrade::Finding finding;
    finding.file = record;
    finding.severity = Severity::Error;
    finding.reason = word;
    finding.text = text;
    return finding;
}

class Pair
{
public:
    Pair(const QString& recording_, const QString& record_, const DeviceChoice& choice_, bool isPlain_)
        : recording(recording_), record(record_), isPlain(isPlain_)
    {
        CheckRecording(recording);
        const QString none = explain::NotARecord(record);
        if (!none.isEmpty())
            throw SourceError(record + QLatin1String(": ") + none);
        configuration = comtrade::Record(record).Config();
        choice = ChoiceForReading(recording, choice_, isPlain);
        verdict.ini = choice.ini;
        verdict.samples = configuration.SampleCount();
        verdict.analog = configuration.analog.size();
        verdict.states = configuration.states.size();
    }

    PairVerdict Judge()
    {
        std::unique_ptr<output::TemporaryFile> nameless;
        const ChangedIni ini(verdict.ini.isEmpty() ? MakeNameless(nameless) : choice,
                             FormOfRecord(record, configuration).Keys());
        Host host{QString()};
        LoadDevice(host, ini);
        const DeviceChoice& loaded = ini.Choice();
        verify::Verifier verifier(loaded.ini, loaded.defaults, loaded.device);
        const verify::Source source(verifier.Parameters(), recording);
        if (!verdict.ini.isEmpty() && CompareBytes(verifier))
            return verdict;
        CompareSamples(source);
        return verdict;
    }

private:
    DeviceChoice MakeNameless(std::unique_ptr<output::TemporaryFile>& file) const
    {
        file = std::make_unique<output::TemporaryFile>(NamelessIni(recording));
        CheckIsWritten(*file);
        DeviceChoice nameless = NamelessChoice();
        nameless.ini = file->Path();
        return nameless;
    }

    bool CompareBytes(verify::Verifier& verifier)
    {
        if (!IsConvertersForm(record, configuration))
            return false;
        const QFileInfo file(record);
        difference =
            text::FailureOf([&] { verifier.Check(recording, file.path(), file.completeBaseName()); });
        if (!difference)
            verdict.extent = Extent::Bytes;
        return !difference;
    }

    void CompareSamples(const verify::Source& source)
    {
        verdict.values = verify::CompareValues(record, source);
        const verify::ColumnChannels& channels = verdict.values.channels;
        if (channels.analog.empty() && channels.states.empty() && !verdict.values.wrong.IsEmpty()) {
            verdict.wrong = verdict.values.wrong;
            return;
        }
        verdict.extent = Extent::Samples;
        wholeness = verify::WholenessOf(record);
        isConverters =
            wholeness.isConverters || (verify::HasConvertersLines(record) &&
                                       QFileInfo(record).completeBaseName() == source.RecordName());
        comtrade::Findings texts;
        if (!verdict.ini.isEmpty())
            verify::CompareTexts(record, source, channels, texts);
        if (difference && IsAsConverted() && (!verdict.values.wrong.IsEmpty() || texts.IsEmpty()))
            verdict.wrong.Add(Wrong(record, reason::BytesDiffer, *difference));
        Take(verdict.values.wrong);
        const bool agrees = TakeAgreement();
        if (!verdict.ini.isEmpty())
            JudgeTexts(texts, agrees);
        else if (isPlain)
            verdict.limit = Tr("verify command", "texts were not compared, as --plain is given");
        else
            verdict.limit = Tr("verify command", "texts were not compared, as no ini file was found");
    }

    // Whether it has to be what convert writes, to the byte.
    bool IsAsConverted() const
    {
        return isConverters && verdict.values.channels.IsIdentity() &&
               verdict.values.HasAll(verdict.analog, verdict.states);
    }

    void Take(const comtrade::Findings& findings)
    {
        for (const comtrade::Finding& finding : findings.All())
            verdict.wrong.Add(finding);
    }

    // What the pieces of the record say of each other. Whatever is wrong with samples is known already.
    bool TakeAgreement()
    {
        bool agrees = true;
        for (const comtrade::Finding& finding : wholeness.wrong.All()) {
            const QLatin1String word(finding.reason);
            if (word != QLatin1String(reason::PiecesDiffer) && word != QLatin1String(reason::PieceMissing))
                continue;
            verdict.wrong.Add(finding);
            agrees = false;
        }
        return agrees;
    }

    // Names that are not those of the ini file are damage, or the record has other settings: those are in all
    // its pieces alike, damage is in one of them.
    void JudgeTexts(const comtrade::Findings& texts, bool agrees)
    {
        if (texts.IsEmpty()) {
            verdict.extent = Extent::Names;
            verdict.limit =
                isConverters && !verdict.values.channels.IsIdentity()
                    ? Tr("verify command", "the channels are in another order than '%1' gives them")
                          .arg(verdict.ini)
                    : Tr("verify command", "its bytes were not, as 'zucmtr convert' did not write them");
            return;
        }
        if (wholeness.isConverters && agrees) {
            verdict.limit = Tr("verify command", "the record has other settings than '%1' (%2)")
                                .arg(verdict.ini, texts.All().front().text);
            return;
        }
        Take(texts);
        verdict.hint =
            Tr("verify command",
               "if the record was made with other settings than '%1', --plain leaves its texts out")
                .arg(verdict.ini);
    }

    const QString recording;
    const QString record;
    const bool isPlain;
    DeviceChoice choice;
    comtrade::Configuration configuration;
    std::optional<QString> difference; // the first one to the record that convert writes
    verify::Wholeness wholeness;
    bool isConverters = false; // by its pieces or its name
    PairVerdict verdict;
};

} // namespace

PairVerdict ComparePair(const QString& recording, const QString& record, const DeviceChoice& choice,
                        bool isPlain)
{
    return Pair(recording, record, choice, isPlain).Judge();
}
