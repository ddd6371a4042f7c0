// Memory for the samples of a record: large pieces come from the system and go back to it at once, whatever
// the allocator would keep for later.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>

namespace comtrade {

/// A piece of memory whose contents are not defined at first. What is never written takes no memory, if the
/// piece is large.
class Pages
{
public:
    Pages() = default;
    /// Throws std::bad_alloc.
    explicit Pages(size_t bytes_);
    ~Pages();
    Pages(Pages&& other) noexcept;
    Pages& operator=(Pages&& other) noexcept;
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    char* Data() const { return data; }
    size_t Size() const { return bytes; }

    /// Gives back a part as far as it consists of whole pages; it must not be read any more.
    void Discard(size_t offset, size_t length);

    /// Gives back the end, all but so many bytes.
    void Shorten(size_t bytes_);

private:
    void Free();

    char* data = nullptr;
    size_t bytes = 0;
    size_t mapped = 0; // 0: by the allocator
};

/// Numbers that are appended in blocks, without copies when their count was known.
template <class Number>
class Growing
{
public:
    void Reserve(size_t room_)
    {
        if (room_ <= room)
            return;
        Pages larger(room_ * sizeof(Number));
        std::copy(data(), data() + count, reinterpret_cast<Number*>(larger.Data()));
        pages = std::move(larger);
        room = room_;
    }

    void Append(const Number* numbers, size_t more)
    {
        if (count + more > room)
            Reserve(std::max(count + more, 2 * room));
        std::copy(numbers, numbers + more, reinterpret_cast<Number*>(pages.Data()) + count);
        count += more;
    }

    const Number* data() const { return reinterpret_cast<const Number*>(pages.Data()); }
    size_t size() const { return count; }

private:
    Pages pages;
    size_t room = 0;
    size_t count = 0;
};

} // namespace comtrade
