#include "src/common/Text.h"

#include <windows.h>

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "src/common/RuntimeError.h"

namespace velbooter {

namespace {

// Returns how many bytes the character at `position` takes; a character cut off by the end of the text takes
// one.
size_t BytesOfCharacter(const std::string& text, size_t position, unsigned codePage) {
    const auto byte = static_cast<BYTE>(text[position]);
    return ::IsDBCSLeadByteEx(codePage, byte) != FALSE && position + 1 < text.size() ? 2 : 1;
}

}  // namespace

std::string TrimLeft(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first);
}

std::string TrimRight(const std::string& text) {
    const size_t last = text.find_last_not_of(' ');
    return last == std::string::npos ? "" : text.substr(0, last + 1);
}

std::string Trim(const std::string& text) {
    return TrimLeft(TrimRight(text));
}

std::string TrimAtNul(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

std::vector<std::string> Split(const std::string& text, char separator, unsigned codePage) {
    std::vector<std::string> parts;
    size_t begin = 0;
    for (size_t i = 0; i < text.size(); i += BytesOfCharacter(text, i, codePage)) {
        if (text[i] != separator) continue;
        parts.push_back(text.substr(begin, i - begin));
        begin = i + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

std::string LowerCase(const std::string& text) {
    std::string lower = text;
    ::CharLowerBuffA(lower.data(), static_cast<DWORD>(lower.size()));
    return lower;
}

std::string UpperCase(const std::string& text) {
    std::string upper = text;
    ::CharUpperBuffA(upper.data(), static_cast<DWORD>(upper.size()));
    return upper;
}

bool EndsWith(const std::string& text, const std::string& part, unsigned codePage) {
    if (!text.ends_with(part)) return false;
    const size_t end = text.size() - part.size();
    size_t position = 0;
    while (position < end) position += BytesOfCharacter(text, position, codePage);
    return position == end;
}

size_t FindLastOf(const std::string& text, const std::string& characters, unsigned codePage) {
    size_t last = std::string::npos;
    for (size_t i = 0; i < text.size(); i += BytesOfCharacter(text, i, codePage)) {
        if (characters.find(text[i]) != std::string::npos) last = i;
    }
    return last;
}

bool StartsWithIgnoringCase(const std::string& text, const std::string& part) {
    return text.size() >= part.size() && LowerCase(text.substr(0, part.size())) == LowerCase(part);
}

namespace {

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// The characters of the number, with the white space dropped; the exponent only when it has a digit.
std::string NumberText(const std::string& text) {
    std::string number;
    bool pointSeen = false;
    bool exponentSeen = false;
    for (const char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
        const bool atSignPlace = number.empty() || number.back() == 'e';
        if (IsDigit(c) || ((c == '+' || c == '-') && atSignPlace)) {
            number += c;
        } else if (c == '.' && !pointSeen && !exponentSeen) {
            pointSeen = true;
            number += c;
        } else if ((c == 'e' || c == 'E' || c == 'd' || c == 'D') && !exponentSeen &&
                   number.find_first_of("0123456789") != std::string::npos) {
            exponentSeen = true;
            number += 'e';
        } else {
            break;
        }
    }
    return number;
}

}  // namespace

int CompareIgnoringCase(const std::string& left, const std::string& right) {
    const auto length = [](const std::string& text) { return static_cast<int>(text.size()); };
    // The code page is that of all other texts, not that of the user's language.
    return ::CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE | LOCALE_USE_CP_ACP, left.data(),
                            length(left), right.data(), length(right)) -
           CSTR_EQUAL;
}

double NumericPrefix(const std::string& text) {
    // strtod itself ignores an exponent without digits. The text never contains "inf" or "nan".
    const double value = std::strtod(NumberText(text).c_str(), nullptr);
    return std::isfinite(value) ? value : std::copysign(std::numeric_limits<double>::max(), value);
}

int WholeNumber(const std::string& text, const std::string& file) {
    const double rounded = std::nearbyint(NumericPrefix(text));
    if (rounded < std::numeric_limits<std::int16_t>::min() ||
        rounded > std::numeric_limits<std::int16_t>::max()) {
        throw RuntimeError(kOverflow, file);
    }
    return static_cast<int>(rounded);
}

std::wstring WideFromAnsi(const std::string& text) {
    const auto length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int used = ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length);
    wide.resize(static_cast<size_t>(used));
    return wide;
}

}  // namespace velbooter
