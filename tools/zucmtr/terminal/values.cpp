#include "zucmtr/terminal/values.h"

#include "comtrade/text.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <charconv>
#include <limits>

namespace values {

namespace {

template <class NumberType>
bool Parse(const std::string& text, NumberType& number)
{
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

// The number of bytes in a text such as "800M"; false if it is no size.
bool ParseSize(const QString& text, uint64_t& bytes)
{
    static const QString units = QStringLiteral("KMGTPE");
    static const QRegularExpression form(QStringLiteral("\\A(\\d+) *([%1]?)(?:(?<=[%1])I)?B?\\z").arg(units),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(text);
    bool fits = false;
    bytes = match.captured(1).toULongLong(&fits);
    const QString unit = match.captured(2).toUpper();
    const int shift = unit.isEmpty() ? 0 : 10 * (units.indexOf(unit) + 1);
    fits = fits && bytes <= std::numeric_limits<uint64_t>::max() >> shift;
    bytes <<= shift;
    return fits;
}

// The words to offer are in the validator's name, after this mark: all its other fields are in the help.
const char* const Offered = "offered: ";

std::string NameWith(const std::vector<std::string>& words)
{
    return Offered + CLI::detail::join(words, " ");
}

// check says what is wrong with a value, which it may rewrite; an empty text accepts it.
template <class Check>
CLI::Validator Checked(const Check& check, const std::string& name = std::string())
{
    return CLI::Validator([check](std::string& text) { return check(text).toStdString(); }, "", name);
}

} // namespace

CLI::Validator WholeNumber(int64_t lowest, int64_t highest)
{
    return Checked([=](std::string& text) {
        int64_t number = 0;
        if (!Parse(text, number) || number < lowest || number > highest)
            return Tr("values", "'%1' is wrong; give a whole number from %2 to %3")
                .arg(FromUtf8(text), QString::number(lowest), QString::number(highest));
        text = std::to_string(number);
        return QString();
    });
}

CLI::Validator Number(double lowest, double highest)
{
    return Checked([=](const std::string& text) {
        double number = 0;
        const bool good = Parse(text, number) && number >= lowest && number <= highest;
        return good ? QString()
                    : Tr("values", "'%1' is wrong; give a number from %2 to %3")
                          .arg(FromUtf8(text), QString::number(lowest), QString::number(highest, 'f', 0));
    });
}

CLI::Validator NumberBelow(double limit)
{
    return Checked([=](const std::string& text) {
        double number = 0;
        const bool good = Parse(text, number) && number > 0 && number < limit;
        return good ? QString()
                    : Tr("values", "'%1' is wrong; give a number above 0 and below %2")
                          .arg(FromUtf8(text), QString::number(limit, 'f', 0));
    });
}

CLI::Validator OneOf(const std::vector<std::string>& words)
{
    const auto check = [=](const std::string& text) {
        return std::find(words.begin(), words.end(), text) != words.end()
                   ? QString()
                   : Tr("values", "'%1' is wrong; give one of %2")
                         .arg(FromUtf8(text), FromUtf8(CLI::detail::join(words, ", ")));
    };
    return Checked(check, NameWith(words));
}

CLI::Validator Offer(const std::vector<std::string>& words)
{
    return Checked([](const std::string&) { return QString(); }, NameWith(words));
}

CLI::Validator Encoding()
{
    const auto check = [](const std::string& text) {
        return comtrade::IsEncoding(FromUtf8(text))
                   ? QString()
                   : Tr("values",
                        "there is no encoding '%1'; give a name such as UTF-8, CP1251, CP866, KOI8-R, "
                        "GBK or Latin-1")
                         .arg(FromUtf8(text));
    };
    return Checked(check, NameWith({"UTF-8", "CP1251", "CP866", "KOI8-R", "GBK", "Latin-1"}));
}

QStringList OfferedWords(CLI::Option& option)
{
    // The parser does not say how many validators there are; asking for one too many throws.
    try {
        for (int i = 0;; ++i) {
            const QString name = FromUtf8(option.get_validator(i)->get_name());
            if (name.startsWith(QLatin1String(Offered)))
                return name.mid(static_cast<int>(qstrlen(Offered))).split(QLatin1Char(' '));
        }
    } catch (const CLI::OptionNotFound&) {
        return {};
    }
}

CLI::Validator Size()
{
    return Checked([](std::string& text) {
        uint64_t bytes = 0;
        if (!ParseSize(FromUtf8(text), bytes))
            return Tr("values", "'%1' is wrong; give a size as 800M or 2G, or 0 for no limit")
                .arg(FromUtf8(text));
        text = std::to_string(bytes);
        return QString();
    });
}

void RefuseEmpty(CLI::App& app)
{
    const CLI::Validator option = Checked([](const std::string& text) {
        return text.empty() ? Tr("values", "the value is empty; give one, or leave the option out")
                            : QString();
    });
    const CLI::Validator argument = Checked([](const std::string& text) {
        return text.empty() ? Tr("values", "the path is empty; give one") : QString();
    });
    const auto takesValue = [](const CLI::Option* one) { return one->get_items_expected_max() > 0; };
    for (CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        for (CLI::Option* one : command->get_options(takesValue))
            one->check(one->nonpositional() ? option : argument);
        RefuseEmpty(*command);
    }
}

} // namespace values
