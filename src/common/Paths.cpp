#include "src/common/Paths.h"

#include <windows.h>

#include "src/common/Text.h"

namespace velbooter {

namespace {

constexpr DWORD kShortPathCharacters = 300;

constexpr const char* kSeparators = "\\/";

bool EndsInSeparator(const std::string& path) {
    return EndsWith(path, "\\") || EndsWith(path, "/");
}

}  // namespace

void AddTrailingBackslash(std::string& path) {
    if (EndsInSeparator(Trim(path))) return;
    path = TrimRight(path) + "\\";
}

bool IsPathSeparator(const std::string& character) {
    return character == "\\" || character == "/";
}

bool SplitPath(const std::string& path, std::string& folder, std::string& file) {
    const size_t last = FindLastOf(path, kSeparators);
    if (last != std::string::npos && last + 1 == path.size()) return false;
    if (last == std::string::npos) {
        std::string current(MAX_PATH, '\0');
        current.resize(::GetCurrentDirectoryA(MAX_PATH, current.data()));
        folder = current;
        file = path;
        return false;
    }
    folder = path.substr(0, last);
    file = path.substr(last + 1);
    return true;
}

std::string GetFolderPart(const std::string& path) {
    std::string folder;
    std::string file;
    SplitPath(path, folder, file);
    return folder;
}

std::string QuotePath(const std::string& text, bool force, bool trim) {
    const std::string inner = trim ? Trim(text) : text;
    const bool quotedAlready = !inner.empty() && inner.front() == '"' && inner.back() == '"';
    return quotedAlready && !force ? inner : "\"" + inner + "\"";
}

std::string UnquotePath(const std::string& text) {
    const std::string trimmed = Trim(text);
    const bool quoted = trimmed.size() >= 2 && trimmed.front() == '"' && trimmed.back() == '"';
    return quoted ? trimmed.substr(1, trimmed.size() - 2) : trimmed;
}

std::string GetShortPath(const std::string& path) {
    std::string buffer(kShortPathCharacters, '\0');
    const DWORD length = ::GetShortPathNameA(path.c_str(), buffer.data(), kShortPathCharacters);
    return length == 0 || length >= kShortPathCharacters ? path : TrimAtNul(buffer);
}

}  // namespace velbooter
