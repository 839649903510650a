// The reader of cabinets on any bytes: it rejects them with one line or returns a directory that keeps the
// promises of its header, that can be listed, and whose members never lead out of the target folder.

#include <algorithm>
#include <sstream>

#include "tests/fuzz/FuzzTarget.h"
#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/cabarc/CabinetReader.h"
#include "tools/cabarc/ExtractionPlan.h"
#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/Listing.h"
#include "tools/shared/ByteOrder.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace fuzz {

namespace {

using namespace tools::cabarc;

constexpr const char* kLabel = "any.cab";
// Does not exist, so that the result does not depend on the machine.
constexpr const char* kTarget = "/nonexistent-target/below";

// Whether a text contains nothing that controls a terminal or misleads its reader. It knows the bytes of
// such characters and shares nothing with the program's own check.
bool IsPrintable(const std::string& text) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return false;
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == '\xC2' && static_cast<unsigned char>(text[i + 1]) < 0xA0) return false;
    for (const char* misleading :
         {"\xD8\x9C", "\xE2\x80\x8E", "\xE2\x80\x8F", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAA",
          "\xE2\x80\xAB", "\xE2\x80\xAC", "\xE2\x80\xAD", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA7",
          "\xE2\x81\xA8", "\xE2\x81\xA9"})
        if (text.find(misleading) != std::string::npos) return false;
    return true;
}

void CheckMessage(const tools::ToolError& error) {
    const std::string text = error.what();
    Require(error.Code == tools::ExitCode::Failed, "a cabinet that is refused is no wrong call");
    Require(text.starts_with(kLabel) && IsPrintable(text),
            "a refusal is one line that names the cabinet: " + tools::PrintableBytes(text));
}

void CheckDirectory(const CabinetDirectory& directory, std::size_t size) {
    Require(directory.CabinetSize <= size, "the cabinet is not shorter than it states");
    Require(!directory.Folders.empty() && !directory.Members.empty(), "there are folders and members");
    const bool isSet = (directory.Flags & (kHasPreviousCabinet | kHasNextCabinet)) != 0;
    for (const CabinetMember& member : directory.Members) {
        Require(!member.Name.empty() && member.Name.size() <= kMaxNameBytes, "names have 1 to 255 bytes");
        if (isSet && member.Folder >= kFirstContinuedFolder) continue;
        Require(member.Folder < directory.Folders.size(), "the folder of a member exists");
        const std::uint64_t end = std::uint64_t{member.Offset} + member.Size;
        Require(isSet || end <= std::uint64_t{directory.Folders[member.Folder].Records} * kFrameSize,
                "members lie within their folder");
    }
}

void CheckListing(const CabinetDirectory& directory) {
    const std::string text = ListingOf(directory, kLabel, {});
    Require(tools::IsUtf8(text), "a listing is UTF-8");
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    Require(lines == directory.Members.size() + 4, "a listing has one line for each member");
    std::string joined = text;
    std::erase(joined, '\n');
    Require(IsPrintable(joined), "nothing in a listing steers a terminal");
}

void CheckPlan(const CabinetDirectory& directory) {
    std::vector<PlannedMember> plan;
    try {
        plan = PlanExtraction(directory, kLabel, {}, kTarget, true);
    } catch (const tools::ToolError& error) {
        CheckMessage(error);
        return;
    }
    const std::filesystem::path folder = kTarget;
    for (const PlannedMember& member : plan) {
        const std::filesystem::path place = member.Target.lexically_normal().lexically_relative(folder);
        Require(!place.empty() && *place.begin() != ".." && *place.begin() != ".",
                "a member stays below the target folder: " + member.Target.string());
    }
}

}  // namespace

void RunInput(std::span<const std::uint8_t> input) {
    std::istringstream cabinet(std::string(input.begin(), input.end()), std::ios::binary);
    CabinetDirectory directory;
    try {
        directory = ReadCabinetDirectory(cabinet, kLabel);
    } catch (const tools::ToolError& error) {
        CheckMessage(error);
        return;
    }
    CheckDirectory(directory, input.size());
    CheckListing(directory);
    CheckPlan(directory);
}

std::vector<Bytes> Seeds() {
    using tools::cabarc::testing::BytesOf;
    using tools::cabarc::testing::HandMade;
    std::vector<Bytes> seeds{{}, BytesOf("MSCF")};
    seeds.push_back(HandMade({{"readme.txt", BytesOf("hello")}}));
    seeds.push_back(HandMade({{"a", {}}, {"sub\\b.txt", BytesOf("b"), 0x27}, {"c", BytesOf("c"), 0x20, 1}}));
    seeds.push_back(HandMade({{"..\\out", BytesOf("x")}, {"/abs", {}}, {"C:\\x", {}}, {"aux.txt", {}}}));
    seeds.push_back(HandMade({{"a\xC2\x9B"
                               "31mred",
                               BytesOf("c"), 0xA0},
                              {"b\xE2\x80\xAE"
                               "c",
                               {},
                               0xA0}}));
    seeds.push_back(HandMade({{"\xC3\xA4\\\xE6\xBC\xA2", BytesOf("u"), 0xA0}, {"\xE4", {}, 0x20}}));
    // A cabinet of a set, with reserves: flags 7, reserve sizes, a reserve, four names.
    Bytes ofSet = HandMade({{"part", BytesOf("0123456789")}});
    tools::PutU16(&ofSet[30], kHasPreviousCabinet | kHasNextCabinet | kHasReserve);
    const Bytes extra =
        BytesOf(std::string("\x02\0\0\0rr1.cab\0one\0"
                            "3.cab\0three\0",
                            24));
    ofSet.insert(ofSet.begin() + 36, extra.begin(), extra.end());
    tools::PutU32(&ofSet[8], static_cast<std::uint32_t>(ofSet.size()));
    tools::PutU32(&ofSet[16], static_cast<std::uint32_t>(44 + extra.size()));
    seeds.push_back(ofSet);
    return seeds;
}

}  // namespace fuzz
