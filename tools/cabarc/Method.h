#pragma once
// The compression methods of a cabinet folder: their names on the command line and their numbers in the
// folder record (docs/formats/cabinet.md).

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tools::cabarc {

/// One of the methods that this packer can use.
struct Method {
    enum class Kind { Stored, MsZip, Lzx };

    Kind Type = Kind::MsZip;
    int WindowBits = 0;  ///< LZX only: base-2 logarithm of the window, 15 to 21

    friend bool operator==(const Method&, const Method&) = default;
};

/// Reads "NONE", "MSZIP" or "LZX:15" to "LZX:21", in any case; nothing when the text is none of them.
std::optional<Method> ParseMethod(std::string_view text);

/// Returns the number by which a folder record names the method: 0 NONE, 1 MSZIP, 3 LZX with the window bits
/// in bits 8 to 12.
std::uint16_t MethodCode(const Method& method);

/// Returns the name of a folder record's number for a listing: as ParseMethod reads it, "QUANTUM:n" for a
/// method of other packers, "method n" for an unknown one. Only the low four bits name the method.
std::string MethodName(std::uint16_t code);

}  // namespace tools::cabarc
