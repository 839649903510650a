#pragma once
// The owning type for what the system hands out and wants back: files, searches, processes, memory,
// libraries.

#include <utility>

namespace base {

/// Owns one resource of the system and gives it back in its destructor. Movable; empty after a move. `Kind`
/// says what the resource is: its type `Value`, the value `None()` that stands for no resource (null for
/// some, minus one for others, so that the two are different types), and `Close(Value)`. A failure to give
/// it back is not reported. Giving back may change the system's error number: code that reports an error
/// must fetch its number first.
template <typename Kind>
class UniqueHandle {
 public:
    using Value = typename Kind::Value;

    UniqueHandle() = default;
    explicit UniqueHandle(Value value) : value_(value) {}
    UniqueHandle(UniqueHandle&& other) noexcept : value_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    /// The value itself; still owned here.
    Value Get() const { return value_; }
    explicit operator bool() const { return value_ != Kind::None(); }

    /// Gives back what is owned, if there is anything, and owns `value` from now on.
    void Reset(Value value = Kind::None()) {
        const Value former = std::exchange(value_, value);
        if (former != Kind::None() && former != value) Kind::Close(former);
    }

    /// Returns the value and owns nothing any more: the caller gives it back.
    [[nodiscard]] Value Release() { return std::exchange(value_, Kind::None()); }

 private:
    Value value_ = Kind::None();
};

}  // namespace base
