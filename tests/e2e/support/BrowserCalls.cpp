#include "tests/e2e/support/BrowserCalls.h"

#include <windows.h>

#include <filesystem>

#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {

namespace {

// Wine does not look for it below the user's own key.
constexpr const char* kCommand = "Software\\Classes\\https\\shell\\open\\command";

void SetCommand(const std::string& command) {
    ::RegSetKeyValueA(HKEY_LOCAL_MACHINE, kCommand, nullptr, REG_SZ, command.c_str(),
                      static_cast<DWORD>(command.size() + 1));
}

}  // namespace

BrowserCalls::BrowserCalls(const DemoFolder& folder) : folder_(folder) {
    const std::string browser = folder.OutsidePath("browser.exe");
    CopyTestProgram("e2e_note.exe", browser);
    char former[1024] = "";
    DWORD size = sizeof former;
    ::RegGetValueA(HKEY_LOCAL_MACHINE, kCommand, nullptr, RRF_RT_ANY | RRF_NOEXPAND, nullptr, former, &size);
    former_ = former;
    SetCommand("\"" + browser + "\" \"%1\"");
}

BrowserCalls::~BrowserCalls() {
    SetCommand(former_);
}

std::string BrowserCalls::Next(const ProgramUnderTest& program) const {
    const std::string note = folder_.OutsidePath("browser.txt");
    std::string line;
    const auto isNoted = [&] {
        if (std::filesystem::exists(note)) line = ReadFileAt(note);
        return !line.empty();
    };
    program.WaitUntil(isNoted, "no browser was started");
    std::filesystem::remove(note);
    // The address is the last argument, in double quotes.
    const size_t end = line.rfind('"');
    const size_t begin = line.rfind('"', end - 1) + 1;
    return line.substr(begin, end - begin);
}

}  // namespace velbooter::e2e
