#include "tests/tools/cabarc/lzx/LzxDecoder.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace tools::cabarc::lzx::testing {

namespace {

void Require(bool condition, const char* rule) {
    if (!condition) throw std::runtime_error(rule);
}

// The bits of one frame's payload.
class FrameBits {
 public:
    explicit FrameBits(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint32_t Bit() {
        if (bitsLeft_ == 0) {
            Require(next_ + 2 <= bytes_.size(), "the frame's payload ends early");
            word_ = bytes_[next_] | (std::uint32_t{bytes_[next_ + 1]} << 8);
            next_ += 2;
            bitsLeft_ = 16;
        }
        return (word_ >> --bitsLeft_) & 1U;
    }

    std::uint32_t Bits(int count) {
        std::uint32_t value = 0;
        for (int i = 0; i < count; ++i) value = value << 1 | Bit();
        return value;
    }

    void SkipZerosToWord() {
        while (bitsLeft_ != 0) Require(Bit() == 0, "padding that is not zero");
    }

    std::uint8_t Byte() {
        Require(bitsLeft_ == 0, "raw bytes inside a word");
        Require(next_ < bytes_.size(), "the frame's raw bytes end early");
        return bytes_[next_++];
    }

    bool AtWordBorder() const { return bitsLeft_ == 0; }
    std::size_t BitsRead() const { return 8 * next_ - static_cast<std::size_t>(bitsLeft_); }
    bool AtEnd() const { return next_ == bytes_.size(); }

 private:
    std::span<const std::uint8_t> bytes_;
    std::size_t next_ = 0;
    std::uint32_t word_ = 0;
    int bitsLeft_ = 0;
};

// A canonical code, read bit by bit.
class Tree {
 public:
    Tree() = default;
    Tree(std::span<const std::uint8_t> lengths, bool mayBeEmpty) {
        std::uint64_t filled = 0;
        for (int length = 1; length <= 16; ++length) {
            for (std::size_t i = 0; i < lengths.size(); ++i) {
                if (lengths[i] != length) continue;
                ++count_[static_cast<std::size_t>(length)];
                symbols_.push_back(static_cast<int>(i));
                filled += std::uint64_t{1} << (16 - length);
            }
        }
        Require(filled == 65536 || (filled == 0 && mayBeEmpty), "a code that is not complete");
    }

    int Read(FrameBits& bits) const {
        Require(!symbols_.empty(), "a symbol of an empty tree");
        std::uint32_t code = 0;      // the bits read so far
        std::uint32_t first = 0;     // the first code of this length
        std::size_t firstIndex = 0;  // and the index of its symbol
        for (std::size_t length = 1; length < count_.size(); ++length) {
            code = code << 1 | bits.Bit();
            first <<= 1;
            if (code - first < count_[length]) return symbols_[firstIndex + (code - first)];
            first += count_[length];
            firstIndex += count_[length];
        }
        throw std::runtime_error("a code that no symbol has");
    }

 private:
    std::array<std::uint32_t, 17> count_{};  // codes of each length
    std::vector<int> symbols_;               // in the order of their codes
};

void ReadLengths(FrameBits& bits, std::span<std::uint8_t> lengths) {
    std::array<std::uint8_t, 20> pretreeLengths;
    for (std::uint8_t& length : pretreeLengths) length = static_cast<std::uint8_t>(bits.Bits(4));
    const Tree pretree(pretreeLengths, false);
    const auto changed = [](std::uint8_t old, int symbol) {
        Require(symbol <= 16, "a run symbol where a difference is due");
        return static_cast<std::uint8_t>((old + 17 - symbol) % 17);
    };
    for (std::size_t i = 0; i < lengths.size();) {
        const int symbol = pretree.Read(bits);
        if (symbol <= 16) {
            lengths[i] = changed(lengths[i], symbol);
            ++i;
            continue;
        }
        std::size_t run = 0;
        std::uint8_t value = 0;
        if (symbol == 17) run = 4 + bits.Bits(4);
        if (symbol == 18) run = 20 + bits.Bits(5);
        if (symbol == 19) {
            run = 4 + bits.Bits(1);
            value = changed(lengths[i], pretree.Read(bits));
        }
        Require(i + run <= lengths.size(), "a run over the end of its list");
        for (; run > 0; --run) lengths[i++] = value;
    }
}

class Folder {
 public:
    Folder(int windowBits, LzxContents& contents) : windowSize_(1U << windowBits), contents_(contents) {
        const std::map<int, int> slots{{15, 30}, {16, 32}, {17, 34}, {18, 36}, {19, 38}, {20, 42}, {21, 50}};
        slots_ = slots.at(windowBits);
        mainLengths_.resize(256 + 8 * static_cast<std::size_t>(slots_));
        std::uint32_t base = 0;
        for (int slot = 0; slot < slots_; ++slot) {
            extra_.push_back(slot < 4 ? 0 : std::min(17, slot / 2 - 1));
            base_.push_back(base);
            base += 1U << extra_.back();
        }
    }

    void DecodeFrame(const FrameCollector::Frame& frame, bool last) {
        Require(frame.Payload.size() <= 38912, "a payload over 38912 bytes");
        Require(frame.Size >= 1 && (last ? frame.Size <= 32768 : frame.Size == 32768),
                "a frame of a wrong size");
        FrameBits bits(frame.Payload);
        if (out_.empty() && bits.Bit() == 1) {
            translationSize_ = static_cast<std::int32_t>(bits.Bits(32));
            Require(translationSize_ > 0, "a translation size that is not positive");
            contents_.Translated = true;
        }
        const std::size_t frameStart = out_.size();
        frameEnd_ = frameStart + frame.Size;
        while (out_.size() < frameEnd_) {
            if (blockLeft_ == 0) StartBlock(bits);
            if (type_ == 3) {
                CopyRaw(bits, last);
            } else {
                DecodeItem(bits);
            }
        }
        bits.SkipZerosToWord();
        Require(bits.AtEnd(), "superfluous bytes in a frame");
        Require(!last || blockLeft_ == 0, "a block that is longer than the folder");
    }

    std::vector<std::uint8_t> Untranslated() const {
        std::vector<std::uint8_t> result = out_;
        if (translationSize_ == 0) return result;
        for (std::size_t start = 0; start < result.size() && start / 32768 < 32768; start += 32768) {
            const std::size_t size = std::min<std::size_t>(32768, result.size() - start);
            for (std::size_t i = 0; i + 10 < size; ++i) {
                if (result[start + i] != 0xE8) continue;
                std::uint32_t stored = 0;
                for (std::size_t k = 4; k > 0; --k) stored = stored << 8 | result[start + i + k];
                const std::int64_t absolute = static_cast<std::int32_t>(stored);
                const auto place = static_cast<std::int64_t>(start + i);
                if (absolute >= -place && absolute < translationSize_) {
                    const auto relative = static_cast<std::uint32_t>(
                        absolute >= 0 ? absolute - place : absolute + translationSize_);
                    for (std::size_t k = 0; k < 4; ++k)
                        result[start + i + 1 + k] = static_cast<std::uint8_t>(relative >> (8 * k));
                }
                i += 4;
            }
        }
        return result;
    }

 private:
    void StartBlock(FrameBits& bits) {
        type_ = bits.Bits(3);
        Require(type_ >= 1 && type_ <= 3, "an unknown block type");
        blockLeft_ = bits.Bits(24);
        Require(blockLeft_ > 0, "an empty block");
        if (type_ == 3) {
            ++contents_.Uncompressed;
            if (bits.AtWordBorder()) Require(bits.Bits(16) == 0, "padding that is not zero");
            bits.SkipZerosToWord();
            for (std::uint32_t& offset : queue_) {
                offset = 0;
                for (int i = 0; i < 4; ++i) offset |= std::uint32_t{bits.Byte()} << (8 * i);
                Require(offset >= 1 && offset <= windowSize_ - 3,
                        "a stored repeat offset outside the window");
            }
            rawIsOdd_ = blockLeft_ % 2 != 0;
            return;
        }
        if (type_ == 2) {
            ++contents_.Aligned;
            std::array<std::uint8_t, 8> lengths;
            for (std::uint8_t& length : lengths) length = static_cast<std::uint8_t>(bits.Bits(3));
            aligned_ = Tree(lengths, false);
        } else {
            ++contents_.Verbatim;
        }
        ReadLengths(bits, std::span(mainLengths_).first(256));
        ReadLengths(bits, std::span(mainLengths_).subspan(256));
        ReadLengths(bits, lengthLengths_);
        main_ = Tree(mainLengths_, false);
        length_ = Tree(lengthLengths_, true);
    }

    void CopyRaw(FrameBits& bits, bool last) {
        while (blockLeft_ > 0 && out_.size() < frameEnd_) {
            out_.push_back(bits.Byte());
            --blockLeft_;
        }
        if (blockLeft_ > 0 || !rawIsOdd_) return;
        Require(last || out_.size() < frameEnd_, "an odd uncompressed block that ends with its frame");
        Require(bits.Byte() == 0, "padding that is not zero");
    }

    void DecodeItem(FrameBits& bits) {
        const int symbol = main_.Read(bits);
        if (symbol < 256) {
            out_.push_back(static_cast<std::uint8_t>(symbol));
            --blockLeft_;
            return;
        }
        std::uint32_t length = static_cast<std::uint32_t>(symbol % 8) + 2;
        if (length == 9) length += static_cast<std::uint32_t>(length_.Read(bits));
        const std::uint32_t offset = ReadOffset(bits, static_cast<std::size_t>((symbol - 256) / 8));
        Require(offset <= out_.size(), "a match before the start of the folder");
        Require(offset >= 1 && offset <= windowSize_ - 3, "a match outside the window");
        Require(out_.size() + length <= frameEnd_, "a match over the end of its frame");
        Require(length <= blockLeft_, "a match over the end of its block");
        for (std::uint32_t i = 0; i < length; ++i) out_.push_back(out_[out_.size() - offset]);
        blockLeft_ -= length;
    }

    std::uint32_t ReadOffset(FrameBits& bits, std::size_t slot) {
        if (slot < 3) {
            std::swap(queue_[0], queue_[slot]);
            return queue_[0];
        }
        std::uint32_t formatted = base_[slot];
        if (type_ == 2 && extra_[slot] >= 3) {
            formatted += bits.Bits(extra_[slot] - 3) << 3;
            formatted += static_cast<std::uint32_t>(aligned_.Read(bits));
        } else {
            formatted += bits.Bits(extra_[slot]);
        }
        queue_ = {formatted - 2, queue_[0], queue_[1]};
        return queue_[0];
    }

    std::uint32_t windowSize_;
    LzxContents& contents_;
    int slots_ = 0;
    std::vector<int> extra_;
    std::vector<std::uint32_t> base_;
    std::vector<std::uint8_t> out_;  // still translated: matches copy these bytes
    std::size_t frameEnd_ = 0;
    std::int64_t translationSize_ = 0;
    std::uint32_t type_ = 0;
    std::uint32_t blockLeft_ = 0;
    bool rawIsOdd_ = false;
    std::array<std::uint32_t, 3> queue_{1, 1, 1};
    std::vector<std::uint8_t> mainLengths_;
    std::array<std::uint8_t, 249> lengthLengths_{};
    Tree main_;
    Tree length_;
    Tree aligned_;
};

}  // namespace

std::size_t FrameCollector::PackedSize() const {
    std::size_t size = 0;
    for (const Frame& frame : Frames) size += frame.Payload.size();
    return size;
}

std::size_t DecodeCodeLengths(std::span<const std::uint8_t> payload, std::span<std::uint8_t> lengths) {
    FrameBits bits(payload);
    ReadLengths(bits, lengths);
    return bits.BitsRead();
}

std::vector<std::uint8_t> DecodeLzx(const std::vector<FrameCollector::Frame>& frames, int windowBits,
                                    LzxContents* contents) {
    LzxContents own;
    Folder folder(windowBits, contents != nullptr ? *contents : own);
    for (std::size_t i = 0; i < frames.size(); ++i) folder.DecodeFrame(frames[i], i + 1 == frames.size());
    return folder.Untranslated();
}

}  // namespace tools::cabarc::lzx::testing
