#include "tools/cabarc/Compressors.h"

#include "tools/cabarc/MsZipCompressor.h"
#include "tools/cabarc/lzx/LzxEncoder.h"

namespace tools::cabarc {

std::unique_ptr<FolderCompressor> MakeCompressor(const Method& method, RecordSink& sink) {
    switch (method.Type) {
        case Method::Kind::Stored:
            return std::make_unique<StoredCompressor>(sink);
        case Method::Kind::MsZip:
            return std::make_unique<MsZipCompressor>(sink);
        case Method::Kind::Lzx:
            break;
    }
    return std::make_unique<lzx::LzxEncoder>(method.WindowBits, lzx::LzxOptions{}, sink);
}

}  // namespace tools::cabarc
