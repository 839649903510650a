// What the encoder packs, unpacked by the programs that users have. All of them must be installed; each has
// its own decoder and is strict about other things.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/TestData.h"
#include "tests/tools/cabarc/lzx/LzxDecoder.h"
#include "tools/cabarc/lzx/LzxEncoder.h"
#include "tools/shared/ByteOrder.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::CodeLike;
using tools::testing::DataKind;
using tools::testing::DataKinds;
using tools::testing::FarCopies;
using tools::testing::Mixed;
using tools::testing::RandomBytes;

namespace fs = std::filesystem;

std::uint32_t Checksum(const Bytes& bytes, std::uint32_t sum) {
    std::size_t at = 0;
    for (; at + 4 <= bytes.size(); at += 4) sum ^= tools::GetU32(&bytes[at]);
    std::uint32_t tail = 0;
    for (; at < bytes.size(); ++at) tail = tail << 8 | bytes[at];
    return sum ^ tail;
}

// Returns a cabinet with one folder and one file, "f.bin".
Bytes SingleFileCabinet(const FrameCollector& folder, int windowBits, std::size_t size) {
    constexpr std::size_t kDataStart = 36 + 8 + 16 + 6;
    Bytes data;
    for (const FrameCollector::Frame& frame : folder.Frames) {
        Bytes sizes;
        tools::AppendU16(sizes, static_cast<std::uint32_t>(frame.Payload.size()));
        tools::AppendU16(sizes, static_cast<std::uint32_t>(frame.Size));
        tools::AppendU32(data, Checksum(frame.Payload, tools::GetU32(sizes.data())));
        data.insert(data.end(), sizes.begin(), sizes.end());
        data.insert(data.end(), frame.Payload.begin(), frame.Payload.end());
    }
    Bytes cabinet{'M', 'S', 'C', 'F'};
    for (const std::size_t field :
         {std::size_t{0}, kDataStart + data.size(), std::size_t{0}, std::size_t{44}, std::size_t{0}})
        tools::AppendU32(cabinet, static_cast<std::uint32_t>(field));
    for (const std::uint32_t field : {0x0103U, 1U, 1U, 0U, 0U, 0U}) tools::AppendU16(cabinet, field);
    tools::AppendU32(cabinet, kDataStart);
    tools::AppendU16(cabinet, static_cast<std::uint32_t>(folder.Frames.size()));
    tools::AppendU16(cabinet, static_cast<std::uint32_t>(3 | windowBits << 8));
    tools::AppendU32(cabinet, static_cast<std::uint32_t>(size));
    tools::AppendU32(cabinet, 0);
    for (const std::uint32_t field : {0U, 0x3222U, 0x1883U, 0x20U}) tools::AppendU16(cabinet, field);
    for (const char c : {'f', '.', 'b', 'i', 'n', '\0'}) cabinet.push_back(static_cast<std::uint8_t>(c));
    cabinet.insert(cabinet.end(), data.begin(), data.end());
    return cabinet;
}

class ForeignDecoders : public ::testing::Test {
 protected:
    ForeignDecoders() {
        std::string pattern = (fs::temp_directory_path() / "lzxXXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
        folder_ = pattern;
    }
    ~ForeignDecoders() override { fs::remove_all(folder_); }
    ForeignDecoders(const ForeignDecoders&) = delete;
    ForeignDecoders& operator=(const ForeignDecoders&) = delete;

    // Packs `input` and has every program unpack it.
    void Check(const Bytes& input, int windowBits) {
        FrameCollector folder;
        tools::cabarc::lzx::LzxEncoder encoder(windowBits, {}, folder);
        encoder.Write(input);
        encoder.Finish();
        const Bytes cabinet = SingleFileCabinet(folder, windowBits, input.size());
        std::ofstream(folder_ / "c.cab", std::ios::binary)
            .write(reinterpret_cast<const char*>(cabinet.data()),
                   static_cast<std::streamsize>(cabinet.size()));
        for (const char* command :
             {"cabextract -q c.cab", "7z x -y c.cab", "gcab -x c.cab", "bsdtar -xf c.cab"}) {
            const std::string line =
                "cd '" + folder_.string() + "' && rm -f f.bin && " + command + " >log 2>&1";
            EXPECT_EQ(0, std::system(line.c_str())) << command << ": " << Read("log");
            EXPECT_TRUE(Read("f.bin") == std::string(input.begin(), input.end())) << command;
        }
    }

 private:
    std::string Read(const char* name) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    fs::path folder_;
};

TEST_F(ForeignDecoders, ReadEveryKindOfData) {
    for (const DataKind& kind : DataKinds()) {
        SCOPED_TRACE(kind.Name);
        Check(kind.Make(150'001, 21), 21);
    }
}

TEST_F(ForeignDecoders, ReadEveryEdgeSize) {
    for (const std::size_t size : {1, 2, 11, 32767, 32768, 32769, 65536}) {
        SCOPED_TRACE(size);
        Check(CodeLike(size, 1), 21);
        Check(RandomBytes(size, 1), 21);
    }
}

TEST_F(ForeignDecoders, ReadEveryWindow) {
    for (int windowBits = 15; windowBits <= 21; ++windowBits) {
        SCOPED_TRACE(windowBits);
        const std::size_t window = std::size_t{1} << windowBits;
        Check(FarCopies(2 * window + 4'321, window - 3, 5), windowBits);
    }
}

TEST_F(ForeignDecoders, ReadLongMixedFolders) {
    Check(Mixed(4'500'003, 2), 21);
    Check(Mixed(1'000'000, 3), 16);
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
