#include "realmode/unpack/FolderReader.h"

#include "realmode/unpack/CallTranslation.h"

namespace realmode::unpack {

uint32_t FolderReader::WindowFrames(const FolderRecord& folder) {
    uint32_t frames = 0;
    if (folder.Method == FolderRecord::Packing::MsZip) frames = MsZipDecoder::kWindowFrames;
    if (folder.Method == FolderRecord::Packing::Lzx) frames = (1U << folder.WindowBits) / kFrameBytes;
    return frames < folder.Records ? frames : folder.Records;
}

Fault FolderReader::Allocate(uint32_t windowFrames) {
    if (!memory_.Allocate(CabinetReader::kDataBytes, data_)) return Fault::NoMemory;
    return window_.Allocate(windowFrames);
}

void FolderReader::Begin(const FolderRecord& folder) {
    folder_ = folder;
    start_ = end_ = 0;
    const uint32_t windowFrames = WindowFrames(folder);
    if (folder.Method == FolderRecord::Packing::Lzx) {
        window_.BeginFolder(windowFrames, LzxDecoder::MaxDistance(folder.WindowBits));
        lzx_.BeginFolder(folder.WindowBits);
    } else {
        window_.BeginFolder(windowFrames, MsZipDecoder::kMaxDistance);
    }
}

Fault FolderReader::NextFrame() {
    if (folder_.Records == 0) return Fault::BadDirectory;
    uint32_t packed = 0;
    uint32_t unpacked = 0;
    Fault fault = cabinet_.ReadData(folder_.DataAt, data_, packed, unpacked);
    if (fault != Fault::None) return fault;
    --folder_.Records;
    // Only the last frame may be shorter.
    if (unpacked != kFrameBytes && folder_.Records > 0) return Fault::BadRecord;
    if (end_ > 0 && folder_.Method != FolderRecord::Packing::Stored) fault = window_.NextFrame();
    start_ = end_;
    end_ += unpacked;
    return fault != Fault::None ? fault : Decode(packed, unpacked);
}

Fault FolderReader::Decode(uint32_t packed, uint32_t unpacked) {
    frame_ = data_;
    if (folder_.Method == FolderRecord::Packing::Stored)
        return packed == unpacked ? Fault::None : Fault::BadRecord;
    if (folder_.Method == FolderRecord::Packing::MsZip) {
        frame_ = window_.Frame();
        return msZip_.DecodeFrame(data_, packed, unpacked);
    }
    const Fault fault = lzx_.DecodeFrame(data_, packed, unpacked);
    if (lzx_.TranslationSize() == 0) {
        frame_ = window_.Frame();
    } else if (fault == Fault::None) {
        // Matches refer to translated bytes, so the window keeps them.
        FarBytes::Copy(data_, 0, window_.Frame(), 0, unpacked);
        UndoCallTranslation(data_, unpacked, start_, lzx_.TranslationSize());
    }
    return fault;
}

}  // namespace realmode::unpack
