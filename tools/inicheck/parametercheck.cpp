#include "inicheck/checks.h"
#include "inicheck/nearest.h"

#include "base/codecs.h"
#include "config/deviceinikeys.h"
#include "text/texts.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QVariant>

namespace inicheck {

namespace {

const char* const ObjectKey = "Объект";
const char* const SourceKey = "Источник";
const char* const SubjectKey = "Субъект";
const char* const RenameKey = "Переименовать сигналы Comtrade";
const char* const Utf8Key = "Кодировка Comtrade UTF8";
const char* const CffKey = "Тип Comtrade CFF";
const char* const RevisionKey = "Тип Comtrade 1999";
const char* const DeletionKey = "Удалять исходные";

enum class Reading { Stored, Absent, Bad };

Reading ReadingOf(const DeviceKeyRule& rule, const QString& value)
{
    if (rule.isText)
        return value.isEmpty() ? Reading::Absent : Reading::Stored;
    bool ok = false;
    const int number = QVariant(value).toInt(&ok); // as the converter does
    if (number == -1)
        return Reading::Absent;
    return ok && number >= rule.lowest && number <= rule.highest ? Reading::Stored : Reading::Bad;
}

class ParameterCheck
{
public:
    ParameterCheck(const IniLines& ini_, const QString& section_, const QString& defaults_,
                   Findings& findings_)
        : ini(ini_), section(section_), defaults(defaults_), findings(findings_)
    {}

    void Run()
    {
        for (const DeviceKeyRule& rule : DeviceKeyRules())
            CheckKey(rule);
        if (!taken.isEmpty())
            Say(ini.LineOfSection(section), Severity::Note, reason::TakenFromDefaults,
                Tr("check", "taken from [%1]: %2").arg(defaults, taken.join(QLatin1String(", "))));
        CheckUnknown();
        inicheck::CheckIdentity(ini, section, section, findings);
        CheckFileNames();
        CheckCodePage();
        CheckCombination();
    }

private:
    bool IsDefaults() const { return section == defaults; }

    void Say(int line, Severity severity, const char* reason, const QString& text)
    {
        findings.push_back({line, severity, reason, text});
    }

    void CheckKey(const DeviceKeyRule& rule)
    {
        const QString key = QString::fromUtf8(rule.key);
        const IniLine* line = ini.Find(section, key);
        if (rule.onlyWhenRenaming && !IsOn(RenameKey)) {
            if (line != nullptr)
                Say(line->number, Severity::Note, reason::NotAskedFor,
                    Tr("check", "'%1' is not read while '%2' is 0").arg(key, QString::fromUtf8(RenameKey)));
            return;
        }
        const Reading reading = line == nullptr ? Reading::Absent : ReadingOf(rule, line->value);
        if (reading == Reading::Bad)
            Say(line->number, Severity::Error, reason::NumberOutOfRange,
                Tr("check", "'%1' is '%2', which is no whole number from %3 to %4: the section does not load")
                    .arg(key, line->value, QString::number(rule.lowest), QString::number(rule.highest)));
        else if (reading == Reading::Absent)
            SayAbsent(rule, key, line);
        else if (!rule.isText)
            CheckWidth(*line);
    }

    // The converter accepts numbers with more bits than it keeps.
    void CheckWidth(const IniLine& line)
    {
        const int number = QVariant(line.value).toInt();
        if (line.value.toLongLong() != number)
            Say(line.number, Severity::Warning, reason::NumberTooLarge,
                Tr("check", "'%1' is too large and is taken as %2; give the number that is meant")
                    .arg(line.value, QString::number(number)));
    }

    void SayAbsent(const DeviceKeyRule& rule, const QString& key, const IniLine* line)
    {
        if (IsDefaults() && rule.obligatory)
            Say(line == nullptr ? ini.LineOfSection(section) : line->number, Severity::Error,
                reason::KeyMissing,
                Tr("check", "'%1' is missing: the section does not load; add it").arg(key));
        else if (!IsDefaults() && line != nullptr)
            Say(line->number, Severity::Note, reason::TakenFromDefaults,
                Tr("check", "'%1' counts as absent: it is taken from [%2]").arg(key, defaults));
        else if (!IsDefaults() && ini.Find(defaults, key) != nullptr)
            taken << key;
    }

    void CheckUnknown()
    {
        QStringList known = {QStringLiteral("nAnMax"), QStringLiteral("nDiMax"), QStringLiteral("nBayMax")};
        for (const DeviceKeyRule& rule : DeviceKeyRules())
            known << QString::fromUtf8(rule.key);
        for (const IniLine* line : ini.EntriesOf(section)) {
            const QString& key = line->key;
            if (known.contains(key) || IsDictionaryKey(key) || key.startsWith(QLatin1Char(';')) ||
                key.startsWith(QLatin1Char('#')))
                continue;
            const QString latin = WithLatinLetters(key);
            const QString nearest = IsDictionaryKey(latin) ? latin : Nearest(key, known);
            Say(line->number, Severity::Warning, reason::UnknownKey,
                Tr("check", "ignored: there is no key '%1'").arg(key) + MeantText(nearest));
        }
    }

    // Texts that become part of file names.
    void CheckFileNames()
    {
        static const QRegularExpression left(QStringLiteral("[\"\\\\/:*?<>|]"));
        for (const char* key : {ObjectKey, SourceKey, SubjectKey}) {
            const IniLine* line = ini.Find(section, QString::fromUtf8(key));
            if (line == nullptr)
                continue;
            if (line->value.contains(left))
                Say(line->number, Severity::Note, reason::CharactersLeftOut,
                    Tr("check",
                       "the characters \" \\ / : * ? < > | of '%1' are left out of the names of files")
                        .arg(QString::fromUtf8(key)));
        }
    }

    void CheckCodePage()
    {
        if (IsOn(Utf8Key))
            return;
        const QTextCodec& codec = *zu::CodecCP1251;
        for (const IniLine* line : ini.EntriesOf(section)) {
            if (!codec.canEncode(line->value))
                Say(line->number, Severity::Warning, reason::LettersLost,
                    Tr("check", "'%1' holds letters that CP1251 lacks, which become '?' in the record; take "
                                "others, or set '%2' to 1")
                        .arg(line->key, QString::fromUtf8(Utf8Key)));
        }
    }

    void CheckCombination()
    {
        if (IsOn(CffKey) && IsOn(RevisionKey))
            Say(LineOf(CffKey, RevisionKey), Severity::Warning, reason::CffIgnored,
                Tr("check", "'%1' is ignored beside '%2': the record has separate files")
                    .arg(QString::fromUtf8(CffKey), QString::fromUtf8(RevisionKey)));
        if (IsOn(DeletionKey))
            Say(LineOf(DeletionKey, DeletionKey), Severity::Note, reason::RecordingsDeleted,
                Tr("check", "the recordings are deleted before anybody can compare their records; 'zucmtr "
                            "convert --remove-source' deletes each one after its record is verified"));
    }

    // The value in force: the section's own, else that of the defaults.
    bool IsOn(const char* key) const
    {
        const QString name = QString::fromUtf8(key);
        const IniLine* line = ini.Find(section, name);
        if (line == nullptr || QVariant(line->value).toInt() == -1)
            line = ini.Find(defaults, name);
        return line != nullptr && QVariant(line->value).toInt() == 1;
    }

    int LineOf(const char* first, const char* second) const
    {
        for (const char* key : {first, second}) {
            if (const IniLine* line = ini.Find(section, QString::fromUtf8(key)))
                return line->number;
        }
        return ini.LineOfSection(section);
    }

    const IniLines& ini;
    const QString section;
    const QString defaults;
    Findings& findings;
    QStringList taken;
};

} // namespace

bool IsDictionaryKey(const QString& key)
{
    static const QRegularExpression pattern(QStringLiteral("\\A(?:n(?:An|Di|Bay)Max|(?:A|D|BAY)[0-9]+)\\z"));
    return pattern.match(key).hasMatch();
}

void CheckIdentity(const IniLines& ini, const QString& section, const QString& defaults, Findings& findings)
{
    for (const char* key : {ObjectKey, SourceKey}) {
        const QString name = QString::fromUtf8(key);
        const IniLine* line = ini.Find(section, name);
        if (line == nullptr || line->value.isEmpty())
            line = ini.Find(defaults, name);
        if (line != nullptr)
            CheckRecordText(line->number, name, line->value, findings);
    }
}

void CheckParameters(const IniLines& ini, const QString& section, const QString& defaults, Findings& findings)
{
    ParameterCheck(ini, section, defaults, findings).Run();
}

} // namespace inicheck
