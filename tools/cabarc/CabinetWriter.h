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

/// Sets Folder and Offset of every member from the sizes, in the order given, and makes the folder records
/// with `type` as their compression. One folder is best, because its members share one dictionary; another is
/// begun only where a folder would pass its size limit. Members of up to kMaxFolderBytes are expected. Throws
/// ToolError when there are more members or folders than a cabinet can count.
void PlanFolders(CabinetDirectory& directory, std::uint16_t type);

/// Returns the checksum of a CFDATA record: of its payload and of the two size fields before it.
std::uint32_t BlockChecksum(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize);

class CabinetWriter : private BlockSink {
 public:
    /// Leaves the space of the directory free in `output`, which must be empty and outlive the writer.
    /// `directory` comes from PlanFolders; its member names are at most kMaxNameBytes long.
    CabinetWriter(OutputFile& output, CabinetDirectory directory);

    /// Begins the next folder, the first one at the first call, and returns where its data records go until
    /// the next call.
    BlockSink& BeginFolder();

    /// Writes the complete directory. To be called once, after the last folder; the caller commits the
    /// output. Throws std::logic_error when a folder did not get the bytes that its members need.
    void Finish();

 private:
    void PutBlock(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) override;

    OutputFile& output_;
    CabinetDirectory directory_;
    std::size_t begun_ = 0;                   ///< number of folders begun
    std::vector<std::uint64_t> folderBytes_;  ///< uncompressed bytes that each folder got
    std::vector<std::uint8_t> record_;
};

}  // namespace tools::cabarc
