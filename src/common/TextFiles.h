#pragma once
// Text files, line by line. All text files are read through LineReader, so that CR LF and LF mean the same
// everywhere. Lines are written with CR LF.

#include <cstddef>
#include <optional>
#include <string>

#include "src/common/Handle.h"

namespace velbooter {

/// Reads one file from its start to its end, in pieces of 32 KiB, so that its size does not matter. Other
/// programs may write or delete the file meanwhile.
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

/// Writes one file from its start to its end. Nothing is buffered here: each line goes to the system at
/// once.
class LineWriter {
 public:
    /// Creates `file`, or empties an existing one. Raises RuntimeError when that fails (75 when it is
    /// read-only, 76 when its folder is missing).
    explicit LineWriter(const std::string& file);

    /// Writes `line` and its line end. Raises RuntimeError (61 when the disk is full).
    void Write(const std::string& line);

 private:
    std::string fileName_;
    FileHandle file_;
};

/// Writes `textLine` as one line to `file1`, and the same line to `file2` and `file3` when they are given.
/// Raises RuntimeError when a write fails; the files before that one already have the line.
void WriteToFile(const std::string& textLine, LineWriter& file1, LineWriter* file2 = nullptr,
                 LineWriter* file3 = nullptr);

}  // namespace velbooter
