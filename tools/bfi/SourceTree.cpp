#include "tools/bfi/SourceTree.h"

#include <algorithm>
#include <utility>

#include "floppy/SpaceNeeded.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::bfi {
namespace {

constexpr std::size_t kOrdinary = 3;

// The rank of a file at the top of the root: DOS 6 starts only when its two system files are the first two
// entries.
std::size_t Rank(const HostFile& file) {
    const std::string name = UpperAscii(file.Name);
    if (file.IsFolder) return kOrdinary;
    if (name == "IO.SYS") return 0;
    if (name == "MSDOS.SYS") return 1;
    if (name == "COMMAND.COM") return 2;
    return kOrdinary;
}

void RefuseWhatIsNoFile(const std::string& folder, const HostFile& file) {
    // A link to a folder could lead back to a folder above it, and then the tree would have no end.
    if (file.IsLink)
        throw ToolError(folder + file.Name + ": is a link to a folder, which a DOS disk cannot hold");
    if (file.IsSpecial) throw ToolError(folder + file.Name + ": is neither a file nor a folder");
}

void ReadFolder(SourceTree& tree, std::size_t index) {
    const std::string shown = Utf8FromPath(tree[index].Path / "");
    std::vector<HostFile> found = ListFolder(tree[index].Path);
    if (index == 0)
        std::stable_sort(found.begin(), found.end(), [](const HostFile& left, const HostFile& right) {
            return Rank(left) < Rank(right);
        });
    std::vector<std::string> names;
    names.reserve(found.size());
    for (const HostFile& file : found) names.push_back(file.Name);
    const std::vector<DirectoryName> stored = NameEntries(shown, names);
    for (std::size_t i = 0; i < found.size(); ++i) {
        RefuseWhatIsNoFile(shown, found[i]);
        TreeEntry entry{std::move(found[i]), stored[i], 0};
        if (entry.Host.IsFolder) {
            entry.Folder = tree.size();
            tree.push_back(
                {tree[index].Path / PathFromUtf8(entry.Host.Name), index, entry.Host.Modified, {}});
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

bool IsSystemFile(const HostFile& file) {
    return Rank(file) < 2;
}

SourceTree ReadSourceTree(const std::filesystem::path& folder) {
    SourceTree tree(1);
    tree[0].Path = folder;
    // The tree grows while it is walked; no recursion, so that no depth of nesting exhausts the stack.
    for (std::size_t index = 0; index < tree.size(); ++index) ReadFolder(tree, index);
    return tree;
}

void RequireSpace(const SourceTree& tree, const floppy::Geometry& geometry) {
    const std::string root = Utf8FromPath(tree[0].Path);
    floppy::SpaceNeeded space(geometry);
    space.AddRootNames(tree[0].Slots());
    for (std::size_t index = 0; index < tree.size(); ++index) {
        if (index > 0) space.AddFolder(tree[index].Slots());
        for (const TreeEntry& entry : tree[index].Entries) space.AddFile(entry.Host.Size);
    }
    if (space.RootSlots() > geometry.RootEntries)
        throw ToolError(root + ": the root directory of a " + geometry.Name + " disk holds " +
                        std::to_string(geometry.RootEntries) + " entries, and " +
                        std::to_string(space.RootSlots()) +
                        " are needed (the label takes one, a long name takes several)");
    if (space.IsBeyondCounting())
        throw ToolError(root + ": does not fit on a " + geometry.Name + " disk by far");
    if (space.MissingBytes() > 0)
        throw ToolError(root + ": does not fit on a " + geometry.Name +
                        " disk: " + std::to_string(space.MissingBytes()) + " bytes are missing");
}

std::size_t FolderBytes(const TreeFolder& folder) {
    return floppy::BytesOfFolder(folder.Slots());
}

}  // namespace tools::bfi
