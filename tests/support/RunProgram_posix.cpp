#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <future>
#include <stdexcept>

#include "tests/support/RunProgram.h"
#include "tools/shared/Handle.h"

extern char** environ;

namespace tools::testing {

namespace {

// The two ends of a pipe, which no program inherits.
struct Pipe {
    FileHandle Read;
    FileHandle Write;

    Pipe() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("there is no pipe for the test");
        Read.Reset(ends[0]);
        Write.Reset(ends[1]);
    }

    std::string ReadToTheEnd() const {
        std::string text;
        std::array<char, 4096> piece{};
        for (ssize_t count = 0; (count = read(Read.Get(), piece.data(), piece.size())) > 0;)
            text.append(piece.data(), static_cast<std::size_t>(count));
        return text;
    }
};

// Starts a program with the given standard streams. Returns its process id, or -1.
pid_t Start(const std::vector<std::string>& words, int output, int errors) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, 1);
    posix_spawn_file_actions_adddup2(&actions, errors, 2);
    std::vector<std::string> copies = words;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : copies) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = -1;
    if (posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) process = -1;
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& words) {
    ProgramResult result;
    Pipe output;
    Pipe errors;
    const pid_t process = Start(words, output.Write.Get(), errors.Write.Get());
    output.Write.Reset();
    errors.Write.Reset();
    if (process < 0) return result;
    // Both are read at once, because a program waits when nobody reads what it writes.
    auto said = std::async(std::launch::async, [&] { return errors.ReadToTheEnd(); });
    result.Output = output.ReadToTheEnd();
    result.Errors = said.get();
    int status = 0;
    if (waitpid(process, &status, 0) == process && WIFEXITED(status)) result.ExitCode = WEXITSTATUS(status);
    return result;
}

}  // namespace tools::testing
