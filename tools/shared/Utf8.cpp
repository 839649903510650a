#include "tools/shared/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tools {
namespace {

constexpr char32_t kBroken = 0xFFFFFFFF;

// Decodes the character at `position` and moves past it; gives kBroken for anything malformed.
char32_t NextCharacter(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<std::uint8_t>(text[position++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) return kBroken;
    char32_t character = lead & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
        if (position >= text.size()) return kBroken;
        const auto next = static_cast<std::uint8_t>(text[position]);
        if ((next & 0xC0) != 0x80) return kBroken;
        character = (character << 6) | (next & 0x3FU);
        ++position;
    }
    constexpr std::array<char32_t, 4> kSmallest{0, 0x80, 0x800, 0x10000};
    if (character < kSmallest[static_cast<std::size_t>(more)] || character > 0x10FFFF) return kBroken;
    if (character >= 0xD800 && character <= 0xDFFF) return kBroken;
    return character;
}

bool IsControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character <= 0x9F);
}

// Returns whether a character beyond ASCII must not reach a screen as it is: a control character, a mark or
// a control for the direction of writing, or the end of a line or paragraph.
bool Misleads(char32_t character) {
    return IsControl(character) || character == 0x061C || character == 0x200E || character == 0x200F ||
           (character >= 0x2028 && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

constexpr char kDigits[] = "0123456789ABCDEF";

// Appends the last `count` hexadecimal digits of `number`.
void AppendDigits(std::string& text, std::uint32_t number, int count) {
    for (int shift = 4 * (count - 1); shift >= 0; shift -= 4) text += kDigits[(number >> shift) & 15U];
}

}  // namespace

bool IsUtf8(const std::string& text) {
    for (std::size_t position = 0; position < text.size();)
        if (NextCharacter(text, position) == kBroken) return false;
    return true;
}

std::u16string Utf16FromUtf8(const std::string& text) {
    std::u16string wide;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = NextCharacter(text, position);
        if (character < 0x10000) {
            wide += static_cast<char16_t>(character);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return wide;
}

std::string PrintableBytes(const std::string& text) {
    std::string printable;
    for (const char letter : text) {
        const auto byte = static_cast<std::uint8_t>(letter);
        if (byte >= 0x20 && byte < 0x7F) {
            printable += letter;
        } else {
            printable += "\\x";
            AppendDigits(printable, byte, 2);
        }
    }
    return printable;
}

bool HoldsControl(std::string_view text) {
    for (std::size_t position = 0; position < text.size();)
        if (IsControl(NextCharacter(text, position))) return true;
    return false;
}

std::string Shown(const std::string& text) {
    std::string shown;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        const char32_t character = NextCharacter(text, position);
        if (character == kBroken) {
            position = start + 1;
            shown += PrintableBytes(text.substr(start, 1));
        } else if (character < 0x80) {
            shown += IsControl(character) ? '?' : static_cast<char>(character);
        } else if (Misleads(character)) {
            shown += "\\u";
            AppendDigits(shown, character, 4);
        } else {
            shown.append(text, start, position - start);
        }
    }
    return shown;
}

std::string UpperAscii(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), floppy::UpperAscii);
    return text;
}

bool EqualsFolded(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return UpperAscii(a) == UpperAscii(b); });
}

bool PrecedesWithoutCase(const std::string& left, const std::string& right) {
    const auto isLess = [](char a, char b) {
        return static_cast<std::uint8_t>(UpperAscii(a)) < static_cast<std::uint8_t>(UpperAscii(b));
    };
    if (std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(), isLess))
        return true;
    if (std::lexicographical_compare(right.begin(), right.end(), left.begin(), left.end(), isLess))
        return false;
    return left < right;
}

}  // namespace tools
