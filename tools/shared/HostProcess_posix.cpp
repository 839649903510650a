#include "tools/shared/HostProcess.h"

#include <algorithm>
#include <cstdio>

namespace tools {

std::vector<std::string> Arguments(int argc, char** argv) {
    return {argv + std::min(argc, 1), argv + argc};
}

void UseSystemLibrariesOnly() {}

void Print(Stream stream, const std::string& text) {
    std::FILE* const file = stream == Stream::Output ? stdout : stderr;
    std::fwrite(text.data(), 1, text.size(), file);
    std::fflush(file);
}

}  // namespace tools
