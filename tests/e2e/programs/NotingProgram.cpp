// Stands in for the browser: records its command line in a text file with its own name, next to it.

#include <windows.h>

#include <fstream>
#include <string>

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, char* /*commandLine*/, int /*show*/) {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string own = path;
    std::ofstream(own.substr(0, own.rfind('.')) + ".txt") << ::GetCommandLineA();
    return 0;
}
