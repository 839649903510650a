#include "tools/cabarc/Neighbours.h"

#include "tools/shared/HostFiles.h"

namespace tools::cabarc {

std::optional<Clash> Neighbours::Add(const std::string& name, std::size_t number) {
    const std::u16string folded = FoldedName(name);
    const auto [other, isNew] = files_.emplace(folded, number);
    if (!isNew) return Clash{other->second, number, false};
    if (const auto below = folders_.find(folded); below != folders_.end())
        return Clash{number, below->second, true};
    for (std::size_t end = folded.find(u'\\'); end != folded.npos; end = folded.find(u'\\', end + 1)) {
        const std::u16string folder = folded.substr(0, end);
        if (const auto file = files_.find(folder); file != files_.end())
            return Clash{file->second, number, true};
        folders_.emplace(folder, number);
    }
    return std::nullopt;
}

}  // namespace tools::cabarc
