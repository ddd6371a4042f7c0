#include "sql/database.h"

namespace sql {

Value TextOrNull(const QString& text)
{
    return text.isEmpty() ? Value() : Value(text);
}

void Database::Together(const std::function<void()>& work)
{
    Run(QLatin1String(Begin()));
    try {
        work();
        Run(QStringLiteral("COMMIT"));
    } catch (...) {
        Undo();
        throw;
    }
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
