#include "src/common/CallText.h"

namespace velbooter {

std::string TextBehindName(const std::string& wholeCommandLine) {
    bool quoted = false;
    for (size_t i = 0; i < wholeCommandLine.size(); ++i) {
        const char c = wholeCommandLine[i];
        if (c == '"') quoted = !quoted;
        if (!quoted && (c == ' ' || c == '\t')) return wholeCommandLine.substr(i);
    }
    return "";
}

std::string ArgumentsOf(const std::string& wholeCommandLine) {
    const std::string text = TextBehindName(wholeCommandLine);
    return text.empty() ? "" : text.substr(1);
}

bool IsWithoutArguments(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

}  // namespace velbooter
