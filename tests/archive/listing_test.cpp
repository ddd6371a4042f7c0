// The files of an archive.
#include "archiveplace.h"

#include "text/error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <unistd.h>

namespace {

QStringList Listed(const TestDirectory& place)
{
    QStringList lines;
    for (const archive::Found& found : archive::List(place.Path()).found) {
        QStringList names;
        for (const catalogue::Piece& piece : found.pieces)
            names << piece.name + ':' + QString::number(piece.size);
        lines << QLatin1String(catalogue::NameOf(found.kind)) + ' ' +
                     QDir(place.Path()).relativeFilePath(found.path) + ' ' + names.join(' ');
    }
    return lines;
}

} // namespace

TEST(Listing, HasRecordingsAndRecordsWithTheirFiles)
{
    const TestDirectory place;
    place.MakeDirectory("b");
    for (const char* name : {"a.ZU", "a.Z01", "a.Z02", "a.Z04", "b/x.zu", "b/x.z01", "c.cfg", "c.dat",
                             "c.inf", "c.hdr", "d.CFG", "d.DAT", "e.cff", "f.dat", "g.Z01", "notes.txt"})
        place.Write(name, "12");
    EXPECT_EQ(Listed(place),
              QStringList({"recording a.ZU a.Z01:2 a.Z02:2 a.ZU:2",
                           "record c.cfg c.cfg:2 c.dat:2 c.hdr:2 c.inf:2", "record d.CFG d.CFG:2 d.DAT:2",
                           "record e.cff e.cff:2", "recording b/x.zu x.z01:2 x.zu:2"}));
}

TEST(Listing, LeavesOutHiddenDirectoriesAndLinksToDirectories)
{
    const TestDirectory place;
    place.MakeDirectory(".hidden");
    place.MakeDirectory("real");
    place.Write(".hidden/a.ZU", "1");
    place.Write("real/b.ZU", "1");
    QFile::link(place.Path(), place.Path("real/again"));
    QFile::link("nowhere", place.Path("real/gone.ZU"));
    EXPECT_EQ(Listed(place), QStringList({"recording real/b.ZU b.ZU:1"}));
}

TEST(Listing, NamesDirectoriesThatCannotBeRead)
{
    const TestDirectory place;
    const archive::Listing listing = archive::List(place.Path("missing"));
    ASSERT_EQ(listing.unlisted.size(), 1u);
    EXPECT_EQ(listing.unlisted[0].path, place.Path("missing"));
    EXPECT_EQ(listing.unlisted[0].text, "No such file or directory");
}

TEST(Listing, KnowsTheFilesOfOneOfThem)
{
    const TestDirectory place;
    place.Write("a.ZU", "1");
    place.Write("a.Z01", "22");
    const std::vector<catalogue::Piece> pieces =
        archive::PiecesOf(place.Path("a.ZU"), catalogue::Kind::Recording);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces[0].name, "a.Z01");
    EXPECT_EQ(pieces[0].size, 2);
    EXPECT_TRUE(archive::PiecesOf(place.Path("b.ZU"), catalogue::Kind::Recording).empty());
}

TEST(Listing, OfFilesKnownAMomentAgoIsWhatAListOfTheDirectoryGives)
{
    using Step = std::function<void(const TestDirectory&)>;
    const auto made = [](const char* name) -> Step {
        return [name](const TestDirectory& place) { place.Write(name, "333"); };
    };
    const auto removed = [](const char* name) -> Step {
        return [name](const TestDirectory& place) { QFile::remove(place.Path(name)); };
    };
    const std::vector<Step> steps = {[](const TestDirectory&) {},
                                     made("a.Z02"),
                                     made("a.Z03"),
                                     made("a.Z01"),
                                     removed("a.Z01"),
                                     removed("a.ZU"),
                                     made("r.dat"),
                                     made("r.DAT"),
                                     made("r.hdr"),
                                     made("r.INF"),
                                     removed("r.cfg"),
                                     removed("r.inf"),
                                     made("a.zu"),
                                     made("r.cff")};
    for (size_t i = 0; i < steps.size(); ++i) {
        for (const auto& [name, kind] :
             {std::pair("a.ZU", catalogue::Kind::Recording), std::pair("r.cfg", catalogue::Kind::Record)}) {
            const TestDirectory place;
            for (const char* file : {"a.ZU", "a.Z01", "r.cfg", "r.inf"})
                place.Write(file, "1");
            const auto known = archive::PiecesOf(place.Path(name), kind);
            steps[i](place);
            const auto now = archive::PiecesOf(place.Path(name), kind);
            const auto asked = archive::PiecesOf(place.Path(name), kind, known);
            EXPECT_TRUE(
                std::equal(now.begin(), now.end(), asked.begin(), asked.end(), catalogue::IsSameState))
                << i << ' ' << name;
        }
    }
}

// The hash of "abc" is that of FIPS 180-4's example.
TEST(Listing, HashesAreSha256)
{
    const TestDirectory place;
    place.Write("a.ZU", "abc");
    std::vector<catalogue::Piece> pieces = archive::PiecesOf(place.Path("a.ZU"), catalogue::Kind::Recording);
    archive::HashPieces(place.Path("a.ZU"), pieces);
    EXPECT_EQ(pieces[0].sha256, "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    QFile::remove(place.Path("a.ZU"));
    EXPECT_THROW(archive::HashPieces(place.Path("a.ZU"), pieces), text::Error);
}
