#include "src/common/LineReader.h"

#include <windows.h>

#include "src/common/RuntimeError.h"

namespace velbooter {

namespace {
constexpr DWORD kBufferBytes = 32768;
constexpr char kEndOfText = '\x1A';
}  // namespace

LineReader::LineReader(const std::string& file)
    : fileName_(file),
      file_(::CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                          nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (!file_) RaiseLastSystemError(file);
}

bool LineReader::Fill() {
    position_ = 0;
    if (isAtEnd_) {
        buffer_.clear();
        return false;
    }
    buffer_.resize(kBufferBytes);
    DWORD got = 0;
    if (::ReadFile(file_.Get(), buffer_.data(), kBufferBytes, &got, nullptr) == 0)
        RaiseLastSystemError(fileName_);
    buffer_.resize(got);
    if (const size_t end = buffer_.find(kEndOfText); end != std::string::npos) {
        buffer_.resize(end);
        isAtEnd_ = true;
    }
    return !buffer_.empty();
}

std::optional<std::string> LineReader::Next() {
    std::string line;
    bool any = false;
    while (position_ < buffer_.size() || Fill()) {
        any = true;
        const size_t end = buffer_.find('\n', position_);
        line.append(buffer_, position_, end == std::string::npos ? end : end - position_);
        position_ = end == std::string::npos ? buffer_.size() : end + 1;
        if (end != std::string::npos) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            return line;
        }
    }
    return any ? std::optional<std::string>(line) : std::nullopt;
}

}  // namespace velbooter
