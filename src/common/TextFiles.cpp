#include "src/common/TextFiles.h"

#include <windows.h>

#include "src/common/RuntimeError.h"

namespace velbooter {

namespace {
constexpr DWORD kBufferBytes = 32768;
}

LineReader::LineReader(const std::string& file)
    : fileName_(file), file_(OpenExistingFile(file, GENERIC_READ)) {
    if (!file_) RaiseLastSystemError(file);
}

bool LineReader::Fill() {
    buffer_.resize(kBufferBytes);
    position_ = 0;
    DWORD got = 0;
    if (::ReadFile(file_.Get(), buffer_.data(), kBufferBytes, &got, nullptr) == 0)
        RaiseLastSystemError(fileName_);
    buffer_.resize(got);
    return got > 0;
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

LineWriter::LineWriter(const std::string& file)
    : fileName_(file),
      file_(::CreateFileA(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (!file_) RaiseLastSystemError(file);
}

void LineWriter::Write(const std::string& line) {
    const std::string bytes = line + "\r\n";
    const auto length = static_cast<DWORD>(bytes.size());
    DWORD written = 0;
    if (::WriteFile(file_.Get(), bytes.data(), length, &written, nullptr) == 0)
        RaiseLastSystemError(fileName_);
    if (written != length) throw RuntimeError(kDiskFull, fileName_);
}

void WriteToFile(const std::string& textLine, LineWriter& file1, LineWriter* file2, LineWriter* file3) {
    file1.Write(textLine);
    if (file2 != nullptr) file2->Write(textLine);
    if (file3 != nullptr) file3->Write(textLine);
}

}  // namespace velbooter
