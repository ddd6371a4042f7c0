#include "picture/picture.h"

#include "output/outputfile.h"
#include "text/texts.h"
#include "view/shown.h"

namespace picture {

view::Held Write(const QString& recordPath, const QString& picturePath, Format format,
                 const view::Options& options)
{
    const Module& module = Loaded();
    const analysis::Oscillogram oscillogram = view::Load(recordPath, options);
    const analysis::Summary summary = view::SummaryOf(recordPath, oscillogram, options);
    const QByteArray bytes = module.Draw(oscillogram, summary, format);
    QString error;
    if (!output::WriteOutput(picturePath, bytes, error))
        throw view::Error(Tr("view", "'%1' cannot be written: %2").arg(picturePath, error));
    return view::Holding(oscillogram);
}

} // namespace picture
