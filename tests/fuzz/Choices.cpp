#include "tests/fuzz/Choices.h"

#include <algorithm>

namespace fuzz {

std::uint8_t Choices::Byte() {
    if (rest_.empty()) return 0;
    const std::uint8_t byte = rest_.front();
    rest_ = rest_.subspan(1);
    return byte;
}

std::uint32_t Choices::Below(std::uint32_t limit) {
    std::uint32_t value = Byte();
    if (limit > 1U << 8) value = value << 8 | Byte();
    if (limit > 1U << 16) value = value << 8 | Byte();
    return value % limit;
}

std::span<const std::uint8_t> Choices::Raw(std::size_t count) {
    const auto taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
}

std::string Choices::Text(std::size_t longest) {
    const auto raw = Raw(Below(static_cast<std::uint32_t>(longest + 1)));
    return {raw.begin(), raw.end()};
}

}  // namespace fuzz
