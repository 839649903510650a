#include "src/console/CallText.h"

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

bool IsWithoutArguments(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

}  // namespace velbooter
