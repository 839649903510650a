#pragma once
// Programs that are started one after the other in DOSBox by run.asm, which limits their memory, presses keys
// and records how they end. Drive C: is the folder c of the working folder.

#include <string>
#include <vector>

namespace realmode::unpack::testing {

class DosSession {
 public:
    /// Keys that are pressed while a program runs.
    enum class Keys { None, Break };

    /// What a program has left.
    struct Result {
        int ExitCode = -1;               ///< -1 when it did not end
        std::vector<std::string> Lines;  ///< what it printed, to the screen and as errors
        /// The times and attributes that it gave to files, as run.asm writes them.
        std::vector<std::string> Stamps;
    };

    /// Creates the folder c with UNPACK.EXE in it.
    explicit DosSession(bool hasXms = true);

    /// Gives the PC a drive A: with the image of a 360 KB floppy.
    void InsertFloppy(const std::string& image) { floppy_ = image; }

    /// Queues `command`, a file of C: and its arguments. It gets `kilobytes` of conventional memory, 0 for
    /// all. Returns the index of its result.
    std::size_t Add(const std::string& command, unsigned kilobytes = 0, Keys keys = Keys::None);

    /// Runs all queued commands in one start of the emulator. Throws std::runtime_error when they do not all
    /// end.
    std::vector<Result> Run();

    /// Adds a single command and runs it.
    Result RunOne(const std::string& command, unsigned kilobytes = 0, Keys keys = Keys::None);

 private:
    bool hasXms_;
    std::string floppy_;
    std::vector<std::string> commands_;
};

}  // namespace realmode::unpack::testing
