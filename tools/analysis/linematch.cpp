#include "analysis/linematch.h"

#include <QRegularExpression>

#include <algorithm>

namespace analysis {

namespace {

// The letters and digits of a name.
QString Bare(const QString& name)
{
    static const QRegularExpression kilovolts(QStringLiteral("(\\d)\\s*(кВ|kV)\\b"),
                                              QRegularExpression::CaseInsensitiveOption |
                                                  QRegularExpression::UseUnicodePropertiesOption);
    QString text = name;
    text.replace(kilovolts, QStringLiteral("\\1 "));
    QString bare;
    for (const QChar character : qAsConst(text))
        if (character.isLetterOrNumber())
            bare += character.toLower();
    return bare;
}

bool Has(const std::vector<Circuit>& circuits, const QString& name)
{
    return std::any_of(circuits.begin(), circuits.end(),
                       [&](const Circuit& circuit) { return circuit.name == name; });
}

} // namespace

bool IsSameName(const QString& a, const QString& b)
{
    if (a == b)
        return true;
    const QString bare = Bare(a);
    return !bare.isEmpty() && bare == Bare(b);
}

QString CircuitNamed(const QString& name, const std::vector<Circuit>& circuits, const ChannelKinds& kinds)
{
    if (name.isEmpty() || Has(circuits, name))
        return name;
    QString ofEquipment = kinds.CircuitOf(name);
    if (!ofEquipment.isEmpty())
        return ofEquipment;
    const QString bare = Bare(name);
    QStringList alike;
    for (const Circuit& circuit : circuits)
        if (!bare.isEmpty() && Bare(circuit.name) == bare)
            alike << circuit.name;
    return alike.size() == 1 ? alike.first() : QString();
}

Lines LinesOf(const Lines& lines, const std::vector<Circuit>& circuits, const ChannelKinds& kinds)
{
    Lines matched;
    for (const Line& line : lines) {
        Line known = line;
        known.circuit = CircuitNamed(line.circuit, circuits, kinds);
        known.voltages = CircuitNamed(line.voltages, circuits, kinds);
        known.parallel = CircuitNamed(line.parallel, circuits, kinds);
        const bool isTwice = std::any_of(matched.begin(), matched.end(),
                                         [&](const Line& other) { return other.circuit == known.circuit; });
        if (!known.circuit.isEmpty() && !isTwice && (known.IsKnown() || !known.voltages.isEmpty()))
            matched.push_back(known);
    }
    return matched;
}

const Line* LineOf(const QString& circuit, const Lines& lines)
{
    const auto found =
        std::find_if(lines.begin(), lines.end(), [&](const Line& line) { return line.circuit == circuit; });
    return found == lines.end() ? nullptr : &*found;
}

const Circuit* VoltagesOf(const Circuit& circuit, const std::vector<Circuit>& circuits, const Line* line)
{
    const Circuit* only = nullptr;
    bool isOnly = true;
    for (const Circuit& other : circuits) {
        if (!other.HasVoltages())
            continue;
        if (line != nullptr && !line->voltages.isEmpty() && other.name == line->voltages)
            return &other;
        isOnly = isOnly && only == nullptr;
        only = &other;
    }
    if (circuit.HasVoltages())
        return &circuit;
    return isOnly ? only : nullptr;
}

} // namespace analysis
