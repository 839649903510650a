#pragma once
// Writes the container: which member goes into which folder, the directory records, whose size is known
// before the data, and the data records as the compressors deliver them. The records that depend on the data
// are filled in at the end.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/CabinetDirectory.h"
#include "tools/cabarc/FolderCompressor.h"
#include "tools/shared/OutputFile.h"

namespace tools::cabarc {

/// Sets Folder and Offset of every member from the sizes, in the order given, and replaces the folder
/// records by new ones with `type` (MethodCode) as their compression. One folder is best, because its
/// members share one dictionary; another is begun only where a folder would exceed its size limit. REQUIRES:
/// no member is larger than kMaxFolderBytes. Throws ToolError when there are more members or folders than a
/// cabinet can count.
void PlanFolders(CabinetDirectory& directory, std::uint16_t type);

/// Returns the checksum of a data record (CFDATA): the exclusive-or of its payload and of the two size
/// fields before it, taken as 32-bit numbers. docs/formats/cabinet.md gives the rule for the last 1 to 3
/// bytes.
std::uint32_t RecordChecksum(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize);

/// Writes one cabinet from its start to its end: the constructor, BeginFolder for every folder in order, and
/// Finish. What has been written so far is never read again, so the output may be larger than memory.
class CabinetWriter : private RecordSink {
 public:
    /// Leaves the space of the directory free in `output`, which must be empty and outlive the writer.
    /// `directory` comes from PlanFolders; its member names have at most kMaxNameBytes bytes. Throws what
    /// `output` throws, as the others do.
    CabinetWriter(OutputFile& output, CabinetDirectory directory);

    /// Begins the next folder, the first one at the first call, and returns where its data records go until
    /// the next call. A record that would make the cabinet or the folder exceed its limit throws ToolError.
    RecordSink& BeginFolder();

    /// Writes the complete directory. To be called once, after the last folder; the caller commits the
    /// output. Throws std::logic_error when a folder did not get the bytes that its members need.
    void Finish();

 private:
    void PutRecord(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) override;

    OutputFile& output_;
    CabinetDirectory directory_;
    std::size_t begun_ = 0;                   ///< number of folders begun
    std::vector<std::uint64_t> folderBytes_;  ///< uncompressed bytes that each folder got
    std::vector<std::uint8_t> record_;
};

}  // namespace tools::cabarc
