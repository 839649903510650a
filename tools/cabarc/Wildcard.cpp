#include "tools/cabarc/Wildcard.h"

#include <algorithm>

#include "tools/cabarc/MemberName.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Length in bytes of the UTF-8 character at `at`; stray bytes count as one character each.
std::size_t CharacterLength(std::string_view text, std::size_t at) {
    std::size_t length = 1;
    if (!IsContinuation(text[at]) && static_cast<unsigned char>(text[at]) >= 0x80)
        while (length < 4 && at + length < text.size() && IsContinuation(text[at + length])) ++length;
    return length;
}

// The plain meaning of "*" and "?". Only the last star is ever tried again, so the time is at most the
// product of the lengths.
bool MatchesPlainly(std::string_view pattern, std::string_view name) {
    constexpr std::size_t kNone = std::string_view::npos;
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t afterStar = kNone;
    std::size_t starEnd = 0;  // the star stands for the name up to here
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            afterStar = ++p;
            starEnd = n;
        } else if (p < pattern.size() && pattern[p] == '?') {
            n += CharacterLength(name, n);
            ++p;
        } else if (p < pattern.size() && UpperAscii(pattern[p]) == UpperAscii(name[n])) {
            ++n;
            ++p;
        } else if (afterStar != kNone) {
            starEnd += CharacterLength(name, starEnd);
            n = starEnd;
            p = afterStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == kNone;
}

// Takes the first part of a path off its front.
std::string_view TakePart(std::string_view& path) {
    const std::size_t end = path.find_first_of(kPathSeparators);
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    return part;
}

}  // namespace

bool HasWildcard(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

bool MatchesPattern(std::string_view pattern, std::string_view name) {
    if (name.find('.') == std::string_view::npos) {
        for (const std::string_view ending : {".*", "."})
            if (pattern.ends_with(ending) &&
                MatchesPlainly(pattern.substr(0, pattern.size() - ending.size()), name))
                return true;
    }
    return MatchesPlainly(pattern, name);
}

bool MatchesMember(std::string_view pattern, std::string_view memberPath) {
    if (pattern.find_first_of(kPathSeparators) == std::string_view::npos) {
        const std::size_t folderEnd = memberPath.find_last_of(kPathSeparators);
        return MatchesPattern(
            pattern, folderEnd == std::string_view::npos ? memberPath : memberPath.substr(folderEnd + 1));
    }
    while (!pattern.empty() && !memberPath.empty())
        if (!MatchesPattern(TakePart(pattern), TakePart(memberPath))) return false;
    return pattern.empty() && memberPath.empty();
}

bool MatchesAnyMember(std::span<const std::string> patterns, std::string_view memberPath) {
    return patterns.empty() || std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
               return MatchesMember(pattern, memberPath);
           });
}

}  // namespace tools::cabarc
