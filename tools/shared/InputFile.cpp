#include "tools/shared/InputFile.h"

#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"

namespace tools {

std::size_t InputFile::Read(std::span<std::uint8_t> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const std::size_t count = ReadSome(bytes.subspan(done));
        if (count == 0) break;
        done += count;
    }
    position_ += done;
    return done;
}

void ReadWhole(const std::filesystem::path& file, std::span<std::uint8_t> bytes) {
    InputFile input(file);
    // One byte more than expected is asked for, so that a file that has grown is noticed.
    std::uint8_t surplus = 0;
    if (input.Read(bytes) != bytes.size() || input.Read({&surplus, 1}) != 0)
        throw ToolError(Utf8FromPath(file) + ": changed while it was being read");
}

}  // namespace tools
