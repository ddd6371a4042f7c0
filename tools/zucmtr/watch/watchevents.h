// What 'zucmtr watch' prints: a line for each event, as a JSON object or as text. docs/json.md lists the
// keys, docs/watch.md has the form of the text.
#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>

namespace watchevents {

enum class Form { Json, Text };

struct Output
{
    Form form = Form::Json;
    QString recorder;                        // the name in each line; empty: none
    std::function<void(const QString&)> log; // gets the lines of text as well; empty: nobody does
};

/// How events are printed from here on.
void Use(const Output& output);

/// The name and form of the output change, the log stays.
void Name(const QString& recorder);
const Output& Used();

/// From here on the lines of this process and of those that it forks are printed one after the other, however
/// long they are.
void ShareLines();

/// Prints an event with these keys, the time and the name of the recorder.
void Emit(const char* event, QJsonObject object);

} // namespace watchevents
