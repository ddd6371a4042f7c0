#include "zucmtr/run/recordplace.h"

#include "text/texts.h"
#include "zucmtr/files/staging.h"

#include "explain/system.h"

#include <algorithm>
#include <array>

std::vector<systemfile::Identity> IdentifyRecord(const QString& directory, const QString& recordName)
{
    constexpr std::array extensions = {".cfg", ".cff", ".dat", ".hdr", ".inf"};
    std::vector<systemfile::Identity> files;
    for (const char* extension : extensions) {
        systemfile::Identity file;
        systemfile::Identify(directory + QLatin1Char('/') + recordName + QLatin1String(extension), file,
                             systemfile::Links::Kept);
        files.push_back(file);
    }
    return files;
}

bool IsAnythingThere(const std::vector<systemfile::Identity>& files)
{
    return std::any_of(files.begin(), files.end(),
                       [](const systemfile::Identity& file) { return file != systemfile::Identity(); });
}

void MakeRecordDirectory(const QString& directory, const QString& top, bool sync)
{
    if (directory == top) // the user's to make
        return;
    int error = systemfile::MakeDirectory(directory);
    if (error != 0)
        throw StagingError(Tr("worker", "the directory '%1' cannot be made: %2")
                               .arg(directory, explain::SystemText(error, top)),
                           error);
    error = sync ? systemfile::SyncUp(directory, top) : 0;
    if (error != 0)
        throw StagingError(Tr("worker", "'%1' could not be written to the disk: %2")
                               .arg(directory, explain::SystemText(error, top)),
                           error);
}
