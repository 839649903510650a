#pragma once
// The translation of x86 calls that LZX does before it packs (docs/formats/lzx.md), undone.

#include <stdint.h>

#include "realmode/unpack/FarBytes.h"

namespace realmode::unpack {

/// Undoes the translation of a frame of `count` bytes, which begins at the place `position` of its folder.
/// `size` is the folder's translation size.
void UndoCallTranslation(FarBytes frame, uint32_t count, uint32_t position, uint32_t size);

}  // namespace realmode::unpack
