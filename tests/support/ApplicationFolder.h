#pragma once
// A small application folder in a fresh temporary directory, for tests that work on real files. Paths given
// to its functions are relative to it ("cabs\bin\a.cab").

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "src/run/Application.h"
#include "tests/support/LockedFile.h"
#include "tests/support/ScriptedDesktop.h"

namespace velbooter::testing {

/// One call of a stand-in tool, as the stand-in recorded it.
struct ToolCall {
    std::string CommandLine;    ///< the exact text of GetCommandLineA
    std::string Window;         ///< "hidden", "shown" (no window state given) or "state N"
    std::string WorkingFolder;  ///< the current folder at its start
};

class ApplicationFolder {
 public:
    /// Creates the folder; its path contains no space.
    ApplicationFolder();
    ApplicationFolder(const ApplicationFolder&) = delete;
    ApplicationFolder& operator=(const ApplicationFolder&) = delete;
    /// Restores the current folder of the process and removes everything, whatever its attributes.
    ~ApplicationFolder();

    /// The folder without a trailing backslash.
    const std::string& Path() const { return path_; }
    std::string At(const std::string& tail) const { return path_ + "\\" + tail; }

    /// Writes a file byte for byte and creates its folders; returns its full path.
    std::string Write(const std::string& tail, const std::string& content = "") const;
    /// Returns a file's bytes; fails the test when it cannot be read.
    std::string Read(const std::string& tail) const;
    std::string MakeFolder(const std::string& tail) const;
    void Remove(const std::string& tail) const;
    bool HasFile(const std::string& tail) const;
    bool HasFolder(const std::string& tail) const;

    /// Attributes as the system numbers them (FILE_ATTRIBUTE_...).
    void SetAttributes(const std::string& tail, std::uint32_t attributes) const;
    std::uint32_t Attributes(const std::string& tail) const;

    /// Creates a link at `tail` to the folder at `target`: a junction, or under Wine a symbolic link. Fails
    /// the test when that does not work.
    void MakeLink(const std::string& tail, const std::string& target);

    /// Removes the links that MakeLink has created; so does the destructor.
    void RemoveLinks();

    /// Returns the files below a folder as sorted paths relative to it.
    std::vector<std::string> Tree(const std::string& tail) const;

    /// Puts a stand-in program at `tail` (an .exe or .com), which records its calls and carries out
    /// `instructions` (see Recorder.cpp) at each call.
    void MakeTool(const std::string& tail, const std::string& instructions = "") const;
    /// Returns the calls of the stand-in at `tail` so far, in their order.
    std::vector<ToolCall> Calls(const std::string& tail) const;

 private:
    std::string UnixPathOfLink(const std::string& tail) const;

    std::string path_;
    std::string formerFolder_;
    std::vector<std::string> links_;
};

using tools::testing::LockedFile;

/// Returns the folder of the running test program, without a trailing backslash.
std::string TestProgramFolder();

/// Returns the current folder of the process.
std::string CurrentFolder();

/// The common fixture: an application folder, a scripted desktop, and an application that uses both.
class ApplicationTest : public ::testing::Test {
 protected:
    ApplicationTest() { Screen.Watch(App); }

    ApplicationFolder Folder;
    ScriptedDesktop Screen;
    Application App{Folder.Path(), Screen};
};

}  // namespace velbooter::testing
