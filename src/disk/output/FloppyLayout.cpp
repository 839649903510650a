#include "src/disk/output/FloppyLayout.h"

#include "floppy/ShortName.h"
#include "src/common/Text.h"

namespace velbooter {

void FloppyLayout::Add(const std::string& path, std::uint64_t bytes) {
    const bool isNew = files_.insert_or_assign(UpperCase(path), bytes).second;
    if (isNew) AddToFolder(path);
}

std::uint64_t FloppyLayout::Bytes() const {
    return Sum().Bytes();
}

bool FloppyLayout::Fits() const {
    return Sum().Fits();
}

void FloppyLayout::AddToFolder(const std::string& path) {
    const size_t slash = FindLastOf(path, "\\");
    const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash);
    const std::string name = path.substr(slash + 1);
    const auto [found, isNew] = folders_.try_emplace(UpperCase(folder), 0);
    // A character of the code page is one unit of UTF-16 nearly everywhere; where two bytes make one, the
    // name counts as longer than it is.
    found->second += floppy::SlotsOfName(floppy::ToShortName(name) ? 0 : name.size());
    if (isNew && !folder.empty()) AddToFolder(folder);
}

floppy::SpaceNeeded FloppyLayout::Sum() const {
    floppy::SpaceNeeded space(geometry_);
    for (const auto& [path, bytes] : files_) space.AddFile(bytes);
    for (const auto& [path, slots] : folders_) {
        if (path.empty())
            space.AddRootNames(slots);
        else
            space.AddFolder(slots);
    }
    return space;
}

}  // namespace velbooter
