#include "tests/e2e/support/ProgramUnderTest.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>

#include "tests/e2e/support/Evidence.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {

namespace {

using std::chrono::steady_clock;

constexpr DWORD kStep = 50;
constexpr std::chrono::milliseconds kPatience{kPatienceMs};

}  // namespace

ProgramUnderTest::ProgramUnderTest(const DemoFolder& folder, const std::string& arguments)
    : showsWizard_(arguments.empty()) {
    LeaveWindowsUnmanaged("velbooter.exe");
    static int number = 0;
    statusFile_ = folder.OutsidePath("status-" + std::to_string(++number) + ".txt");
    ::SetEnvironmentVariableA(kStatusFileVariable, statusFile_.c_str());
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    std::string commandLine = "\"" + folder.Path("velbooter.exe") + "\"" + arguments;
    const BOOL started = ::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                          folder.OutsidePath("").c_str(), &startup, &process_);
    if (started == 0)
        throw HarnessFailure("velbooter.exe did not start: error " + std::to_string(::GetLastError()));
}

ProgramUnderTest::ProgramUnderTest(DWORD process, bool showsWizard) : showsWizard_(showsWizard) {
    process_.dwProcessId = process;
    process_.hProcess = ::OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
    if (process_.hProcess == nullptr) throw HarnessFailure("velbooter.exe has ended before it was watched");
}

ProgramUnderTest::~ProgramUnderTest() {
    if (IsRunning()) {
        ADD_FAILURE() << RecordEvidence(ProcessId(), "the program still ran when the test was over");
        Kill();
    }
    if (spy_ != nullptr) ::UnhookWindowsHookEx(spy_);
    if (process_.hThread != nullptr) ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
}

ShownMessage ProgramUnderTest::Message() {
    const HWND box = NextDialog();
    PlaceSpy(box);
    box_ = box;
    return ReadMessageBox(box);
}

void ProgramUnderTest::Press(const std::string& button) {
    const HWND box = box_;
    PressAndKeep(button);
    WaitUntilGone(box);
    box_ = nullptr;
}

void ProgramUnderTest::PressAndKeep(const std::string& button) {
    if (box_ == nullptr) Fail("the test presses a button of a message that it has not read");
    PressButton(box_, button);
}

ShownMessage ProgramUnderTest::Answer(const std::string& button) {
    ShownMessage message = Message();
    Press(button);
    return message;
}

HWND ProgramUnderTest::FileDialog() {
    return NextDialog();
}

HWND ProgramUnderTest::DriverSelection() {
    selection_ = NextDialog();
    if (TextOf(selection_) != "Select Drivers")
        Fail("another window came where the driver selection was due");
    return selection_;
}

DWORD ProgramUnderTest::ExitCode() {
    // The click on its OK was posted, so the selection may still be there; it must not stay.
    if (selection_ != nullptr) WaitUntilHidden(selection_);
    const auto end = steady_clock::now() + kPatience;
    while (::WaitForSingleObject(process_.hProcess, kStep) == WAIT_TIMEOUT) {
        Look(Dialogs::Refused);
        if (steady_clock::now() > end) Fail("the program did not end");
    }
    DWORD code = 0;
    ::GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

// Very rarely Wine does not carry out this request at all.
void ProgramUnderTest::Kill() {
    constexpr DWORD kAgain = 5000;
    const auto end = steady_clock::now() + kPatience;
    do {
        ::TerminateProcess(process_.hProcess, kKilled);
    } while (::WaitForSingleObject(process_.hProcess, kAgain) == WAIT_TIMEOUT && steady_clock::now() < end);
}

HWND ProgramUnderTest::Wizard() {
    WaitUntil([this] { return TopLevelWindow("FrmWizard") != nullptr; }, "the wizard did not come");
    return TopLevelWindow("FrmWizard");
}

HWND ProgramUnderTest::HelpWindow() {
    showsHelp_ = true;
    WaitUntil([this] { return TopLevelWindow("HH Parent") != nullptr; }, "the help did not come");
    return TopLevelWindow("HH Parent");
}

void ProgramUnderTest::WaitUntil(const std::function<bool()>& condition, const std::string& what) const {
    const auto end = steady_clock::now() + kPatience;
    while (!condition()) {
        if (!IsRunning()) Fail(what + ": the program has ended");
        if (steady_clock::now() > end) Fail(what);
        ::Sleep(kStep / 5);
    }
}

HWND ProgramUnderTest::WaitWindow() const {
    return TopLevelWindow("FrmWait");
}

// Returns the visible window of this class, or null.
HWND ProgramUnderTest::TopLevelWindow(const std::string& className) const {
    for (const WindowInfo& window : TopLevelWindows(ProcessId())) {
        if (window.Class == className && window.Visible) return window.Handle;
    }
    return nullptr;
}

std::string ProgramUnderTest::Status() const {
    const HWND window = WaitWindow();
    std::string text;
    for (const WindowInfo& child : ChildWindows(window)) {
        if (child.Class == "Static") text += KeptTextOf(child.Handle);
    }
    return window == nullptr ? "" : text;
}

std::vector<std::string> ProgramUnderTest::StatusTexts() const {
    std::istringstream file(ReadFileAt(statusFile_));
    std::vector<std::string> texts;
    for (std::string line; std::getline(file, line);) texts.push_back(line);
    return texts;
}

bool ProgramUnderTest::IsRunning() const {
    return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

// Returns the dialog on the screen, or null.
HWND ProgramUnderTest::Look(Dialogs dialogs) {
    HWND dialog = nullptr;
    for (const WindowInfo& window : TopLevelWindows(ProcessId())) {
        if (!window.Visible) continue;
        const bool isExpected =
            (showsWizard_ && window.Class == "FrmWizard") || (showsHelp_ && window.Class == "HH Parent");
        if (isExpected) continue;
        if (window.Class == "FrmWait") {
            sawWaitWindow_ = true;
        } else if (window.Class == "#32770" && dialogs == Dialogs::Allowed) {
            dialog = window.Handle;
        } else {
            Fail("the program shows a window that the test does not expect");
        }
    }
    return dialog;
}

HWND ProgramUnderTest::NextDialog() {
    const auto end = steady_clock::now() + kPatience;
    for (;;) {
        if (const HWND dialog = Look(Dialogs::Allowed)) return dialog;
        if (!IsRunning()) {
            DWORD code = 0;
            ::GetExitCodeProcess(process_.hProcess, &code);
            Fail("the program ended with exit code " + std::to_string(code) + " where a message was due");
        }
        if (steady_clock::now() > end) Fail("no message came");
        ::Sleep(kStep);
    }
}

void ProgramUnderTest::WaitUntilGone(HWND window) {
    if (!Eventually([&] { return ::IsWindow(window) == FALSE; })) Fail("a window stays that should be gone");
}

void ProgramUnderTest::WaitUntilHidden(HWND window) {
    if (!Eventually([&] { return ::IsWindowVisible(window) == FALSE; }))
        Fail("a window stays that should be hidden");
}

void ProgramUnderTest::PlaceSpy(HWND window) {
    if (spy_ != nullptr) return;
    const HMODULE library = ::LoadLibraryA("e2e_spy.dll");
    if (library == nullptr) throw HarnessFailure("e2e_spy.dll is not beside the test program");
    const auto procedure =
        reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(::GetProcAddress(library, kSpyProcedure)));
    spy_ = ::SetWindowsHookExA(WH_CALLWNDPROCRET, procedure, library,
                               ::GetWindowThreadProcessId(window, nullptr));
    if (spy_ == nullptr) throw HarnessFailure("the spy could not be placed");
}

void ProgramUnderTest::Fail(const std::string& reason) const {
    throw HarnessFailure(RecordEvidence(ProcessId(), reason));
}

}  // namespace velbooter::e2e
