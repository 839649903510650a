// Stands in for the two tools that unpack a setup CD, as EXTRACT.EXE of the CD and as expand.exe of Windows.
// It takes their command lines and unpacks with cabarc.exe, which is next to it or one folder above.
//   extract /y /a CABINET NAME /l FOLDER    CABINET and those that follow it by their numbers, until one has
//                                           the member
//   expand *.cab -f:NAME "FOLDER"           every cabinet of the current folder

#include <windows.h>

#include <string>
#include <vector>

namespace {

bool Exists(const std::string& path) {
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('\\'));
}

std::string CabarcPath() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string folder = FolderOf(path);
    const std::string beside = folder + "\\cabarc.exe";
    return Exists(beside) ? beside : FolderOf(folder) + "\\cabarc.exe";
}

// The words after the program's own name. Double quotes hold a word together and are dropped; a backslash
// before one is a backslash.
std::vector<std::string> Words() {
    std::vector<std::string> words;
    std::string word;
    bool quoted = false;
    for (const char character : std::string(::GetCommandLineA()) + " ") {
        if (character == '"') {
            quoted = !quoted;
        } else if (character == ' ' && !quoted) {
            if (!word.empty()) words.push_back(word);
            word.clear();
        } else {
            word += character;
        }
    }
    words.erase(words.begin());
    return words;
}

void Unpack(const std::string& cabinet, const std::string& member, const std::string& folder) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::string line = "\"" + CabarcPath() + "\" -o x \"" + cabinet + "\" " + member + " " + folder;
    if (::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                         &startup, &process) == 0) {
        return;
    }
    ::WaitForSingleObject(process.hProcess, INFINITE);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

int Extract(const std::vector<std::string>& words) {
    if (words.size() != 6 || words[0] != "/y" || words[1] != "/a" || words[4] != "/l") return 1;
    std::string cabinet = words[2];
    const size_t number = cabinet.rfind('.') - 1;
    for (; Exists(cabinet) && !Exists(words[5] + words[3]); ++cabinet[number])
        Unpack(cabinet, words[3], words[5]);
    return Exists(words[5] + words[3]) ? 0 : 1;
}

int Expand(const std::vector<std::string>& words) {
    const std::string option = "-f:";
    if (words.size() != 3 || words[1].rfind(option, 0) != 0) return 1;
    const std::string folder = words[2].back() == '\\' ? words[2] : words[2] + "\\";
    WIN32_FIND_DATAA found{};
    const HANDLE search = ::FindFirstFileA(words[0].c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return 1;
    do {
        Unpack(found.cFileName, words[1].substr(option.size()), folder);
    } while (::FindNextFileA(search, &found) != 0);
    ::FindClose(search);
    return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, char* /*commandLine*/, int /*show*/) {
    const std::vector<std::string> words = Words();
    return !words.empty() && words.front() == "/y" ? Extract(words) : Expand(words);
}
