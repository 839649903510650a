#include "tests/e2e/support/Load.h"

#include "tests/e2e/support/DriverStore.h"

namespace velbooter::e2e {

namespace {

constexpr int kFilesOfFolder = 100;

std::string FolderOfFile(int number) {
    return "D" + FourDigits((number - 1) / kFilesOfFolder + 1);
}

}  // namespace

std::string FourDigits(int number) {
    const std::string digits = std::to_string(number);
    return std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}

void MakeCatalogue(const DemoFolder& folder, int count) {
    std::string text = "[Disks_List]\r\nCount=" + std::to_string(count) +
                       "\r\n[0]\r\nfile=BootDisk.img\r\naspi=0\r\nndis=1\r\nnetw=0\r\n";
    for (int i = 1; i <= count; ++i) {
        const std::string name = "disk" + FourDigits(i);
        text += "[" + std::to_string(i) + "]\r\nName=" + name + "\r\nDesc=The disk with the number " +
                std::to_string(i) + "\r\nIcon=1\r\nfile=" + name + ".img\r\naspi=0\r\nndis=0\r\nnetw=0\r\n";
    }
    folder.Write("files\\disklist.ini", text);
}

void MakeDrivers(const DemoFolder& folder, int count) {
    ClearDrivers(folder);
    AddDriver(folder, "ndis", "DRV0001", kLoadDescription);
    const std::string cabinet = folder.Read("drivers\\ndis\\DRV0001.cab");
    for (int i = 2; i <= count; ++i) folder.Write("drivers\\ndis\\DRV" + FourDigits(i) + ".cab", cabinet);
}

std::vector<std::string> MakeFiles(const DemoFolder& folder, int count) {
    std::vector<std::string> lines{"[Copy_Files]"};
    for (int i = 1; i <= count; ++i) {
        folder.Write("files\\load\\" + PathOfFile(i), PathOfFile(i));
        if (i % kFilesOfFolder == 1)
            lines.push_back("files\\load\\" + FolderOfFile(i) + "\\*.*=" + FolderOfFile(i) + "\\*.*");
    }
    return lines;
}

std::string PathOfFile(int number) {
    return FolderOfFile(number) + "\\F" + FourDigits(number) + ".TXT";
}

}  // namespace velbooter::e2e
