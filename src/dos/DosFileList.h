#pragma once
// The fixed list of the DOS system files that every boot disk needs.

#include <array>

namespace velbooter {

/// The required files in the order of import.
inline constexpr std::array<const char*, 25> kDosFiles{
    "IO.SYS",     "COMMAND.COM", "ATTRIB.EXE",  "CHOICE.COM",  "DELTREE.EXE",  "DISKCOPY.COM", "EDIT.COM",
    "EMM386.EXE", "EXTRACT.EXE", "FC.EXE",      "FDISK.EXE",   "FORMAT.COM",   "HIMEM.SYS",    "LABEL.EXE",
    "MEM.EXE",    "MODE.COM",    "MORE.COM",    "MOVE.EXE",    "SCANDISK.EXE", "SMARTDRV.EXE", "SORT.EXE",
    "SYS.COM",    "XCOPY.EXE",   "XCOPY32.EXE", "XCOPY32.MOD",
};

}  // namespace velbooter
