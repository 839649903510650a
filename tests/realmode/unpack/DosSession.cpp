#include "tests/realmode/unpack/DosSession.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/realmode/DosBox.h"

namespace realmode::unpack::testing {

namespace {

std::string LogOf(std::size_t number) {
    return std::to_string(number) + ".LOG";
}

DosSession::Result ReadLog(const std::string& name) {
    DosSession::Result result;
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

DosSession::DosSession(bool hasXms) : hasXms_(hasXms) {
    std::filesystem::create_directory("c");
    std::filesystem::copy_file(UNPACK_PROGRAM, "c/UNPACK.EXE");
    std::filesystem::copy_file(RUN_PROGRAM, "c/RUN.COM");
}

std::size_t DosSession::Add(const std::string& command, unsigned kilobytes, Keys keys) {
    commands_.push_back("C:\\RUN.COM C:\\" + LogOf(commands_.size()) + " " + std::to_string(kilobytes) +
                        (keys == Keys::Break ? " C " : " - ") + command);
    return commands_.size() - 1;
}

std::vector<DosSession::Result> DosSession::Run() {
    std::ofstream batch("c/RUN.BAT");
    batch << "@echo off\r\n";
    for (const std::string& command : commands_) batch << command << "\r\n";
    batch << "echo done>C:\\DONE\r\n";
    batch.close();
    const std::string settings =
        "[dosbox]\nmemsize=4\n[cpu]\ncore=normal\ncputype=386\ncycles=max\n[dos]\nems=false\numb="
        "false\nxms=" +
        std::string(hasXms_ ? "true\n" : "false\n");
    std::vector<std::string> commands;
    if (!floppy_.empty()) commands.push_back("imgmount a " + floppy_ + " -t floppy");
    commands.emplace_back("call RUN.BAT");
    realmode::testing::RunInDosBox(".", commands, settings, 300);
    if (!std::filesystem::exists("c/DONE")) throw std::runtime_error("DOSBox ended before the commands did");
    std::vector<Result> results;
    for (std::size_t i = 0; i < commands_.size(); ++i) results.push_back(ReadLog("c/" + LogOf(i)));
    return results;
}

DosSession::Result DosSession::RunOne(const std::string& command, unsigned kilobytes, Keys keys) {
    Add(command, kilobytes, keys);
    return Run().front();
}

}  // namespace realmode::unpack::testing
