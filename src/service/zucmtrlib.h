// The library's public face: eleven functions over one process-wide converter.
//
// Order of calls: ZuCmtrSetLogFilePath (optional, first, since loading already logs), ZuCmtrConverterInit,
// ZuCmtrLoadFromIniDefault once, ZuCmtrLoadFromIni once for each recorder, then any number of
// ZuCmtrConvertToComtrade, finally ZuCmtrConverterExit. Every function is safe without a converter.
//
// Threads: ZuCmtrConverterInit, ZuCmtrConverterExit and ZuCmtrSetLogFilePath must not run beside any other
// call, nor ini loads beside each other or beside conversions. Conversions on different devices may run at
// once; the calls for one device stay in sequence.
#pragma once

#include <QString>

#if defined(__GNUC__)
#define ZUCMTR_EXPORT __attribute__((visibility("default")))
#else
#define ZUCMTR_EXPORT
#endif

/// Creates the converter. False if there is one already, which stays as it is.
ZUCMTR_EXPORT bool ZuCmtrConverterInit();

/// Releases the converter, its devices and the cached ini files. Does nothing without a converter.
ZUCMTR_EXPORT void ZuCmtrConverterExit();

/// Reads the parameters that all devices start from, from section group of the ini file fileName. Nearly
/// every key must be there. False on failure (text: ZuCmtrGetLastError) and on every call after the first.
ZUCMTR_EXPORT bool ZuCmtrLoadFromIniDefault(const QString& fileName, const QString& group);

/// Makes a device from the defaults and section group of fileName, with its sorting dictionary; writes its
/// number, counted from 0, to *devId. False leaves *devId unchanged; the reason is in the log file only.
ZUCMTR_EXPORT bool ZuCmtrLoadFromIni(const QString& fileName, const QString& group, unsigned int* devId);

/// Converts the recording whose first file is fileName (extension .ZU or .zu, continuation files beside it)
/// into COMTRADE files in the directory outDir, given without a final slash. True if the output files were
/// made. False: the reason is in ZuCmtrGetDevLastError. Notes on a conversion that went through are fetched
/// with ZuCmtrPopDevMessage. May let std::out_of_range pass, for a start comment with too few values or a
/// chain of files that has analog but no discrete channels.
ZUCMTR_EXPORT bool ZuCmtrConvertToComtrade(const QString& fileName, const QString& outDir,
                                           unsigned int devId);

/// Text of the last failure that has no device. The reference stays valid until ZuCmtrConverterExit and
/// always shows the current text.
ZUCMTR_EXPORT const QString& ZuCmtrGetLastError();

/// Sets the file that loading appends its log to. Works without a converter.
ZUCMTR_EXPORT void ZuCmtrSetLogFilePath(const QString& path);

/// The device's oldest note, which leaves its queue; empty if there is none.
ZUCMTR_EXPORT QString ZuCmtrPopDevMessage(unsigned int devId);

/// Why the device's last conversion failed; empty if it did not.
ZUCMTR_EXPORT QString ZuCmtrGetDevLastError(unsigned int devId);

/// Number of notes in the device's queue.
ZUCMTR_EXPORT unsigned int ZuCmtrGetDevMsgCount(unsigned int devId);

/// Milliseconds that the host should wait for the device; the library only hands the value on.
ZUCMTR_EXPORT unsigned int ZuCmtrGetDevWaitTime(unsigned int devId);
