#include "tests/support/BuiltFile.h"

#ifdef _WIN32
#include <windows.h>
#endif

#include <cstdlib>

namespace tools::testing {

namespace fs = std::filesystem;

bool TestsTravel() {
    return std::getenv("VELBOOTER_TESTS_TRAVEL") != nullptr;
}

void CopyOver(const fs::path& source, const fs::path& target) {
    fs::remove(target);
    fs::copy_file(source, target);
}

#ifdef _WIN32
fs::path BuiltFile(const std::string& packed, const std::string& built) {
    wchar_t program[MAX_PATH] = L"";
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    fs::path beside = fs::path(program).parent_path() / packed;
    if (fs::exists(beside) || TestsTravel()) return beside.make_preferred();
    // The tests are cross-built: under Wine the files of the build's machine are on drive Z:.
    fs::path path = built.front() == '/' ? "Z:" + built : built;
    return path.make_preferred();
}
#else
fs::path BuiltFile(const std::string& /*packed*/, const std::string& built) {
    return built;
}
#endif

}  // namespace tools::testing
