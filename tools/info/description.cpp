#include "info/description.h"

#include "comtrade/record.h"
#include "text/columns.h"
#include "text/findingline.h"
#include "text/texts.h"

#include <QJsonArray>

#include <algorithm>
#include <new>

namespace info {

void Description::Add(const char* key, const QString& label, const QString& text)
{
    facts.push_back({key, label, text, text});
}

void Description::Add(const char* key, const QString& label, const QJsonValue& value, const QString& text)
{
    facts.push_back({key, label, value, text});
}

void Description::Add(const char* key, const QString& label, const Cell& cell)
{
    facts.push_back({key, label, cell.value, cell.text});
}

void Description::AddForPrograms(const char* key, const QJsonValue& value)
{
    facts.push_back({key, QString(), value, QString()});
}

void Description::Fail(const char* word, const QString& text)
{
    reason = word;
    error = text;
}

Description Describe(const QString& path, const QString& encoding)
{
    Description description;
    description.encoding = encoding;
    const bool isRecord = comtrade::IsRecordFile(path);
    description.file = path;
    description.kind = isRecord ? QStringLiteral("record") : QStringLiteral("recording");
    try {
        isRecord ? DescribeRecord(description) : DescribeRecording(description);
    } catch (const std::bad_alloc&) {
        description.Fail(reason::OutOfMemory, Tr("info", "needs more memory than --max-memory allows"));
    }
    return description;
}

namespace {

// "label:   text", with the texts aligned.
QStringList FactLines(const std::vector<Fact>& facts)
{
    int width = 0;
    for (const Fact& fact : facts)
        width = std::max(width, int(fact.label.size()));
    QStringList lines;
    for (const Fact& fact : facts) {
        if (fact.label.isEmpty())
            continue;
        lines << QStringLiteral("  ") + (fact.label + QLatin1Char(':')).leftJustified(width + 3) + fact.text;
    }
    return lines;
}

// Numbers are right-aligned.
QStringList TableLines(const Table& table)
{
    std::vector<bool> numbers(static_cast<size_t>(table.headers.size()), false);
    std::vector<QStringList> rows = {table.headers};
    for (const std::vector<Cell>& row : table.rows) {
        QStringList cells;
        for (const Cell& cell : row)
            cells << cell.text;
        rows.push_back(cells);
    }
    for (size_t i = 0; i < numbers.size() && !table.rows.empty(); ++i)
        numbers[i] = table.rows.front()[i].value.isDouble();
    return text::Aligned(rows, numbers);
}

bool IsOfChannels(const Table& table)
{
    return table.key != QLatin1String("segments");
}

} // namespace

QStringList LinesOf(const Description& description, bool channels)
{
    QStringList lines(description.file);
    lines << FactLines(description.facts);
    for (const Table& table : description.tables) {
        if (table.rows.empty() || (!channels && IsOfChannels(table)))
            continue;
        lines << QString() << QStringLiteral("  ") + table.title << TableLines(table);
    }
    for (const comtrade::Finding& finding : description.forgiven)
        lines << Tr("info", "  note: %1")
                     .arg(text::PlaceText(finding.file, finding.line, finding.column) + QLatin1String(": ") +
                          finding.text);
    for (const QString& note : description.notes)
        lines << Tr("info", "  note: %1").arg(note);
    return lines;
}

QJsonObject JsonOf(const Description& description, bool channels)
{
    QJsonObject object;
    object["file"] = description.file;
    object["kind"] = description.kind;
    for (const Fact& fact : description.facts)
        object[fact.key] = fact.value;
    for (const Table& table : description.tables) {
        if (!channels && IsOfChannels(table))
            continue;
        QJsonArray rows;
        for (const std::vector<Cell>& row : table.rows) {
            QJsonObject item;
            for (size_t i = 0; i < row.size(); ++i)
                item[table.keys[static_cast<int>(i)]] = row[i].value;
            rows.append(item);
        }
        object[table.key] = rows;
    }
    if (!description.forgiven.empty()) {
        QJsonArray forgiven;
        for (const comtrade::Finding& finding : description.forgiven)
            forgiven.append(text::FindingObject({finding.file, finding.line, finding.column, finding.severity,
                                                 finding.reason, finding.text}));
        object["forgiven"] = forgiven;
    }
    if (!description.notes.isEmpty())
        object["notes"] = QJsonArray::fromStringList(description.notes);
    if (!description.error.isEmpty()) {
        object["reason"] = QLatin1String(description.reason);
        object["error"] = description.error;
    }
    return object;
}

} // namespace info
