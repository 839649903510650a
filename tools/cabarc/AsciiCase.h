#pragma once
// Comparison of names without regard to ASCII case, as DOS and the members of a cabinet are compared. Letters
// beyond ASCII compare exactly: their case depends on a code page that a cabinet does not name.

#include <algorithm>
#include <string_view>

namespace tools::cabarc {

/// Returns `c` with A..Z turned to a..z.
constexpr char FoldCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Returns whether the two texts differ in nothing but ASCII case.
inline bool EqualsFolded(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return FoldCase(x) == FoldCase(y); });
}

}  // namespace tools::cabarc
