#pragma once
// A floppy image that is built by the image tool, changed by a test, and started.

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/floppy/EveryFormat.h"
#include "tests/support/TestFolder.h"
#include "tools/bfi/ImageBuilder.h"

namespace realmode::testing {

constexpr std::size_t kSector = floppy::kSectorBytes;
constexpr std::size_t kEntry = floppy::kDirectoryEntryBytes;

/// The text with which the boot sector and IO.SYS wait after an error.
inline constexpr char kPrompt[] = "Change disk, press a key";

/// Returns the contents of a file; a missing one fails the test.
tools::testing::Bytes FileAt(const std::string& path);

/// Returns the values of the lines "NAME=HEX" that a probe has reported.
std::map<std::string, unsigned> ReportedValues(const std::string& reportFile);

/// Writes the entry into both copies of the FAT.
void SetFatEntry(tools::testing::Bytes& image, const floppy::Geometry& format, std::uint32_t cluster,
                 std::uint32_t value);

/// Moves the first clusters of the file that starts in cluster `first` to `places`; the others keep their
/// places.
void Scatter(tools::testing::Bytes& image, const floppy::Geometry& format, std::uint32_t first,
             const std::vector<std::uint32_t>& places);

/// The parameter is the type of the disk. The disk contains what the test puts into the folder "tree" of
/// Files.
class DiskTest : public ::testing::TestWithParam<std::string> {
 protected:
    const floppy::Geometry& Format() const { return *floppy::GeometryOfType(GetParam()); }
    std::string Image() const { return Files.Text("disk.img"); }
    std::string Report() const { return Files.Text("report"); }

    void BuildDisk(const std::string& label = "Velstart") const;

    /// Starts the disk, on which a probe runs, and returns what the probe reports.
    std::map<std::string, unsigned> Started() const { return Started(Image(), {}); }
    /// The same on a PC with `floppy` in its drive and with `more`, further words for QEMU.
    std::map<std::string, unsigned> Started(const std::string& floppy,
                                            const std::vector<std::string>& more) const;

    /// Starts the disk and expects it to show `text` and then wait with kPrompt; no probe may run.
    void ExpectLine(const std::string& text) const;

    std::size_t RootStart() const { return Format().RootSector() * kSector; }
    void SwapRootEntries(tools::testing::Bytes& image, std::size_t left, std::size_t right) const;

    const tools::testing::TestFolder Files;
};

}  // namespace realmode::testing
