#pragma once
// Chooses the compressor of a method. Only this pair of files knows all of them; the packer knows
// FolderCompressor.

#include <memory>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/Method.h"

namespace tools::cabarc {

/// Returns a compressor for one folder, which hands its records to `sink`; that must outlive it. Throws
/// std::invalid_argument for an LZX window that the format does not have; ParseMethod never returns one.
std::unique_ptr<FolderCompressor> MakeCompressor(const Method& method, BlockSink& sink);

}  // namespace tools::cabarc
