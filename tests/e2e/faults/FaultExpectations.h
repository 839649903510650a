#pragma once
// What the tests of faults expect: whatever happens, an image is the old one or a complete new one, and the
// next run works.

#include <string>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ShownMessage.h"

namespace velbooter::e2e {

inline constexpr const char* kOldImage = "an old image";

/// The target of the runs below, as the command line names it.
inline constexpr const char* kTarget = "out\\disk.img";

/// The arguments that build it.
inline const std::string kBuild = std::string(" custom ") + kTarget;

/// The lines of a small disk with a module, which only the archiver can build.
std::vector<std::string> DiskWithAModule();

/// Creates an old image as the target.
void PutOldImage(const DemoFolder& folder);

/// Expects the old image unchanged, and nothing else in its folder.
void ExpectOldImage(const DemoFolder& folder);

/// Waits until the image tool has begun to write the target. Throws HarnessFailure when it does not.
void WaitForThePartOfTheImage(const DemoFolder& folder);

/// Runs a build of the custom disk and expects that it shows no message and leaves no new image.
void ExpectRunWithoutImage(const DemoFolder& folder);

/// Runs a build of the custom disk and expects that it works.
void ExpectRunWorks(const DemoFolder& folder);

/// The message when the archiver has created no cabinet.
ShownMessage NoCabinet(const std::string& name);

/// The message when a file to be staged cannot be read; `entry` is its path on the disk.
ShownMessage UnreadableSource(const std::string& entry);

/// The message about a file error that no step expects; `text` is the text of the error's number.
ShownMessage FileError(int number, const std::string& text, const std::string& file);

}  // namespace velbooter::e2e
