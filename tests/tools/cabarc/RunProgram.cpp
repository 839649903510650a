#include "tests/tools/cabarc/RunProgram.h"

#include <cstdlib>

#include "tests/tools/cabarc/TestFolder.h"

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace tools::cabarc::test {

namespace {

std::string TextOf(const std::string& file) {
    const Bytes bytes = ReadBytes(file);
    return {bytes.begin(), bytes.end()};
}

}  // namespace

ProgramResult RunCommand(const std::string& command) {
    const std::string redirected = command + " >stdout.txt 2>stderr.txt";
#ifdef _WIN32
    const int code = std::system(("\"" + redirected + "\"").c_str());  // cmd takes one pair of quotes away
#else
    const int status = std::system(redirected.c_str());
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
    return {code, TextOf("stdout.txt"), TextOf("stderr.txt")};
}

ProgramResult RunCabarc(const std::string& arguments) {
    std::string program = CABARC_PROGRAM;
#ifdef _WIN32
    if (program.front() == '/') program = "Z:" + program;  // cross-built: Wine's drive for the host's files
    for (char& c : program) {
        if (c == '/') c = '\\';
    }
#endif
    return RunCommand("\"" + program + "\" " + arguments);
}

}  // namespace tools::cabarc::test
