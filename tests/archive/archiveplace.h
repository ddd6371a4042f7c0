// A directory of recordings and its catalogue.
#pragma once

#include "support/files.h"
#include "support/recordings.h"
#include "zucmtr/archive/update.h"

#include <QDir>
#include <QFile>

#include <map>

class ArchivePlace : public TestDirectory
{
public:
    /// Writes a recording; those of different codes have different contents.
    void Record(const QString& name, int16_t code) const { Write(name, SmallFile(code)); }

    /// A COMTRADE record with one discrete channel, by its name without the extension.
    void Comtrade(const QString& name) const
    {
        Write(name + ".cfg", "S,D,1999\n1,0A,1D\n1,Q1,,W1,0\n50\n1\n1000,2\n01/02/2024,03:04:05.000000\n"
                             "01/02/2024,03:04:05.001000\nASCII\n1\n");
        Write(name + ".dat", "1,0,0\n2,1000,1\n");
    }

    QString Address() const { return Path("catalogue.db"); }

    /// Runs an update of the whole directory. What it complains about is in `complaints`, by path.
    archive::UpdateCounts Update(size_t processes = 1)
    {
        complaints.clear();
        all.clear();
        archive::UpdateOrder order;
        order.catalogue = Address();
        order.directories = QStringList{Path()};
        order.processes = processes;
        const QDir root(Path());
        return archive::Update(order, {[](size_t, size_t) {}, [] { return false; },
                                       [&](const archive::Complaint& complaint) {
                                           all << complaint.text;
                                           complaints[root.relativeFilePath(complaint.path)] = complaint.text;
                                       }});
    }

    /// The rows that a query gives, the columns separated by "|".
    QStringList Rows(const QString& query) const
    {
        QStringList rows;
        catalogue::Catalogue(Address()).Database().Run(query, {}, [&](const sql::Row& row) {
            QStringList columns;
            for (int i = 0; i < row.Columns(); ++i)
                columns << row.Text(i);
            rows << columns.join('|');
        });
        return rows;
    }

    /// The paths of the entries that are there, sorted.
    QStringList Present() const { return Rows("SELECT path FROM entries WHERE gone IS NULL ORDER BY path"); }
    QStringList Gone() const { return Rows("SELECT path FROM entries WHERE gone IS NOT NULL ORDER BY path"); }

    std::map<QString, QString> complaints;
    QStringList all; // texts of the complaints
};

namespace archive {

inline bool operator==(const archive::UpdateCounts& a, const archive::UpdateCounts& b)
{
    return a.unchanged == b.unchanged && a.read == b.read && a.moved == b.moved && a.gone == b.gone &&
           a.unread == b.unread;
}

inline void PrintTo(const archive::UpdateCounts& counts, std::ostream* out)
{
    *out << "unchanged " << counts.unchanged << ", read " << counts.read << ", moved " << counts.moved
         << ", gone " << counts.gone << ", unread " << counts.unread;
}

} // namespace archive

/// Counts in the order of the report: read, moved, gone, unchanged, unread.
inline archive::UpdateCounts Counts(qint64 read, qint64 moved, qint64 gone, qint64 unchanged,
                                    qint64 unread = 0)
{
    return {unchanged, read, moved, gone, unread};
}
