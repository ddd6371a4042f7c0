#include "zucmtr/commands/formoptions.h"

#include "forms/requestwords.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

namespace {

// Whether a word is the one for true; nothing for an option that is not given.
std::optional<bool> Is(const std::string& word, const char* yes)
{
    return word.empty() ? std::nullopt : std::optional<bool>(word == yes);
}

} // namespace

void AddFormOptions(CLI::App& command, FormOptions& options)
{
    const auto add = [&command](const char* name, std::string& word, const std::vector<std::string>& words,
                                const std::string& help) {
        AddValue(command, name, word, "KIND", help)->check(values::OneOf(words));
    };
    add("--form", options.files, {"cfg", "cff"},
        HelpText("form", "Files of a record: cfg, several with .cfg as the first; cff, a single one"));
    add("--data", options.data, {"ascii", "binary"}, HelpText("form", "Samples as text or binary"));
    add("--revision", options.revision, {"1999", "2013"}, HelpText("form", "Revision of COMTRADE"));
    add("--encoding", options.encoding, {"utf8", "cp1251"}, HelpText("form", "Encoding of the texts"));
}

RecordForm FormOf(const FormOptions& options)
{
    RecordForm form;
    form.isContainer = Is(options.files, "cff");
    form.isBinary = Is(options.data, "binary");
    form.is1999 = Is(options.revision, "1999");
    form.isUtf8 = Is(options.encoding, "utf8");
    if (form.isContainer.value_or(false) && form.is1999.value_or(false))
        throw UsageError(forms::ContainerRevisionText("--form", "--revision"),
                         QStringLiteral("zucmtr convert"));
    return form;
}
