// The examples of docs/formats: compared byte for byte where a format leaves no choice, else by what their
// bytes mean.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iomanip>
#include <sstream>

#include "tests/support/TestFolder.h"
#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tests/tools/cabarc/lzx/LzxDecoder.h"
#include "tools/bfi/ImageBuilder.h"
#include "tools/cabarc/Packer.h"
#include "tools/cabarc/lzx/LzxEncoder.h"
#include "tools/shared/HostFiles.h"

namespace docs::testing {
namespace {

using tools::cabarc::lzx::testing::DecodeLzx;
using tools::cabarc::lzx::testing::FrameCollector;
using tools::cabarc::lzx::testing::LzxContents;
using tools::testing::Bytes;
using tools::testing::TestFolder;

constexpr const char* kAnyByte = "xx";

std::string TextOf(const std::string& page) {
    std::ifstream file(FORMAT_PAGES + page);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The bytes of an example as the page writes them, two characters each; "xx" is any byte.
std::vector<std::string> Example(const std::string& page, const std::string& name) {
    std::istringstream lines(TextOf(page));
    std::vector<std::string> words;
    bool isInside = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("    ") && isInside) {
            std::istringstream text(line);
            for (std::string word; text >> word;) words.push_back(word);
        } else {
            isInside = line == "<!-- example: " + name + " -->";
        }
    }
    EXPECT_FALSE(words.empty()) << page << " has no example " << name;
    return words;
}

/// Returns the bytes from `offset` on, as many as the example has, written as the page writes them.
std::vector<std::string> Written(const Bytes& bytes, std::size_t offset,
                                 const std::vector<std::string>& example) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < example.size() && offset + i < bytes.size(); ++i) {
        std::ostringstream word;
        word << std::uppercase << std::hex << std::setw(2) << std::setfill('0') << +bytes[offset + i];
        words.push_back(example[i] == kAnyByte ? kAnyByte : word.str());
    }
    return words;
}

Bytes BytesOf(const std::vector<std::string>& words) {
    Bytes bytes;
    for (const std::string& word : words)
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(word, nullptr, 16)));
    return bytes;
}

const tools::DosTime kExampleTime = tools::PackDosTime(1998, 5, 11, 20, 1, 2);

/// The cabinet of hello.txt, stored.
Bytes HelloCabinet() {
    const TestFolder folder;
    folder.Write("hello.txt", {'H', 'e', 'l', 'l', 'o'}, kExampleTime, tools::kArchive);
    tools::cabarc::CommandLine call;
    call.Action = tools::cabarc::Command::New;
    call.Compression.Type = tools::cabarc::Method::Kind::Stored;
    call.Cabinet = folder.Text("hello.cab");
    call.Names = {folder.Text("hello.txt")};
    Pack(call);
    return folder.Read("hello.cab");
}

TEST(CabinetPage, ShowsTheCabinetOfAStoredFile) {
    const auto example = Example("cabinet.md", "stored");
    const Bytes cabinet = HelloCabinet();
    EXPECT_EQ(Written(cabinet, 0, example), example);
    EXPECT_EQ(example.size(), cabinet.size());
}

// How zlib packs a file may change with its version; what the page says about these bytes may not. So the
// page's record replaces the stored one in its cabinet, which the tests' own reader then reads.
TEST(CabinetPage, ShowsADataRecordOfMsZip) {
    constexpr std::size_t kCabinetSize = 0x08;
    constexpr std::size_t kMethod = 0x2A;
    constexpr std::size_t kDataStart = 0x46;
    Bytes cabinet = BytesOf(Example("cabinet.md", "stored"));
    const Bytes record = BytesOf(Example("cabinet.md", "mszip"));
    cabinet.resize(kDataStart);
    cabinet.insert(cabinet.end(), record.begin(), record.end());
    cabinet[kCabinetSize] = static_cast<std::uint8_t>(cabinet.size());
    cabinet[kMethod] = 1;
    const auto parsed = tools::cabarc::testing::Parse(cabinet);
    ASSERT_EQ(1U, parsed.Members.size());
    EXPECT_EQ((Bytes{'H', 'e', 'l', 'l', 'o'}), parsed.Members[0].Contents);
}

TEST(LzxPage, ShowsAStoredFolder) {
    const auto example = Example("lzx.md", "hello");
    for (int windowBits = 15; windowBits <= 21; ++windowBits) {
        FrameCollector frames;
        tools::cabarc::lzx::LzxEncoder encoder(windowBits, {}, frames);
        encoder.Write(Bytes{'H', 'e', 'l', 'l', 'o'});
        encoder.Finish();
        ASSERT_EQ(1U, frames.Frames.size());
        EXPECT_EQ(Written(frames.Frames[0].Payload, 0, example), example);
        EXPECT_EQ(example.size(), frames.Frames[0].Payload.size());
    }
}

// How the encoder packs a folder may change; what the page says about these bytes may not.
TEST(LzxPage, ShowsAFolderOfOneLetter) {
    const Bytes letters(300, 'a');
    const FrameCollector::Frame frame{BytesOf(Example("lzx.md", "letters")), letters.size()};
    LzxContents contents;
    EXPECT_EQ(letters, DecodeLzx({frame}, 15, &contents));
    EXPECT_EQ(1U, contents.Verbatim);
    EXPECT_FALSE(contents.Translated);
}

TEST(Fat12Page, ShowsTheStartsOfBootSectorFatAndRoot) {
    constexpr std::size_t kSector = 512;
    const TestFolder folder;
    Bytes bootSector{0xEB, 0x3C, 0x90, 'M', 'S', 'W', 'I', 'N', '4', '.', '1'};
    bootSector.resize(kSector);
    bootSector[510] = 0x55;
    bootSector[511] = 0xAA;
    folder.Write("boot.bin", bootSector);
    folder.Write("tree/IO.SYS", Bytes(600), kExampleTime, tools::kArchive);
    folder.Write("tree/Read me.txt", {'H', 'e', 'l', 'l', 'o'}, kExampleTime, tools::kArchive);
    tools::bfi::BuildImage({folder.Text("boot.bin"), "Velstart", floppy::GeometryOfType("144"),
                            folder.Text("disk.img"), folder.Text("tree")});
    const Bytes image = folder.Read("disk.img");
    const std::pair<const char*, std::size_t> examples[] = {
        {"boot sector", 0}, {"fat", kSector}, {"root", 19 * kSector}};
    for (const auto& [name, offset] : examples) {
        const auto example = Example("fat12.md", name);
        EXPECT_EQ(Written(image, offset, example), example) << name;
    }
}

/// As the pages write a number: 1,474,560.
std::string Grouped(std::size_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t end = digits.size(); end > 3; end -= 3) digits.insert(end - 3, 1, ',');
    return digits;
}

std::string Range(std::uint32_t first, std::uint32_t next) {
    return Grouped(first) + " to " + Grouped(next - 1);
}

using Cell = std::function<std::string(const floppy::Geometry&)>;

/// The line of a table that has a cell for each floppy format.
std::string RowOf(const std::string& heading, const Cell& cell) {
    std::string row = "\n| " + heading + " |";
    for (const floppy::Geometry& geometry : floppy::AllGeometries()) row += " " + cell(geometry) + " |";
    return row + "\n";
}

TEST(Fat12Page, HasTheNumbersOfEveryFormat) {
    using floppy::Geometry;
    const std::pair<const char*, Cell> rows[] = {
        {"`-t=`", [](const Geometry& g) { return g.Type; }},
        {"disk", [](const Geometry& g) { return g.Name; }},
        {"cylinders", [](const Geometry& g) { return Grouped(g.Cylinders); }},
        {"first copy of the FAT", [](const Geometry& g) { return Range(1, 1 + g.SectorsPerFat); }},
        {"second copy", [](const Geometry& g) { return Range(1 + g.SectorsPerFat, g.RootSector()); }},
        {"root directory", [](const Geometry& g) { return Range(g.RootSector(), g.DataSector()); }},
        {"data", [](const Geometry& g) { return Range(g.DataSector(), g.TotalSectors()); }},
        {"clusters", [](const Geometry& g) { return Grouped(g.DataClusters()); }},
        {"data, bytes", [](const Geometry& g) { return Grouped(g.DataClusters() * g.ClusterBytes()); }},
        {"image, bytes", [](const Geometry& g) { return Grouped(g.ImageBytes()); }},
        {"sectors in a cluster", [](const Geometry& g) { return Grouped(g.SectorsPerCluster); }},
        {"entries of the root directory", [](const Geometry& g) { return Grouped(g.RootEntries); }},
        {"sectors", [](const Geometry& g) { return Grouped(g.TotalSectors()); }},
        {"media",
         [](const Geometry& g) { return std::string("F") + "0123456789ABCDEF"[g.MediaByte & 0xF] + "h"; }},
        {"sectors of a FAT", [](const Geometry& g) { return Grouped(g.SectorsPerFat); }},
        {"sectors of a track", [](const Geometry& g) { return Grouped(g.SectorsPerTrack); }},
    };
    const std::string page = TextOf("fat12.md");
    for (const auto& [heading, cell] : rows) EXPECT_THAT(page, ::testing::HasSubstr(RowOf(heading, cell)));
}

TEST(CommandLinePage, HasEveryTypeOfDisk) {
    const std::string page = TextOf("../command-line.md");
    for (const floppy::Geometry& geometry : floppy::AllGeometries()) {
        EXPECT_THAT(page, ::testing::ContainsRegex(
                              std::string("\n. `") + geometry.Type + "` . " + geometry.Name + ": [^|]*. " +
                              Grouped(geometry.ImageBytes()) + " . " +
                              Grouped(geometry.DataClusters() * geometry.ClusterBytes()) + " .\n"));
    }
}

}  // namespace
}  // namespace docs::testing
