// Names and patterns: which names the tools store, in which form, and what a wildcard matches.

#include <algorithm>
#include <set>
#include <vector>

#include "tests/fuzz/Choices.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/bfi/DirectoryNames.h"
#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/Wildcard.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace fuzz {

namespace {

using tools::UpperAscii;

constexpr std::size_t kLongestText = 255;

// The plain rule of "*" and "?" for bytes, by a table of the prefixes of the name that the pattern so far
// matches.
bool MatchesByTable(const std::string& pattern, const std::string& name) {
    std::vector<bool> reached(name.size() + 1);
    reached[0] = true;
    for (const char c : pattern) {
        std::vector<bool> next(name.size() + 1);
        for (std::size_t i = 0; i <= name.size(); ++i) {
            if (c == '*') {
                next[i] = reached[i] || (i > 0 && next[i - 1]);
            } else {
                next[i] = i > 0 && reached[i - 1] && (c == '?' || UpperAscii(c) == UpperAscii(name[i - 1]));
            }
        }
        reached = next;
    }
    return reached.back();
}

bool IsAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void CheckPatterns(const std::string& pattern, const std::string& name) {
    using namespace tools::cabarc;
    const bool matches = MatchesPattern(pattern, name);
    MatchesMember(pattern, name);
    Require(MatchesPattern("*.*", name), "*.* is every name");
    Require(MatchesPattern("*", name), "* is every name");
    if (!HasWildcard(name))
        Require(name.ends_with('.') || MatchesPattern(name, name), "a name is its own pattern");
    // A dot at the end of a pattern, alone or before a star, has a rule of its own.
    if (!pattern.ends_with('.') && !pattern.ends_with(".*") && IsAscii(name))
        Require(matches == MatchesByTable(pattern, name), "a pattern matches what its characters say");
}

void CheckStoredName(const std::string& path, const std::string& prefix, bool keepFolders) {
    using namespace tools::cabarc;
    const std::string prefixes[] = {prefix};
    const std::string name = StoredName(path, keepFolders, prefixes);
    Require(name.find('/') == std::string::npos, "parts of a stored name are joined by a backslash");
    Require(keepFolders || name.find('\\') == std::string::npos, "without folders a name is one part");
    Require(tools::IsUtf8(tools::Shown(path)), "what is shown is UTF-8");
    if (!NameProblem(name)) {
        Require(!name.empty() && name.size() <= kLongestText && tools::IsUtf8(name),
                "a storable name is sound");
        for (const std::string_view part : PathParts(name))
            Require(!part.empty() && part != "." && part != "..", "a storable name stays in its folder");
        Require(StoredName(name, true, {}) == name, "a stored name is stored as itself");
    }
}

// No two entries of a folder share a short name, and each short name is one that DOS can open.
void CheckDirectoryNames(const std::vector<std::string>& names) {
    using namespace tools::bfi;
    std::vector<DirectoryName> stored;
    try {
        stored = NameEntries("folder/", names);
    } catch (const tools::ToolError&) {
        return;
    }
    Require(stored.size() == names.size(), "every entry has a name");
    std::set<floppy::ShortName> taken;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const DirectoryName& entry = stored[i];
        Require(taken.insert(entry.Short).second, "no two entries share a short name");
        Require(entry.Short[0] != ' ', "a short name does not begin with a space");
        Require(std::all_of(entry.Short.begin(), entry.Short.end(),
                            [](char c) { return c == ' ' || floppy::IsShortNameCharacter(c); }),
                "a short name has allowed characters");
        const std::string base(entry.Short.begin(), entry.Short.begin() + 8);
        const std::string extension(entry.Short.begin() + 8, entry.Short.end());
        for (const std::string& part : {base, extension})
            Require(part.substr(part.find(' ') == std::string::npos ? part.size() : part.find(' '))
                            .find_first_not_of(' ') == std::string::npos,
                    "spaces only fill up");
        Require(!floppy::IsDeviceName(base), "no short name is a device's");
        Require(entry.Long.size() <= 255, "a long name has 255 characters at most");
        Require(entry.Slots() == 1 + (entry.Long.size() + 12) / 13, "a name takes the entries it needs");
        if (!entry.Long.empty())
            Require(entry.Long == tools::Utf16FromUtf8(names[i]), "the long name is the name");
    }
}

}  // namespace

void RunInput(std::span<const std::uint8_t> input) {
    Choices choices(input);
    std::vector<std::string> texts;
    while (!choices.AtEnd() && texts.size() < 40) texts.push_back(choices.Text(kLongestText));
    if (texts.size() < 2) return;
    CheckPatterns(texts[0], texts[1]);
    CheckPatterns(texts[1], texts[0]);
    CheckStoredName(texts[0], texts[1], true);
    CheckStoredName(texts[1], texts[0], false);
    // A listing of a folder never contains these.
    std::erase_if(texts, [](const std::string& name) {
        return name.empty() || name == "." || name == ".." || !tools::IsUtf8(name);
    });
    CheckDirectoryNames(texts);
}

std::vector<Bytes> Seeds() {
    const std::vector<std::vector<std::string>> groups{
        {"*.txt", "readme.txt"},
        {"a*b?c*", "AxxBbYcc"},
        {"*.*", "nodot"},
        {"???.", "abc"},
        {"sub\\*.c", "sub/x.c"},
        {"*a*a*a*a*a*a*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaa"},
        {"C:\\dir\\.\\file.txt", "c:/DIR/"},
        {"..\\x", "\\abs\\aux"},
        {"Long file name.text", "LONGFI~1.TEX", "longfi~2.tex", "Long file name 2.text", "x", "X.y"},
        {"a b", "a.b.c", ".profile", "+", "\xC3\xA4\xC3\xB6", "\xF0\x9F\x92\xBE.disk", "plain.txt",
         "com1.x"}};
    std::vector<Bytes> seeds{{}};
    for (const std::vector<std::string>& group : groups) {
        Bytes seed;
        for (const std::string& text : group) {
            seed.push_back(static_cast<std::uint8_t>(text.size()));
            seed.insert(seed.end(), text.begin(), text.end());
        }
        seeds.push_back(seed);
    }
    return seeds;
}

}  // namespace fuzz
