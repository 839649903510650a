#include "tools/bfi/SourceTree.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::bfi {
namespace {

constexpr std::size_t kOrdinary = 3;
/// Up to here the sum of clusters is right, and so is the number of bytes in them.
constexpr std::uint64_t kMostClusters = std::numeric_limits<std::uint64_t>::max() >> 16;

// The place of a file at the top of the root: DOS 6 starts only from files that are the first two entries.
std::size_t Rank(const tools::HostFile& file) {
    const std::string name = tools::UpperAscii(file.Name);
    if (file.IsFolder) return kOrdinary;
    if (name == "IO.SYS") return 0;
    if (name == "MSDOS.SYS") return 1;
    if (name == "COMMAND.COM") return 2;
    return kOrdinary;
}

void RefuseWhatIsNoFile(const std::string& folder, const tools::HostFile& file) {
    // A link to a folder could lead back to a folder above it, and then the tree would have no end.
    if (file.IsLink)
        throw tools::ToolError(folder + file.Name + ": is a link to a folder, which a DOS disk cannot hold");
    if (file.IsSpecial) throw tools::ToolError(folder + file.Name + ": is neither a file nor a folder");
}

void ReadFolder(SourceTree& tree, std::size_t index) {
    const std::string shown = tools::Utf8FromPath(tree[index].Path / "");
    std::vector<tools::HostFile> found = tools::ListFolder(tree[index].Path);
    if (index == 0)
        std::stable_sort(found.begin(), found.end(),
                         [](const tools::HostFile& left, const tools::HostFile& right) {
                             return Rank(left) < Rank(right);
                         });
    std::vector<std::string> names;
    names.reserve(found.size());
    for (const tools::HostFile& file : found) names.push_back(file.Name);
    const std::vector<DirectoryName> stored = NameEntries(shown, names);
    for (std::size_t i = 0; i < found.size(); ++i) {
        RefuseWhatIsNoFile(shown, found[i]);
        TreeEntry entry{std::move(found[i]), stored[i], 0};
        if (entry.Host.IsFolder) {
            entry.Folder = tree.size();
            tree.push_back(
                {tree[index].Path / tools::PathFromUtf8(entry.Host.Name), index, entry.Host.Modified, {}});
        }
        tree[index].Entries.push_back(std::move(entry));
    }
}

}  // namespace

std::size_t TreeFolder::Slots() const {
    std::size_t slots = 0;
    for (const TreeEntry& entry : Entries) slots += entry.Name.Slots();
    return slots;
}

bool IsSystemFile(const tools::HostFile& file) {
    return Rank(file) < 2;
}

SourceTree ReadSourceTree(const std::filesystem::path& folder) {
    SourceTree tree(1);
    tree[0].Path = folder;
    // The tree grows while it is walked; no recursion, so that no depth of nesting exhausts the stack.
    for (std::size_t index = 0; index < tree.size(); ++index) ReadFolder(tree, index);
    return tree;
}

void RequireRoom(const SourceTree& tree, const Geometry& geometry) {
    const std::string root = tools::Utf8FromPath(tree[0].Path);
    const std::size_t rootSlots = tree[0].Slots() + 1;
    if (rootSlots > geometry.RootEntries)
        throw tools::ToolError(root + ": the root directory of a " + geometry.Name + " disk has room for " +
                               std::to_string(geometry.RootEntries) + " entries, and " +
                               std::to_string(rootSlots) +
                               " are needed (the label takes one, a long name takes several)");
    std::uint64_t clusters = 0;
    for (std::size_t index = 0; index < tree.size(); ++index) {
        if (index > 0) clusters += geometry.ClustersFor(FolderBytes(tree[index]));
        for (const TreeEntry& entry : tree[index].Entries) {
            clusters += geometry.ClustersFor(entry.Host.Size);
            // A few files that are mostly holes can have more bytes than the sum can count.
            if (clusters > kMostClusters)
                throw tools::ToolError(root + ": does not fit on a " + geometry.Name + " disk by far");
        }
    }
    if (clusters > geometry.DataClusters())
        throw tools::ToolError(
            root + ": does not fit on a " + geometry.Name +
            " disk: " + std::to_string((clusters - geometry.DataClusters()) * geometry.ClusterBytes()) +
            " bytes are missing");
}

std::size_t FolderBytes(const TreeFolder& folder) {
    return BytesOfFolder(folder.Slots());
}

}  // namespace tools::bfi
