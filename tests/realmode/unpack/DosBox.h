#pragma once
// An emulated DOS in which the tests start programs: DOSBox, without a window. Its drive C: is the folder c
// of the working folder.

#include <string>
#include <vector>

namespace realmode::unpack::testing {

class DosBox {
 public:
    /// Keys that somebody presses while a program runs.
    enum class Keys { None, Break };

    /// What a program left.
    struct Result {
        int ExitCode = -1;               ///< -1 when it did not end
        std::vector<std::string> Lines;  ///< what it printed, to the screen and as errors
        std::vector<std::string>
            Stamps;  ///< the times and attributes that it gave to files, as run.asm says them
    };

    /// Makes the folder c.
    explicit DosBox(bool hasXms = true);

    /// Makes the image of a floppy of 360 KB drive A:.
    void InsertFloppy(const std::string& image) { floppy_ = image; }

    /// Has `command`, a file of C: and its arguments, started. `kilobytes` of conventional memory are left to
    /// it, 0 for all. Returns the number of its result.
    std::size_t Add(const std::string& command, unsigned kilobytes = 0, Keys keys = Keys::None);

    /// Switches the emulator on for all commands, one after the other. Throws std::runtime_error when it does
    /// not come to its end.
    std::vector<Result> Run();

    /// Does both for a single command.
    Result RunOne(const std::string& command, unsigned kilobytes = 0, Keys keys = Keys::None);

 private:
    bool hasXms_;
    std::string floppy_;
    std::vector<std::string> commands_;
};

}  // namespace realmode::unpack::testing
