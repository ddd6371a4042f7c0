// Failures that are reported to the user.
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>
#include <new>
#include <optional>

namespace text {

/// A failure with a message in the user's language. Classes that derive from it say what kind it is.
class Error : public std::exception
{
public:
    explicit Error(const QString& message_) : message(message_), bytes(message_.toUtf8()) {}
    const QString& Message() const { return message; }
    const char* what() const noexcept override { return bytes.constData(); } ///< the message in UTF-8

private:
    QString message;
    QByteArray bytes;
};

/// Says what to do when memory is short.
QString MemoryMessage();

/// The message of any failure: that of an Error, MemoryMessage for std::bad_alloc, else what() as UTF-8.
QString MessageOf(const std::exception& error);

/// Does the work and returns the message of its failure, nothing if it succeeds. Only std::bad_alloc passes
/// through: it says nothing about the work.
template <class Work>
std::optional<QString> FailureOf(Work work)
{
    try {
        work();
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return MessageOf(error);
    }
}

} // namespace text
