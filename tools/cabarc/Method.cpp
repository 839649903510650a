#include "tools/cabarc/Method.h"

#include <charconv>

#include "tools/cabarc/lzx/LzxFormat.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

constexpr std::string_view kLzxName = "LZX:";

}  // namespace

std::optional<Method> ParseMethod(std::string_view text) {
    if (EqualsFolded(text, "NONE")) return Method{Method::Kind::Stored, 0};
    if (EqualsFolded(text, "MSZIP")) return Method{Method::Kind::MsZip, 0};
    if (!EqualsFolded(text.substr(0, kLzxName.size()), kLzxName)) return std::nullopt;
    const std::string_view digits = text.substr(kLzxName.size());
    int bits = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), bits);
    const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
    if (!isNumber || bits < lzx::kMinWindowBits || bits > lzx::kMaxWindowBits) return std::nullopt;
    return Method{Method::Kind::Lzx, bits};
}

std::uint16_t MethodCode(const Method& method) {
    switch (method.Type) {
        case Method::Kind::Stored:
            return 0;
        case Method::Kind::MsZip:
            return 1;
        case Method::Kind::Lzx:
            break;
    }
    return static_cast<std::uint16_t>(3 | (method.WindowBits << 8));
}

std::string MethodName(std::uint16_t code) {
    const int windowBits = (code >> 8) & 0x1F;
    switch (code & 0x0F) {
        case 0:
            return "NONE";
        case 1:
            return "MSZIP";
        case 2:
            return "QUANTUM:" + std::to_string(windowBits);
        case 3:
            return "LZX:" + std::to_string(windowBits);
        default:
            return "method " + std::to_string(code & 0x0F);
    }
}

}  // namespace tools::cabarc
