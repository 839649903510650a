#pragma once
// Reads an input as a series of choices, so that a few bytes describe a whole tree of files and a small
// change of the bytes causes a small change of the tree.

#include <cstdint>
#include <span>
#include <string>

#include "tests/fuzz/FuzzTarget.h"

namespace fuzz {

class Choices {
 public:
    /// `input` belongs to the caller and must outlive the object.
    explicit Choices(std::span<const std::uint8_t> input) : rest_(input) {}

    /// Whether nothing is left; then every choice is its first possibility.
    bool AtEnd() const { return rest_.empty(); }

    std::uint8_t Byte();
    bool Flag() { return Byte() % 2 != 0; }
    /// Returns a number below `limit`, which is 1 to 2^24.
    std::uint32_t Below(std::uint32_t limit);
    /// Returns the next bytes unchanged, at most `count`.
    std::span<const std::uint8_t> Raw(std::size_t count);
    /// Returns a text of at most `longest` bytes, which may be any bytes.
    std::string Text(std::size_t longest);

 private:
    std::span<const std::uint8_t> rest_;
};

}  // namespace fuzz
