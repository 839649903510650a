#pragma once
// Patterns for names, as users of DOS and Windows archivers write them.

#include <span>
#include <string>
#include <string_view>

namespace tools::cabarc {

/// Returns whether `text` contains "*" or "?".
bool HasWildcard(std::string_view text);

/// Returns whether `name`, a file name without folders, matches `pattern`. "*" stands for any characters,
/// none included, "?" for exactly one (a whole UTF-8 character). A pattern that ends in ".*" also matches a
/// name without a dot, so that "*.*" is every name; one that ends in "." matches names without a dot. ASCII
/// case does not matter. Takes at most time in proportion to the product of the lengths.
bool MatchesPattern(std::string_view pattern, std::string_view name);

/// Returns whether the stored path of a member matches `pattern`: a pattern without a folder is compared
/// with the last part of the path only, one with a folder must match part by part, as many as the path has.
/// "/" and "\" are the same.
bool MatchesMember(std::string_view pattern, std::string_view memberPath);

/// Returns whether the path matches one of `patterns`; without a pattern every path does.
bool MatchesAnyMember(std::span<const std::string> patterns, std::string_view memberPath);

}  // namespace tools::cabarc
