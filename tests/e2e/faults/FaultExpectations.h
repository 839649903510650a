#pragma once
// What the tests of faults expect: an image is the old one or a whole new one, whatever happens, and the next
// run works.

#include <string>

#include "tests/e2e/support/ApplicationFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ShownMessage.h"

namespace velbooter::e2e {

inline constexpr const char* kOldImage = "an old image";

/// The target of the runs below, as the command line names it.
inline constexpr const char* kTarget = "out\\disk.img";

/// The arguments that build it.
inline const std::string kBuild = std::string(" custom ") + kTarget;

/// The lines of a small disk with a module, which takes the archiver to build.
std::vector<std::string> DiskWithAModule();

/// Puts an old image in the place of the target.
void PutOldImage(const ApplicationFolder& folder);

/// Expects the old image as it was, and nothing beside it.
void ExpectOldImage(const ApplicationFolder& folder);

/// Runs a build of the custom disk that shows nothing and leaves no new image.
void ExpectRunWithoutImage(const ApplicationFolder& folder);

/// Runs a build of the custom disk that works.
void ExpectRunWorks(const ApplicationFolder& folder);

/// The message after an archiver that has made no cabinet.
ShownMessage NoCabinet(const std::string& name);

/// The message after a staged file that cannot be read; `entry` is its place on the disk.
ShownMessage UnreadableSource(const std::string& entry);

/// The message about a file error that no step expects; `text` is what the error's number stands for.
ShownMessage FileError(int number, const std::string& text, const std::string& file);

}  // namespace velbooter::e2e
