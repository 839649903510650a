#include "src/ui/DiskSpace.h"

#include <algorithm>
#include <limits>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/RuntimeError.h"
#include "src/disk/output/FloppyLayout.h"
#include "src/drivers/DriverIndex.h"
#include "src/drivers/DriverPreparation.h"
#include "src/drivers/NetworkLists.h"

namespace velbooter {

namespace {

constexpr std::uint64_t kKilobyte = 1024;

// A list begins with its headings. A driver adds its description to one list, and a short line for each
// adapter to the other.
constexpr std::uint64_t kListHeadings = 120;
constexpr std::uint64_t kListBytesOfDriver = 80;

std::uint64_t SizeOf(const ApplicationPaths& paths, const std::string& file) {
    return ListedSize(paths.PathOf(file)).value_or(0);
}

void AddFiles(const ListBox& files, FloppyLayout& layout) {
    for (int i = 0; i < files.ListCount(); ++i) {
        const std::string entry = files.List(i);
        if (files.Selected(i) || IsDriverEntry(entry) || IsPrebuiltEntry(entry))
            layout.Add(entry, static_cast<std::uint64_t>(files.ItemData(i)));
    }
}

void AddDrivers(const ApplicationPaths& paths, const FrmWizard& wizard, FloppyLayout& layout) {
    if (!FileExists(paths.PathOf(kDriverIndexFile))) return;
    std::uint64_t count = 0;
    ChosenDrivers drivers(paths, wizard);
    while (const auto cabinet = drivers.Next()) {
        if (cabinet->empty()) continue;
        layout.Add("lib\\" + *cabinet, SizeOf(paths, InDrivers(*cabinet)));
        ++count;
    }
    if (!HasNetworkLists(wizard)) return;
    for (const char* list : {kNicListEntry, kPciListEntry})
        layout.Add(list, kListHeadings + count * kListBytesOfDriver);
}

}  // namespace

void MeasureSpace(Application& app) {
    // Far more than any floppy holds.
    constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
    ListBox& files = app.Wizard.LstFiles;
    for (int i = 0; i < files.ListCount(); ++i) {
        const std::uint64_t bytes = std::min(SizeOf(app.Paths, InCabs(files.List(i))), kMost);
        files.SetItemData(i, static_cast<std::int32_t>(bytes));
    }
}

void ShowSpace(Application& app) {
    const FrmWizard& wizard = app.Wizard;
    const floppy::Geometry& geometry = *floppy::GeometryOfType(wizard.OptImage28.Value ? "288" : "144");
    FloppyLayout layout(geometry);
    AddFiles(wizard.LstFiles, layout);
    try {
        AddDrivers(app.Paths, wizard, layout);
    } catch (const RuntimeError&) {
        // The build reports what is wrong with Drivers.ini; a line that only informs must not end the run.
    }
    const std::uint64_t capacity = std::uint64_t{geometry.DataClusters()} * geometry.ClusterBytes();
    app.Wizard.LblSpace.Caption = "Selected files: " + std::to_string(layout.Bytes() / kKilobyte) +
                                  " KB. A " + geometry.Name + " disk holds " +
                                  std::to_string(capacity / kKilobyte) + " KB.";
    app.Wizard.LblSpace.Warning = !layout.Fits();
}

}  // namespace velbooter
