#pragma once
// Turns choices into bytes worth packing: literal bytes, stretches of every kind of data, copies of earlier
// bytes from near and far, in sizes around the borders that matter.

#include "tests/fuzz/Choices.h"

namespace fuzz {

/// Appends stretches to `contents` until the choices end or it holds `limit` bytes; never passes `limit`.
void AppendContents(Choices& choices, std::size_t limit, Bytes& contents);

/// Returns at most `limit` bytes from a few choices: one to three stretches.
Bytes ShortContents(Choices& choices, std::size_t limit);

}  // namespace fuzz
