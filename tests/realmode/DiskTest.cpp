#include "tests/realmode/DiskTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "tests/realmode/Machine.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {

using floppy::Geometry;
using tools::testing::Bytes;

namespace {

constexpr int kProbeEnded = 99;

}  // namespace

Bytes FileAt(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::map<std::string, unsigned> ReportedValues(const std::string& reportFile) {
    std::map<std::string, unsigned> values;
    std::ifstream report(reportFile);
    for (std::string line; std::getline(report, line);) {
        const std::size_t equals = line.find('=');
        values[line.substr(0, equals)] =
            static_cast<unsigned>(std::stoul(line.substr(equals + 1), nullptr, 16));
    }
    return values;
}

void SetFatEntry(Bytes& image, const Geometry& format, std::uint32_t cluster, std::uint32_t value) {
    for (std::uint32_t copy = 0; copy < 2; ++copy) {
        std::uint8_t* const pair =
            image.data() + (1 + copy * format.SectorsPerFat) * kSector + cluster * 3 / 2;
        const std::uint32_t old = tools::GetU16(pair);
        tools::PutU16(pair, cluster % 2 == 0 ? (old & 0xF000U) | value : (old & 0xFU) | value << 4);
    }
}

void Scatter(Bytes& image, const Geometry& format, std::uint32_t first,
             const std::vector<std::uint32_t>& places) {
    const auto start = [&](std::uint32_t cluster) {
        return image.begin() + static_cast<std::ptrdiff_t>(format.DataSector() * kSector +
                                                           (cluster - 2) * format.ClusterBytes());
    };
    const auto length = static_cast<std::ptrdiff_t>(format.ClusterBytes());
    for (std::uint32_t i = 0; i < places.size(); ++i) {
        std::copy(start(first + i), start(first + i) + length, start(places[i]));
        std::fill(start(first + i), start(first + i) + length, std::uint8_t{0});
        SetFatEntry(image, format, first + i, 0);
    }
    for (std::uint32_t i = 0; i < places.size(); ++i)
        SetFatEntry(
            image, format, places[i],
            i + 1 < places.size() ? places[i + 1] : first + static_cast<std::uint32_t>(places.size()));
}

void DiskTest::BuildDisk(const std::string& label) const {
    Files.MakeFolder("tree");
    tools::bfi::BuildImage({BOOT_SECTOR, label, &Format(), Image(), Files.Text("tree")});
}

std::map<std::string, unsigned> DiskTest::Started(const std::string& floppy,
                                                  const std::vector<std::string>& more) const {
    Machine machine(floppy, Report(), Machine::Display::Mirrored, more);
    EXPECT_EQ(kProbeEnded, machine.WaitForEnd()) << machine.Text();
    return ReportedValues(Report());
}

void DiskTest::ExpectLine(const std::string& text) const {
    Machine machine(Image(), Report());
    EXPECT_TRUE(machine.WaitFor(kPrompt)) << machine.Text();
    EXPECT_THAT(machine.Text(), ::testing::HasSubstr(text));
    EXPECT_TRUE(Files.Read("report").empty()) << "nothing was started";
}

void DiskTest::SwapRootEntries(Bytes& image, std::size_t left, std::size_t right) const {
    const auto root = image.begin() + static_cast<std::ptrdiff_t>(RootStart());
    const auto first = root + static_cast<std::ptrdiff_t>(left * kEntry);
    std::swap_ranges(first, first + kEntry, root + static_cast<std::ptrdiff_t>(right * kEntry));
}

}  // namespace realmode::testing
