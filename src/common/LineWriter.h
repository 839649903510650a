#pragma once
// Writes a text file line by line, each line ended by CR LF.

#include <string>

#include "src/common/Handle.h"

namespace velbooter {

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
/// Raises RuntimeError when a file cannot take it; the files before that one have it then.
void WriteToFile(const std::string& textLine, LineWriter& file1, LineWriter* file2 = nullptr,
                 LineWriter* file3 = nullptr);

}  // namespace velbooter
