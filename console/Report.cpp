#include "console/Report.h"

#include "src/run/ProgramEnd.h"

namespace velbooter {

namespace {

std::string Line(const std::string& text) {
    return "velbooter: " + text + "\n";
}

const char* Outcome(std::uint32_t code) {
    switch (static_cast<ExitCode>(code)) {
        case ExitCode::Built:
            return "the build reached its end";
        case ExitCode::Canceled:
            return "a step of the build failed or was cancelled, and nothing was built";
        case ExitCode::Refused:
            return "the command line was rejected, and nothing was built";
        case ExitCode::UnknownDisk:
            return "files\\disklist.ini has no disk of this name, and nothing was built";
        case ExitCode::DosFilesMissing:
            return "the DOS files are missing, and nothing was built";
        case ExitCode::AlreadyRunning:
            return "the program is already running from this folder, and nothing was built";
        case ExitCode::InternalError:
            return "the build stopped because of an unexpected error";
        case ExitCode::NoImage:
            return "the build reached its end, but the image tool left no new image";
    }
    return "velbooter.exe was terminated";
}

}  // namespace

std::string OutcomeLine(std::uint32_t code) {
    return Line(std::string(Outcome(code)) + " (exit code " + std::to_string(code) + ").");
}

std::string BuiltLine(const std::string& image, const DiskUse& use) {
    constexpr std::uint64_t kKilobyte = 1024;
    return Line(image + " is built; " + std::to_string(use.Used / kKilobyte) + " of its " +
                std::to_string(use.Size / kKilobyte) + " KB are used (exit code 0).");
}

std::string MissingLine(const std::string& program) {
    return Line(program + " is missing; it must be in the same folder as velbooter.com.");
}

std::string NotStartedLine(const std::string& program, std::uint32_t systemError) {
    return Line(program + " cannot be started or waited for (system error " + std::to_string(systemError) +
                ").");
}

}  // namespace velbooter
