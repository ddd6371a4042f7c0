// Records written beside their final place: what is there after every failing call and every kill.
#include "forms.h"
#include "shim.h"
#include "zucmtr/files/staging.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The files of a record, the configuration first.
struct Record
{
    const char* name;
    QStringList extensions;
};

std::vector<Record> AllRecords()
{
    return {{"2013", {".cfg", ".dat", ".hdr", ".inf"}},
            {"1999", {".cfg", ".dat"}},
            {"CFF", {".cff"}},
            {"2013 with a page", {".cfg", ".dat", ".hdr", ".inf", ".html"}},
            {"CFF with a page and events", {".cff", ".html", ".events.json", ".events.txt"}}};
}

QStringList NamesOf(const Record& record)
{
    QStringList names;
    for (const QString& extension : record.extensions)
        names << QStringLiteral("rec") + extension;
    return names;
}

// An output directory with an earlier record, into which another record goes.
class Place
{
public:
    Place(const Record& earlier, const Record& record) : names(NamesOf(record))
    {
        for (const QString& name : NamesOf(earlier)) {
            before.insert(name, "earlier " + name.toUtf8());
            directory.Write(name, before[name]);
        }
        after = before;
        if (!names.contains(QStringLiteral("rec.cff"))) {
            after.remove(QStringLiteral("rec.hdr"));
            after.remove(QStringLiteral("rec.inf"));
        }
        for (const QString& name : names)
            after.insert(name, "new " + name.toUtf8());
    }

    QString Out() const { return directory.Path(); }

    void Write(const Staging& staging) const
    {
        for (const QString& name : names) {
            if (!WriteBytes(staging.Directory() + QLatin1Char('/') + name, after[name]))
                qFatal("cannot write into %s", qPrintable(staging.Directory()));
        }
    }

    void Commit(bool sync = true) const
    {
        Staging staging(Out());
        Write(staging);
        staging.Commit(names, sync);
    }

    // The text of the failure if the nth call of a commit fails; empty if the commit is done all the same.
    QString CommitWith(shim::Plan plan) const
    {
        Staging staging(Out());
        Write(staging);
        QString text;
        plan.skipSync = true;
        shim::Arm(qPrintable(Out()), plan);
        try {
            staging.Commit(names, true);
        } catch (const StagingError& error) {
            text = QString::fromUtf8(error.what());
            EXPECT_EQ(error.code, plan.error);
        }
        struck = *shim::Struck() != '\0';
        shim::Disarm();
        return text;
    }

    Tree Files() const
    {
        Tree tree;
        for (const QString& name : directory.Names())
            tree.insert(name, ReadBytes(directory.Path(name)));
        return tree;
    }

    QStringList Debris() const
    {
        return QDir(Out()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    // Each configuration that is there is surrounded by all pieces of its own record, and no others.
    bool IsWhole() const
    {
        const Tree files = Files();
        if (files == after)
            return true;
        for (const char* configuration : {"rec.cfg", "rec.cff"}) {
            const QString name = QLatin1String(configuration);
            if (!files.contains(name))
                continue;
            const bool container = name.endsWith(QLatin1String("cff"));
            for (const QString& piece : before.keys() + after.keys()) {
                const bool page =
                    piece.endsWith(QLatin1String("html")) || piece.contains(QLatin1String(".events."));
                const bool own = piece == name || (!container && !piece.endsWith(QLatin1String("cff")));
                // A page and events belong to the record that they come with.
                const Tree& whole = files[name] == before.value(name) ? before : after;
                if (own && !page && files.value(piece) != whole.value(piece))
                    return false;
            }
        }
        return true;
    }

    TestDirectory directory;
    QStringList names;
    Tree before, after;
    mutable bool struck = false;

private:
    static bool WriteBytes(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
};

// Commits in a child that is killed before its nth call below the directory; false if it has fewer calls.
bool KillBefore(const Place& place, long nth)
{
    const pid_t child = fork();
    if (child == 0) {
        shim::Plan plan;
        plan.nth = nth;
        plan.action = [] { _exit(0); };
        plan.skipSync = true;
        {
            Staging staging(place.Out());
            place.Write(staging);
            shim::Arm(qPrintable(place.Out()), plan);
            staging.Commit(place.names, true);
        }
        _exit(1);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status) == 0;
}

// For every kind of record: replacing nothing, separate files, and a container.
template <class Action>
void ForAllPairs(const Action& action)
{
    for (const Record& before : {Record{"nothing", {}}, AllRecords()[3], AllRecords()[4]}) {
        for (const Record& record : AllRecords()) {
            SCOPED_TRACE(std::string(record.name) + " over " + before.name);
            action(before, record);
            if (testing::Test::HasFailure())
                return;
        }
    }
}

QString ErrorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const StagingError& error) {
        return QString::fromUtf8(error.what());
    }
    return QString();
}

} // namespace

TEST(Staging, LeavesWhatTheLibraryLeaves)
{
    std::vector<Form> forms;
    for (const Form& form : AllForms())
        forms.push_back({form.name, QByteArray(form.deviceLines).replace("Удалять исходные=1\n", "")});
    for (const Form& form : forms) {
        Scene scene(form);
        const QString out = scene.Root() + QStringLiteral("/out");
        for (const char* extension : {".cfg", ".dat", ".hdr", ".inf", ".cff"}) {
            for (const char* end : {"", "tmp"}) {
                const QString base = out + QLatin1Char('/') + scene.Whole().firstKey().chopped(4);
                QFile file(base + QLatin1String(extension) + QLatin1String(end));
                ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("earlier") == 7);
            }
        }
        const Tree before = scene.Output();
        ASSERT_TRUE(scene.Convert());
        const Tree expected = scene.Output();

        TestDirectory other;
        for (auto file = before.begin(); file != before.end(); ++file)
            other.Write(file.key(), file.value());
        {
            Staging staging(other.Path());
            for (auto file = scene.Whole().begin(); file != scene.Whole().end(); ++file)
                other.Write(staging.Directory().section('/', -1) + '/' + file.key(), file.value());
            QStringList names = scene.Whole().keys();
            names.sort(); // .cfg or .cff is the first
            staging.Commit(names, false);
        }
        Tree found;
        for (const QString& name : other.Names())
            found.insert(name, ReadBytes(other.Path(name)));
        EXPECT_TRUE(found == expected) << form.name;
        EXPECT_NE(before.keys(), expected.keys()) << form.name; // temporary files were removed
    }
}

TEST(Staging, PutsARecordInThePlaceOfAnother)
{
    ForAllPairs([](const Record& before, const Record& record) {
        for (const bool sync : {false, true}) {
            const Place place(before, record);
            place.Commit(sync);
            EXPECT_TRUE(place.Files() == place.after);
            EXPECT_EQ(place.Debris(), QStringList());
        }
    });
}

TEST(Staging, LeavesTheEarlierRecordOrTheNewOneAtEveryFailingCall)
{
    ForAllPairs([](const Record& before, const Record& record) {
        int failures = 0;
        for (long nth = 1;; ++nth) {
            const Place place(before, record);
            shim::Plan plan;
            plan.nth = nth;
            plan.error = nth % 2 == 0 ? EIO : ENOSPC;
            const QString text = place.CommitWith(plan);
            if (!place.struck)
                break;
            EXPECT_TRUE(place.Files() == (text.isEmpty() ? place.after : place.before)) << nth;
            EXPECT_EQ(place.Debris(), QStringList());
            if (text.isEmpty())
                continue;
            ++failures;
            EXPECT_TRUE(text.contains(place.Out() + QStringLiteral("/rec."))) << text;
            EXPECT_EQ(text.contains("no room left on the disk of " + place.Out()), plan.error == ENOSPC);
        }
        EXPECT_GE(failures, 2 * record.extensions.size());
    });
}

TEST(Staging, LeavesNoMixtureWhenAllCallsFailFromOneOn)
{
    ForAllPairs([](const Record& before, const Record& record) {
        for (long nth = 1;; ++nth) {
            const Place place(before, record);
            shim::Plan plan;
            plan.nth = nth;
            plan.error = EIO;
            plan.onwards = true;
            const QString text = place.CommitWith(plan);
            if (!place.struck)
                break;
            EXPECT_TRUE(place.IsWhole()) << nth;
            EXPECT_EQ(text.endsWith("could not be put back, convert the recording again"),
                      !text.isEmpty() && place.Files() != place.before)
                << nth << ' ' << text;
            place.Commit(false);
            EXPECT_TRUE(place.Files() == place.after) << nth;
        }
    });
}

TEST(Staging, LeavesNoMixtureWhenKilledBeforeAnyCall)
{
    ForAllPairs([](const Record& before, const Record& record) {
        for (long nth = 1;; ++nth) {
            const Place place(before, record);
            if (!KillBefore(place, nth))
                break;
            EXPECT_TRUE(place.IsWhole()) << nth;
            Staging::RemoveLeft(place.Out());
            EXPECT_EQ(place.Debris(), QStringList());
            place.Commit(false);
            EXPECT_TRUE(place.Files() == place.after) << nth;
        }
    });
}

TEST(Staging, SaysThatTheDiskIsFullOrCannotBeWritten)
{
    const TestDirectory here;
    shim::Plan plan;
    plan.kinds = shim::MakeDirectory;
    plan.nth = 1;
    const QString begin =
        QStringLiteral("no directory for new records can be made in '%1': ").arg(here.Path());
    const auto text = [&](int error) {
        plan.error = error;
        shim::Arm(qPrintable(here.Path()), plan);
        const QString found = ErrorOf([&] { const Staging staging(here.Path()); });
        shim::Disarm();
        return found;
    };
    EXPECT_EQ(text(ENOSPC), begin + QStringLiteral("no room left on the disk of ") + here.Path());
    EXPECT_EQ(text(EDQUOT), begin + QStringLiteral("no room left on the disk of ") + here.Path());
    EXPECT_EQ(text(EROFS), begin + QStringLiteral("Read-only file system"));
    plan.kinds = shim::Open;
    plan.nth = 2; // the mark
    EXPECT_EQ(text(ENOSPC), begin + QStringLiteral("no room left on the disk of ") + here.Path());
    EXPECT_EQ(QDir(here.Path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
    EXPECT_EQ(ErrorOf([&] { const Staging staging(here.Path("no")); }),
              QStringLiteral("no directory for new records can be made in '%1': No such file or directory")
                  .arg(here.Path("no")));
    EXPECT_TRUE(StagingError(QString(), EDQUOT).NoRoom());
    EXPECT_FALSE(StagingError(QString(), EROFS).NoRoom());
}

TEST(Staging, NamesADirectoryThatHasAFinalName)
{
    for (const char* extension : {".cfg", ".dat", ".hdr", ".inf", ".html"}) {
        const Place place({"nothing", {}}, AllRecords()[3]);
        const QString path = place.directory.MakeDirectory(QStringLiteral("rec") + QLatin1String(extension));
        EXPECT_EQ(ErrorOf([&] { place.Commit(); }),
                  QStringLiteral("'%1' is a directory; the record needs the name, move it away").arg(path));
        EXPECT_TRUE(place.Files().isEmpty());
    }
}

TEST(Staging, NamesAPieceThatWasNotWritten)
{
    const Place place(AllRecords()[0], AllRecords()[0]);
    EXPECT_EQ(ErrorOf([&] {
                  Staging staging(place.Out());
                  place.Write(staging);
                  QFile::remove(staging.Directory() + QStringLiteral("/rec.hdr"));
                  staging.Commit(place.names, false);
              }),
              QStringLiteral("the record's file 'rec.hdr' was not written: No such file or directory"));
    EXPECT_TRUE(place.Files() == place.before);
}

TEST(Staging, ReplacesALinkAndNotWhereItPoints)
{
    const Place place({"nothing", {}}, AllRecords()[1]);
    const TestDirectory other;
    const QString target = other.Write(QStringLiteral("target"), "kept");
    ASSERT_TRUE(QFile::link(target, place.directory.Path(QStringLiteral("rec.dat"))));
    ASSERT_TRUE(QFile::link(other.Path("no"), place.directory.Path(QStringLiteral("rec.cfgtmp"))));
    place.Commit();
    EXPECT_TRUE(place.Files() == place.after);
    EXPECT_EQ(ReadBytes(target), QByteArray("kept"));
}

TEST(Staging, KeepsDirectoriesThatAreInUseAndThoseOfOthers)
{
    const TestDirectory here;
    const Staging used(here.Path());
    const Staging second(here.Path());
    here.Write(QStringLiteral(".zucmtr-abc123/rec.dat"), "left");
    here.Write(QStringLiteral(".zucmtr-abc123/zucmtr-staging"), "");
    here.MakeDirectory(QStringLiteral(".zucmtr-empty1"));
    here.Write(QStringLiteral(".zucmtr-record/rec.dat"), "a user's");
    here.Write(QStringLiteral(".zucmtr-longer1/rec.dat"), "another program's");
    here.Write(QStringLiteral(".zucmtr-file12"), "a file");
    const TestDirectory other;
    other.Write(QStringLiteral("kept"), "kept");
    ASSERT_TRUE(QFile::link(other.Path(), here.Path(QStringLiteral(".zucmtr-link12"))));
    Staging::RemoveLeft(here.Path());
    QStringList expected = {".zucmtr-longer1", ".zucmtr-record", ".zucmtr-link12",
                            used.Directory().section('/', -1), second.Directory().section('/', -1)};
    expected.sort();
    QStringList found = QDir(here.Path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    found.sort();
    EXPECT_EQ(found, expected);
    EXPECT_EQ(here.Names(), QStringList{".zucmtr-file12"});
    EXPECT_EQ(other.Names(), QStringList{"kept"});
}

TEST(Staging, IsMadeAgainIfItIsTakenForALeftover)
{
    const TestDirectory here;
    static QString out;
    out = here.Path();
    shim::Plan plan;
    plan.kinds = shim::Open;
    plan.nth = 1;
    plan.action = [] { Staging::RemoveLeft(out); };
    shim::Arm(qPrintable(out), plan);
    const Staging staging(out);
    shim::Disarm();
    EXPECT_TRUE(QDir(staging.Directory()).exists());
    Staging::RemoveLeft(out);
    EXPECT_TRUE(QDir(staging.Directory()).exists());
}

TEST(Staging, DoesNotWaitForADirectoryForEver)
{
    const Place place(AllRecords()[0], AllRecords()[1]);
    const TestDirectory& here = place.directory;
    Staging other(here.Path());
    other.Lock();
    EXPECT_EQ(
        ErrorOf([&] {
            Staging staging(here.Path(), std::chrono::milliseconds(30));
            place.Write(staging);
            staging.Commit(place.names, false);
        }),
        QStringLiteral("another zucmtr holds the directory '%1', where it puts a record in place; convert "
                       "again when it has ended")
            .arg(here.Path()));
    EXPECT_TRUE(place.Files() == place.before);
}

TEST(Staging, SeesThatARecordHasNoRoomOnADiskThatIsNotFull)
{
    const TestDirectory here;
    const Staging staging(here.Path());
    const std::filesystem::space_info space = std::filesystem::space(here.Path().toStdString());
    const auto room = static_cast<qint64>(geteuid() == 0 ? space.free : space.available);
    EXPECT_FALSE(staging.IsDiskFull(room / 2));
    EXPECT_TRUE(staging.IsDiskFull(room * 2));
    here.Write(staging.Directory().section('/', -1) + "/rec.dat", QByteArray(1 << 20, 'x'));
    EXPECT_FALSE(staging.IsDiskFull(1 << 20));
}

TEST(Staging, HoldsADirectoryFromTheLockToItsEnd)
{
    const TestDirectory here;
    const auto isLocked = [&] {
        const QString command = QStringLiteral("flock -n '%1' true").arg(here.Path());
        return std::system(qPrintable(command)) != 0;
    };
    {
        Staging staging(here.Path());
        EXPECT_FALSE(isLocked());
        staging.Lock();
        EXPECT_TRUE(isLocked());
    }
    EXPECT_FALSE(isLocked());
}
