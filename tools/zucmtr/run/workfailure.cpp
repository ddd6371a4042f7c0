#include "zucmtr/run/workfailure.h"

#include "explain/system.h"
#include "salvage/write.h"
#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/sourceerror.h"
#include "zucmtr/files/staging.h"

#include "verify/mismatch.h"

#include <QFileInfo>

#include <new>

namespace {

bool IsUsable(const QString& directory)
{
    const QFileInfo info(directory);
    return info.isDir() && info.isWritable();
}

void FailBy(BatchItem& item, const ChainFiles::Unreadable& error)
{
    using Kind = ChainFiles::Unreadable::Kind;
    item.Fail(error.kind == Kind::Gone       ? reason::DoesNotExist
              : error.kind == Kind::Changing ? reason::SourceChanged
                                             : reason::SourceUnreadable,
              Tr("worker", "not converted: %1").arg(text::MessageOf(error)));
    if (error.kind == Kind::NoResources)
        item.blame = Blame::Memory;
}

void FailBy(BatchItem& item, const StagingError& error)
{
    item.noRoom = error.NoRoom();
    if (item.noRoom || error.IsHeld() || !IsUsable(item.directory))
        item.blame = Blame::Output;
    item.Fail(item.noRoom ? reason::NoRoom : reason::RecordNotInPlace,
              Tr("worker", "not converted: %1").arg(text::MessageOf(error)));
}

void FailBy(BatchItem& item, const sourcefiles::Error& error)
{
    using sourcefiles::Trouble;
    const bool isArchives = error.trouble == Trouble::Archive || error.trouble == Trouble::NoRoom;
    item.noRoom = error.trouble == Trouble::NoRoom;
    item.blame = isArchives                        ? Blame::Archive
                 : error.trouble == Trouble::Input ? Blame::Input
                                                   : Blame::Recording;
    item.Fail(error.trouble == Trouble::Changed ? reason::SourceChanged : reason::NotPutAway,
              text::MessageOf(error));
}

// Handles the exception that is being caught.
void FailByKind(BatchItem& item)
{
    try {
        throw;
    } catch (const ChainFiles::Unreadable& error) {
        FailBy(item, error);
    } catch (const StagingError& error) {
        FailBy(item, error);
    } catch (const sourcefiles::Error& error) {
        FailBy(item, error);
    } catch (const salvage::Unreadable& error) {
        item.Fail(reason::SourceUnreadable, Tr("worker", "not converted: %1").arg(text::MessageOf(error)));
    } catch (const salvage::WriteError& error) {
        item.noRoom = explain::IsNoRoom(error.code);
        item.blame = Blame::Output;
        item.Fail(item.noRoom ? reason::NoRoom : reason::Unexpected,
                  Tr("worker", "not converted: %1").arg(text::MessageOf(error)));
    } catch (const verify::Unreadable& error) {
        item.Fail(reason::NotConverted, text::MessageOf(error));
    } catch (const std::bad_alloc& error) {
        item.blame = Blame::Memory;
        item.Fail(reason::OutOfMemory, text::MessageOf(error));
    } catch (const std::exception& error) {
        item.Fail(reason::Unexpected, text::MessageOf(error));
    }
}

} // namespace

void FailByCurrent(BatchItem& item)
{
    try {
        FailByKind(item);
    } catch (const std::bad_alloc&) { // not even a text can be made
        item.state = ItemState::Failed;
        item.blame = Blame::Memory;
        item.reason = reason::OutOfMemory;
    }
}
