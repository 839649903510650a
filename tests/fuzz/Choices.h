#pragma once
// Reads an input as a series of choices, so that a few bytes describe a whole tree of files and a small
// change of the bytes is a small change of the tree.

#include <cstdint>
#include <span>
#include <string>

#include "tests/fuzz/FuzzTarget.h"

namespace fuzz {

class Choices {
 public:
    /// `input` stays with the caller and outlives the object.
    explicit Choices(std::span<const std::uint8_t> input) : rest_(input) {}

    /// Whether nothing is left; every choice is then its first possibility.
    bool AtEnd() const { return rest_.empty(); }

    std::uint8_t Byte();
    bool Flag() { return Byte() % 2 != 0; }
    /// Returns a number below `limit`, which is 1 to 2^24.
    std::uint32_t Below(std::uint32_t limit);
    /// Returns the next bytes as they are, at most `count`.
    std::span<const std::uint8_t> Raw(std::size_t count);
    /// Returns a text of at most `longest` bytes, any byte among them.
    std::string Text(std::size_t longest);

 private:
    std::span<const std::uint8_t> rest_;
};

}  // namespace fuzz
