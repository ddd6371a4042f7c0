// What Qt has to say while the program runs. It never reaches the user's standard error: the program itself
// reports what matters to the user, in the user's language.
#pragma once

#include <QString>

#include <functional>

namespace messages {

/// Exit code of a run that one of Qt's messages ended, where ZUCMTR_QT_MESSAGES says so.
constexpr int ExitUnexpected = 70;

/// Takes Qt's messages from here on. They go to the log that --log names, those that come before it is opened
/// too; without one they are dropped. One that ends the program (qFatal) is reported as an unexpected error.
/// With ZUCMTR_QT_MESSAGES=fail in the environment, as in the tests, the first warning is reported likewise
/// and ends the program with ExitUnexpected; debug texts, which the library writes where something of its own
/// cannot be written, do not. An exception that nothing catches ends the program with a report, too.
void Take();

/// Where messages go from now on, one a call; nowhere for an empty function. What it calls Qt for must not
/// come back as a message: such a one is dropped.
void GoTo(std::function<void(const QString&)> log);

} // namespace messages
