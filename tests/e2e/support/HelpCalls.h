#pragma once
// A library of the tests in place of the system's help viewer, which takes the program's calls.

#include <string>
#include <vector>

#include "tests/e2e/support/ApplicationFolder.h"

namespace velbooter::e2e {

class HelpCalls {
 public:
    enum class Place { System, BesideTheProgram };

    /// Puts the library into the system's folder, where the viewer is, or where no viewer should be called:
    /// beside the program of `folder`, which must live longer.
    explicit HelpCalls(const ApplicationFolder& folder, Place place = Place::System);

    /// Gives the programs of the tests the system's viewer again.
    ~HelpCalls();
    HelpCalls(const HelpCalls&) = delete;
    HelpCalls& operator=(const HelpCalls&) = delete;

    /// The calls so far, one line each: owner, file, command and data.
    std::vector<std::string> Lines() const;

    /// The last number of each call, which is a topic's for the calls that the wizard makes.
    std::vector<int> Topics() const;

    /// Forgets the calls so far.
    void Forget() const;

 private:
    const ApplicationFolder& folder_;
    std::string viewer_;
};

}  // namespace velbooter::e2e
