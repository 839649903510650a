#include "tests/e2e/support/DriverStore.h"

#include <filesystem>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {

namespace {

std::string DescriptionFile(const std::string& group) {
    if (group == "aspi") return "scsi.txt";
    return group == "ndis" ? "ndis.txt" : "odi.txt";
}

std::string PciFile(const std::string& group) {
    return (group == "aspi" ? "scsi" : group) + ".pci";
}

// The description begins after a field of 13 characters.
std::string MenuLine(const std::string& name, const std::string& description) {
    std::string field = ":_" + name;
    field.resize(13, ' ');
    return field + description + "\r\n";
}

}  // namespace

void ClearDrivers(const DemoFolder& folder) {
    for (const char* group : {"aspi", "ndis", "odi16", "odi32"}) {
        const std::string path = std::string("drivers\\") + group;
        if (folder.Exists(path)) folder.Remove(path);
    }
}

void AddDriver(const DemoFolder& folder, const std::string& group, const std::string& name,
               const std::string& description) {
    const std::string sources = folder.OutsidePath("driver-" + group + "-" + name);
    WriteFileAt(sources + "\\" + DescriptionFile(group), MenuLine(name, description));
    WriteFileAt(sources + "\\" + PciFile(group), "8086 1229 " + name + "\r\n");
    WriteFileAt(sources + "\\" + name + ".DOS", name + " of " + group);
    std::filesystem::create_directories(folder.Path("drivers\\" + group));
    StartedTool cabarc("\"" + folder.Path("cabarc.exe") + "\" n \"" +
                           folder.Path("drivers\\" + group + "\\" + name + ".cab") + "\" *.*",
                       sources);
    if (cabarc.ExitCode() != 0) throw HarnessFailure("cabarc.exe does not pack the driver " + name);
}

}  // namespace velbooter::e2e
