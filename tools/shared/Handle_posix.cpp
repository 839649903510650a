#include <unistd.h>

#include "tools/shared/Handle.h"

namespace tools::handles {

File::Value File::None() {
    return -1;
}

void File::Close(Value file) {
    close(file);
}

}  // namespace tools::handles
