#include "src/common/INIFile.h"

#include <windows.h>

#include "src/common/Text.h"

namespace velbooter {

namespace {
constexpr DWORD kBufferCharacters = 100;
}

void INIFile::CreateIni(const std::string& folder, const std::string& file) {
    std::string path = folder;
    while (EndsWith(path, "\\")) path.pop_back();
    const size_t fileBegin = file.find_first_not_of('\\');
    FileName = path + "\\" + (fileBegin == std::string::npos ? "" : file.substr(fileBegin));
}

void INIFile::SetINIKey(const std::string& section, const std::string& key, const std::string& value) const {
    ::WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), FileName.c_str());
}

std::string INIFile::GetINIKey(const std::string& section, const std::string& key) const {
    std::string buffer(kBufferCharacters, ' ');
    const DWORD length = ::GetPrivateProfileStringA(section.c_str(), key.c_str(), "", buffer.data(),
                                                    kBufferCharacters, FileName.c_str());
    // A value that fills the buffer is returned without its terminator; a shorter one keeps it.
    buffer.resize(length >= kBufferCharacters - 1 ? kBufferCharacters - 1 : length + 1);
    return Trim(buffer);
}

}  // namespace velbooter
