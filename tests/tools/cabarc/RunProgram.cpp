#include "tests/tools/cabarc/RunProgram.h"

#include <cstdlib>

#include "tests/support/BuiltFile.h"
#include "tests/tools/cabarc/TestFolder.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/Utf8.h"

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
    const std::u16string quoted = Utf16FromUtf8("\"" + redirected + "\"");  // cmd takes one pair away
    const int code = _wsystem(std::wstring(quoted.begin(), quoted.end()).c_str());
#else
    const int status = std::system(redirected.c_str());
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
    return {code, TextOf("stdout.txt"), TextOf("stderr.txt")};
}

ProgramResult RunCabarc(const std::string& arguments) {
    const std::string program = Utf8FromPath(velbooter::tests::BuiltFile("demo/cabarc.exe", CABARC_PROGRAM));
    return RunCommand("\"" + program + "\" " + arguments);
}

}  // namespace tools::cabarc::test
