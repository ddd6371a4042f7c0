#include "analysis/channelkinds.h"

#include "dictionary/guess.h"

#include <QRegularExpression>

namespace analysis {

namespace {

bool Matches(const QRegularExpression& expression, const QString& text)
{
    return expression.match(text).hasMatch();
}

QRegularExpression Words(const char* pattern)
{
    return QRegularExpression(QString::fromUtf8(pattern), QRegularExpression::CaseInsensitiveOption |
                                                              QRegularExpression::UseUnicodePropertiesOption);
}

bool IsReclosing(const QString& name)
{
    static const QRegularExpression words = Words("\\b[БОТУ]{0,2}АПВ\\b|reclos|\\bAR\\b|\\b79\\b");
    return Matches(words, name);
}

// Both contacts of a breaker have one type: the name says which one it is. Nothing else is expected of a
// contact than that it is closed with the breaker.
bool IsOpenContact(const QString& name)
{
    static const QRegularExpression words = Words("отключ|\\bРПО\\b|\\bopen|\\b52b\\b");
    return Matches(words, name);
}

ChannelKind KindOf(const StatusInfo& info, const QString& name)
{
    const bool isAutomation = info.group == QLatin1String("Control_Automation");
    if (info.type == QLatin1String("Tripping"))
        return ChannelKind::Trip;
    if (info.type == QLatin1String("Status_Breaker"))
        return ChannelKind::Breaker;
    if (info.type == QLatin1String("Logic") || info.type == QLatin1String("Output_Relay") || isAutomation)
        return info.type != QLatin1String("Protection_Outage") && IsReclosing(name) ? ChannelKind::Reclosing
                                                                                    : ChannelKind::Other;
    if (info.type != QLatin1String("Starting") || info.group == QLatin1String("Emergency_Control_Automation"))
        return ChannelKind::Other; // there it is a command over a channel, sent or received
    return IsReclosing(name) ? ChannelKind::Reclosing : ChannelKind::Start;
}

ChannelKind KindOf(const dictionary::Status& guess, const QString& name)
{
    if (guess.type == QLatin1String("FD"))
        return ChannelKind::Trip;
    if (guess.type == QLatin1String("SBC") || guess.type == QLatin1String("SBO"))
        return ChannelKind::Breaker;
    if (guess.type.startsWith(QLatin1String("ODC")))
        return ChannelKind::Other;
    if (IsReclosing(name))
        return ChannelKind::Reclosing;
    return guess.type == QLatin1String("ID") ? ChannelKind::Start : ChannelKind::Other;
}

} // namespace

const char* NameOf(ChannelKind kind)
{
    switch (kind) {
    case ChannelKind::Start:
        return "start";
    case ChannelKind::Trip:
        return "trip";
    case ChannelKind::Breaker:
        return "breaker";
    case ChannelKind::Reclosing:
        return "reclosing";
    case ChannelKind::Other:
        break;
    }
    return "other";
}

QString SignalName(const comtrade::StateChannel& channel)
{
    QString name = channel.name;
    if (!channel.circuit.isEmpty())
        name.remove(channel.circuit);
    name = name.trimmed();
    if (name.startsWith(QLatin1Char(':')))
        name = name.mid(1).trimmed();
    return name.isEmpty() ? channel.name : name;
}

ChannelKinds::ChannelKinds(const comtrade::Configuration& config_, const QString& information)
    : config(config_), known(StatusInfoOf(information))
{}

// A section that names another signal is of another channel, whatever its number.
const StatusInfo* ChannelKinds::InfoOf(const comtrade::StateChannel& channel) const
{
    const auto found = known.find(channel.number);
    if (found == known.end())
        return nullptr;
    const QString signal = found->second.id.section(QLatin1Char(':'), -1).trimmed();
    return channel.name.contains(signal) ? &found->second : nullptr;
}

ChannelUse ChannelKinds::Of(size_t channel) const
{
    const comtrade::StateChannel& one = config.states[channel];
    const QString name = SignalName(one);
    const StatusInfo* info = InfoOf(one);
    ChannelUse use;
    if (info != nullptr) {
        use.kind = KindOf(*info, name);
        use.active = use.kind == ChannelKind::Breaker ? !IsOpenContact(name) : !one.normalState;
        return use;
    }
    const dictionary::Status guess = dictionary::GuessStatus(name);
    use.kind = KindOf(guess, name);
    use.active = use.kind == ChannelKind::Breaker ? guess.type == QLatin1String("SBC") : !one.normalState;
    return use;
}

QString ChannelKinds::CircuitOf(const QString& equipment) const
{
    for (const comtrade::StateChannel& channel : config.states) {
        const StatusInfo* info = InfoOf(channel);
        if (info != nullptr && info->id.section(QLatin1Char(':'), 0, 0).trimmed() == equipment)
            return channel.circuit;
    }
    return QString();
}

} // namespace analysis
