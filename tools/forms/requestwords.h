// A request in the words of people: options of the command line, arguments of the Python module.
#pragma once

#include "forms/export.h"
#include "text/error.h"

#include <optional>
#include <string>
#include <vector>

namespace forms {

/// Words that mean nothing, or contradict each other.
class WordError : public text::Error
{
public:
    using text::Error::Error;
};

/// The form, in UTF-8; empty words are not given.
struct FormWords
{
    std::string form;
    std::string data;
    std::string revision;
    std::string encoding;
    std::string side;
    std::string time;
    bool decimalComma = false;
};

/// The part, in UTF-8; empty words are not given.
struct PartWords
{
    std::string from;
    std::string to;
    std::string window;
    std::vector<std::string> channels;
    ChannelSet places; ///< chosen besides those
    bool changingOnly = false;
    std::optional<qint64> every;
    std::optional<double> rate;
};

/// How users call all that, for texts that are about it.
struct OptionNames
{
    const char* form;
    const char* data;
    const char* revision;
    const char* encoding;
    const char* side;
    const char* time;
    const char* decimalComma;
    const char* from;
    const char* to;
    const char* window;
    const char* channels;
    const char* every;
    const char* rate;
    const char* out; ///< path of what is written
};

/// The words that there are.
std::vector<std::string> FormNames();
std::vector<std::string> DataNames();
std::vector<std::string> RevisionNames();
std::vector<std::string> EncodingNames();
std::vector<std::string> SideNames();
std::vector<std::string> TimeNames();

/// Limits of numbers, themselves included.
constexpr qint64 LeastEvery = 2;
constexpr qint64 MostEvery = 1000000;
constexpr double LeastRate = 0.001; // Hz
constexpr double MostRate = 1e9;

/// The request but for the span, which depends on the record (SpanOf). out: the path of what is written,
/// whose ending names the form where no word does. Throws WordError.
Request RequestOf(const FormWords& form, const PartWords& part, const QString& out, const OptionNames& names);

/// The span; with the window "fault" the record is searched for one. record: its .cfg or .cff. Throws
/// NoSamples if there is nothing of it, MomentError, or comtrade::Error.
Span SpanOf(const PartWords& part, const QString& record, const comtrade::ReadingOptions& reading,
            const OptionNames& names);

/// That a CFF file cannot be of revision 1999.
QString ContainerRevisionText(const char* form, const char* revision);

/// The ending of the file that stands for a form: ".cfg".
QString EndingOf(Form form);

/// The form as convert names its own: "cfg 2013 binary utf8"; "csv", "mat".
QString FormText(const Request& request, const comtrade::Configuration& written);

} // namespace forms
