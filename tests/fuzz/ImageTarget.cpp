// The image writer: any tree becomes an image that contains the tree and that a reader of the tests and, for
// some images, fsck.fat find sound; or it is rejected for a reason that the tree really gives, and nothing
// is left.

#include <zlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>

#include "tests/fuzz/Contents.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/RandomTree.h"
#include "tests/support/RunProgram.h"
#include "tests/tools/bfi/ImageFixture.h"
#include "tools/bfi/ImageBuilder.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace fuzz {

namespace {

using floppy::Geometry;
using tools::bfi::testing::FatEntry;
using tools::bfi::testing::FatImage;

constexpr std::size_t kLongestFile = 40'000;
/// One image of this many is also checked by fsck.fat, which takes longer than everything else.
constexpr unsigned kCheckerShare = 64;

std::uint64_t Clusters(const Geometry& geometry, std::uint64_t bytes) {
    return (bytes + geometry.ClusterBytes() - 1) / geometry.ClusterBytes();
}

// A name of letters and digits in the form 8.3 needs no long name; plain names consist of nothing else.
bool IsShort(const std::string& name) {
    const std::size_t dot = name.find('.');
    const std::string extension = dot == std::string::npos ? "" : name.substr(dot + 1);
    const auto isPlain = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' ||
               c == '_';
    };
    const std::string base = name.substr(0, dot);
    return base.size() <= 8 && extension.size() <= 3 && (dot == std::string::npos || !extension.empty()) &&
           std::all_of(base.begin(), base.end(), isPlain) &&
           std::all_of(extension.begin(), extension.end(), isPlain);
}

std::size_t Slots(const std::string& name) {
    return IsShort(name) ? 1 : 1 + (tools::Utf16FromUtf8(name).size() + 12) / 13;
}

// Whether a tree of plain names fits, counted independently of the writer.
bool Fits(const RandomTree& tree, const Geometry& geometry) {
    std::map<std::string, std::size_t> slots{{"", 1}};
    std::uint64_t clusters = 0;
    const auto count = [&](const std::string& path) {
        const std::size_t slash = path.find_last_of('/');
        const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash);
        slots[folder] += Slots(path.substr(slash == std::string::npos ? 0 : slash + 1));
    };
    for (const std::string& folder : tree.Folders) {
        count(folder);
        slots[folder] += 2;
    }
    for (const TreeFile& file : tree.Files) {
        count(file.Path);
        clusters += Clusters(geometry, file.Contents.size());
    }
    for (const auto& [folder, number] : slots) {
        if (!folder.empty()) clusters += Clusters(geometry, number * 32);
    }
    return slots[""] <= geometry.RootEntries && clusters <= geometry.DataClusters();
}

std::string OwnName(const FatEntry& entry, const std::map<std::string, std::string>& folders) {
    const std::size_t slash = entry.Path.find_last_of('/');
    const std::string folder =
        slash == std::string::npos ? "" : folders.at(entry.Path.substr(0, slash)) + "/";
    if (entry.Long.empty()) return folder + entry.Path.substr(slash == std::string::npos ? 0 : slash + 1);
    // Used only in comparisons with well-formed names.
    const std::u16string& units = entry.Long;
    std::string name;
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t code = units[i];
        if (code >= 0xD800 && code < 0xDC00)
            code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(units[++i]) - 0xDC00);
        const auto put = [&](std::uint32_t value) { name += static_cast<char>(value); };
        if (code < 0x80) {
            put(code);
        } else if (code < 0x800) {
            put(0xC0 | code >> 6);
            put(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            put(0xE0 | code >> 12);
            put(0x80 | ((code >> 6) & 0x3F));
            put(0x80 | (code & 0x3F));
        } else {
            put(0xF0 | code >> 18);
            put(0x80 | ((code >> 12) & 0x3F));
            put(0x80 | ((code >> 6) & 0x3F));
            put(0x80 | (code & 0x3F));
        }
    }
    return folder + name;
}

void CheckPlace(const FatEntry& entry, std::size_t position) {
    for (std::size_t i = 1; i < entry.Clusters.size(); ++i)
        Require(entry.Clusters[i] == entry.Clusters[i - 1] + 1, entry.Path + " lies in one piece");
    if (entry.Path == "IO.SYS" && !entry.IsFolder() && position == 0 && entry.Size > 0)
        Require(entry.Clusters[0] == 2, "IO.SYS begins at cluster 2");
}

// Requires that the image contains the tree and nothing else.
void Compare(const RandomTree& tree, const FatImage& image) {
    std::map<std::string, const TreeFile*> files;
    for (const TreeFile& file : tree.Files) files[tools::UpperAscii(file.Path)] = &file;
    std::set<std::string> folders;
    for (const std::string& folder : tree.Folders) folders.insert(tools::UpperAscii(folder));
    std::map<std::string, std::string> folderNames;
    bool hasLabel = false;
    for (std::size_t i = 0; i < image.Entries.size(); ++i) {
        const FatEntry& entry = image.Entries[i];
        if (entry.IsLabel()) {
            hasLabel = true;
            continue;
        }
        CheckPlace(entry, i);
        const std::string name = OwnName(entry, folderNames);
        const std::string key = tools::UpperAscii(name);
        if (entry.IsFolder()) {
            folderNames[entry.Path] = name;
            Require(folders.erase(key) == 1, "the tree has the folder " + name);
            continue;
        }
        const auto found = files.find(key);
        Require(found != files.end(), "the tree has the file " + name);
        const TreeFile& file = *found->second;
        Require(entry.Content == file.Contents, name + " has its contents");
        Require(entry.Date == file.Modified.Date && entry.Time == file.Modified.Time, name + " has its time");
        const bool isSystemFile = key == "IO.SYS" || key == "MSDOS.SYS";
        const unsigned expected = static_cast<unsigned>(file.Attributes) | (isSystemFile ? 7U : 0U);
        Require(entry.Attributes == expected, name + " has its attributes");
        files.erase(found);
    }
    Require(hasLabel, "the root has the label");
    Require(files.empty() && folders.empty(), "nothing of the tree is missing");
}

void CheckRefusal(const tools::ToolError& error, const tools::testing::TestFolder& folder,
                  const RandomTree& tree, const Geometry& geometry) {
    const std::string text = error.what();
    Require(error.Code == tools::ExitCode::Failed && !text.empty() && text.find('\n') == std::string::npos,
            "a refusal is one line: " + text);
    Require(folder.Names() == std::vector<std::string>{"boot.bin", "tree"}, "a refusal leaves nothing");
    if (tree.HasPlainNames) Require(!Fits(tree, geometry), "only what does not fit is refused: " + text);
}

}  // namespace

void RunInput(std::span<const std::uint8_t> input) {
    Choices choices(input);
    const auto geometries = floppy::AllGeometries();
    const Geometry& geometry = geometries[choices.Below(static_cast<std::uint32_t>(geometries.size()))];
    const tools::testing::TestFolder folder;
    folder.Write("boot.bin", tools::bfi::testing::SampleBootSector());
    folder.MakeFolder("tree");
    const RandomTree tree = MakeRandomTree(choices, folder.Path("tree"), kLongestFile);
    const tools::bfi::ImageRequest request{folder.Text("boot.bin"), "Velstart", &geometry,
                                           folder.Text("out.img"), folder.Text("tree")};
    try {
        BuildImage(request);
    } catch (const tools::ToolError& error) {
        CheckRefusal(error, folder, tree, geometry);
        return;
    }
    if (tree.HasPlainNames) Require(Fits(tree, geometry), "what does not fit is refused");
    Bytes bytes(geometry.ImageBytes());
    tools::ReadWhole(folder.Path("out.img"), bytes);
    const FatImage image = tools::bfi::testing::ReadFatImage(bytes);
    Require(image.Label == "VELSTART   ", "the boot sector has the label");
    Compare(tree, image);
    if (crc32_z(0, input.data(), input.size()) % kCheckerShare == 0) {
        const auto result = tools::testing::RunProgram({"fsck.fat", "-n", folder.Text("out.img")});
        Require(result.ExitCode == 0, "fsck.fat finds nothing: " + result.All());
    }
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds = TreeSeeds();
    for (std::size_t i = 0; i < seeds.size(); ++i)
        seeds[i].insert(seeds[i].begin(), static_cast<std::uint8_t>(i));
    return seeds;
}

}  // namespace fuzz
