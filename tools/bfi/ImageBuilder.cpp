#include "tools/bfi/ImageBuilder.h"

#include <algorithm>
#include <utility>

#include "tools/bfi/BootSector.h"
#include "tools/bfi/DirectoryNames.h"
#include "tools/bfi/DirectoryTable.h"
#include "tools/bfi/FatVolume.h"
#include "tools/bfi/SourceTree.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/OutputFile.h"
#include "tools/shared/ToolError.h"

namespace tools::bfi {
namespace {

constexpr floppy::ShortName kThisFolder{'.', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
constexpr floppy::ShortName kParentFolder{'.', '.', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
constexpr std::uint8_t kSystemFileAttributes = kReadOnly | kHidden | kSystem;

DosTime NewestTime(const SourceTree& tree) {
    const auto isOlder = [](const DosTime& left, const DosTime& right) {
        return std::pair(left.Date, left.Time) < std::pair(right.Date, right.Time);
    };
    DosTime newest;
    for (const TreeFolder& folder : tree)
        for (const TreeEntry& entry : folder.Entries) newest = std::max(newest, entry.Host.Modified, isOlder);
    return newest;
}

// Fills a volume from a tree, folder by folder; space is given out in the order of the directory entries, so
// that the system files, which come first, begin at the first cluster.
class VolumeFiller {
 public:
    VolumeFiller(FatVolume& volume, const SourceTree& tree, const floppy::ShortName& label)
        : volume_(volume), tree_(tree), label_(label), clusters_(tree.size()) {}

    void Fill() {
        for (std::size_t index = 0; index < tree_.size(); ++index) FillFolder(index);
    }

 private:
    void FillFolder(std::size_t index) {
        const TreeFolder& folder = tree_[index];
        if (index == 0) {
            DirectoryTable table(volume_.RootDirectory());
            FillTable(index, table);
        } else {
            std::vector<std::uint8_t> bytes(FolderBytes(folder));
            DirectoryTable table(bytes);
            table.Add(kThisFolder, {kFolderAttribute, folder.Modified, clusters_[index], 0});
            // The number 0, which clusters_ holds for the root, is how ".." names the root.
            table.Add(kParentFolder, {kFolderAttribute, folder.Modified, clusters_[folder.Parent], 0});
            FillTable(index, table);
            volume_.Store(clusters_[index], bytes.size(), [&](std::span<std::uint8_t> place) {
                std::copy(bytes.begin(), bytes.end(), place.begin());
            });
        }
    }

    void FillTable(std::size_t index, DirectoryTable& table) {
        const TreeFolder& folder = tree_[index];
        bool isLabelDue = index == 0;
        for (const TreeEntry& entry : folder.Entries) {
            const bool isSystemFile = index == 0 && IsSystemFile(entry.Host);
            if (isLabelDue && !isSystemFile) {
                AddLabel(table);
                isLabelDue = false;
            }
            AddEntry(table, folder, entry, isSystemFile ? kSystemFileAttributes : std::uint8_t{0});
        }
        if (isLabelDue) AddLabel(table);
    }

    // The label comes before any long name, whose parts some versions of DOS would take for the label.
    void AddLabel(DirectoryTable& table) { table.Add(label_, {kLabelAttribute, NewestTime(tree_), 0, 0}); }

    void AddEntry(DirectoryTable& table, const TreeFolder& folder, const TreeEntry& entry,
                  std::uint8_t moreAttributes) {
        EntryFacts facts;
        facts.Attributes = entry.Host.Attributes | moreAttributes;
        facts.Modified = entry.Host.Modified;
        if (entry.Host.IsFolder) {
            facts.Attributes |= kFolderAttribute;
            facts.FirstCluster = volume_.Allocate(FolderBytes(tree_[entry.Folder]));
            clusters_[entry.Folder] = facts.FirstCluster;
        } else {
            facts.Size = static_cast<std::uint32_t>(entry.Host.Size);
            facts.FirstCluster = volume_.Allocate(entry.Host.Size);
            if (facts.Size > 0) {
                const std::filesystem::path file = folder.Path / PathFromUtf8(entry.Host.Name);
                volume_.Store(facts.FirstCluster, facts.Size,
                              [&](std::span<std::uint8_t> place) { ReadWhole(file, place); });
            }
        }
        table.Add(entry.Name, facts);
    }

    FatVolume& volume_;
    const SourceTree& tree_;
    const floppy::ShortName& label_;
    std::vector<std::uint32_t> clusters_;  // first cluster of each folder of the tree; 0 for the root
};

// Otherwise the image would replace what it is built from, and could never be built again.
void RefuseToReplaceInput(const ImageRequest& request) {
    const std::filesystem::path image = PathFromUtf8(request.ImageFile);
    if (IsSame(image, PathFromUtf8(request.BootSectorFile)))
        throw ToolError(request.ImageFile + ": is the boot sector itself, not an image");
    if (LiesBelow(image, PathFromUtf8(request.Folder)))
        throw ToolError(request.ImageFile + ": lies in the folder that the image is built from, " +
                        request.Folder);
}

}  // namespace

void BuildImage(const ImageRequest& request) {
    RefuseToReplaceInput(request);
    const floppy::Geometry& geometry = *request.Format;
    const floppy::ShortName label = ToVolumeLabel(request.Label);
    const BootSector code = ReadBootSector(PathFromUtf8(request.BootSectorFile));
    const SourceTree tree = ReadSourceTree(PathFromUtf8(request.Folder));
    RequireSpace(tree, geometry);

    OutputFile image(PathFromUtf8(request.ImageFile));
    FatVolume volume(geometry, image);
    VolumeFiller(volume, tree, label).Fill();
    volume.Finish(DescribeDisk(code, geometry, label));
    image.Commit();
}

}  // namespace tools::bfi
