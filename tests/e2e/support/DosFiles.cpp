#include "tests/e2e/support/DosFiles.h"

namespace velbooter::e2e {

const std::vector<std::string>& DosFileNames() {
    static const std::vector<std::string> kNames = {
        "IO.SYS",     "COMMAND.COM", "ATTRIB.EXE",  "CHOICE.COM", "DELTREE.EXE",  "DISKCOPY.COM", "EDIT.COM",
        "EMM386.EXE", "EXTRACT.EXE", "FC.EXE",      "FDISK.EXE",  "FORMAT.COM",   "HIMEM.SYS",    "LABEL.EXE",
        "MEM.EXE",    "MODE.COM",    "MORE.COM",    "MOVE.EXE",   "SCANDISK.EXE", "SMARTDRV.EXE", "SORT.EXE",
        "SYS.COM",    "XCOPY.EXE",   "XCOPY32.EXE", "XCOPY32.MOD"};
    return kNames;
}

ShownMessage ImportQuestion() {
    return {
        "Your current windows installation doesn't contain the required\r\n"
        "DOS files needed for the Veltrane to funtion properly.\r\n"
        "Press OK to import the needed files from the Windows 98/98SE Setup CD.",
        "DOS Files no found",
        {"OK", "Cancel", "Help"},
        Picture::Exclamation};
}

std::vector<std::string> ImportStatuses() {
    std::vector<std::string> texts;
    int number = 0;
    for (const std::string& name : DosFileNames())
        texts.push_back("Please wait ... Importing " + name + " (" + std::to_string(++number) + "/25)");
    texts.emplace_back("Please wait ... Checking import process");
    return texts;
}

}  // namespace velbooter::e2e
