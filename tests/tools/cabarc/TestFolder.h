#pragma once
// A folder of its own for each test, and plain ways to put files into it and to look at them.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tools/shared/DosTime.h"

namespace tools::cabarc::test {

using Bytes = std::vector<std::uint8_t>;

/// Returns the bytes of `text`.
Bytes BytesOf(const std::string& text);

/// Returns `size` bytes that no method compresses, the same for the same seed.
Bytes NoiseOf(std::size_t size, std::uint32_t seed = 1);

/// Returns `size` bytes of words and numbers, which compress well, the same for the same seed.
Bytes ProseOf(std::size_t size, std::uint32_t seed = 1);

/// Writes a file (name in UTF-8, either slash) with its missing folders; reads one, which must exist.
void WriteBytes(const std::string& file, const Bytes& contents);
Bytes ReadBytes(const std::string& file);

/// Sets the local modification time of a file, in calendar units.
void SetTime(const std::string& file, int year, int month, int day, int hour, int minute, int second);

/// Returns every file below `folder` with its contents; names are relative, with "/".
std::map<std::string, Bytes> TreeOf(const std::string& folder);

/// Makes an empty folder and the working folder of it for the length of a test; both are gone after it.
class InTestFolder : public ::testing::Test {
 protected:
    InTestFolder();
    ~InTestFolder() override;
    InTestFolder(const InTestFolder&) = delete;
    InTestFolder& operator=(const InTestFolder&) = delete;

    std::filesystem::path Folder;

 private:
    std::filesystem::path before_;
};

}  // namespace tools::cabarc::test
