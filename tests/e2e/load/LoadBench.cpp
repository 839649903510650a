// Times the program under heavy loads, and how long it leaves another program's message unanswered:
// load_bench RUNS. Prints one table of medians. The program is driven by messages that are sent, so that an
// answer means that the work is done; nothing is hooked into it.

#include <windows.h>
// It needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "src/ui/windows/WizardIds.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/Load.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WindowTree.h"

namespace velbooter::e2e {
namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

struct Measured {
    double Ms = 0;
    double LongestPause = 0;
};

// Sends a window messages again and again and times the answers.
class Watch {
 public:
    explicit Watch(HWND window) : asker_([this, window] { Run(window); }) {}
    ~Watch() { Stop(); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Returns the longest time that an answer took, in milliseconds.
    double Stop() {
        stopped_ = true;
        if (asker_.joinable()) asker_.join();
        return longest_;
    }

 private:
    void Run(HWND window) {
        constexpr DWORD kStep = 5;
        while (!stopped_) {
            const auto start = Clock::now();
            ::SendMessageA(window, WM_NULL, 0, 0);
            longest_ = std::max(longest_, Since(start));
            ::Sleep(kStep);
        }
    }

    std::atomic<bool> stopped_ = false;
    double longest_ = 0;
    std::thread asker_;
};

// The medians of a row of the table by the size of the load, the rows in the order of their first
// measurement.
class Table {
 public:
    void Add(const std::string& row, int size, Measured measured) {
        if (rows_.count(row) == 0) order_.push_back(row);
        rows_[row][size].push_back(measured);
    }

    void Print(const char* runs) const {
        std::printf("The program under great loads under Wine, median of %s runs\n", runs);
        std::printf("%-52s %6s %9s %7s %9s\n", "step", "size", "ms", "/ half", "pause ms");
        for (const std::string& row : order_) PrintRow(row);
    }

 private:
    using Runs = std::vector<Measured>;

    static double Median(const Runs& runs, double Measured::*value) {
        std::vector<double> values;
        for (const Measured& run : runs) values.push_back(run.*value);
        std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                         values.end());
        return values[values.size() / 2];
    }

    void PrintRow(const std::string& row) const {
        double half = 0;
        for (const auto& [size, runs] : rows_.at(row)) {
            const double ms = Median(runs, &Measured::Ms);
            const std::string ratio = half > 0 ? std::to_string(ms / half).substr(0, 4) : "";
            std::printf("%-52s %6d %9.1f %7s %9.1f\n", row.c_str(), size, ms, ratio.c_str(),
                        Median(runs, &Measured::LongestPause));
            half = ms;
        }
    }

    std::vector<std::string> order_;
    std::map<std::string, std::map<int, Runs>> rows_;
};

HWND ControlOf(HWND window, int id) {
    for (const WindowInfo& child : ChildWindows(window)) {
        if (child.Id == id) return child.Handle;
    }
    throw HarnessFailure("there is no control " + std::to_string(id));
}

// The wizard of a program, and the times of clicks in it.
class TimedWizard {
 public:
    explicit TimedWizard(const DemoFolder& folder) {
        const auto start = Clock::now();
        program_ = std::make_unique<ProgramUnderTest>(folder, "");
        program_->WaitUntil([this] { return (window_ = Find("FrmWizard")) != nullptr; },
                            "the wizard did not come");
        start_.Ms = Since(start);
    }

    /// From the start of the program until the wizard is visible.
    Measured Start() const { return start_; }

    /// Clicks a button and waits until its work is done.
    Measured Click(int id) const { return Click(ControlOf(window_, id)); }
    Measured Click(HWND button) const {
        return Time([=] { ::SendMessageA(button, BM_CLICK, 0, 0); });
    }

    /// Clicks the first row of the list of files.
    Measured Tick() const {
        const HWND list = ControlOf(window_, IDC_FILES);
        constexpr LPARAM kInside = MAKELPARAM(5, 5);
        return Time([=] {
            ::SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, kInside);
            ::SendMessageA(list, WM_LBUTTONUP, 0, kInside);
        });
    }

    SelectionWindow Selection() const { return SelectionWindow(program_->DriverSelection()); }

    LRESULT Rows(int id, UINT question) const {
        return ::SendMessageA(ControlOf(window_, id), question, 0, 0);
    }

    void Close() const {
        ::SendMessageA(window_, WM_CLOSE, 0, 0);
        program_->ExitCode();
    }

    /// Clicks Finish on the final page.
    void Finish() const {
        ::PostMessageA(ControlOf(window_, IDC_FINISH), BM_CLICK, 0, 0);
        program_->ExitCode();
    }

 private:
    HWND Find(const std::string& className) const {
        for (const WindowInfo& window : TopLevelWindows(program_->ProcessId())) {
            if (window.Class == className && window.Visible) return window.Handle;
        }
        return nullptr;
    }

    Measured Time(const std::function<void()>& step) const {
        Watch watch(window_);
        const auto start = Clock::now();
        step();
        const double ms = Since(start);
        return {ms, watch.Stop()};
    }

    std::unique_ptr<ProgramUnderTest> program_;
    HWND window_ = nullptr;
    Measured start_;
};

void Require(bool holds, const char* what) {
    if (!holds) throw HarnessFailure(what);
}

void MeasureDisks(const DemoFolder& folder, int count, Table& table) {
    MakeCatalogue(folder, count);
    const TimedWizard wizard(folder);
    table.Add("Next: the list of disks", count, wizard.Click(IDC_NEXT));
    Require(wizard.Rows(IDC_DISKS, LVM_GETITEMCOUNT) == count + 1, "the list lacks disks");
    wizard.Close();
}

void MeasureDrivers(const DemoFolder& folder, int count, Table& table) {
    MakeCatalogue(folder, 1);
    MakeDrivers(folder, count);
    folder.SetCustomDisk(SmallDisk());
    const TimedWizard wizard(folder);
    table.Add("start with so many driver cabinets", count, wizard.Start());
    wizard.Click(IDC_NEXT);
    table.Add("Next: the disk's default drivers", count, wizard.Click(IDC_NEXT));
    table.Add("the driver selection opens (cabarc for each)", count, wizard.Click(IDC_SELECT_NDIS));
    const SelectionWindow selection = wizard.Selection();
    Require(::SendMessageA(selection.List(), LVM_GETITEMCOUNT, 0, 0) == count, "the list lacks drivers");
    table.Add("driver selection: Unselect All", count, wizard.Click(selection.Button("Unselect All")));
    table.Add("driver selection: Select All", count, wizard.Click(selection.Button("Select All")));
    table.Add("driver selection: OK", count, wizard.Click(selection.Button("OK")));
    wizard.Close();
}

void MeasureFiles(const DemoFolder& folder, int count, Table& table) {
    MakeCatalogue(folder, 1);
    folder.SetCustomDisk(SmallDiskWith(MakeFiles(folder, count)));
    const TimedWizard wizard(folder);
    wizard.Click(IDC_NEXT);
    table.Add("Next: the disk's files are brought together", count, wizard.Click(IDC_NEXT));
    table.Add("Next: the files page", count, wizard.Click(IDC_NEXT));
    Require(wizard.Rows(IDC_FILES, LB_GETCOUNT) > count, "the list lacks files");
    table.Add("files page: one tick", count, wizard.Tick());
    wizard.Tick();
    wizard.Click(IDC_NEXT);
    wizard.Click(IDC_IMAGE_28);
    table.Add("Finish: the image", count, wizard.Click(IDC_FINISH));
    wizard.Finish();
}

void MeasureBuild(const DemoFolder& folder, int count, Table& table) {
    MakeCatalogue(folder, 1);
    folder.SetCustomDisk(SmallDiskWith(MakeFiles(folder, count)));
    const auto start = Clock::now();
    ProgramUnderTest program(folder, " -t 288 custom");
    Require(program.ExitCode() == 0, "the disk is not built");
    table.Add("the unattended build", count, {Since(start), 0});
}

void MeasureAll(int runs, Table& table) {
    for (int run = 0; run < runs; ++run) {
        for (const int count : {50, 100, 200}) MeasureDisks(DemoFolder(), count, table);
        for (const int count : {125, 250, 500}) MeasureDrivers(DemoFolder(), count, table);
        for (const int count : {500, 1000, 2000}) {
            MeasureFiles(DemoFolder(), count, table);
            MeasureBuild(DemoFolder(), count, table);
        }
    }
}

}  // namespace
}  // namespace velbooter::e2e

int main(int count, char** words) {
    const int runs = count == 2 ? std::atoi(words[1]) : 0;
    if (runs < 1) {
        std::fputs("usage: load_bench RUNS\n", stderr);
        return 1;
    }
    try {
        velbooter::e2e::Table table;
        velbooter::e2e::MeasureAll(runs, table);
        table.Print(words[1]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "load_bench: %s\n", failure.what());
        return 1;
    }
    return 0;
}
