// The output files of a conversion: temporary names, and the commit under the final ones.
#include "service/outputfiles.h"

#include "service/zucmtrconverter.h"

#include <QFile>

#include <cstdio>
#include <sys/stat.h>

// The final name of a temporary file: its path without "tmp".
static QString FinalName(const QString& tmpPath)
{
    return tmpPath.left(tmpPath.length() - 3);
}

// Removes the file, and a dangling link too: opening one would write wherever it points.
static void RemoveIfThere(const QString& path)
{
    struct stat status = {};
    if (lstat(QFile::encodeName(path).constData(), &status) == 0)
        QFile::remove(path);
}

static void NameFile(QFile& file, const QString& tmpPath)
{
    if (file.isOpen()) // left open by a conversion that failed
        file.close();
    file.setFileName(tmpPath);
}

bool ZuCmtrConverter::RenameTmpFile(const QString& tmpPath)
{
    // One step that replaces an earlier file: at no moment is there neither the old one nor the new one.
    return std::rename(QFile::encodeName(tmpPath).constData(),
                       QFile::encodeName(FinalName(tmpPath)).constData()) == 0;
}

bool ZuCmtrConverter::RemoveOldFile(const QString& tmpPath)
{
    const QString finalName = FinalName(tmpPath);
    return !QFile::exists(finalName) || QFile::remove(finalName);
}

bool outputfiles::Name(const QString& outName, const QString& outDir, ZuCmtrDevParam* dev)
{
    const QString directory = outDir + QLatin1Char('/');
    const auto name = [&](const char* extension, QString& tmpName, QString& tmpPath) {
        tmpName = outName + QLatin1String(extension);
        tmpPath = directory + tmpName;
    };
    name(".cfgtmp", dev->TmpNameCfg, dev->TmpPathCfg);
    name(".dattmp", dev->TmpNameDat, dev->TmpPathDat);
    name(".hdrtmp", dev->TmpNameHdr, dev->TmpPathHdr);
    name(".inftmp", dev->TmpNameInf, dev->TmpPathInf);
    name(".cfftmp", dev->TmpNameCff, dev->TmpPathCff);

    if (outName.contains(QChar::Null))
        return false;
    for (const QString* path : {&dev->TmpPathCfg, &dev->TmpPathDat, &dev->TmpPathHdr, &dev->TmpPathInf})
        RemoveIfThere(*path);
    NameFile(dev->FileCfg, dev->TmpPathCfg);
    NameFile(dev->FileDat, dev->TmpPathDat);
    NameFile(dev->FileHdr, dev->TmpPathHdr);
    NameFile(dev->FileInf, dev->TmpPathInf);
    return true;
}

static void CommitCff(ZuCmtrConverter& converter, ZuCmtrDevParam* dev)
{
    RemoveIfThere(dev->TmpPathCff);
    NameFile(dev->FileCff, dev->TmpPathCff);
    // Deliberate: a CFF file that cannot be written does not fail the conversion; the marker in the
    // converter's LastError is its only trace.
    if (converter.WriteCff(dev))
        ZuCmtrConverter::RenameTmpFile(dev->TmpPathCff);
}

void outputfiles::Commit(ZuCmtrConverter& converter, ZuCmtrDevParam* dev)
{
    if (dev->ComtradeCff) {
        CommitCff(converter, dev);
        return;
    }
    // Deliberate: the results of the renames and removals are not checked.
    ZuCmtrConverter::RenameTmpFile(dev->TmpPathCfg);
    ZuCmtrConverter::RenameTmpFile(dev->TmpPathDat);
    if (!dev->Comtrade1999) {
        ZuCmtrConverter::RenameTmpFile(dev->TmpPathHdr);
        ZuCmtrConverter::RenameTmpFile(dev->TmpPathInf);
        return;
    }
    for (const QString& tmpPath : {dev->TmpPathHdr, dev->TmpPathInf}) {
        RemoveIfThere(tmpPath);
        ZuCmtrConverter::RemoveOldFile(tmpPath);
    }
}
