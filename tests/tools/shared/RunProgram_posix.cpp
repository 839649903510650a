#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include "tests/tools/shared/RunProgram.h"

extern char** environ;

namespace tools::testing {

ProgramResult RunProgram(const std::vector<std::string>& words) {
    ProgramResult result;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return result;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 2);
    std::vector<std::string> copies = words;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : copies) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = 0;
    const bool isStarted =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    std::array<char, 4096> piece{};
    for (ssize_t count = 0; isStarted && (count = read(ends[0], piece.data(), piece.size())) > 0;)
        result.Output.append(piece.data(), static_cast<std::size_t>(count));
    close(ends[0]);
    int status = 0;
    if (isStarted && waitpid(process, &status, 0) == process && WIFEXITED(status))
        result.ExitCode = WEXITSTATUS(status);
    return result;
}

}  // namespace tools::testing
