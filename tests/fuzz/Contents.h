#pragma once
// Turns choices into bytes that are worth packing: literal bytes, stretches of every kind of data, copies of
// earlier bytes from near and far, in sizes around the limits that matter.

#include "tests/fuzz/Choices.h"

namespace fuzz {

/// Appends stretches to `contents` until the choices end or it has `limit` bytes; never exceeds `limit`.
void AppendContents(Choices& choices, std::size_t limit, Bytes& contents);

/// Returns at most `limit` bytes from a few choices: one to three stretches.
Bytes ShortContents(Choices& choices, std::size_t limit);

}  // namespace fuzz
