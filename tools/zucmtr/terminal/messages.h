// Qt's messages while the program runs. They never reach the user's standard error: the program itself
// reports what matters to the user, in the user's language.
#pragma once

#include <QString>

#include <functional>

namespace messages {

/// Exit code of a run that was ended by one of Qt's messages, because ZUCMTR_QT_MESSAGES says so.
constexpr int ExitUnexpected = 70;

/// Takes Qt's messages from here on. They go to the log that --log names, including those from before it is
/// opened; without a log they are dropped. One that ends the program (qFatal) is reported as an unexpected
/// error. With ZUCMTR_QT_MESSAGES=fail in the environment, as in the tests, the first warning is reported
/// likewise and ends the program with ExitUnexpected; debug texts, which the library writes if it cannot
/// write a file of its own, do not. An exception that nothing catches ends the program with a report, too.
void Take();

/// Where messages go from now on, one per call; nowhere for an empty function. Messages that this causes are
/// dropped.
void GoTo(std::function<void(const QString&)> log);

} // namespace messages
