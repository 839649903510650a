#pragma once
// What one run of the program shares. There are no globals: two applications can exist in one process. Only
// the start, the wizard, and what ends a run or shows the help take the whole of it; any other step takes the
// parts that it works on. Everything runs on the program's one thread.

#include <cstdint>
#include <random>
#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// The staging folder of a run, and the numbers that name it.
struct StagingArea {
    std::string Folder;  ///< full path; "" before there is one

    /// Never seeded from the clock: every start tries the same sequence of names.
    std::minstd_rand Numbers;
};

struct Application {
    /// `applicationFolder` has no trailing backslash; `desktop` must outlive the application.
    Application(const std::string& applicationFolder, Desktop& desktop)
        : Paths(applicationFolder), Screen(desktop) {}
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    ApplicationPaths Paths;
    Desktop& Screen;
    FrmWizard Wizard;
    FrmDrivers Drivers;
    FrmWait Wait;

    std::int16_t CurrentStep = kWelcomePage;  ///< the page shown
    std::int16_t SelectedDiskIndex = 0;       ///< 1-based row of LV_Disk; 0 means none
    bool RunEnded = false;                    ///< a run is over or was cancelled
    bool ImageMissing = false;                ///< the image tool ran but left no new image
    StagingArea Staging;
};

}  // namespace velbooter
