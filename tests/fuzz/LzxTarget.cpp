// The LZX encoder: a folder with any contents and any window, delivered in parts of any size, is read back
// by libmspack and by the strict decoder of the tests.

#include <algorithm>
#include <array>

#include "tests/fuzz/Contents.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/MspackReader.h"
#include "tests/tools/cabarc/lzx/LzxDecoder.h"
#include "tools/cabarc/CabinetDirectory.h"
#include "tools/cabarc/CabinetWriter.h"
#include "tools/cabarc/lzx/LzxEncoder.h"
#include "tools/shared/ByteOrder.h"

namespace fuzz {

using tools::cabarc::lzx::testing::DecodeLzx;
using tools::cabarc::lzx::testing::FrameCollector;

namespace {

using tools::AppendU16;
using tools::AppendU32;

// Most folders are small, so that many are tried; the last size exceeds the encoder's buffer for the
// smallest window and makes it slide. It takes seconds, so it needs a mark that few inputs have.
constexpr std::array<std::size_t, 8> kUsualLimits{300, 1'000, 3'000, 300, 1'000, 3'000, 34'000, 70'000};
constexpr std::size_t kLargeLimit = 2'300'000;
constexpr std::uint8_t kLargeMark = 0xA5;

void Encode(Choices& choices, int windowBits, const Bytes& contents, FrameCollector& frames) {
    tools::cabarc::lzx::LzxEncoder encoder(windowBits, {}, frames);
    std::span<const std::uint8_t> rest = contents;
    for (std::uint32_t parts = choices.Below(4); parts > 0; --parts) {
        const auto part = rest.first(std::min<std::size_t>(rest.size(), choices.Below(40000)));
        encoder.Write(part);
        rest = rest.subspan(part.size());
    }
    encoder.Write(rest);
    encoder.Finish();
}

// Returns a cabinet of one folder with one member.
Bytes CabinetOf(const FrameCollector& frames, int windowBits, std::size_t size) {
    constexpr std::uint32_t kDataStart =
        tools::cabarc::kHeaderBytes + tools::cabarc::kFolderBytes + tools::cabarc::kMemberBytes + 2;
    Bytes data;
    for (const FrameCollector::Frame& frame : frames.Frames) {
        const auto frameSize = static_cast<std::uint16_t>(frame.Size);
        AppendU32(data, tools::cabarc::RecordChecksum(frame.Payload, frameSize));
        AppendU16(data, static_cast<std::uint32_t>(frame.Payload.size()));
        AppendU16(data, frameSize);
        data.insert(data.end(), frame.Payload.begin(), frame.Payload.end());
    }
    Bytes cabinet{'M', 'S', 'C', 'F'};
    AppendU32(cabinet, 0);
    AppendU32(cabinet, kDataStart + static_cast<std::uint32_t>(data.size()));
    AppendU32(cabinet, 0);
    AppendU32(cabinet, tools::cabarc::kHeaderBytes + tools::cabarc::kFolderBytes);
    AppendU32(cabinet, 0);
    for (const std::uint32_t field : {0x0103, 1, 1, 0, 0, 0}) AppendU16(cabinet, field);
    AppendU32(cabinet, kDataStart);
    AppendU16(cabinet, static_cast<std::uint32_t>(frames.Frames.size()));
    AppendU16(cabinet, 3U | static_cast<std::uint32_t>(windowBits) << 8);
    AppendU32(cabinet, static_cast<std::uint32_t>(size));
    AppendU32(cabinet, 0);
    for (const std::uint32_t field : {0, 0x21, 0, 0x20}) AppendU16(cabinet, field);
    AppendU16(cabinet, 'm');
    cabinet.insert(cabinet.end(), data.begin(), data.end());
    return cabinet;
}

}  // namespace

void RunInput(std::span<const std::uint8_t> input) {
    Choices choices(input);
    const int windowBits = 15 + static_cast<int>(choices.Below(7));
    const std::uint8_t size = choices.Byte();
    const std::size_t limit = size == kLargeMark ? kLargeLimit : kUsualLimits[size % kUsualLimits.size()];
    const std::uint8_t partsSeed[] = {choices.Byte(), choices.Byte(), choices.Byte(), choices.Byte()};
    Bytes contents;
    AppendContents(choices, limit, contents);
    FrameCollector frames;
    Choices parts(partsSeed);
    Encode(parts, windowBits, contents, frames);
    Require(DecodeLzx(frames.Frames, windowBits) == contents, "the strict decoder gives the folder back");
    const std::vector<MspackMember> members = ReadWithMspack(CabinetOf(frames, windowBits, contents.size()));
    Require(members.size() == 1 && members[0].Contents == contents, "libmspack gives the folder back");
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds{{}, {0, 0, 0, 0, 0, 0, 0, 2, 'x', 'y'}};
    for (std::uint8_t window = 0; window < 7; ++window) {
        // Each kind of data, then copies: near, far, and up to the end of a frame.
        for (std::uint8_t kind = 3; kind < 11; ++kind) {
            seeds.push_back({window, 0,    1, 5, 1, 2, kind, 2, 70, 9, window, 1, 1, 90, 40, 3, 9,
                             0,      kind, 4, 3, 7, 2, 3,    5, 0,  0, 80,     7, 1, 0,  2,  1, 2});
        }
    }
    // More than two megabytes: a frame of calls, then whole frames of far copies.
    Bytes large{0, kLargeMark, 2, 30, 0, 9, 6, 3, 0, 5};
    for (std::uint8_t i = 0; i < 72; ++i) {
        const auto other = static_cast<std::uint8_t>(i * 37);
        const auto kind = static_cast<std::uint8_t>(i % 3 == 0 ? 3 + i % 8 : 1);
        if (kind == 1) {
            large.insert(large.end(), {kind, 3, 0, other, other, i, 1});
        } else {
            large.insert(large.end(), {kind, 3, 0, i});
        }
    }
    seeds.push_back(large);
    return seeds;
}

}  // namespace fuzz
