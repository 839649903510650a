#pragma once
// Thrown when the program under test does not do what a test waits for. GoogleTest reports it as the test's
// failure.

#include <stdexcept>

namespace velbooter::e2e {

struct HarnessFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace velbooter::e2e
