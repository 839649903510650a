#include "src/disk/output/FloppyLayout.h"

#include "src/common/Text.h"
#include "tools/bfi/ShortName.h"

namespace velbooter {

void FloppyLayout::Add(const std::string& path, std::uint64_t bytes) {
    const bool isNew = files_.insert_or_assign(UpperCase(path), bytes).second;
    if (isNew) AddToFolder(path);
}

std::uint64_t FloppyLayout::Bytes() const {
    std::uint64_t clusters = 0;
    for (const auto& [path, bytes] : files_) clusters += geometry_.ClustersFor(bytes);
    for (const auto& [path, slots] : folders_) {
        if (!path.empty()) clusters += geometry_.ClustersFor(tools::bfi::BytesOfFolder(slots));
    }
    return clusters * geometry_.ClusterBytes();
}

bool FloppyLayout::Fits() const {
    const auto root = folders_.find("");
    const size_t rootSlots = 1 + (root == folders_.end() ? 0 : root->second);  // the label takes one
    return rootSlots <= geometry_.RootEntries &&
           Bytes() <= std::uint64_t{geometry_.DataClusters()} * geometry_.ClusterBytes();
}

void FloppyLayout::AddToFolder(const std::string& path) {
    const size_t slash = FindLastOf(path, "\\");
    const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash);
    const std::string name = path.substr(slash + 1);
    const auto [found, isNew] = folders_.try_emplace(UpperCase(folder), 0);
    // A character of the code page is one unit of UTF-16 nearly everywhere; where two bytes make one, the
    // name counts as longer than it is.
    found->second += tools::bfi::SlotsOfName(tools::bfi::ToShortName(name) ? 0 : name.size());
    if (isNew && !folder.empty()) AddToFolder(folder);
}

}  // namespace velbooter
