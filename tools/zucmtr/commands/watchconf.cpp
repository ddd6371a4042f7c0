#include "zucmtr/commands/watchconf.h"

#include "inicheck/nearest.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/parsertexts.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QMap>

#include <algorithm>

namespace {

const QString DirectoryKey = QStringLiteral("directory");

// Words of systemd.
bool IsYes(const QString& word)
{
    return QStringList{"yes", "true", "on", "1"}.contains(word.toLower());
}

bool IsNo(const QString& word)
{
    return QStringList{"no", "false", "off", "0"}.contains(word.toLower());
}

class Filling
{
public:
    Filling(const conffile::File& file_, ConfiguredRecorder& recorder_) : file(file_), recorder(recorder_)
    {
        app.set_help_flag("");
        AddRecorderOptions(app, recorder.options);
        for (CLI::Option* option : app.get_options()) {
            const QString name =
                option->get_positional() ? DirectoryKey : FromUtf8(option->get_single_name());
            if (name != QLatin1String("verify")) // the default
                options[name] = option;
        }
    }

    void Fill()
    {
        for (const conffile::Setting& setting : file.settings) {
            const QString wrong = Take(setting);
            if (!wrong.isEmpty())
                recorder.mistakes << conffile::Mistake(file.path, setting.line, wrong);
        }
        for (auto option = options.begin(); option != options.end(); ++option)
            Store(option.key(), **option);
        if (recorder.mistakes.isEmpty())
            CheckTogether();
    }

private:
    // What is wrong with the setting, or nothing.
    QString Take(const conffile::Setting& setting)
    {
        if (!options.contains(setting.key))
            return UnknownKey(setting.key);
        CLI::Option& option = *options[setting.key];
        if (lines.contains(setting.key) && setting.key != DirectoryKey)
            return Tr("conf", "'%1' is here already, in line %2; leave one out")
                .arg(setting.key)
                .arg(lines[setting.key]);
        if (!lines.contains(setting.key))
            lines[setting.key] = setting.line;
        if (option.get_items_expected_max() > 0)
            option.add_result(
                (setting.key == QLatin1String("exec") ? setting.value : conffile::Unquoted(setting.value))
                    .toStdString());
        else if (IsYes(setting.value))
            option.add_result("true");
        else if (!IsNo(setting.value))
            return Tr("conf", "'%1' is wrong for '%2'; give yes or no").arg(setting.value, setting.key);
        return QString();
    }

    QString UnknownKey(const QString& key) const
    {
        if (IsServiceOption(key.toStdString()))
            return Tr("conf", "'%1' belongs to the whole service; give it on the command line, as --%1")
                .arg(key);
        return Tr("conf", "there is no key '%1'").arg(key) +
               inicheck::MeantText(inicheck::Nearest(key, options.keys()));
    }

    // The parser's checks, and its texts.
    void Store(const QString& key, CLI::Option& option)
    {
        if (option.count() == 0)
            return;
        try {
            option.run_callback();
        } catch (const CLI::ParseError& error) {
            recorder.mistakes << conffile::Mistake(file.path, lines[key], ParseErrorText(app, error));
        }
    }

    void CheckTogether()
    {
        for (auto one = options.begin(); one != options.end(); ++one) {
            for (CLI::Option* other : (*one)->get_excludes()) {
                const QString key = options.key(other);
                if ((*one)->count() > 0 && other->count() > 0 && !key.isEmpty() &&
                    lines[key] < lines[one.key()])
                    recorder.mistakes << conffile::Mistake(
                        file.path, lines[one.key()],
                        Tr("conf", "'%1' and '%2' exclude each other; leave one out").arg(key, one.key()));
            }
        }
        if (!recorder.mistakes.isEmpty())
            return;
        QString missing = MissingOption(recorder.options);
        if (!missing.isEmpty())
            recorder.mistakes << file.path + QLatin1String(": ") +
                                     Tr("conf", "'%1 = ...' is missing")
                                         .arg(missing == QLatin1String("DIR")
                                                  ? DirectoryKey
                                                  : missing.remove(QStringLiteral("--")));
    }

    const conffile::File& file;
    ConfiguredRecorder& recorder;
    CLI::App app;
    QMap<QString, CLI::Option*> options; // by key
    QMap<QString, int> lines;            // of the keys
};

} // namespace

ConfiguredRecorder ConfiguredBy(const conffile::File& file)
{
    ConfiguredRecorder recorder;
    recorder.mistakes = file.mistakes;
    Filling(file, recorder).Fill();
    return recorder;
}
