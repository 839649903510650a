#pragma once
// Answer files begin as copies of templates.

#include <string>

namespace velbooter {

/// Copies `source` over `answerFile`, which can be written afterwards even if the template is read-only: the
/// profile functions would leave a read-only file as it is without a word. Raises RuntimeError when the
/// template is missing or the copy cannot be made.
void CopyTemplate(const std::string& source, const std::string& answerFile);

}  // namespace velbooter
