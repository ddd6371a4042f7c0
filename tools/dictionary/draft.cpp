#include "dictionary/draft.h"

#include "config/QSettingsRu.h"
#include "config/deviceinikeys.h"
#include "text/texts.h"

#include <QSet>

namespace dictionary {

namespace {

// Why the ini file cannot hold the name as the value of an entry; empty if it can.
QString Obstacle(const QString& name)
{
    if (name.trimmed().isEmpty())
        return Tr("dictionary", "it is empty");
    if (name != name.trimmed())
        return Tr("dictionary", "it starts or ends with a blank");
    for (const QChar character : name) {
        if (character == QLatin1Char(','))
            return Tr("dictionary", "it holds a comma");
        if (character == QLatin1Char(';'))
            return Tr("dictionary", "it holds a semicolon");
        if (character.category() == QChar::Other_Control)
            return Tr("dictionary", "it holds a control character");
    }
    return QString();
}

// Makes any text safe for a comment line.
QString Harmless(QString text)
{
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char('?');
        if (character == QLatin1Char('=')) // a line with one is an entry, even if nothing reads it
            character = QLatin1Char('-');
    }
    return text;
}

// What is left to be decided by a person.
QStringList Doubts(const Guess& guess, bool isComplete)
{
    QStringList doubts;
    if (!guess.levelFromName)
        doubts << Tr("dictionary", "no voltage level in the name");
    if (!isComplete)
        doubts << Tr("dictionary", "not all groups could be guessed: add V_L, E_G and the others");
    return doubts;
}

// One kind of channel, and how its entries are written.
struct Kind
{
    const char* prefix;
    const char* maximum;
    Guess (*guess)(const Signal&, const Levels&);
    QString (*parameters)(const Guess&);
    QStringList (*codes)(const Guess&);
};

QString EquipmentParameters(const Guess& guess)
{
    return QStringLiteral("V_L=%1 E_G=%2").arg(guess.kilovolts).arg(guess.equipmentGroup);
}

const Kind Analog = {"A", "nAnMax", GuessAnalog,
                     [](const Guess& guess) {
                         return EquipmentParameters(guess) + QStringLiteral(" S_G=") + guess.signalGroup;
                     },
                     [](const Guess& guess) { return QStringList{guess.equipmentGroup, guess.signalGroup}; }};

const Kind Discrete = {"D", "nDiMax", GuessDiscrete,
                       [](const Guess& guess) {
                           return EquipmentParameters(guess) + QStringLiteral(" D_G=") + guess.deviceGroup +
                                  QStringLiteral(" S_T=") + guess.statusType;
                       },
                       [](const Guess& guess) {
                           return QStringList{guess.equipmentGroup, guess.deviceGroup, guess.statusType};
                       }};

QString EntryLine(const Kind& kind, unsigned int number, const Signal& signal, const Levels& levels)
{
    const Guess guess = kind.guess(signal, levels);
    const bool isComplete = !kind.codes(guess).contains(QString());
    const QStringList doubts = Doubts(guess, isComplete);
    QString line =
        QSettingsRu::NumberedKey(QLatin1String(kind.prefix), number) + QLatin1Char('=') + signal.name;
    if (isComplete)
        line += QLatin1Char(',') + kind.parameters(guess);
    line += QStringLiteral(" ; ") + Tr("dictionary", "guess");
    if (!doubts.isEmpty())
        line += QStringLiteral(": ") + doubts.join(QStringLiteral("; "));
    return line;
}

// The entries of one kind; adds the names of the equipment.
void AddEntries(const Kind& kind, const std::vector<Signal>& channels, const Levels& levels,
                QStringList& lines)
{
    QStringList entries;
    QSet<QString> seen;
    unsigned int number = 0;
    for (const Signal& signal : channels) {
        const QString obstacle = Obstacle(signal.name);
        if (!obstacle.isEmpty()) {
            entries << QStringLiteral("; ") + Tr("dictionary", "[%1] cannot be in the dictionary: %2")
                                                  .arg(Harmless(signal.name), obstacle);
        } else if (seen.contains(signal.name)) {
            entries << QStringLiteral("; ") +
                           Tr("dictionary", "[%1] is there already: another channel has the same name")
                               .arg(Harmless(signal.name));
        } else {
            seen.insert(signal.name);
            entries << EntryLine(kind, ++number, signal, levels);
        }
    }
    lines << QString::fromLatin1(kind.maximum) + QStringLiteral("=%1").arg(number) << entries;
}

// One bay for each piece of equipment, with its name as display text.
void AddBays(const std::vector<Signal>& channels, QStringList& lines)
{
    QStringList names;
    QSet<QString> seen;
    for (const Signal& signal : channels) {
        const QString name = EquipmentOf(signal.name);
        if (!signal.name.contains(QLatin1Char(':')) || !Obstacle(name).isEmpty() || seen.contains(name))
            continue;
        seen.insert(name);
        names << name;
    }
    lines << QStringLiteral("nBayMax=%1").arg(names.size());
    for (int i = 0; i < names.size(); ++i)
        lines << QSettingsRu::NumberedKey(QStringLiteral("BAY"), static_cast<unsigned int>(i) + 1) +
                     QLatin1Char('=') + names[i] + QLatin1Char(',') + names[i] + QStringLiteral(" ; ") +
                     Tr("dictionary",
                        "guess: the text to show, and after a comma the circuit of its voltages");
}

} // namespace

QStringList DictionaryLines(const std::vector<Signal>& analog, const std::vector<Signal>& discrete)
{
    std::vector<Signal> all = analog;
    all.insert(all.end(), discrete.begin(), discrete.end());
    const Levels levels = LevelsOf(all);
    QStringList lines;
    AddEntries(Analog, analog, levels, lines);
    AddEntries(Discrete, discrete, levels, lines);
    AddBays(all, lines);
    return lines;
}

QStringList LineDataDraft(const std::vector<Signal>& analog)
{
    QStringList names;
    QSet<QString> withVoltages;
    const Levels levels = LevelsOf(analog);
    for (const Signal& signal : analog) {
        const Guess guess = GuessAnalog(signal, levels);
        const QString name = EquipmentOf(signal.name);
        if (guess.signalGroup == QLatin1String("VT"))
            withVoltages.insert(name);
        const bool isLine =
            guess.equipmentGroup == QLatin1String("L") && guess.signalGroup == QLatin1String("CT");
        if (isLine && Obstacle(name).isEmpty() && !names.contains(name))
            names << name;
    }
    QStringList lines = {QStringLiteral("; ") + Tr("dictionary",
                                                   "length in km, r1 x1 r0 x0 in primary ohms per "
                                                   "km, with a decimal point")};
    for (const QString& name : names) {
        lines << QString() << QLatin1Char('[') + name + QLatin1Char(']');
        lines << QStringLiteral("length=") << QStringLiteral("r1=") << QStringLiteral("x1=")
              << QStringLiteral("r0=") << QStringLiteral("x0=");
        if (!withVoltages.contains(name))
            lines << QStringLiteral("voltages= ; ") +
                         Tr("dictionary", "the circuit whose voltages serve this line");
    }
    return lines;
}

QStringList CompleteIni(const QString& section, const QString& identity, const QStringList& dictionary)
{
    const QString mark = QStringLiteral(" ; ") + Tr("dictionary", "to be filled in");
    QMap<QString, QString> values;
    for (const DeviceKeyRule& rule : DeviceKeyRules()) {
        if (rule.isText && rule.sample != nullptr)
            values.insert(QString::fromUtf8(rule.key), QString::fromUtf8(rule.sample) + mark);
    }
    values[QStringLiteral("Источник")] = Obstacle(identity).isEmpty() ? identity : QStringLiteral("Source");
    const QStringList device = {QString(), QLatin1Char('[') + section + QLatin1Char(']')};
    return DefaultsLines(QStringLiteral("Default"), values) + device + dictionary;
}

} // namespace dictionary
