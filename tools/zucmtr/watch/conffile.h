// The file of a recorder for 'watch --config': "key = value" on each line, as in systemd's units and in
// many other files under /etc. docs/watch.md has the rules.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace conffile {

struct Setting
{
    QString key;
    QString value; // without the blanks around it
    int line = 0;  // from 1
};

struct File
{
    QString recorder; // its name, without .conf
    QString path;
    QByteArray bytes;
    std::vector<Setting> settings; // in the order of the file
    QStringList mistakes;          // each with file and line; with one the settings are of no use
};

/// The files NAME.conf in the directory by name; hidden ones do not count. Throws ConfigurationError if there
/// is no such directory, or no file in it.
std::vector<File> FilesIn(const QString& directory);

/// The settings in a text. Keys and values are not looked at.
File Parsed(const QString& path, const QByteArray& bytes);

/// The value without quotation marks around the whole of it, which only keep its blanks.
QString Unquoted(const QString& value);

/// "path:line: text".
QString Mistake(const QString& path, int line, const QString& text);

} // namespace conffile
