#include "tests/fuzz/Contents.h"

#include <algorithm>

#include "tests/support/TestData.h"

namespace fuzz {

using tools::testing::DataKind;
using tools::testing::DataKinds;

namespace {

constexpr std::size_t kFrame = 32768;
constexpr std::size_t kMostRawBytes = 48;

// Returns sizes of all magnitudes, and those that reach the end of a frame exactly or nearly.
std::size_t StretchSize(Choices& choices, std::size_t present) {
    switch (choices.Below(5)) {
        case 0:
            return 1 + choices.Below(16);
        case 1:
            return 1 + choices.Below(600);
        case 2:
            return 1 + choices.Below(20000);
        case 3:
            return kFrame - present % kFrame + choices.Below(13);
        default:
            return std::max<std::size_t>(kFrame - present % kFrame, 13) - choices.Below(13);
    }
}

void AppendCopy(Choices& choices, std::size_t size, Bytes& contents) {
    if (contents.empty()) return;
    const std::uint32_t any = choices.Below(1U << 24);
    const std::size_t distance = 1 + (choices.Flag() ? any : any % 300) % contents.size();
    for (std::size_t i = 0; i < size; ++i) contents.push_back(contents[contents.size() - distance]);
}

void AppendStretch(Choices& choices, std::size_t limit, Bytes& contents) {
    const std::vector<DataKind>& kinds = DataKinds();
    const std::uint32_t kind = choices.Below(static_cast<std::uint32_t>(kinds.size()) + 3);
    if (kind == 0) {
        const auto raw = choices.Raw(1 + choices.Below(kMostRawBytes));
        contents.insert(contents.end(), raw.begin(), raw.end());
    } else {
        const std::size_t size = std::min(StretchSize(choices, contents.size()), limit - contents.size());
        if (kind <= 2) {
            AppendCopy(choices, size, contents);
        } else {
            const Bytes made = kinds[kind - 3].Make(size, choices.Byte());
            contents.insert(contents.end(), made.begin(), made.end());
        }
    }
    contents.resize(std::min(contents.size(), limit));
}

}  // namespace

void AppendContents(Choices& choices, std::size_t limit, Bytes& contents) {
    while (!choices.AtEnd() && contents.size() < limit) AppendStretch(choices, limit, contents);
}

Bytes ShortContents(Choices& choices, std::size_t limit) {
    Bytes contents;
    for (std::uint32_t left = choices.Below(4); left > 0; --left) AppendStretch(choices, limit, contents);
    return contents;
}

}  // namespace fuzz
