#pragma once
// Which members cannot be extracted into one folder together. The same rule applies to packing and
// extracting, as the one for a single name does (MemberName.h).

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace tools::cabarc {

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
