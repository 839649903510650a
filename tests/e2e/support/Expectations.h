#pragma once
// What many tests expect of a run.

#include <string>
#include <vector>

#include "src/run/ProgramEnd.h"
#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/FloppyImage.h"
#include "tests/e2e/support/ShownMessage.h"

namespace velbooter::e2e {

inline constexpr size_t kSmallImageBytes = 1474560;
/// Bytes of its data area.
inline constexpr size_t kSmallImageSpace = 1457664;
inline constexpr size_t kLargeImageBytes = 2949120;

/// The exit code as the system returns it.
inline unsigned long Number(ExitCode code) {
    return static_cast<unsigned long>(code);
}

/// The message about an error in the command line: an OK button and no icon.
ShownMessage OptionError(const std::string& text, const std::string& title = "Command Line options Error");

/// The question after a copy that failed; `source` is spelled as in the configuration.
ShownMessage CopyQuestion(const std::string& source);

/// The usage text, with which the message about an unknown option ends.
std::string Usage();

/// Expects that a run has left none of its working files and folders.
void ExpectNoWorkingFiles(const DemoFolder& folder);

/// Expects a complete image of `bytes` bytes at `path`, with the label and the three system files that
/// `folder` gives every disk, and returns it. Throws HarnessFailure when it cannot be read as an image.
FloppyImage ExpectImage(const DemoFolder& folder, const std::string& path, size_t bytes);

}  // namespace velbooter::e2e
