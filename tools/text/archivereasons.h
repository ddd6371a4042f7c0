#pragma once
#include "text/reasons.h"
namespace reason {
// What 'zucmtr archive check' finds.
inline constexpr char ContentChanged[] = "contentChanged";
inline constexpr char DatabaseDamaged[] = "databaseDamaged";
inline constexpr char DirectoryUnreadable[] = "directoryUnreadable";
inline constexpr char EntryInconsistent[] = "entryInconsistent";
inline constexpr char FileAdded[] = "fileAdded";
inline constexpr char FileChanged[] = "fileChanged";
inline constexpr char FileMissing[] = "fileMissing";
inline constexpr char FileUnreadable[] = "fileUnreadable";
inline constexpr char LinkBroken[] = "linkBroken";
inline constexpr char NotCatalogued[] = "notCatalogued";
inline constexpr char NotGone[] = "notGone";

}
