// The files that pages are made of, and what makes a page of them.
#pragma once

#include <QByteArray>
#include <QString>

#include <initializer_list>
#include <vector>

namespace view {

/// A script, style or frame of this folder's web files, without the address of a source map: the browser
/// would ask the network for that.
QByteArray WebFile(const QString& name);

/// The same of a file of the program's resources, which the caller has linked in.
QByteArray ResourceText(const QString& path);

/// The text before, between and after marks that stand in it in this order.
std::vector<QByteArray> SplitAt(const QByteArray& text, std::initializer_list<const char*> marks);

/// For a Content-Security-Policy: allows inline scripts with these texts and no others. Begins with a blank.
QByteArray HashSources(const std::vector<QByteArray>& texts);

} // namespace view
