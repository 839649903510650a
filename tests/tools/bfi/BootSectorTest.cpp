#include "tools/bfi/BootSector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tests/tools/bfi/ImageFixture.h"
#include "tools/bfi/DirectoryNames.h"

namespace tools::bfi::testing {
namespace {

using testing::SampleBootSector;
using tools::testing::Bytes;
using tools::testing::ErrorOf;
using tools::testing::TestFolder;

std::string RefusalOf(const Bytes& content) {
    const TestFolder folder;
    folder.Write("boot.bin", content);
    const std::string error = ErrorOf([&] { ReadBootSector(folder.Path("boot.bin")); });
    const std::string start = folder.Text("boot.bin") + ": ";
    return error.starts_with(start) ? error.substr(start.size()) : error;
}

TEST(BootSector, MustBeExactly512BytesLong) {
    const std::string reason = "a boot sector file must be exactly 512 bytes long";
    Bytes longer = SampleBootSector();
    longer.push_back(0);
    Bytes shorter = SampleBootSector();
    shorter.pop_back();
    EXPECT_EQ(reason, RefusalOf(longer));
    EXPECT_EQ(reason, RefusalOf(shorter));
    EXPECT_EQ(reason, RefusalOf({}));
    EXPECT_EQ("(no error)", RefusalOf(SampleBootSector()));
}

TEST(BootSector, MustEndWithItsSignature) {
    Bytes sector = SampleBootSector();
    sector[511] = 0;
    EXPECT_EQ("is not a boot sector: it does not end with the bytes 55 AA", RefusalOf(sector));
}

TEST(BootSector, MustJumpOverTheDescription) {
    const struct {
        std::uint8_t Jump[3];
        bool IsAccepted;
    } cases[] = {
        {{0xEB, 0x3C, 0x90}, true},  {{0xEB, 0x7F, 0x90}, true},  {{0xE9, 0x3B, 0x00}, true},
        {{0xE9, 0xFA, 0x01}, true},  {{0xEB, 0x3B, 0x90}, false}, {{0xEB, 0xFE, 0x90}, false},
        {{0xEB, 0x3C, 0x0E}, false}, {{0xE9, 0x3A, 0x00}, false}, {{0xE9, 0xFB, 0x01}, false},
        {{0xE9, 0x00, 0xFF}, false}, {{0xFA, 0x33, 0xC0}, false}, {{0x00, 0x00, 0x00}, false},
    };
    for (const auto& sample : cases) {
        Bytes sector = SampleBootSector();
        std::copy(std::begin(sample.Jump), std::end(sample.Jump), sector.begin());
        EXPECT_EQ(sample.IsAccepted ? "(no error)"
                                    : "is not a DOS boot sector: it does not begin with a jump over "
                                      "the disk's description",
                  RefusalOf(sector))
            << +sample.Jump[0] << " " << +sample.Jump[1] << " " << +sample.Jump[2];
    }
}

TEST(BootSector, MustBeAFile) {
    const TestFolder folder;
    EXPECT_EQ(folder.Text("none") + ": this boot sector file does not exist",
              ErrorOf([&] { ReadBootSector(folder.Path("none")); }));
    EXPECT_EQ(folder.Text() + ": is not a boot sector file", ErrorOf([&] { ReadBootSector(folder.Path()); }));
}

TEST(BootSector, KeepsTheJumpTheMakersNameAndTheCode) {
    const Bytes file = SampleBootSector();
    BootSector code{};
    std::copy(file.begin(), file.end(), code.begin());
    const BootSector sector = DescribeDisk(code, *floppy::GeometryOfType("144"), ToVolumeLabel("label"));
    EXPECT_TRUE(std::equal(file.begin(), file.begin() + 0x0B, sector.begin()));
    EXPECT_TRUE(std::equal(file.begin() + 0x3E, file.end(), sector.begin() + 0x3E));
}

TEST(BootSector, DescribesEachFormat) {
    const std::map<std::string, Bytes> formats{
        {"144", {0, 2, 1, 1, 0, 2, 0xE0, 0, 0x40, 0x0B, 0xF0, 9, 0, 0x12, 0, 2, 0}},
        {"288", {0, 2, 2, 1, 0, 2, 0xF0, 0, 0x80, 0x16, 0xF0, 9, 0, 0x24, 0, 2, 0}},
        {"360", {0, 2, 2, 1, 0, 2, 0x70, 0, 0xD0, 0x02, 0xFD, 2, 0, 0x09, 0, 2, 0}},
        {"720", {0, 2, 2, 1, 0, 2, 0x70, 0, 0xA0, 0x05, 0xF9, 3, 0, 0x09, 0, 2, 0}},
        {"1200", {0, 2, 1, 1, 0, 2, 0xE0, 0, 0x60, 0x09, 0xF9, 7, 0, 0x0F, 0, 2, 0}},
        {"1680", {0, 2, 1, 1, 0, 2, 0xE0, 0, 0x20, 0x0D, 0xF0, 10, 0, 0x15, 0, 2, 0}},
    };
    const Bytes rest{0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0x29, 0,   0,   0,   0,   'L', 'A',
                     'B', 'E', 'L', ' ', ' ', ' ', ' ', ' ', ' ', 'F', 'A',  'T', '1', '2', ' ', ' ', ' '};
    for (const floppy::Geometry& geometry : floppy::AllGeometries()) {
        Bytes expected = formats.at(geometry.Type);
        expected.insert(expected.end(), rest.begin(), rest.end());
        const BootSector sector = DescribeDisk({}, geometry, ToVolumeLabel("label"));
        EXPECT_EQ(expected, Bytes(sector.begin() + 0x0B, sector.begin() + 0x3E)) << geometry.Type;
    }
}

}  // namespace
}  // namespace tools::bfi::testing
