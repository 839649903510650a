#pragma once
// Writes the container: the directory records, whose size is known before the data, and the data records as
// the compressors deliver them. The records that depend on the data are filled in at the end.

#include "tools/cabarc/CabinetDirectory.h"
#include "tools/cabarc/FolderCompressor.h"
#include "tools/shared/OutputFile.h"

namespace tools::cabarc {

class CabinetWriter : private BlockSink {
 public:
    /// Writes room for the directory to `output`, which must be empty and outlive the writer. `directory`
    /// comes from PlanFolders; its member names are at most kMaxNameBytes long.
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
