#include "zucmtr/files/sourcefiles.h"

#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/files/archivecopies.h"

namespace sourcefiles {

namespace {

void Check(const ChainFiles& chain)
{
    QString what;
    if (!chain.IsUnchanged(&what))
        ThrowChanged(what);
    if (!chain.Beyond().isEmpty())
        ThrowChanged(Tr("sources", "'%1' is there, but not the file before it").arg(chain.Beyond().front()));
}

// Does a step; if it fails, puts the files back and says so.
template <class Step>
void OrPutBack(AsideFiles& aside, Step step)
{
    try {
        step();
    } catch (const Error& error) {
        const QStringList notes = aside.PutBack();
        if (notes.isEmpty())
            throw;
        throw Error(error.trouble,
                    text::MessageOf(error) + QStringLiteral("; ") + notes.join(QLatin1String("; ")));
    }
}

void MoveIn(AsideFiles& aside, ArchiveCopies& copies)
{
    aside.Move();
    copies.Finish();
    aside.CheckAgain();
    if (copies.NeedsMove()) {
        const int error = aside.MoveOnlyTo(copies.TargetOf(0));
        if (error != 0)
            copies.Fail(0, error);
    } else {
        aside.RemoveFirst();
        copies.Keep();
        aside.RemoveRest();
    }
}

} // namespace

void Sync(const QStringList& files, const QString& directory)
{
    for (const QString& file : files)
        SyncOrThrow(file, directory, Trouble::File);
    SyncOrThrow(directory, directory, Trouble::File);
}

void Remove(const ChainFiles& chain)
{
    Check(chain);
    AsideFiles aside(chain);
    OrPutBack(aside, [&] {
        aside.Move();
        aside.RemoveFirst();
        aside.RemoveRest();
    });
}

void Archive(const ChainFiles& chain, const QString& directory)
{
    Check(chain);
    AsideFiles aside(chain); // locked before they have names in the archive
    ArchiveCopies copies(chain, directory);
    copies.Place();
    OrPutBack(aside, [&] { MoveIn(aside, copies); });
}

} // namespace sourcefiles
