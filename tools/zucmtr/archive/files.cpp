#include "zucmtr/archive/files.h"

#include "base/chainnames.h"
#include "comtrade/record.h"
#include "explain/system.h"
#include "text/texts.h"
#include "zucmtr/files/systemfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <array>
#include <cerrno>
#include <dirent.h>
#include <iterator>
#include <memory>
#include <nettle/sha2.h>
#include <unistd.h>

namespace archive {

namespace {

using catalogue::Kind;
using catalogue::Piece;

constexpr int BlockBytes = 1 << 18;

// A record's files besides its configuration; other cases of these names are another system's.
const char* const CompanionEnds[] = {"dat", "hdr", "inf"};

// The names that each further file of a recording or record may have.
std::vector<QStringList> SpellingsOfOthers(const QString& name, Kind kind)
{
    std::vector<QStringList> others;
    if (kind == Kind::Recording) {
        for (int number = 1; number <= zu::MostContinuations; ++number)
            others.push_back({zu::ContinuationName(name, number)});
    } else if (name.endsWith(QLatin1String(".cfg"), Qt::CaseInsensitive)) {
        const QString stem = name.chopped(3);
        for (const char* end : CompanionEnds) {
            const QString lower = QLatin1String(end);
            others.push_back({stem + lower, stem + lower.toUpper()});
        }
    }
    return others;
}

// A recording ends before the first continuation that is missing.
QStringList NamesOf(const QString& name, Kind kind, const QSet<QString>& names)
{
    QStringList pieces = {name};
    for (const QStringList& spellings : SpellingsOfOthers(name, kind)) {
        const auto there = std::find_if(spellings.begin(), spellings.end(),
                                        [&](const QString& one) { return names.contains(one); });
        if (there != spellings.end())
            pieces << *there;
        else if (kind == Kind::Recording)
            break;
    }
    return pieces;
}

// The names that would be pieces besides the known ones, or in their place, if they were there.
QStringList NamesToCome(const QString& name, Kind kind, const QSet<QString>& known)
{
    QStringList names;
    for (const QStringList& spellings : SpellingsOfOthers(name, kind)) {
        const auto there = std::find_if(spellings.begin(), spellings.end(),
                                        [&](const QString& one) { return known.contains(one); });
        std::copy(spellings.begin(), there, std::back_inserter(names));
        if (there == spellings.end() && kind == Kind::Recording)
            break;
    }
    return names;
}

std::vector<Piece> StatesOf(const QString& directory, QStringList names)
{
    std::sort(names.begin(), names.end());
    std::vector<Piece> pieces;
    for (const QString& name : qAsConst(names)) {
        systemfile::Identity identity;
        if (systemfile::Identify(directory + QLatin1Char('/') + name, identity) == 0 && identity.IsRegular())
            pieces.push_back({name, identity.size, identity.modified});
    }
    return pieces;
}

struct Names
{
    QStringList files;
    QStringList directories;
};

// 0 or errno.
int Read(const QString& directory, Names& names)
{
    DIR* opened = opendir(QFile::encodeName(directory).constData());
    if (opened == nullptr)
        return errno;
    while (const dirent* one = readdir(opened)) {
        if (one->d_name[0] == '.')
            continue;
        const QString name = QFile::decodeName(one->d_name);
        bool isDirectory = one->d_type == DT_DIR;
        if (one->d_type == DT_UNKNOWN) {
            const QFileInfo info(directory + QLatin1Char('/') + name);
            isDirectory = info.isDir() && !info.isSymLink();
        }
        (isDirectory ? names.directories : names.files) << name;
    }
    closedir(opened);
    names.files.sort();
    names.directories.sort();
    return 0;
}

void ListInto(const QString& directory, Listing& listing)
{
    Names names;
    const int error = Read(directory, names);
    if (error != 0) {
        listing.unlisted.push_back({directory, explain::SystemText(error)});
        return;
    }
    const QSet<QString> all(names.files.begin(), names.files.end());
    for (const QString& name : qAsConst(names.files)) {
        const bool isRecord = comtrade::IsRecordFile(name);
        if (!isRecord && !zu::IsFirstFileName(name)) {
            if (!zu::FirstFileOf(name).isEmpty())
                listing.continuations << directory + QLatin1Char('/') + name;
            continue;
        }
        const Kind kind = isRecord ? Kind::Record : Kind::Recording;
        Found found{kind, directory + QLatin1Char('/') + name, StatesOf(directory, NamesOf(name, kind, all))};
        if (!found.pieces.empty())
            listing.found.push_back(std::move(found));
    }
    for (const QString& name : qAsConst(names.directories))
        ListInto(directory + QLatin1Char('/') + name, listing);
}

} // namespace

bool IsUnlisted(const QString& path, const std::vector<Unlisted>& unlisted)
{
    return std::any_of(unlisted.begin(), unlisted.end(),
                       [&](const Unlisted& one) { return path.startsWith(one.path + QLatin1Char('/')); });
}

Listing List(const QString& directory)
{
    Listing listing;
    ListInto(directory, listing);
    return listing;
}

std::vector<Piece> PiecesOf(const QString& path, Kind kind, const std::vector<Piece>& known)
{
    const QString directory = QFileInfo(path).path();
    QStringList names;
    for (const Piece& piece : known)
        names << piece.name;
    const QStringList toCome =
        NamesToCome(QFileInfo(path).fileName(), kind, QSet<QString>(names.begin(), names.end()));
    // Where a file system does not tell cases apart, only the list of names says what is really there.
    const bool isMore = std::any_of(toCome.begin(), toCome.end(), [&](const QString& name) {
        return systemfile::IsTaken(directory + QLatin1Char('/') + name);
    });
    return isMore ? PiecesOf(path, kind) : StatesOf(directory, names);
}

std::vector<Piece> PiecesOf(const QString& path, Kind kind)
{
    const QFileInfo info(path);
    const QStringList names = systemfile::NamesIn(info.path());
    return StatesOf(info.path(), NamesOf(info.fileName(), kind, QSet<QString>(names.begin(), names.end())));
}

void HashPieces(const QString& path, std::vector<Piece>& pieces)
{
    const QString directory = QFileInfo(path).path();
    sha256_ctx hash;
    QByteArray block(BlockBytes, Qt::Uninitialized);
    for (Piece& piece : pieces) {
        const QString name = directory + QLatin1Char('/') + piece.name;
        const systemfile::Descriptor file = systemfile::OpenToRead(name);
        ssize_t count = file.IsOpen() ? 0 : -1;
        sha256_init(&hash);
        while (count >= 0 &&
               (count = read(file.Number(), block.data(), static_cast<size_t>(block.size()))) > 0)
            sha256_update(&hash, static_cast<size_t>(count),
                          reinterpret_cast<const uint8_t*>(block.constData()));
        if (count < 0)
            throw text::Error(Tr("archive", "%1 cannot be read: %2").arg(name, explain::SystemText(errno)));
        std::array<uint8_t, SHA256_DIGEST_SIZE> digest{};
        sha256_digest(&hash, digest.size(), digest.data());
        piece.sha256 =
            QByteArray(reinterpret_cast<const char*>(digest.data()), static_cast<int>(digest.size())).toHex();
    }
}

} // namespace archive
