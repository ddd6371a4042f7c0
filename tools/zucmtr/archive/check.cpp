#include "zucmtr/archive/check.h"

#include "catalogue/catalogue.h"
#include "catalogue/soundness.h"
#include "sql/address.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "zucmtr/archive/files.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <optional>
#include <tuple>
#include <utility>

namespace archive {

namespace {

using catalogue::Catalogue;
using catalogue::Kind;
using catalogue::Piece;

// An entry as the catalogue has it.
struct Noted
{
    qint64 id = 0;
    Kind kind = Kind::Recording;
    QString path; // absolute
    QByteArray print;
    bool isGone = false;
    std::vector<Piece> pieces; // by name
};

bool IsBelow(const QString& path, const QString& directory)
{
    return directory.isEmpty() || directory == QLatin1String("/") ||
           path.startsWith(directory + QLatin1Char('/'));
}

std::vector<Noted> NotedBelow(Catalogue& catalogue, const QString& directory)
{
    std::vector<Noted> noted;
    catalogue.Database().Run(
        QStringLiteral("SELECT e.id, e.kind, e.path, e.print, e.gone, p.name, p.bytes, p.modified, p.sha256 "
                       "FROM entries e LEFT JOIN pieces p ON p.entry = e.id ORDER BY e.id, p.name"),
        {}, [&](const sql::Row& row) {
            if (noted.empty() || noted.back().id != row.Integer(0)) {
                const bool isRecord = row.Text(1) == QLatin1String(NameOf(Kind::Record));
                noted.push_back({row.Integer(0),
                                 isRecord ? Kind::Record : Kind::Recording,
                                 catalogue.Absolute(row.Text(2)),
                                 row.Text(3).toLatin1(),
                                 !row.IsNull(4),
                                 {}});
            }
            if (!row.IsNull(5))
                noted.back().pieces.push_back(
                    {row.Text(5), row.Integer(6), row.Integer(7), row.Text(8).toLatin1()});
        });
    noted.erase(std::remove_if(noted.begin(), noted.end(),
                               [&](const Noted& one) { return !IsBelow(one.path, directory); }),
                noted.end());
    std::sort(noted.begin(), noted.end(),
              [](const Noted& a, const Noted& b) { return std::tie(a.path, a.id) < std::tie(b.path, b.id); });
    return noted;
}

const Piece* Named(const std::vector<Piece>& pieces, const QString& name)
{
    const auto found =
        std::find_if(pieces.begin(), pieces.end(), [&](const Piece& one) { return one.name == name; });
    return found == pieces.end() ? nullptr : &*found;
}

class Checker
{
public:
    Checker(const CheckOrder& order_, const Checking& checking_)
        : order(order_), checking(checking_), catalogue(Catalogue::ForReading(order.catalogue))
    {}

    CheckCounts Run()
    {
        try {
            CheckAll();
        } catch (const sql::Failure& failure) {
            if (failure.trouble != sql::Trouble::Damaged)
                throw text::Error(Tr("catalogue", "the catalogue '%1': %2")
                                      .arg(sql::Shown(order.catalogue), failure.Message()));
            Find(reason::DatabaseDamaged, QString(), failure.Message());
        }
        return counts;
    }

private:
    void CheckAll()
    {
        CheckDatabase();
        const std::vector<Noted> noted = NotedBelow(*catalogue, order.below);
        for (const Noted& one : noted) {
            if (!one.isGone)
                present.insert(one.path);
        }
        Search();
        size_t done = 0;
        for (const Noted& one : noted) {
            if (checking.isToEnd())
                return;
            CheckEntry(one);
            checking.show(++done, noted.size());
        }
        ReportNotCatalogued();
    }

    void Find(const char* reason, const QString& path, const QString& text)
    {
        ++counts.findings;
        checking.find({reason, path, text});
    }

    void CheckDatabase()
    {
        const auto thoroughness =
            order.isFast ? catalogue::Thoroughness::Quick : catalogue::Thoroughness::Whole;
        for (const catalogue::Flaw& flaw : catalogue::FlawsOf(catalogue->Database(), thoroughness)) {
            const QString path = flaw.path.isEmpty() ? QString() : catalogue->Absolute(flaw.path);
            if (path.isEmpty() || IsBelow(path, order.below))
                Find(flaw.reason, path, flaw.text);
        }
    }

    void Search()
    {
        if (order.searched.isEmpty())
            return;
        Listing listing = List(order.searched);
        QSet<QString> parts;
        for (const Found& one : listing.found) {
            there.insert(one.path, one);
            const QString directory = QFileInfo(one.path).path() + QLatin1Char('/');
            for (const Piece& piece : one.pieces)
                parts.insert(directory + piece.name);
        }
        for (const QString& path : qAsConst(listing.continuations)) {
            if (!parts.contains(path))
                astray << path;
        }
        unlisted = std::move(listing.unlisted);
        for (const Unlisted& one : unlisted)
            Find(reason::DirectoryUnreadable, one.path, one.text);
    }

    std::vector<Piece> PiecesNow(const Noted& noted) const
    {
        const auto listed = there.constFind(noted.path);
        return listed != there.constEnd() ? listed->pieces : PiecesOf(noted.path, noted.kind);
    }

    void CheckEntry(const Noted& noted)
    {
        ++(noted.isGone ? counts.gone : counts.entries);
        if (!noted.pieces.empty() && catalogue::PrintOf(noted.pieces) != noted.print)
            Find(reason::EntryInconsistent, noted.path,
                 Tr("archive check", "its SHA-256 in the catalogue is not that of its files there"));
        if (IsUnlisted(noted.path, unlisted))
            return;
        if (noted.isGone)
            CheckGone(noted);
        else if (CheckStates(noted) && !order.isFast)
            CheckContents(noted);
    }

    // Another recording may have its place by now.
    void CheckGone(const Noted& noted)
    {
        if (present.contains(noted.path) || PiecesNow(noted).empty())
            return;
        present.insert(noted.path); // reported once
        Find(reason::NotGone, noted.path, Tr("archive check", "it is marked as gone, but is there"));
    }

    // Whether the files are there in the same state.
    bool CheckStates(const Noted& noted)
    {
        const std::vector<Piece> now = PiecesNow(noted);
        const QString directory = QFileInfo(noted.path).path() + QLatin1Char('/');
        bool isSame = true;
        const auto differ = [&](const char* reason, const QString& name, const QString& text) {
            isSame = false;
            Find(reason, directory + name, text);
        };
        for (const Piece& piece : noted.pieces) {
            ++counts.files;
            counts.bytes += piece.size;
            const Piece* one = Named(now, piece.name);
            if (one == nullptr)
                differ(reason::FileMissing, piece.name, Tr("archive check", "it is not there"));
            else if (one->size != piece.size)
                differ(reason::FileChanged, piece.name,
                       Tr("archive check", "it has %1 bytes, in the catalogue %2")
                           .arg(one->size)
                           .arg(piece.size));
            else if (one->modified != piece.modified)
                differ(reason::FileChanged, piece.name,
                       Tr("archive check", "it was written at another time than the catalogue says"));
        }
        for (const Piece& one : now) {
            if (Named(noted.pieces, one.name) == nullptr)
                differ(reason::FileAdded, one.name,
                       Tr("archive check", "it belongs to '%1', but is not in the catalogue")
                           .arg(QFileInfo(noted.path).fileName()));
        }
        return isSame;
    }

    void CheckContents(const Noted& noted)
    {
        std::vector<Piece> now = noted.pieces;
        const std::optional<QString> failure = text::FailureOf([&] { HashPieces(noted.path, now); });
        if (failure) {
            Find(reason::FileUnreadable, noted.path, *failure);
            return;
        }
        for (size_t i = 0; i < now.size(); ++i) {
            if (now[i].sha256 != noted.pieces[i].sha256)
                Find(
                    reason::ContentChanged, QFileInfo(noted.path).path() + QLatin1Char('/') + now[i].name,
                    Tr("archive check",
                       "its size and time are those in the catalogue, but not its SHA-256: it has changed or "
                       "is damaged"));
        }
    }

    void ReportNotCatalogued()
    {
        QStringList paths;
        for (auto one = there.constBegin(); one != there.constEnd(); ++one) {
            if (!present.contains(one.key()))
                paths << one.key();
        }
        paths.sort();
        for (const QString& path : qAsConst(paths))
            Find(reason::NotCatalogued, path,
                 Tr("archive check", "it is not in the catalogue; 'zucmtr archive update' reads it"));
        for (const QString& path : qAsConst(astray))
            Find(reason::NotCatalogued, path,
                 Tr("archive check", "it continues a recording, but a file before it is missing"));
    }

    const CheckOrder& order;
    const Checking& checking;
    const std::unique_ptr<Catalogue> catalogue;
    CheckCounts counts;
    QSet<QString> present;       // paths of entries that are there according to the catalogue
    QHash<QString, Found> there; // what is there, by path
    std::vector<Unlisted> unlisted;
    QStringList astray; // continuations of no recording
};

} // namespace

CheckCounts Check(const CheckOrder& order, const Checking& checking)
{
    return Checker(order, checking).Run();
}

} // namespace archive
