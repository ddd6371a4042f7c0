#include "analysis/linezones.h"

#include "text/texts.h"

#include <array>
#include <cmath>

namespace analysis {

namespace {

// Twice the area, positive or negative by the sense in which the corners go round.
double Area(const std::vector<Impedance>& corners)
{
    double area = 0;
    for (size_t i = 0; i < corners.size(); ++i) {
        const Impedance& next = corners[(i + 1) % corners.size()];
        area += corners[i].r * next.x - next.r * corners[i].x;
    }
    return area;
}

QString ParseCircle(const QStringList& words, Zone& zone)
{
    if (words.size() != 4)
        return Tr("lines", "a mho circle is written as: mho R X radius");
    Impedance centre;
    const std::array<double*, 3> values = {&centre.r, &centre.x, &zone.radius};
    for (int i = 0; i < 3; ++i) {
        QString trouble = NumberTrouble(words[i + 1], *values[static_cast<size_t>(i)]);
        if (!trouble.isEmpty())
            return trouble;
    }
    zone.corners = {centre};
    return zone.radius > 0 ? QString() : Tr("lines", "the radius has to be above 0");
}

QString ParsePolygon(const QStringList& words, Zone& zone)
{
    for (const QString& word : words.mid(1)) {
        const QStringList pair = word.split(QLatin1Char(','));
        if (pair.size() != 2)
            return Tr("lines", "the corner '%1' is not R,X; write corners with blanks between them and "
                               "decimal points: 0,0 10,0 8.5,20")
                .arg(word);
        Impedance corner;
        QString trouble = NumberTrouble(pair[0], corner.r);
        if (trouble.isEmpty())
            trouble = NumberTrouble(pair[1], corner.x);
        if (!trouble.isEmpty())
            return trouble;
        zone.corners.push_back(corner);
    }
    if (zone.corners.size() < 3)
        return Tr("lines", "a polygon has at least three corners: polygon R,X R,X R,X");
    return Area(zone.corners) != 0 ? QString() : Tr("lines", "the corners enclose nothing");
}

} // namespace

QString NumberTrouble(const QString& text, double& value)
{
    bool isNumber = false;
    value = text.toDouble(&isNumber);
    if (isNumber && std::isfinite(value))
        return QString();
    const QString pointed = QString(text).replace(QLatin1Char(','), QLatin1Char('.'));
    pointed.toDouble(&isNumber);
    return isNumber && pointed != text ? Tr("lines", "write a decimal point: %1").arg(pointed)
                                       : Tr("lines", "'%1' is not a number").arg(text);
}

QString ParseZone(const QString& text, Zone& zone)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    if (words.first() == QLatin1String("mho"))
        return ParseCircle(words, zone);
    if (words.first() == QLatin1String("polygon"))
        return ParsePolygon(words, zone);
    return Tr("lines", "a zone is 'mho R X radius' or 'polygon R,X R,X R,X ...', in primary ohms");
}

} // namespace analysis
