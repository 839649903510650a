#include "src/common/LineWriter.h"

#include <windows.h>

#include "src/common/RuntimeError.h"

namespace velbooter {

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
