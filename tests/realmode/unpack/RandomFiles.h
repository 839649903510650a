#pragma once
// Trees of files with valid DOS names.

#include <cstdint>
#include <string>

namespace realmode::unpack::testing {

/// Fills a new folder with files of every kind of data, in folders up to three deep: empty files, small ones
/// and some whose sizes are near those of frames, together about `size` bytes. The same seed gives the same
/// files.
void MakeRandomFiles(const std::string& folder, std::uint32_t seed, std::size_t size);

}  // namespace realmode::unpack::testing
