#include "tests/realmode/Machine.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <stdexcept>

extern char** environ;

namespace realmode::testing {
namespace {

constexpr double kLimitSeconds = 20;

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

// In QEMU's lists of options a comma is written twice.
std::string Escaped(const std::string& path) {
    std::string escaped;
    for (const char letter : path) escaped += letter == ',' ? std::string(",,") : std::string(1, letter);
    return escaped;
}

// QEMU chooses the drive by the image, for 1.68 MB that for 1.44 MB. To its firmware every track there has 18
// sectors, and a read may not begin after them. A drive for 2.88 MB, which reads the disk as well, has 36.
std::string DriveFor(const std::string& image) {
    constexpr std::uintmax_t k168 = std::uintmax_t{1680} * 1024;
    return std::filesystem::file_size(image) == k168 ? "floppy,drive=disk,drive-type=288"
                                                     : "floppy,drive=disk";
}

}  // namespace

Machine::Machine(const std::string& image, const std::string& reportFile, Display display,
                 const std::vector<std::string>& more) {
    std::vector<std::string> words{
        "qemu-system-i386", "-no-reboot", "-net", "none", "-m", "16", "-boot", "a"};
    if (display == Display::Mirrored)
        words.insert(words.end(), {"-nographic"});
    else
        words.insert(words.end(), {"-display", "none", "-serial", "stdio"});
    words.insert(
        words.end(),
        {"-monitor", "none", "-drive", "if=none,id=disk,format=raw,readonly=on,file=" + Escaped(image),
         "-device", DriveFor(image), "-chardev", "file,id=report,path=" + Escaped(reportFile), "-device",
         "isa-debugcon,iobase=0xe9,chardev=report", "-device", "isa-debug-exit,iobase=0xf4,iosize=4"});
    if (display == Display::Mirrored) words.insert(words.end(), {"-serial", "stdio"});
    words.insert(words.end(), more.begin(), more.end());
    int toMachine[2];
    int fromMachine[2];
    if (pipe2(toMachine, O_CLOEXEC) != 0 || pipe2(fromMachine, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe for the machine");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, toMachine[0], 0);
    posix_spawn_file_actions_adddup2(&actions, fromMachine[1], 1);
    posix_spawn_file_actions_adddup2(&actions, fromMachine[1], 2);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int error = posix_spawnp(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(toMachine[0]);
    close(fromMachine[1]);
    input_ = toMachine[1];
    output_ = fromMachine[0];
    if (error != 0) throw std::runtime_error("qemu-system-i386 does not start");
}

Machine::~Machine() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(input_);
    close(output_);
}

// Returns false when nothing has arrived in time or nothing can arrive any more.
bool Machine::ReadMore(double secondsLeft) {
    pollfd waiting{output_, POLLIN, 0};
    if (secondsLeft <= 0 || poll(&waiting, 1, static_cast<int>(secondsLeft * 1000) + 1) <= 0) return false;
    std::array<char, 4096> piece{};
    const ssize_t count = read(output_, piece.data(), piece.size());
    if (count <= 0) return false;
    text_.append(piece.data(), static_cast<std::size_t>(count));
    return true;
}

bool Machine::WaitFor(const std::string& text, int times) {
    const double end = Now() + kLimitSeconds;
    while (Count(text_, text) < times)
        if (!ReadMore(end - Now())) return false;
    return true;
}

int Machine::WaitForEnd() {
    const double end = Now() + kLimitSeconds;
    while (ReadMore(end - Now())) {
    }
    if (Now() >= end) return -1;
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void Machine::Press(char key) {
    if (write(input_, &key, 1) != 1) throw std::runtime_error("the machine takes no key");
}

}  // namespace realmode::testing
