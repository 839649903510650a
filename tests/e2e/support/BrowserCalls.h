#pragma once
// A program of the tests in place of the browser, which records the addresses that the program opens.

#include <string>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {

class BrowserCalls {
 public:
    /// Makes the Wine prefix of the tests open addresses with a program next to `folder`, which must live
    /// longer.
    explicit BrowserCalls(const DemoFolder& folder);

    /// Restores the prefix's former browser.
    ~BrowserCalls();
    BrowserCalls(const BrowserCalls&) = delete;
    BrowserCalls& operator=(const BrowserCalls&) = delete;

    /// Waits for the next address that `program` opens and returns it.
    std::string Next(const ProgramUnderTest& program) const;

 private:
    const DemoFolder& folder_;
    std::string former_;
};

}  // namespace velbooter::e2e
