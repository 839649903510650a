#pragma once
// Answer files begin as copies of templates.

#include <string>

namespace velbooter {

/// Copies `source` over `answerFile` and makes the copy writable even if the template is read-only, because
/// the profile functions silently leave a read-only file unchanged. Raises RuntimeError when the template is
/// missing or the copy fails.
void CopyTemplate(const std::string& source, const std::string& answerFile);

}  // namespace velbooter
