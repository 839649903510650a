#include "src/common/Registry.h"

#include <windows.h>

#include "src/common/Text.h"

namespace velbooter {

namespace {

HKEY RootKey(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return HKEY_CLASSES_ROOT;
        case RegistryRoot::CurrentUser:
            return HKEY_CURRENT_USER;
        case RegistryRoot::Users:
            return HKEY_USERS;
        case RegistryRoot::LocalMachine:
            break;
    }
    return HKEY_LOCAL_MACHINE;
}

}  // namespace

std::optional<std::string> ReadRegistryString(RegistryRoot root, const std::string& subKey,
                                              const std::string& valueName) {
    HKEY key = nullptr;
    if (::RegOpenKeyA(RootKey(root), subKey.c_str(), &key) != ERROR_SUCCESS) return std::nullopt;
    DWORD type = 0;
    DWORD size = 0;
    if (::RegQueryValueExA(key, valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        type != REG_SZ) {
        return std::nullopt;
    }
    std::string buffer(size, ' ');
    if (::RegQueryValueExA(key, valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()),
                           &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return TrimAtNul(buffer);
}

}  // namespace velbooter
