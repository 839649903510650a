#pragma once
// The names under which files are stored in a cabinet, which of them may name a file again, and which cannot
// be extracted into one folder together. The same rules apply in both directions: what the packer stores, the
// extractor accepts.

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tools::cabarc {

/// The separators between the parts of a path, on both systems.
inline constexpr std::string_view kPathSeparators = "/\\";

/// Returns the parts of `path` between "/" and "\", as views into it; empty parts are kept, and an empty
/// path has one.
std::vector<std::string_view> PathParts(std::string_view path);

/// Returns the name under which the file at `path` (as the user's pattern leads to it, UTF-8) is stored.
/// Without `keepFolders` it is the file's own name. Otherwise it is the path with "\" between its parts and
/// without drive, leading separators and "." parts, less the first of `prefixes` that it starts with (whole
/// parts; ASCII case and the kind and number of separators do not matter). The file's own name always stays.
/// "" for a path without a part that can be stored.
std::string StoredName(std::string_view path, bool keepFolders, std::span<const std::string> prefixes);

/// Returns why `name` (UTF-8) cannot be the relative path of a file below a target folder on Windows, as a
/// clause that ends a sentence ("it leads out of the folder"), or nothing when it can.
std::optional<std::string> NameProblem(const std::string& name);

/// Two members, by their numbers: Windows takes their names for one, or (IsFolder) the first would be a
/// folder in which the second lies.
struct Clash {
    std::size_t First = 0;
    std::size_t Second = 0;
    bool IsFolder = false;
};

/// The names that have been added so far. Case is ignored as Windows ignores it (FoldedName).
class Neighbours {
 public:
    /// Adds the member `number`, whose `name` (well-formed UTF-8) has "\" between its parts. Returns the
    /// clash with one that was added before, or nothing. Throws what FoldedName throws.
    std::optional<Clash> Add(const std::string& name, std::size_t number);

 private:
    // By folded names: the member of each file, and for each folder one member that lies in it.
    std::map<std::u16string, std::size_t> files_;
    std::map<std::u16string, std::size_t> folders_;
};

}  // namespace tools::cabarc
