#pragma once
// What every fuzz target offers to whoever drives it: libFuzzer on a host-fuzz build, the seeded run that is
// part of the tests everywhere else. Each target is a program of its own and implements the functions below.

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/Bytes.h"

namespace fuzz {

using tools::testing::Bytes;

/// A rule of the code under test that an input broke; `what()` says which one.
class BrokenRule : public std::logic_error {
 public:
    using std::logic_error::logic_error;
};

/// Throws BrokenRule saying `rule` when `holds` is false.
inline void Require(bool holds, const std::string& rule) {
    if (!holds) throw BrokenRule(rule);
}

/// Puts one input, which may be any bytes, through the target. Throws when the code under test breaks a rule;
/// errors that it is entitled to raise are caught inside. Depends on nothing but the input.
void RunInput(std::span<const std::uint8_t> input);

/// Returns the inputs to start from: one for each kind of thing that the target does.
std::vector<Bytes> Seeds();

}  // namespace fuzz
