#include "info/salvageable.h"

#include "base/chainnames.h"
#include "salvage/plan.h"
#include "text/texts.h"

#include <QFileInfo>

namespace info {

void AddSalvageable(Description& description)
{
    QStringList files;
    for (int number = 0; number <= zu::MostContinuations; ++number) {
        const QString path = zu::ContinuationName(description.file, number);
        if (!QFileInfo(path).isFile()) // opening a pipe would wait for its writer
            break;
        files << path;
    }
    try {
        const salvage::Examination found = salvage::Examine(files);
        if (!found.plan)
            return;
        description.AddForPrograms("salvageable", salvage::JsonOf(found.plan->loss));
        description.notes << Tr("info", "whole: %1; 'zucmtr convert --salvage' converts them")
                                 .arg(salvage::TextOf(found.plan->loss));
    } catch (const salvage::Unreadable& failure) {
        description.notes << failure.Message();
    }
}

} // namespace info
