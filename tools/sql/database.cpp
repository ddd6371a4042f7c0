#include "sql/database.h"

namespace sql {

namespace {

// Of work that gets in the way of others again and again.
constexpr int MostAttempts = 20;

} // namespace

Value TextOrNull(const QString& text)
{
    return text.isEmpty() ? Value() : Value(text);
}

void Database::TryTogether(const std::function<void()>& work)
{
    isTogether = true;
    isEnding = false;
    try {
        Run(QLatin1String(Begin()));
        work();
        isEnding = true;
        Run(QStringLiteral("COMMIT"));
    } catch (...) {
        Undo();
        isTogether = false;
        throw;
    }
    isTogether = false;
}

void Database::Together(const std::function<void()>& work)
{
    for (int attempt = 1;; ++attempt) {
        try {
            TryTogether(work);
            return;
        } catch (const Failure& failure) {
            const bool isUncertain = isEnding && failure.trouble == Trouble::Gone;
            if (isUncertain || attempt == MostAttempts || !MayRepeat(failure))
                throw;
        }
    }
}

bool Database::MayRepeat(const Failure&)
{
    return false;
}

Value Database::One(const QString& command, const Values& values)
{
    std::optional<Value> first;
    Run(command, values, [&first](const Row& row) {
        if (!first)
            first = row.Of(0);
    });
    return first.value_or(Value());
}

} // namespace sql
