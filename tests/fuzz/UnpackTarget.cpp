// The unpacker of DOS on any cabinet: it reports a fault or unpacks every file, with little memory as with
// much, and what libmspack can unpack, too, it unpacks alike. The first kind of input is a whole cabinet;
// the others are data records of one method, so that the decoders are reached without correct checksums.

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/fuzz/Choices.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/MspackReader.h"
#include "tests/realmode/unpack/CabinetBuilder.h"
#include "tests/realmode/unpack/FlatMachine.h"
#include "tests/realmode/unpack/StreamWriters.h"

namespace fuzz {

namespace {

using namespace realmode::unpack;
using namespace realmode::unpack::testing;

// A byte of the input that stands for a frame of the full length.
constexpr std::uint8_t kWholeFrame = 0xFF;

std::optional<std::vector<MspackMember>> MembersOfMspack(const Bytes& cabinet) {
    try {
        return ReadWithMspack(cabinet);
    } catch (const BrokenRule&) {
        return std::nullopt;
    }
}

void CompareWithMspack(const Bytes& cabinet, const Outcome& outcome) {
    const auto members = MembersOfMspack(cabinet);
    if (!members) return;
    // Members that share a name are left out, because only one file of that name remains.
    std::map<std::string, std::vector<Bytes>> files;
    for (const MspackMember& member : *members) {
        std::string name = member.Name;
        std::replace(name.begin(), name.end(), '/', '\\');
        files[name].push_back(member.Contents);
    }
    for (const auto& [name, file] : outcome.Target.Files) {
        const auto found = files.find(name);
        if (found == files.end() || found->second.size() > 1) continue;
        Require(found->second.front() == file.Contents, "libmspack gives the same " + name);
    }
}

void CheckCabinet(const Bytes& cabinet) {
    const Outcome outcome = Unpack(cabinet);
    for (const auto& [name, file] : outcome.Target.Files) {
        Require(outcome.Result != Fault::None || file.IsFinished, "without a fault every file is complete");
        Require(!name.starts_with("..") && !name.starts_with("\\") && name.find(':') == std::string::npos,
                "files stay in the target folder");
    }
    constexpr std::uint32_t kStoreFrames = 64;
    for (const unsigned pieces : {2U, 3U}) {
        FlatMemory memory(pieces, kStoreFrames);
        const Outcome other = Unpack(cabinet, memory);
        Require(other.Result == outcome.Result && other.Tree() == outcome.Tree(),
                "with little memory it comes to the same");
    }
    if (outcome.Result == Fault::None) CompareWithMspack(cabinet, outcome);
}

Bytes CabinetOfRecords(Choices& choices, unsigned method) {
    std::vector<BuiltRecord> records;
    while (!choices.AtEnd() && records.size() < 4) {
        const std::uint8_t size = choices.Byte();
        BuiltRecord record;
        record.Unpacked = size == kWholeFrame ? kFrameBytes : size + 1U;
        record.HasNoChecksum = true;
        const auto payload = choices.Raw(choices.Below(2000));
        if (method == kMsZip) record.Payload = {'C', 'K'};
        record.Payload.insert(record.Payload.end(), payload.begin(), payload.end());
        // The raw data of an uncompressed block are long and need no choices.
        record.Payload.insert(record.Payload.end(), choices.Below(256) * 150, 'r');
        records.push_back(std::move(record));
    }
    return OneFile(method, records).Build();
}

}  // namespace

void RunInput(std::span<const std::uint8_t> input) {
    Choices choices(input);
    const std::uint32_t kind = choices.Below(9);
    if (kind == 0) {
        const auto cabinet = choices.Raw(input.size());
        CheckCabinet({cabinet.begin(), cabinet.end()});
    } else {
        CheckCabinet(CabinetOfRecords(choices, kind == 1 ? kMsZip : Lzx(13 + kind)));
    }
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds{{}};
    const auto addCabinet = [&seeds](const BuiltCabinet& cabinet) {
        seeds.push_back({0});
        const Bytes bytes = cabinet.Build();
        seeds.back().insert(seeds.back().end(), bytes.begin(), bytes.end());
    };
    const auto addRecord = [&seeds](std::uint8_t kind, std::uint8_t size, const Bytes& payload,
                                    std::uint8_t raw) {
        seeds.push_back({kind, size, static_cast<std::uint8_t>(payload.size() >> 8), 0});
        seeds.back()[3] = static_cast<std::uint8_t>(payload.size());
        seeds.back().insert(seeds.back().end(), payload.begin(), payload.end());
        seeds.back().push_back(raw);
    };
    BuiltCabinet cabinet = OneFile(kStored, {{Text("abcdef"), 6}});
    cabinet.Members = {{"A", 2, 0}, {"SUB\\B", 4, 2}, {"C", 0, 6, 0, 0x10}};
    addCabinet(cabinet);
    cabinet.Flags = 4;
    cabinet.DataReserve = 3;
    addCabinet(cabinet);
    LzxWriter lzx;
    lzx.NothingTranslated();
    lzx.BlockHeader(LzxWriter::kVerbatim, 200);
    lzx.Trees({{'a', 1}, {LzxWriter::Match(0, 9), 2}, {LzxWriter::Match(4, 3), 2}}, {{0, 1}, {100, 1}});
    lzx.Put(0b0'0'0'11'0'11'1'10'1, 11);
    const Bytes verbatim = lzx.Frame();
    lzx.Put(0x8000, 16);
    lzx.Put(0x6000, 16);
    lzx.Put(0, 1);
    lzx.BlockHeader(LzxWriter::kUncompressed, 40'000);
    lzx.Queue(1, 2, 3);
    const Bytes uncompressed = lzx.Frame();
    for (std::uint8_t kind = 2; kind < 9; ++kind) {
        addRecord(kind, 100, verbatim, 0);
        addRecord(kind, kWholeFrame, uncompressed, 230);
    }
    DeflateWriter deflate;
    deflate.BlockHeader(false, DeflateWriter::kFixed);
    deflate.FixedLiteral('a');
    deflate.FixedMatch3(0);
    deflate.FixedEnd();
    deflate.StoredBlock(true, Text("end"));
    const Bytes frame = deflate.Frame();
    addRecord(1, 6, {frame.begin() + 2, frame.end()}, 0);
    return seeds;
}

}  // namespace fuzz
