#pragma once
// A program of the tests in place of the browser, which takes the addresses that the program opens.

#include <string>

#include "tests/e2e/support/ApplicationFolder.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {

class BrowserCalls {
 public:
    /// Lets the prefix of the tests open addresses with a program beside `folder`, which must live longer.
    explicit BrowserCalls(const ApplicationFolder& folder);

    /// Gives the prefix its former browser again.
    ~BrowserCalls();
    BrowserCalls(const BrowserCalls&) = delete;
    BrowserCalls& operator=(const BrowserCalls&) = delete;

    /// Waits for the next address that `program` opens.
    std::string Next(const ProgramUnderTest& program) const;

 private:
    const ApplicationFolder& folder_;
    std::string former_;
};

}  // namespace velbooter::e2e
