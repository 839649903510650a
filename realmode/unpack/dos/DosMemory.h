#pragma once
// Conventional memory from DOS, and a store in XMS.

#include "realmode/unpack/Machine.h"

namespace realmode::unpack {

class DosMemory final : public Memory {
 public:
    bool Allocate(uint32_t bytes, FarBytes& memory) override;
    bool AllocateStore(uint32_t frames) override;
    bool PutInStore(uint32_t frame, FarBytes from) override;
    const uint8_t* GetFromStore(uint32_t frame, uint32_t at, uint32_t count) override;

    /// Gives the XMS back, which DOS does not do at the end of a program.
    void Free();

 private:
    uint16_t handle_ = 0;
    bool hasStore_ = false;
    uint8_t match_[kMaxMatchBytes + 2];
};

}  // namespace realmode::unpack
