// What a run reports: a line or a JSON object for each recording, and a summary.
#pragma once

#include "zucmtr/run/batchitem.h"

#include <QMap>
#include <QString>

#include <cstddef>

enum class ReportForm {
    Lines, // a line on standard output for each record, failures on standard error
    Quiet, // failures and warnings alone
    Json   // one JSON object for each recording on standard output
};

class BatchReport
{
public:
    /// total is the number of all recordings of the run; with showsForms each line has the form of its
    /// record, and with `top` the place of the record below that directory.
    BatchReport(ReportForm form_, bool comparesAll_, bool showsForms_, const QString& top_, size_t total_);

    /// An argument from which nothing is converted.
    void Add(const Refusal& refusal);
    void Add(const BatchItem& item);

    /// Prints the totals, if there was more than one recording.
    void Summarise(double seconds) const;

    size_t Failed() const { return Count(ItemState::Failed); }
    size_t Salvaged() const { return salvaged; }

private:
    size_t Count(ItemState state) const { return counts.value(state); }
    void PrintOutcome(const BatchItem& item) const;
    void WarnOfReplaced(const BatchItem& item) const;
    QString Replaced(const BatchItem& item) const;

    const ReportForm form;
    const bool comparesAll;
    const bool showsForms;
    const QString top;
    const size_t total;
    size_t salvaged = 0; // recordings of which the record has only what is whole
    QMap<ItemState, size_t> counts;
    QMap<QString, QString> records; // directory and name of a record to the file it was made from
};
