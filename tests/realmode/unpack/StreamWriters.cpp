#include "tests/realmode/unpack/StreamWriters.h"

#include "tools/shared/ByteOrder.h"

namespace realmode::unpack::testing {

void LzxWriter::BlockHeader(unsigned type, std::uint32_t size) {
    Put(type, 3);
    Put(size, 24);
}

void LzxWriter::Pretree() {
    for (unsigned symbol = 0; symbol < 20; ++symbol)
        Put(symbol == 0 ? 1 : symbol == 15 || symbol == 16 ? 2 : 0, 4);
}

void LzxWriter::Lengths(const CodeLengths& lengths, unsigned begin, unsigned end) {
    Pretree();
    for (unsigned symbol = begin; symbol < end; ++symbol) {
        const auto found = lengths.find(symbol);
        if (found == lengths.end())
            Put(0, 1);
        else
            Put(found->second == 1 ? 3 : 2, 2);
    }
}

void LzxWriter::Trees(const CodeLengths& main, const CodeLengths& lengths) {
    Lengths(main, 0, 256);
    Lengths(main, 256, kMainSymbols);
    Lengths(lengths, 0, kLengthSymbols);
}

void LzxWriter::Queue(std::uint32_t r0, std::uint32_t r1, std::uint32_t r2) {
    bits_.PadBeforeRawBytes();
    Bytes queue;
    for (const std::uint32_t distance : {r0, r1, r2}) tools::AppendU32(queue, distance);
    Raw(queue);
}

Bytes LzxWriter::Frame() {
    bits_.PadToWord();
    Bytes frame = bits_.Bytes();
    bits_.Clear();
    return frame;
}

void DeflateWriter::Bit(unsigned bit) {
    if (used_ == 8) {
        bytes_.push_back(0);
        used_ = 0;
    }
    bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | bit << used_++);
}

void DeflateWriter::Number(unsigned value, unsigned count) {
    for (unsigned i = 0; i < count; ++i) Bit(value >> i & 1);
}

void DeflateWriter::Code(unsigned code, unsigned count) {
    for (unsigned i = count; i > 0; --i) Bit(code >> (i - 1) & 1);
}

void DeflateWriter::BlockHeader(bool isLast, unsigned type) {
    Bit(isLast ? 1 : 0);
    Number(type, 2);
}

void DeflateWriter::FixedMatch3(unsigned slot) {
    Code(1, 7);
    Code(slot, 5);
}

void DeflateWriter::StoredBlock(bool isLast, const Bytes& bytes) {
    BlockHeader(isLast, kStored);
    used_ = 8;
    tools::AppendU16(bytes_, static_cast<std::uint32_t>(bytes.size()));
    tools::AppendU16(bytes_, ~static_cast<std::uint32_t>(bytes.size()) & 0xFFFF);
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

}  // namespace realmode::unpack::testing
