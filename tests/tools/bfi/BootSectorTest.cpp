#include "tools/bfi/BootSector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    EXPECT_EQ(RefusalOf(longer), reason);
    EXPECT_EQ(RefusalOf(shorter), reason);
    EXPECT_EQ(RefusalOf({}), reason);
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
        EXPECT_EQ(RefusalOf(sector), sample.IsAccepted
                                         ? "(no error)"
                                         : "is not a DOS boot sector: it does not begin with a jump over "
                                           "the disk's description")
            << +sample.Jump[0] << " " << +sample.Jump[1] << " " << +sample.Jump[2];
    }
}

TEST(BootSector, MustBeAFile) {
    const TestFolder folder;
    EXPECT_EQ(ErrorOf([&] { ReadBootSector(folder.Path("none")); }),
              folder.Text("none") + ": this boot sector file does not exist");
    EXPECT_EQ(ErrorOf([&] { ReadBootSector(folder.Path()); }), folder.Text() + ": is not a boot sector file");
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
    const Bytes of144{0x00, 0x02, 0x01, 0x01, 0x00, 0x02, 0xE0, 0x00, 0x40, 0x0B, 0xF0, 0x09, 0x00,
                      0x12, 0x00, 0x02, 0x00, 0,    0,    0,    0,    0,    0,    0,    0,    0,
                      0,    0x29, 0,    0,    0,    0,    'L',  'A',  'B',  'E',  'L',  ' ',  ' ',
                      ' ',  ' ',  ' ',  ' ',  'F',  'A',  'T',  '1',  '2',  ' ',  ' ',  ' '};
    Bytes of288 = of144;
    of288[2] = 2;
    of288[6] = 0xF0;
    of288[8] = 0x80;
    of288[9] = 0x16;
    of288[13] = 0x24;
    const auto described = [](const char* type) {
        const BootSector sector = DescribeDisk({}, *floppy::GeometryOfType(type), ToVolumeLabel("label"));
        return Bytes(sector.begin() + 0x0B, sector.begin() + 0x3E);
    };
    EXPECT_EQ(described("144"), of144);
    EXPECT_EQ(described("288"), of288);
}

}  // namespace
}  // namespace tools::bfi::testing
