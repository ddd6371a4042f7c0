#include "zucmtr/run/batchreport.h"

#include "text/texts.h"
#include "zucmtr/terminal/console.h"

#include <QJsonObject>

#include <numeric>

namespace {

// "file: text; note; note"
QString WithNotes(const QString& text, const QStringList& notes)
{
    return (QStringList{text} + notes).join(QLatin1String("; "));
}

QString PlaceOf(const BatchItem& item)
{
    return item.directory + QLatin1Char('/') + item.recordName;
}

} // namespace

BatchReport::BatchReport(ReportForm form_, bool comparesAll_, bool showsForms_, const QString& top_,
                         size_t total_)
    : form(form_), comparesAll(comparesAll_), showsForms(showsForms_), top(top_), total(total_)
{}

void BatchReport::Add(const Refusal& refusal)
{
    if (refusal.failed)
        ++counts[ItemState::Failed];
    if (form != ReportForm::Json) {
        if (refusal.failed || form == ReportForm::Lines)
            Complain(refusal.path + QLatin1String(": ") + refusal.text);
    } else if (refusal.failed) {
        BatchItem item;
        item.recording.path = refusal.path;
        item.Fail(refusal.reason, refusal.text);
        PrintJson(JsonOf(item));
    }
}

QString BatchReport::Replaced(const BatchItem& item) const
{
    return item.written ? records.value(PlaceOf(item)) : QString();
}

void BatchReport::Add(const BatchItem& item)
{
    ++counts[item.state];
    salvaged += item.salvaged.isEmpty() ? 0 : 1;
    if (form == ReportForm::Json) {
        QJsonObject object = JsonOf(item);
        if (!Replaced(item).isEmpty())
            object["replaced"] = Replaced(item);
        PrintJson(object);
    } else {
        PrintOutcome(item);
        WarnOfReplaced(item);
    }
    if (item.written || item.state == ItemState::Present || item.state == ItemState::Planned)
        records[PlaceOf(item)] = item.recording.path;
}

void BatchReport::PrintOutcome(const BatchItem& item) const
{
    const QString& file = item.recording.path;
    if (item.state == ItemState::Failed) {
        Complain(WithNotes(file + QLatin1String(": ") + item.error, item.notes));
        return;
    }
    if (form == ReportForm::Quiet && item.salvaged.isEmpty())
        return;
    QString text = file + QLatin1String(" -> ");
    if (item.state == ItemState::Planned)
        text += PlaceOf(item);
    else
        text += top.isEmpty() ? item.recordName : PlaceOf(item).mid(top.size() + 1);
    if (showsForms)
        text += QLatin1String(" (") + item.form + QLatin1Char(')');
    if (!item.salvaged.isEmpty())
        text += QLatin1String(" (") + Tr("batch", "salvaged: %1").arg(item.salvaged) + QLatin1Char(')');
    if (item.state == ItemState::Present)
        text += Tr("batch", "; it was there already");
    if (form == ReportForm::Quiet) // a loss is a warning
        Complain(WithNotes(text, item.notes));
    else
        PrintLine(WithNotes(text, item.notes));
}

void BatchReport::WarnOfReplaced(const BatchItem& item) const
{
    if (item.state == ItemState::Planned && records.contains(PlaceOf(item)))
        Complain(Tr("batch", "%1: its record would have the name of that of %2; unless both are the same "
                             "recording, convert them into different directories")
                     .arg(item.recording.path, records.value(PlaceOf(item))));
    if (!Replaced(item).isEmpty())
        Complain(Tr("batch", "%1: its record replaced that of %2, which has the same name; convert them into "
                             "different directories")
                     .arg(item.recording.path, Replaced(item)));
}

void BatchReport::Summarise(double seconds) const
{
    if (total < 2 || form == ReportForm::Quiet)
        return;
    QStringList parts;
    const auto add = [&parts](size_t count, const QString& text) {
        if (count > 0)
            parts << text.arg(count);
    };
    add(Count(ItemState::Converted),
        comparesAll ? Tr("batch", "%1 converted and verified") : Tr("batch", "%1 converted"));
    add(Count(ItemState::Present), Tr("batch", "%1 there already"));
    add(Count(ItemState::Planned), Tr("batch", "%1 to convert"));
    add(salvaged, Tr("batch", "%1 of them salvaged in part"));
    add(Failed(), Tr("batch", "%1 failed"));
    add(total - std::accumulate(counts.begin(), counts.end(), size_t{0}), Tr("batch", "%1 not started"));
    Complain(
        Tr("batch", "%1 recordings: %2; %3 s")
            .arg(QString::number(total), parts.join(QLatin1String(", ")), QString::number(seconds, 'f', 2)));
}
