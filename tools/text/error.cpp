#include "text/error.h"

#include "text/texts.h"

#include <new>

namespace text {

QString MemoryMessage()
{
    return Tr("worker",
              "not enough memory; give more by --max-memory, or fewer recordings at once by --jobs");
}

QString MessageOf(const std::exception& error)
{
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return MemoryMessage();
    const Error* known = dynamic_cast<const Error*>(&error);
    return known != nullptr ? known->Message() : QString::fromUtf8(error.what());
}

} // namespace text
