// A plugin's program for the tests: records in the plugin's folder, which has its own name without the
// extension, that it ran and how it was started.

#include <windows.h>

#include <fstream>
#include <string>

int main() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder = path;
    folder.erase(folder.rfind('.'));
    char current[MAX_PATH] = "";
    ::GetCurrentDirectoryA(MAX_PATH, current);
    STARTUPINFOA startup{};
    ::GetStartupInfoA(&startup);
    const bool hidden = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_HIDE;
    std::ofstream note(folder + "\\RAN.TXT");
    note << ::GetCommandLineA() << "\n" << current << "\n" << (hidden ? "hidden" : "shown") << "\n";
    return 3;  // ignored by the program
}
