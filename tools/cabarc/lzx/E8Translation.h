#pragma once
// The translation of x86 call targets: the relative address after each E8 byte becomes an absolute one, so
// that calls of the same routine look alike and are found as matches. It suits linked programs and harms
// others: in relocatable modules the operands are equal before and different after. The format has one
// switch for a whole folder, so each folder decides once. The mapping is one to one within a frame, so
// nothing has to be stored beside the translated bytes.

#include <cstdint>
#include <span>

namespace tools::cabarc::lzx {

/// The translation size in bytes: absolute addresses lie below it. This is the customary one; sizes nearer
/// to the folder's own gain nothing noticeable.
constexpr std::uint32_t kTranslationSize = 12'000'000;

/// Frames from this 0-based number on, which begin at 1 GiB, are not translated, so that a position fits a
/// signed 32-bit number.
constexpr std::uint32_t kTranslatedFrames = 32768;

/// Translates one frame in place. `folderOffset` is where the frame begins in the folder, a multiple of the
/// frame size. The last ten bytes of a frame and all frames from 1 GiB on stay as they are. Every
/// translation can be undone, whatever the bytes: an E8 that is no call costs only size.
void TranslateFrame(std::span<std::uint8_t> frame, std::uint32_t folderOffset);

/// Returns whether a folder that begins with `start`, bytes that are not translated yet, becomes smaller by
/// translation, judged by a quick estimate of both forms (TrialParse.h). Without bytes it returns false.
bool TranslationPays(std::span<const std::uint8_t> start);

}  // namespace tools::cabarc::lzx
