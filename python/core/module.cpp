#include "core/core.h"

#include <QTextCodec>

PYBIND11_MODULE(_core, module)
{
    // Paths are UTF-8 whatever the locale says, as everywhere in this project.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    module.attr("version") = ZUCMTR_VERSION;
    core::AddErrors(module);
    core::AddRecord(module);
    core::AddConvert(module);
    core::AddSave(module);
}
