#include "view/webfile.h"

#include <QCryptographicHash>
#include <QFile>

#include <stdexcept>

// A static library's resources are linked in by name, outside of every namespace.
static void LinkResources()
{
    Q_INIT_RESOURCE(web);
}

namespace view {

QByteArray ResourceText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::logic_error("the program lacks its resource " + path.toStdString());
    const QByteArray text = file.readAll();
    const int map = text.lastIndexOf("# sourceMappingURL=");
    return map < 2 ? text : text.left(map - 2);
}

QByteArray WebFile(const QString& name)
{
    LinkResources();
    return ResourceText(QStringLiteral(":/view/") + name);
}

std::vector<QByteArray> SplitAt(const QByteArray& text, std::initializer_list<const char*> marks)
{
    std::vector<QByteArray> parts;
    int from = 0;
    for (const char* mark : marks) {
        const int at = text.indexOf(mark, from);
        parts.push_back(text.mid(from, at - from));
        from = at + static_cast<int>(qstrlen(mark));
    }
    parts.push_back(text.mid(from));
    return parts;
}

QByteArray HashSources(const std::vector<QByteArray>& texts)
{
    QByteArray sources;
    for (const QByteArray& text : texts)
        sources += " 'sha256-" + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toBase64() + "'";
    return sources;
}

} // namespace view
