// Numbers as the page takes them: little-endian, in base64.
#pragma once

#include <QByteArray>
#include <QtEndian>

#include <limits>
#include <stdexcept>
#include <vector>

namespace view {

template <typename Number>
QByteArray Base64(const std::vector<Number>& numbers)
{
    const size_t bytes = numbers.size() * sizeof(Number);
    if (bytes > static_cast<size_t>(std::numeric_limits<int>::max()) / 2)
        throw std::length_error("a channel has too many samples for one page; give --window");
    QByteArray raw(static_cast<int>(bytes), Qt::Uninitialized);
    qToLittleEndian<Number>(numbers.data(), static_cast<qsizetype>(numbers.size()), raw.data());
    return raw.toBase64();
}

} // namespace view
