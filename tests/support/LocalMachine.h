#pragma once
// The registry of the local machine as one test needs it: empty at first, and visible only to this process,
// so that a test does not depend on the real machine and no two tests disturb each other.

#include <windows.h>

#include <string>

namespace velbooter::testing {

class LocalMachine {
 public:
    /// Replaces HKEY_LOCAL_MACHINE for this process by a new, empty key.
    LocalMachine();
    LocalMachine(const LocalMachine&) = delete;
    LocalMachine& operator=(const LocalMachine&) = delete;
    /// Restores the real key and removes the new one.
    ~LocalMachine();

    /// Sets a plain string; its key is created when it is missing.
    void Set(const std::string& key, const std::string& value, const std::string& text);
    /// Sets a value of any type from its bytes.
    void Set(const std::string& key, const std::string& value, DWORD type, const std::string& bytes);

 private:
    std::string name_;  ///< of the stand-in, below HKEY_CURRENT_USER
    HKEY root_ = nullptr;
};

}  // namespace velbooter::testing
