// A stand-in for the external programs. Copied under their names, it records how it was started in the log
// file next to itself (its own name with .log): the exact command line, the window state and the working
// folder, a line each. Then it carries out the instruction file next to itself (.do), one instruction on
// each line, its words separated by "|":
//   create|FILE        creates FILE, relative to the working folder, with the text "made by " + its own name
//   exit|NUMBER        ends with that exit code
//   wait|MILLISECONDS  waits, without a message queue
//   await|HANDLE       waits until the inherited event is set, without a message queue
//   idle|HANDLE        waits for it and for input, with a message queue
//   signal|HANDLE      sets the inherited event
//   tree|FILE          lists the files below its last argument into FILE, sorted, with their sizes
//   image              acts as an image tool: creates FILE of '... -f="FILE" FOLDER' and its folders
//   extract            acts as an extractor: creates FOLDER\NAME of "... CABINET NAME /l FOLDER\"
//   expand             acts as an expander: creates FOLDER\NAME of "... -f:NAME "FOLDER\""
#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string OwnPathWithoutExtension() {
    char buffer[MAX_PATH];
    const std::string path(buffer, GetModuleFileNameA(nullptr, buffer, MAX_PATH));
    return path.substr(0, path.rfind('.'));
}

std::string WindowState() {
    STARTUPINFOA start{};
    start.cb = sizeof(start);
    GetStartupInfoA(&start);
    if ((start.dwFlags & STARTF_USESHOWWINDOW) == 0) return "shown";
    if (start.wShowWindow == SW_HIDE) return "hidden";
    return "state " + std::to_string(start.wShowWindow);
}

std::vector<std::string> Words(const std::string& line) {
    std::vector<std::string> words;
    std::istringstream parts(line);
    std::string word;
    while (std::getline(parts, word, '|')) words.push_back(word);
    return words;
}

void MakeFile(const std::string& file, const std::string& maker) {
    std::ofstream(file, std::ios::binary) << "made by " << maker;
}

void MakeImage(const std::filesystem::path& image, const std::string& maker) {
    std::error_code none;
    std::filesystem::create_directories(image.parent_path(), none);
    MakeFile(image.string(), maker);
}

/// Returns the text between `before` and the next `after` in `text`.
std::string Between(const std::string& text, const std::string& before, const std::string& after) {
    const size_t start = text.find(before);
    if (start == std::string::npos) return "";
    const size_t from = start + before.size();
    const size_t end = text.find(after, from);
    return text.substr(from, end == std::string::npos ? end : end - from);
}

void ListTree(const std::string& folder, const std::string& file) {
    std::set<std::string> lines;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        lines.insert(entry.path().string().substr(folder.size() + 1) + " " +
                     std::to_string(entry.file_size()));
    }
    std::ofstream list(file, std::ios::binary);
    for (const std::string& line : lines) list << line << '\n';
}

void WaitForInput(HANDLE event) {
    MSG message;
    PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
    while (MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        }
    }
}

}  // namespace

int main() {
    const std::string own = OwnPathWithoutExtension();
    const std::string commandLine = GetCommandLineA();
    char folder[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, folder);
    std::ofstream(own + ".log", std::ios::binary | std::ios::app) << commandLine << '\n'
                                                                  << WindowState() << '\n'
                                                                  << folder << '\n';

    std::ifstream instructions(own + ".do", std::ios::binary);
    std::string line;
    while (std::getline(instructions, line)) {
        const std::vector<std::string> words = Words(line);
        if (words.empty()) continue;
        const std::string& verb = words[0];
        const std::string value = words.size() > 1 ? words[1] : "";
        const unsigned long number = std::strtoul(value.c_str(), nullptr, 10);
        const auto event = reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(number));
        if (verb == "create") MakeFile(value, own.substr(own.rfind('\\') + 1));
        if (verb == "exit") return static_cast<int>(number);
        if (verb == "wait") Sleep(number);
        if (verb == "await") WaitForSingleObject(event, INFINITE);
        if (verb == "idle") WaitForInput(event);
        if (verb == "signal") SetEvent(event);
        if (verb == "tree") ListTree(commandLine.substr(commandLine.rfind(' ') + 1), value);
        if (verb == "image") MakeImage(Between(commandLine, "-f=\"", "\""), own.substr(own.rfind('\\') + 1));
        if (verb == "extract") {
            const std::string member = Between(commandLine, ".CAB ", " ");
            MakeFile(Between(commandLine, "/l ", " ") + member, member);
        }
        if (verb == "expand") {
            const std::string member = Between(commandLine, "-f:", " ");
            MakeFile(Between(commandLine, "\"", "\"") + member, member);
        }
    }
    return 0;
}
