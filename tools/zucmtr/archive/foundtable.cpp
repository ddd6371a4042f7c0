#include "zucmtr/archive/foundtable.h"

#include "analysis/summary.h"
#include "catalogue/foundcolumns.h"
#include "text/columns.h"
#include "text/texts.h"

#include <QDir>

#include <algorithm>
#include <numeric>

namespace archive {

namespace {

constexpr int Gap = 2; // blanks in front of each column

struct Column
{
    const char* head;
    bool isRight;
    int least;   // letters that a name may be shortened to; 0: it is shown whole
    int leaving; // the column with the lowest number is left out first; 0: it always stays
};

const Column Columns[] = {
    {QT_TRANSLATE_NOOP("archive", "Trigger"), false, 0, 0},
    {QT_TRANSLATE_NOOP("archive", "Station"), false, 10, 2},
    {QT_TRANSLATE_NOOP("archive", "Circuit"), false, 14, 4},
    {QT_TRANSLATE_NOOP("archive", "Fault"), false, 0, 0},
    {QT_TRANSLATE_NOOP("archive", "Cleared"), true, 0, 0},
    {QT_TRANSLATE_NOOP("archive", "Current"), true, 0, 3},
    {QT_TRANSLATE_NOOP("archive", "Distance"), true, 0, 1},
    {QT_TRANSLATE_NOOP("archive", "File"), false, 20, 0},
};
constexpr size_t FileColumn = std::size(Columns) - 1;

QString TextOf(const sql::Row& row, const char* column)
{
    return row.Text(catalogue::FoundPlace(column));
}

std::optional<double> NumberOf(const sql::Row& row, const char* column)
{
    const int place = catalogue::FoundPlace(column);
    return row.IsNull(place) ? std::nullopt : std::optional<double>(row.Real(place));
}

// To the millisecond, without the offset from UTC: the recorder's clock is what people compare with.
QString TimeText(const QString& iso)
{
    return iso.left(23).replace(QLatin1Char('T'), QLatin1Char(' '));
}

QString CurrentText(const std::optional<double>& amperes)
{
    if (!amperes)
        return QString();
    return *amperes >= 1000 ? Tr("archive", "%1 kA").arg(analysis::Decimal(*amperes / 1000, 2))
                            : Tr("archive", "%1 A").arg(analysis::Decimal(*amperes, 0));
}

QString FaultText(const sql::Row& row)
{
    return TextOf(row, "reason").isEmpty() ? TextOf(row, "fault_kind") : Tr("archive", "unreadable");
}

// Of a path the end is worth more than the start.
QString Shortened(const QString& text, int width, bool keepsEnd)
{
    static const QChar dots(0x2026);
    if (text.size() <= width)
        return text;
    return keepsEnd ? dots + text.right(width - 1) : text.left(width - 1) + dots;
}

int Sum(const std::vector<int>& widths)
{
    return std::accumulate(widths.begin(), widths.end(), 0,
                           [](int sum, int width) { return width < 0 ? sum : sum + width + Gap; });
}

// Leaves columns out (-1) until the others fit when they are shortened, then shortens those.
void Fit(std::vector<int>& widths, int width)
{
    const auto least = [](size_t i, int whole) {
        return whole < 0 || Columns[i].least == 0 ? whole : std::min(whole, Columns[i].least);
    };
    for (int leaving = 1; leaving <= 4; ++leaving) {
        std::vector<int> shortest = widths;
        for (size_t i = 0; i < widths.size(); ++i)
            shortest[i] = least(i, widths[i]);
        if (Sum(shortest) <= width)
            break;
        for (size_t i = 0; i < widths.size(); ++i) {
            if (Columns[i].leaving == leaving)
                widths[i] = -1;
        }
    }
    for (size_t i = widths.size(); i-- > 0;) {
        const int excess = Sum(widths) - width;
        if (excess > 0)
            widths[i] = std::max(least(i, widths[i]), widths[i] - excess);
    }
}

} // namespace

QString ShownPath(const QString& path)
{
    static const QDir here;
    const QString relative = here.relativeFilePath(path);
    if (relative.startsWith(QLatin1String("../")))
        return path;
    return relative.startsWith(QLatin1Char('-')) ? QLatin1String("./") + relative : relative;
}

QString WrongLine(const QString& path, const QString& stored, const QString& text)
{
    const int end = text.indexOf(stored + QLatin1String(": "));
    return ShownPath(path) + QLatin1String(": ") + (end < 0 ? text : text.mid(end + stored.size() + 2));
}

void FoundTable::Add(const sql::Row& row, const QString& path)
{
    const std::optional<double> duration = NumberOf(row, "fault_duration");
    const std::optional<double> km = NumberOf(row, "distance_km");
    const QString faulted = TextOf(row, "fault_circuit");
    rows.push_back({TimeText(TextOf(row, "trigger_time")), TextOf(row, "station"),
                    faulted.isEmpty() ? TextOf(row, "circuit") : faulted, FaultText(row),
                    duration ? analysis::DurationText(*duration) : QString(),
                    CurrentText(NumberOf(row, "fault_current")),
                    km ? Tr("archive", "%1 km").arg(analysis::Decimal(*km, 1)) : QString(), path});
}

QStringList FoundTable::Lines(int width) const
{
    QStringList heads;
    for (const Column& column : Columns)
        heads << Tr("archive", column.head);
    std::vector<QStringList> table = {heads};
    table.insert(table.end(), rows.begin(), rows.end());
    std::vector<int> widths(std::size(Columns), 0);
    for (const QStringList& row : table) {
        for (size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], static_cast<int>(row[static_cast<int>(i)].size()));
    }
    if (width > 0)
        Fit(widths, width);
    std::vector<bool> right;
    for (size_t i = 0; i < widths.size(); ++i) {
        if (widths[i] >= 0)
            right.push_back(Columns[i].isRight);
    }
    for (QStringList& row : table) {
        QStringList cells;
        for (size_t i = 0; i < widths.size(); ++i) {
            if (widths[i] >= 0)
                cells << Shortened(row[static_cast<int>(i)], widths[i], i == FileColumn);
        }
        row = cells;
    }
    return text::Aligned(table, right);
}

} // namespace archive
