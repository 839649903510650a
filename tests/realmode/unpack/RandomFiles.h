#pragma once
// Trees of files with names that DOS can have.

#include <cstdint>
#include <string>

namespace realmode::unpack::testing {

/// Fills a new folder with files of every kind of data, in folders up to three deep: empty ones, small ones
/// and some of sizes around those of frames, of about `size` bytes together. The same for the same seed.
void MakeRandomFiles(const std::string& folder, std::uint32_t seed, std::size_t size);

}  // namespace realmode::unpack::testing
