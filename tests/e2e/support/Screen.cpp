#include "tests/e2e/support/Screen.h"

#include <filesystem>

#include "tests/e2e/support/WindowTree.h"
#include "tests/support/Patience.h"
#include "tests/support/WinePath.h"

namespace velbooter::e2e {

namespace {

// Returns the window of `process` that a user would type into, or null: the active one, else the topmost.
HWND ActiveWindow(DWORD process) {
    for (const WindowInfo& window : TopLevelWindows(process)) {
        if (!window.Visible || !window.Enabled) continue;
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        ::GetGUIThreadInfo(::GetWindowThreadProcessId(window.Handle, nullptr), &info);
        const bool takesInput = info.hwndActive != nullptr && ::IsWindowEnabled(info.hwndActive) != FALSE;
        return takesInput ? info.hwndActive : window.Handle;
    }
    return nullptr;
}

// An empty file with a new name in the folder for temporary files of this Windows, which belongs to its user
// alone. It is removed with the object. When it cannot be created, it has no name.
class PrivateFile {
 public:
    PrivateFile() {
        wchar_t folder[MAX_PATH + 1] = L"";
        wchar_t name[MAX_PATH] = L"";
        ::GetTempPathW(MAX_PATH + 1, folder);
        if (::GetTempFileNameW(folder, L"e2e", 0, name) != 0) path_ = name;
    }
    ~PrivateFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    // Its path in the system below Wine; empty when there is none.
    std::string Name() const { return path_.empty() ? "" : UnixPath(path_); }
    bool IsFilled() const {
        std::error_code error;
        const auto size = std::filesystem::file_size(path_, error);
        return !error && size > 0;
    }

 private:
    std::filesystem::path path_;
};

// Wine starts a program of the system below it as it starts one of Windows, but returns no handle to wait
// for: the command writes to a file when it has succeeded.
bool RunBelow(const std::string& command) {
    const PrivateFile done;
    const std::string unixPath = done.Name();
    if (unixPath.empty()) return false;
    std::string line = "Z:\\bin\\sh -c \"" + command + " && echo done >'" + unixPath + "'\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                         &process) == 0) {
        return false;
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return Eventually([&] { return done.IsFilled(); });
}

bool Import(const std::string& options, const std::string& unixPath) {
    const std::string folder = unixPath.substr(0, unixPath.rfind('/'));
    return RunBelow("mkdir -p '" + folder + "' && import -window root -depth 8 " + options + " '" + unixPath +
                    "'");
}

void SetResolution(DWORD dpi) {
    ::RegSetKeyValueA(HKEY_CURRENT_USER, "Control Panel\\Desktop", "LogPixels", REG_DWORD, &dpi, sizeof dpi);
}

}  // namespace

ScreenResolution::ScreenResolution(int dpi) {
    SetResolution(static_cast<DWORD>(dpi));
}

ScreenResolution::~ScreenResolution() {
    SetResolution(USER_DEFAULT_SCREEN_DPI);
}

void LeaveWindowsUnmanaged(const std::string& program) {
    const std::string key = "Software\\Wine\\AppDefaults\\" + program + "\\X11 Driver";
    const bool isWine = ::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
    if (isWine) ::RegSetKeyValueA(HKEY_CURRENT_USER, key.c_str(), "Managed", REG_SZ, "N", 2);
}

bool TakePicture(const std::string& unixPath) {
    return Import("", unixPath);
}

bool TakePictureOf(const RECT& part, const std::string& unixPath) {
    const auto number = [](LONG value) { return std::to_string(value); };
    return Import("-crop " + number(part.right - part.left) + "x" + number(part.bottom - part.top) + "+" +
                      number(part.left) + "+" + number(part.top) + " +repage",
                  unixPath);
}

std::string ScreenshotPath(const std::string& name) {
    return std::string(VELBOOTER_E2E_SCREENSHOTS) + "/" + name;
}

// Without a window manager no window may have the keyboard after a dialog has closed. Then the program's
// window takes it first, in Windows and on the screen, as it would by a user's click. When it has it
// already, nothing changes.
bool TypeKeys(DWORD process, const std::string& keys) {
    const HWND window = ActiveWindow(process);
    if (window == nullptr) return false;
    if (::GetForegroundWindow() != window) ::SetForegroundWindow(window);
    const auto number = reinterpret_cast<UINT_PTR>(::GetPropA(window, "__wine_x11_whole_window"));
    return RunBelow("xdotool windowfocus " + std::to_string(number) + " key " + keys);
}

// Wine is notified by a message of its own, which must not arrive between keys that are typed later.
bool TakeKeyboardAway(HWND window) {
    return RunBelow("xdotool windowfocus 0") && Eventually([&] { return ::GetForegroundWindow() != window; });
}

bool ClickAt(int x, int y) {
    return RunBelow("xdotool mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1");
}

}  // namespace velbooter::e2e
