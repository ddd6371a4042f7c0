// Read-only ini reader with a process-wide cache of the files it has read.
//
// The entries of the grammar (inigrammar.h) are kept under the full key section/key. Of equal keys the last
// one counts.
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <vector>

class QTextCodec;

class QSettingsRu
{
public:
    /// The cache: file name, exactly as given to the constructor, to the file's full keys and values. The
    /// maps are owned by the cache; Clear and ClearOneKey free them.
    static QMap<QString, QMap<QString, QVariant>*> Maps;

    QMap<QString, QVariant>* settings; // the file's map in the cache, borrowed; null after a failed read
    QString fileName;
    QString group;     // prefix for value(); assigned by the client
    QTextCodec* codec; // what the file was read with; null when the map came from the cache
    int status;        // 0: usable, 1: the file could not be read

    /// Takes fileName from the cache, or reads it with codec (null: the stream's default) and caches it.
    /// A file that cannot be read sets status to 1 and is tried again by the next object.
    QSettingsRu(const QString& fileName, QTextCodec* codec);

    /// Parses fileName into *settings; false if it cannot be opened. For the constructor only.
    bool ReadSettings();

    /// The text stored under group/key (under key alone while group is empty), or defaultValue. Only while
    /// status is 0.
    QVariant value(const QString& key, const QVariant& defaultValue) const;

    /// Numbers N from 1 to highest, rising, for which the group has a key of prefix and N formatted by "%02d"
    /// (A01, A10, A100). The time taken depends on the keys that are there, not on highest. Only while status
    /// is 0.
    std::vector<unsigned int> NumberedKeys(const QString& prefix, unsigned int highest) const;

    /// The key that NumberedKeys looks for: prefix and number by "%02d".
    static QString NumberedKey(const QString& prefix, unsigned int number);

    /// Drops one file from the cache; no object for it may exist any more.
    static void ClearOneKey(const QString& fileName);

    /// Drops all files; no object may exist any more.
    static void Clear();

private:
    QString FullKey(const QString& key) const;
};
