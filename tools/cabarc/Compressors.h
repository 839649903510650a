#pragma once
// The compressor of each method.

#include <memory>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/Method.h"

namespace tools::cabarc {

/// Returns a compressor for one folder; `sink` must outlive it.
std::unique_ptr<FolderCompressor> MakeCompressor(const Method& method, BlockSink& sink);

}  // namespace tools::cabarc
