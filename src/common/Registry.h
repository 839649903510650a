#pragma once
// Reading strings from the registry. The program never writes to it.

#include <optional>
#include <string>

namespace velbooter {

/// The roots of the registry that ReadRegistryString can read.
enum class RegistryRoot { ClassesRoot, CurrentUser, LocalMachine, Users };

/// Returns the string value `valueName` of `subKey`, up to its first NUL; nothing when it is missing or not a
/// plain string. The key is not closed afterwards: a run reads only a handful of values.
std::optional<std::string> ReadRegistryString(RegistryRoot root, const std::string& subKey,
                                              const std::string& valueName);

}  // namespace velbooter
