#include "picture/module.h"

#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace picture {

namespace {

// Where the module is, from the directory of the program: installed, or as it was built.
constexpr const char* Places[] = {ZUCMTR_MODULE_DIRECTORY "/picture.so", "picture.so"};

QString OwnDirectory()
{
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path();
}

[[noreturn]] void Fail(const QString& reason)
{
    throw ModuleError(
        Tr("picture",
           "the part of the program that draws pictures cannot be loaded: %1; install the program again")
            .arg(reason));
}

QString FindModule()
{
    const QString own = OwnDirectory();
    for (const char* place : Places) {
        const QString path = own + QLatin1Char('/') + QLatin1String(place);
        if (QFile::exists(path))
            return path;
    }
    Fail(Tr("picture", "'%1' is not there")
             .arg(QFileInfo(own + QLatin1Char('/') + QLatin1String(Places[0])).absoluteFilePath()));
}

const Module& Load()
{
    void* const library = dlopen(QFile::encodeName(FindModule()).constData(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        Fail(QString::fromLocal8Bit(dlerror()));
    void* const symbol = dlsym(library, ModuleFunction);
    if (symbol == nullptr)
        Fail(QString::fromLocal8Bit(dlerror()));
    const Module* const module = reinterpret_cast<const Module* (*)(const char*)>(symbol)(ZUCMTR_VERSION);
    if (module == nullptr)
        Fail(Tr("picture", "it is of another version"));
    return *module;
}

} // namespace

const Module& Loaded()
{
    static const Module& module = Load();
    return module;
}

} // namespace picture
