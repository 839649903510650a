#pragma once
// An emulated DOS in which the tests start programs: DOSBox, without a window. Its drive C: is the folder c
// of the working folder.

#include <string>
#include <vector>

namespace realmode::unpack::testing {

class DosBox {
 public:
    /// Keys that are pressed while a program runs.
    enum class Keys { None, Break };

    /// What a program has left.
    struct Result {
        int ExitCode = -1;               ///< -1 when it did not end
        std::vector<std::string> Lines;  ///< what it printed, to the screen and as errors
        std::vector<std::string>
            Stamps;  ///< the times and attributes that it gave to files, as run.asm says them
    };

    /// Creates the folder c.
    explicit DosBox(bool hasXms = true);

    /// Inserts the image of a 360 KB floppy as drive A:.
    void InsertFloppy(const std::string& image) { floppy_ = image; }

    /// Adds a command, a file of C: and its arguments. It gets `kilobytes` KB of conventional memory, 0 for
    /// all. Returns the 0-based number of its result.
    std::size_t Add(const std::string& command, unsigned kilobytes = 0, Keys keys = Keys::None);

    /// Runs all commands one after another in one emulator. Throws std::runtime_error when that does not
    /// end.
    std::vector<Result> Run();

    /// Adds and runs a single command.
    Result RunOne(const std::string& command, unsigned kilobytes = 0, Keys keys = Keys::None);

 private:
    bool hasXms_;
    std::string floppy_;
    std::vector<std::string> commands_;
};

}  // namespace realmode::unpack::testing
