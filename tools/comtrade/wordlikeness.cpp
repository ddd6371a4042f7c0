#include "comtrade/wordlikeness.h"

#include <QSet>
#include <QTextCodec>

#include <array>
#include <vector>

namespace comtrade {

namespace {

// Points for and against an encoding. They are not probabilities: a character that cannot be there outweighs
// several that can.
constexpr double Common = 1.0;    // a letter of which there are many
constexpr double Letter = 0.4;    // any other letter
constexpr double Symbol = 0.2;    // a degree sign and the like
constexpr double Stranger = -2.0; // a character that has no business in a name, such as those that draw boxes
constexpr double BadShape = -2.0; // a capital after a small letter, or a letter with which no word begins
constexpr double KnownWord = 3.0; // a word of relay protection
constexpr double MixedWord = -1.5; // a Cyrillic letter inside of a Latin word
constexpr double Character = 1.5;  // a Chinese character of the 3,755 usual ones
constexpr double Unusual = -0.5;   // another one
constexpr double DetectorSays = 1.0;

bool IsLatin(uint character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool IsRussian(QChar letter)
{
    return (letter >= QChar(0x410) && letter <= QChar(0x44F)) || letter == QChar(0x401) ||
           letter == QChar(0x451);
}

bool IsSymbol(QChar character)
{
    static const QString symbols = QStringLiteral("№°«»–—…“”„±·µ§²³×÷€©®") + QChar(QChar::Nbsp);
    return symbols.contains(character);
}

// Abbreviations, units and words that stand in nearly every Russian record. Units have a capital after a
// small letter.
bool IsKnown(const QString& word)
{
    static const QSet<QString> words{
        "кВ",         "кА",         "мА",         "мВ",         "А",      "В",      "С",     "кВт",  "кВА",
        "кВАр",       "МВт",        "МВА",        "МВАр",       "Гц",     "кГц",    "Ом",    "мс",   "Вт",
        "ПС",         "ВЛ",         "КЛ",         "ТТ",         "ТН",     "КЗ",     "АТ",    "РПН",  "УРОВ",
        "АПВ",        "АВР",        "ДЗ",         "ДЗШ",        "ДЗТ",    "ДФЗ",    "МТЗ",   "ТО",   "ТЗНП",
        "РЗ",         "РЗА",        "РАС",        "ГРЭС",       "ТЭЦ",    "ГЭС",    "АЭС",   "ОРУ",  "КРУ",
        "КРУН",       "ЗРУ",        "РУ",         "СШ",         "СВ",     "МВ",     "ШСВ",   "ОВ",   "ВВ",
        "ф",          "ток",        "Ток",        "фаза",       "Фаза",   "фазы",   "Пуск",  "пуск", "откл",
        "Откл",       "вкл",        "Вкл",        "сраб",       "Сраб",   "линия",  "Линия", "ввод", "Ввод",
        "Напряжение", "напряжение", "Подстанция", "Отключение", "защита", "Защита", "линии", "шин",  "на",
        "от"};
    return words.contains(word);
}

double LikenessOfLetter(QChar letter)
{
    static const QString common = QStringLiteral("оеаинтсрвлкмдпу");
    if (IsRussian(letter))
        return common.contains(letter.toLower()) ? Common : Letter;
    return IsSymbol(letter) ? Symbol : Stranger;
}

double LikenessOfShape(const QString& word)
{
    static const QString neverFirst = QStringLiteral("ъыь");
    double likeness = neverFirst.contains(word[0].toLower()) ? BadShape : 0;
    int latin = 0;
    for (int i = 0; i < word.size(); ++i) {
        latin += IsLatin(word[i].unicode()) ? 1 : 0;
        if (i > 0 && IsRussian(word[i]) && word[i].isUpper() && IsRussian(word[i - 1]) &&
            word[i - 1].isLower())
            likeness += BadShape;
    }
    return likeness + (latin >= 3 ? MixedWord : 0);
}

double RussianLikeness(const QString& word)
{
    if (IsKnown(word))
        return KnownWord + word.size();
    double likeness = LikenessOfShape(word);
    for (const QChar letter : word)
        likeness += letter.unicode() >= 0x80 ? LikenessOfLetter(letter) : 0;
    return likeness;
}

// Letters with accents stand alone between others.
double WesternLikeness(const QString& word)
{
    int latin = 0;
    double likeness = 0;
    for (const QChar letter : word) {
        latin += IsLatin(letter.unicode()) ? 1 : 0;
        if (letter.unicode() >= 0x80)
            likeness += letter.isLetter() ? Common : IsSymbol(letter) ? Symbol : Stranger;
    }
    int accents = 0;
    for (const QChar letter : word)
        accents += letter.unicode() >= 0x80 && letter.isLetter() ? 1 : 0;
    return latin >= 2 * accents ? likeness : accents * BadShape;
}

// The words of the text that hold more than ASCII.
std::vector<QByteArray> WordsOf(const QByteArray& bytes)
{
    std::vector<QByteArray> words;
    QByteArray word;
    bool isHigh = false;
    const auto close = [&] {
        if (isHigh)
            words.push_back(word);
        word.clear();
        isHigh = false;
    };
    for (const char byte : bytes) {
        const auto code = static_cast<uchar>(byte);
        if (code < 0x80 && !IsLatin(code)) {
            close();
            continue;
        }
        word += byte;
        isHigh = isHigh || code >= 0x80;
    }
    close();
    return words;
}

// GBK by its bytes: the usual characters have first bytes from B0 to D7.
double ChineseLikeness(const QByteArray& bytes)
{
    double likeness = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        const auto first = static_cast<uchar>(bytes[i]);
        if (first < 0x80)
            continue;
        const auto second = i + 1 < bytes.size() ? static_cast<uchar>(bytes[i + 1]) : uchar{0};
        if (first == 0x80 || first == 0xFF || second < 0x40 || second == 0x7F || second == 0xFF) {
            likeness += Stranger;
            continue;
        }
        ++i;
        const bool isOld = second >= 0xA1; // as in GB 2312
        const bool isUsual = isOld && first >= 0xB0 && first <= 0xD7;
        const bool isSymbol = isOld && first >= 0xA1 && first <= 0xA3;
        likeness += isUsual ? Character : isSymbol ? Symbol : isOld && first > 0xD7 ? Unusual : Stranger;
    }
    return likeness;
}

struct Candidate
{
    const char* name;
    const char* codec; // none: Chinese, which is judged by its bytes
    double (*likeness)(const QString& word);
};

// The first of those that are equally likely is taken.
constexpr std::array<Candidate, 5> Candidates = {{{"CP1251", "windows-1251", RussianLikeness},
                                                  {"CP866", "IBM866", RussianLikeness},
                                                  {"GBK", nullptr, nullptr},
                                                  {"KOI8-R", "KOI8-R", RussianLikeness},
                                                  {"Latin-1", "windows-1252", WesternLikeness}}};

} // namespace

QString MostLikely(const QByteArray& bytes, const QString& detected)
{
    const std::vector<QByteArray> words = WordsOf(bytes);
    QString best;
    double most = 0;
    for (const Candidate& candidate : Candidates) {
        double likeness = detected == QLatin1String(candidate.name) ? DetectorSays : 0;
        if (candidate.codec == nullptr) {
            likeness += ChineseLikeness(bytes);
        } else {
            const QTextCodec* codec = QTextCodec::codecForName(candidate.codec);
            for (const QByteArray& word : words)
                likeness += candidate.likeness(codec->toUnicode(word));
        }
        if (best.isEmpty() || likeness > most) {
            best = QLatin1String(candidate.name);
            most = likeness;
        }
    }
    return best;
}

} // namespace comtrade
