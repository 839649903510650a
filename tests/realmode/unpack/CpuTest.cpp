// The first instructions of UNPACK.EXE on CPUs that no available emulator has: a small interpreter for the
// 8086 instructions that they consist of, and the flags of each CPU.

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "tests/realmode/unpack/FlatMachine.h"
#include "tests/tools/cabarc/InTestFolder.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::unpack::testing {
namespace {

// Which flags POPF keeps of those that it takes from the stack.
using FlagsOf = std::function<unsigned(unsigned)>;

unsigned Flags8086(unsigned flags) {
    return flags | 0xF002;
}
unsigned Flags286(unsigned flags) {
    return (flags & 0x0FFF) | 2;
}
unsigned Flags386(unsigned flags) {
    return (flags & 0x7FFF) | 2;
}

class OldCpu {
 public:
    /// Loads a program as DOS does.
    OldCpu(const Bytes& program, FlagsOf flagsOf) : flagsOf_(std::move(flagsOf)), flags_(flagsOf_(0)) {
        const std::size_t header = 16U * tools::GetU16(&program[8]);
        sp_ = tools::GetU16(&program[16]);
        ip_ = tools::GetU16(&program[20]);
        // SS and CS lie 10h paragraphs before the image, which is the PSP's own segment.
        EXPECT_EQ(0xFFF0, tools::GetU16(&program[14]));
        EXPECT_EQ(0xFFF0, tools::GetU16(&program[22]));
        memory_.resize(0x10000);
        std::copy(program.begin() + static_cast<std::ptrdiff_t>(header), program.end(),
                  memory_.begin() + 0x100);
    }

    /// Runs until the program ends or comes to an instruction that an 8086 does not have.
    void Run() {
        while (!ExitCode && !NeedsMore) Step();
    }

    std::optional<int> ExitCode;
    bool NeedsMore = false;
    std::string Written;

 private:
    void Step() {
        const unsigned code = Byte();
        if (code == 0xFC) return;  // CLD
        if (code >= 0x50 && code <= 0x57) return Push(registers_[code - 0x50]);
        if (code >= 0x58 && code <= 0x5F) return Pop(registers_[code - 0x58]);
        if (code >= 0xB8 && code <= 0xBF) {
            registers_[code - 0xB8] = Word();
            return;
        }
        switch (code) {
            case 0x9C:
                return Push(flags_);
            case 0x9D:
                Pop(flags_);
                flags_ = flagsOf_(flags_);
                return;
            case 0x25:
                registers_[0] &= Word();
                return SetZero(registers_[0] == 0);
            case 0x0D:
                registers_[0] |= Word();
                return SetZero(registers_[0] == 0);
            case 0x3D:
                return SetZero(registers_[0] == Word());
            case 0x74:
                return Jump((flags_ & kZero) != 0);
            case 0x75:
                return Jump((flags_ & kZero) == 0);
            case 0xB4:
                registers_[0] = (registers_[0] & 0xFF) | Byte() << 8;
                return;
            case 0xCD:
                return CallDos(Byte());
            case 0x0F:
            case 0x66:
                NeedsMore = true;
                return;
            default:
                throw std::runtime_error("an instruction that is not expected here: " + std::to_string(code));
        }
    }

    void CallDos(unsigned interrupt) {
        ASSERT_EQ(0x21U, interrupt);
        const unsigned function = registers_[0] >> 8;
        if (function == 0x4C) {
            ExitCode = static_cast<int>(registers_[0] & 0xFF);
            return;
        }
        ASSERT_EQ(0x40U, function);
        ASSERT_EQ(2U, registers_[3]) << "errors are written to handle 2";
        const auto from = memory_.begin() + registers_[2];
        Written.append(from, from + registers_[1]);
    }

    unsigned Byte() { return memory_.at(ip_++); }
    unsigned Word() {
        const unsigned low = Byte();
        return low | Byte() << 8;
    }
    void Push(unsigned value) {
        sp_ -= 2;
        tools::PutU16(&memory_.at(sp_), value);
    }
    void Pop(unsigned& value) {
        value = tools::GetU16(&memory_.at(sp_));
        sp_ += 2;
    }
    void SetZero(bool isZero) { flags_ = isZero ? flags_ | kZero : flags_ & ~kZero; }
    void Jump(bool isDone) {
        const auto distance = static_cast<std::int8_t>(Byte());
        if (isDone) ip_ += static_cast<unsigned>(distance);
    }

    static constexpr unsigned kZero = 0x40;

    FlagsOf flagsOf_;
    std::array<unsigned, 8> registers_{};  // AX, CX, DX, BX, SP (unused), BP, SI, DI
    unsigned flags_;
    unsigned sp_ = 0;
    unsigned ip_ = 0;
    Bytes memory_;
};

TEST(UnpackCpu, BelowThe386ItSaysSo) {
    for (const auto& flags : {Flags8086, Flags286}) {
        OldCpu cpu(tools::cabarc::testing::ReadBytes(UNPACK_PROGRAM), flags);
        cpu.Run();
        EXPECT_FALSE(cpu.NeedsMore) << "it has no such instructions";
        EXPECT_EQ(11, cpu.ExitCode);
        EXPECT_EQ("UNPACK needs a 386 or a newer CPU\r\n", cpu.Written);
    }
}

TEST(UnpackCpu, OnA386ItGoesOn) {
    OldCpu cpu(tools::cabarc::testing::ReadBytes(UNPACK_PROGRAM), Flags386);
    cpu.Run();
    EXPECT_TRUE(cpu.NeedsMore);
    EXPECT_EQ("", cpu.Written);
}

}  // namespace
}  // namespace realmode::unpack::testing
