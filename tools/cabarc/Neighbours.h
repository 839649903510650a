#pragma once
// Which members cannot lie in one folder together. The same rule guards both directions, as that for a name
// alone does (MemberName.h).

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace tools::cabarc {

/// Two members, by their numbers: Windows takes their names for one, or the first would be a folder in which
/// the second lies.
struct Clash {
    std::size_t First = 0;
    std::size_t Second = 0;
    bool IsFolder = false;
};

class Neighbours {
 public:
    /// Adds the member `number`, whose `name` (well-formed UTF-8) has "\" between its parts. Returns the
    /// clash with one that was added before, or nothing.
    std::optional<Clash> Add(const std::string& name, std::size_t number);

 private:
    // Members by folded names: files, and a file in each folder.
    std::map<std::u16string, std::size_t> files_;
    std::map<std::u16string, std::size_t> folders_;
};

}  // namespace tools::cabarc
