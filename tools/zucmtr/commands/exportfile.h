// One record exported: written beside its place, compared, then put there.
#pragma once

#include "forms/exporting.h"
#include "forms/requestwords.h"
#include "zucmtr/commands/exporttarget.h"

/// A file that is there and must not be replaced. The message is its path.
class PresentError : public text::Error
{
public:
    using text::Error::Error;
};

struct ExportOrder
{
    ExportTarget target;
    forms::Request request; ///< without the span
    forms::PartWords part;  ///< that say it
    QString record;         ///< .cfg or .cff of what is exported
    comtrade::ReadingOptions reading;
    bool replace = false;
    std::function<bool()> isStopped; ///< asked now and then; may be empty
};

struct ExportResult
{
    forms::Exported exported;
    QStringList files; ///< paths, the configuration first; or the stream
};

/// The files appear under their names when all of them are written and compared; after a failure nothing is
/// left of them. Throws PresentError, StagingError, forms::MomentError, and what forms::Export throws; its
/// NoSuchChannel with the name that may be meant.
ExportResult ExportFile(const ExportOrder& order, const forms::OptionNames& names);
