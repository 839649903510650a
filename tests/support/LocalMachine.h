#pragma once
// The registry of the local machine as one test wants it: empty at first, and seen by this process alone, so
// that nothing of the real machine decides a test and no two tests disturb each other.

#include <windows.h>

#include <string>

namespace velbooter::testing {

class LocalMachine {
 public:
    /// Makes HKEY_LOCAL_MACHINE of the process an empty key of its own.
    LocalMachine();
    LocalMachine(const LocalMachine&) = delete;
    LocalMachine& operator=(const LocalMachine&) = delete;
    /// Gives the process the real key back and removes its own.
    ~LocalMachine();

    /// Sets a plain string; its key is made when it is missing.
    void Set(const std::string& key, const std::string& value, const std::string& text);
    /// Sets a value of any type from its bytes.
    void Set(const std::string& key, const std::string& value, DWORD type, const std::string& bytes);

 private:
    std::string name_;  ///< of the stand-in, below HKEY_CURRENT_USER
    HKEY root_ = nullptr;
};

}  // namespace velbooter::testing
