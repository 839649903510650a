#pragma once
// A library of the tests in place of the system's help viewer, which records the program's calls.

#include <string>
#include <vector>

#include "tests/e2e/support/DemoFolder.h"

namespace velbooter::e2e {

class HelpCalls {
 public:
    enum class Place { System, BesideTheProgram };

    /// Puts the library into the system's folder, where the viewer is, or next to the program of `folder`,
    /// where none may be called. `folder` must live longer.
    explicit HelpCalls(const DemoFolder& folder, Place place = Place::System);

    /// Restores the system's viewer.
    ~HelpCalls();
    HelpCalls(const HelpCalls&) = delete;
    HelpCalls& operator=(const HelpCalls&) = delete;

    /// The calls so far, one line each: owner, file, command and data.
    std::vector<std::string> Lines() const;

    /// The last number of each call, which is the topic in the calls of the wizard.
    std::vector<int> Topics() const;

    /// Deletes the record of the calls so far.
    void Forget() const;

 private:
    const DemoFolder& folder_;
    std::string viewer_;
};

}  // namespace velbooter::e2e
