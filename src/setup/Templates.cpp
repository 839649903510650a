#include "src/setup/SetupData.h"

#include "src/common/Files.h"

namespace velbooter {

void CopyTemplate(const std::string& source, const std::string& answerFile) {
    CopyFileOver(source, answerFile);
    MakeWritable(answerFile);
}

}  // namespace velbooter
