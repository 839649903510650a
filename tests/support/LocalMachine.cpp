#include "tests/support/LocalMachine.h"

#include <gtest/gtest.h>

namespace velbooter::testing {

namespace {

// The key exists only in memory, so that nothing of it remains when a test is killed.
LSTATUS MakeKey(HKEY parent, const std::string& name, HKEY& key) {
    return RegCreateKeyExA(parent, name.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                           &key, nullptr);
}

}  // namespace

LocalMachine::LocalMachine() : name_("Software\\VelbooterMachine" + std::to_string(GetCurrentProcessId())) {
    RegDeleteTreeA(HKEY_CURRENT_USER, name_.c_str());
    EXPECT_EQ(ERROR_SUCCESS, MakeKey(HKEY_CURRENT_USER, name_, root_));
    EXPECT_EQ(ERROR_SUCCESS, RegOverridePredefKey(HKEY_LOCAL_MACHINE, root_));
}

LocalMachine::~LocalMachine() {
    EXPECT_EQ(ERROR_SUCCESS, RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr));
    RegCloseKey(root_);
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeA(HKEY_CURRENT_USER, name_.c_str()));
}

void LocalMachine::Set(const std::string& key, const std::string& value, const std::string& text) {
    Set(key, value, REG_SZ, text + '\0');
}

void LocalMachine::Set(const std::string& key, const std::string& value, DWORD type,
                       const std::string& bytes) {
    HKEY handle = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, MakeKey(root_, key, handle));
    EXPECT_EQ(ERROR_SUCCESS,
              RegSetValueExA(handle, value.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())));
    RegCloseKey(handle);
}

}  // namespace velbooter::testing
