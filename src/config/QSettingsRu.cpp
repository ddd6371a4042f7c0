// Read-only ini reader: full keys, and the cache.
#include "config/QSettingsRu.h"

#include "base/decodedtext.h"
#include "config/inigrammar.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <memory>

QMap<QString, QMap<QString, QVariant>*> QSettingsRu::Maps;

QSettingsRu::QSettingsRu(const QString& fileName_, QTextCodec* codec_)
    : settings(nullptr), fileName(fileName_), group(QLatin1String("")), codec(nullptr), status(0)
{
    const auto cached = Maps.constFind(fileName);
    if (cached != Maps.constEnd()) {
        settings = *cached;
        return;
    }

    codec = codec_;
    auto fresh = std::make_unique<QMap<QString, QVariant>>();
    settings = fresh.get();
    if (!ReadSettings()) {
        settings = nullptr;
        status = 1;
        return;
    }
    Maps.insert(fileName, fresh.get());
    fresh.release(); // the cache owns it from here
}

bool QSettingsRu::ReadSettings()
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text | QIODevice::ExistingOnly))
        return false;
    QString text = zu::DecodedText(file, codec);
    QTextStream stream(&text);

    zu::IniLine line;
    while (zu::ReadIniLine(stream, line)) {
        if (line.kind == zu::IniLineKind::Entry)
            settings->insert(line.section + QLatin1Char('/') + line.key, QVariant(line.value));
    }
    return true;
}

QString QSettingsRu::FullKey(const QString& key) const
{
    if (group.isEmpty())
        return key;
    return group + QLatin1Char('/') + key;
}

QVariant QSettingsRu::value(const QString& key, const QVariant& defaultValue) const
{
    return settings->value(FullKey(key), defaultValue);
}

QString QSettingsRu::NumberedKey(const QString& prefix, unsigned int number)
{
    return prefix + QString::asprintf("%02d", static_cast<int>(number));
}

std::vector<unsigned int> QSettingsRu::NumberedKeys(const QString& prefix, unsigned int highest) const
{
    std::vector<unsigned int> numbers;
    const QString head = FullKey(prefix);
    const QMap<QString, QVariant>& entries = *settings;
    for (auto entry = entries.lowerBound(head); entry != entries.end() && entry.key().startsWith(head);
         ++entry) {
        const QString digits = entry.key().mid(head.length());
        const auto number = static_cast<unsigned int>(digits.toLongLong());
        // Only a key that its number gives back counts: "A07", but not "A7", "A007" or "A7x".
        const bool canonical = NumberedKey(QString(), number) == digits;
        if (canonical && number >= 1 && number <= highest)
            numbers.push_back(number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

void QSettingsRu::ClearOneKey(const QString& fileName)
{
    delete Maps.take(fileName);
}

void QSettingsRu::Clear()
{
    qDeleteAll(Maps);
    Maps.clear();
}
