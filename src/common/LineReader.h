#pragma once
// Reads a text file line by line. Every reader of a text file in the program goes through it, so that CR LF
// and LF line ends mean the same everywhere.

#include <optional>
#include <string>

#include "src/common/Handle.h"

namespace velbooter {

class LineReader {
 public:
    /// Opens `file`. Raises RuntimeError (53 when it is missing, 76 when its folder is, 70 when it is
    /// locked).
    explicit LineReader(const std::string& file);

    /// Returns the next line without its line end, or nothing after the last. A last line without a line end
    /// counts as a line. Raises RuntimeError when reading fails.
    std::optional<std::string> Next();

 private:
    bool Fill();

    std::string fileName_;
    FileHandle file_;
    std::string buffer_;
    size_t position_ = 0;
};

}  // namespace velbooter
