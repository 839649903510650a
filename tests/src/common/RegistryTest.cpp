#include "src/common/Registry.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

/// A registry key of the test, in memory only, removed at its end.
class RegistryKey {
 public:
    RegistryKey() : name_("Software\\VelbooterTest" + std::to_string(GetCurrentProcessId())) {
        EXPECT_EQ(ERROR_SUCCESS,
                  RegCreateKeyExA(HKEY_CURRENT_USER, name_.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                                  KEY_ALL_ACCESS, nullptr, &key_, nullptr));
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey() {
        RegCloseKey(key_);
        RegDeleteKeyA(HKEY_CURRENT_USER, name_.c_str());
    }
    void Set(const char* value, DWORD type, const std::string& bytes) {
        EXPECT_EQ(ERROR_SUCCESS,
                  RegSetValueExA(key_, value, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                                 static_cast<DWORD>(bytes.size())));
    }
    const std::string& Name() const { return name_; }

 private:
    std::string name_;
    HKEY key_ = nullptr;
};

TEST(Registry, AStringIsReadUpToItsFirstNul) {
    RegistryKey key;
    key.Set("plain", REG_SZ, "John Doe\0"s);
    key.Set("cut", REG_SZ, "John\0Doe\0"s);
    key.Set("open", REG_SZ, "John");
    key.Set("empty", REG_SZ, "\0"s);
    const auto read = [&](const char* value) {
        return ReadRegistryString(RegistryRoot::CurrentUser, key.Name(), value);
    };
    EXPECT_EQ("John Doe", read("plain"));
    EXPECT_EQ("John", read("cut"));
    EXPECT_EQ("John", read("open"));
    EXPECT_EQ("", read("empty"));
}

TEST(Registry, AnythingButAPlainStringIsNothing) {
    RegistryKey key;
    key.Set("expand", REG_EXPAND_SZ, "%windir%\0"s);
    key.Set("number", REG_DWORD, "\1\0\0\0"s);
    key.Set("list", REG_MULTI_SZ, "a\0b\0\0"s);
    key.Set("bytes", REG_BINARY, "abc");
    for (const char* value : {"expand", "number", "list", "bytes", "missing"}) {
        EXPECT_EQ(std::nullopt, ReadRegistryString(RegistryRoot::CurrentUser, key.Name(), value)) << value;
    }
    EXPECT_EQ(std::nullopt, ReadRegistryString(RegistryRoot::CurrentUser, key.Name() + "\\none", "plain"));
}

TEST(Registry, TheLocalMachineCanBeRead) {
    EXPECT_NE(std::nullopt,
              ReadRegistryString(RegistryRoot::LocalMachine,
                                 "Software\\Microsoft\\Windows NT\\CurrentVersion", "SystemRoot"));
}

}  // namespace
}  // namespace velbooter::testing
