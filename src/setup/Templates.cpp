#include "src/setup/Templates.h"

#include "src/common/FileSystem.h"

namespace velbooter {

void CopyTemplate(const std::string& source, const std::string& answerFile) {
    CopyFileOver(source, answerFile);
    MakeWritable(answerFile);
}

}  // namespace velbooter
