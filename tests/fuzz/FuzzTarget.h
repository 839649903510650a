#pragma once
// What every fuzz target offers to the program that drives it: libFuzzer in a host-fuzz build, the seeded
// run that is part of the tests in every other build. Each target is a program of its own and implements the
// functions below.

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/TestData.h"

namespace fuzz {

using tools::testing::Bytes;

/// A rule of the code under test that an input broke; `what()` says which one.
class BrokenRule : public std::logic_error {
 public:
    using std::logic_error::logic_error;
};

/// Throws BrokenRule with the text `rule` when `holds` is false.
inline void Require(bool holds, const std::string& rule) {
    if (!holds) throw BrokenRule(rule);
}

/// Runs the target on one input, which may be any bytes. Throws when the code under test breaks a rule;
/// errors that it may raise are caught inside. The result depends on the input alone.
void RunInput(std::span<const std::uint8_t> input);

/// Returns the inputs to start from: one for each kind of thing that the target does.
std::vector<Bytes> Seeds();

}  // namespace fuzz
