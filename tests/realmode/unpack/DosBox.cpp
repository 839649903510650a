#include "tests/realmode/unpack/DosBox.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/realmode/unpack/Shell.h"

namespace realmode::unpack::testing {

namespace {

std::string LogOf(std::size_t number) {
    return std::to_string(number) + ".LOG";
}

DosBox::Result ReadLog(const std::string& name) {
    DosBox::Result result;
    std::ifstream log(name, std::ios::binary);
    for (std::string line; std::getline(log, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (line.starts_with("exit "))
            result.ExitCode = std::stoi(line.substr(5), nullptr, 16);
        else if (line.starts_with("time ") || line.starts_with("attributes "))
            result.Stamps.push_back(line);
        else
            result.Lines.push_back(line);
    }
    return result;
}

}  // namespace

DosBox::DosBox(bool hasXms) : hasXms_(hasXms) {
    std::filesystem::create_directory("c");
    std::filesystem::copy_file(UNPACK_PROGRAM, "c/UNPACK.EXE");
    std::filesystem::copy_file(RUN_PROGRAM, "c/RUN.COM");
}

std::size_t DosBox::Add(const std::string& command, unsigned kilobytes, Keys keys) {
    commands_.push_back("C:\\RUN.COM C:\\" + LogOf(commands_.size()) + " " + std::to_string(kilobytes) +
                        (keys == Keys::Break ? " C " : " - ") + command);
    return commands_.size() - 1;
}

std::vector<DosBox::Result> DosBox::Run() {
    std::ofstream("dosbox.conf")
        << "[sdl]\noutput=surface\n[dosbox]\nmemsize=4\n"
           "[cpu]\ncore=normal\ncputype=386\ncycles=max\n"
           "[mixer]\nnosound=true\n[midi]\nmididevice=none\n[dos]\nems=false\numb=false\nxms="
        << (hasXms_ ? "true" : "false") << "\n";
    std::ofstream batch("c/RUN.BAT");
    batch << "@echo off\r\n";
    for (const std::string& command : commands_) batch << command << "\r\n";
    batch << "echo done>C:\\DONE\r\n";
    batch.close();
    std::string command =
        "HOME=\"$PWD\" SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy timeout 300 "
        "dosbox -conf dosbox.conf -noconsole -c 'mount c c' ";
    if (!floppy_.empty()) command += "-c 'imgmount a " + floppy_ + " -t floppy' ";
    const auto emulator = RunShell(command + "-c c: -c 'call RUN.BAT' -c exit");
    if (!std::filesystem::exists("c/DONE"))
        throw std::runtime_error("DOSBox does not come to its end: " + emulator.Output + emulator.Errors);
    std::vector<Result> results;
    for (std::size_t i = 0; i < commands_.size(); ++i) results.push_back(ReadLog("c/" + LogOf(i)));
    return results;
}

DosBox::Result DosBox::RunOne(const std::string& command, unsigned kilobytes, Keys keys) {
    Add(command, kilobytes, keys);
    return Run().front();
}

}  // namespace realmode::unpack::testing
