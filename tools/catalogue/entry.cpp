#include "catalogue/entry.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace catalogue {

const char* NameOf(Kind kind)
{
    return kind == Kind::Recording ? "recording" : "record";
}

QByteArray PrintOf(const std::vector<Piece>& pieces)
{
    const QByteArray lineEnd("\n");
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const Piece& piece : pieces) {
        hash.addData(QFileInfo(piece.name).suffix().toLower().toUtf8());
        hash.addData(lineEnd);
        hash.addData(piece.sha256);
        hash.addData(lineEnd);
    }
    return hash.result().toHex();
}

} // namespace catalogue
