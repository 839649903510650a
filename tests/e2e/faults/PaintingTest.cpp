// Windows while a tool or a plugin works: what another window has covered is painted again, and the user's
// input waits.

#include <gtest/gtest.h>

#include <array>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/WizardTest.h"

namespace velbooter::e2e {
namespace {

RECT PlaceOf(HWND window) {
    RECT place{};
    ::GetClientRect(window, &place);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

// A black window of the test above all others.
class Cover {
 public:
    explicit Cover(const RECT& place)
        : window_(::CreateWindowExA(WS_EX_TOPMOST | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, "Static", "",
                                    WS_POPUP | SS_BLACKRECT, place.left, place.top, place.right - place.left,
                                    place.bottom - place.top, nullptr, nullptr, nullptr, nullptr)) {
        ::ShowWindow(window_, SW_SHOWNOACTIVATE);
        ::UpdateWindow(window_);
    }
    ~Cover() { ::DestroyWindow(window_); }
    Cover(const Cover&) = delete;
    Cover& operator=(const Cover&) = delete;

    /// Handles the messages by which the window is painted.
    static void Paint() {
        MSG message{};
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) ::DispatchMessageA(&message);
    }

 private:
    HWND window_;
};

class Painting : public WizardTest {
 protected:
    std::string PictureOf(HWND window) const {
        const std::string path = ScreenshotPath("painting.ppm");
        if (!TakePictureOf(PlaceOf(window), path)) throw HarnessFailure("no picture taken");
        return ReadFileAt("Z:" + path);
    }

    // The window may have been painted without the screen showing it yet, so two equal pictures in a row
    // count.
    std::string SteadyPictureOf(const ProgramUnderTest& program, HWND window) const {
        std::string last;
        std::string picture = PictureOf(window);
        program.WaitUntil(
            [&] {
                last = std::move(picture);
                picture = PictureOf(window);
                return picture == last && ShowsSomething(picture);
            },
            "a window does not come to rest");
        return picture;
    }

    // Whether a picture shows anything but its background.
    static bool ShowsSomething(const std::string& picture) {
        constexpr size_t kHeaderBytes = 64;
        return picture.find_first_not_of(picture.back(), kHeaderBytes) != std::string::npos;
    }

    // Waits until the window looks like `picture`, or unlike it.
    void WaitForLook(const ProgramUnderTest& program, HWND window, const std::string& picture,
                     bool alike) const {
        program.WaitUntil(
            [&] {
                Cover::Paint();
                return (PictureOf(window) == picture) == alike;
            },
            alike ? "a window is not painted again" : "a window is not covered");
    }

    void ExpectPaintsItselfAgain(const ProgramUnderTest& program, HWND window) const {
        const std::string before = SteadyPictureOf(program, window);
        {
            const Cover cover(PlaceOf(window));
            WaitForLook(program, window, before, false);
        }
        WaitForLook(program, window, before, true);
    }
};

class PaintingWhileAToolWorks : public Painting, public testing::WithParamInterface<const char*> {};

TEST_P(PaintingWhileAToolWorks, WaitWindowComesBackFromBehindAnother) {
    folder_.SetCustomDisk(DiskWithAModule());
    const HeldTool tool(folder_, GetParam());
    ProgramUnderTest program(folder_, kBuild);
    program.WaitUntil([&] { return tool.IsAtWork(); }, "the tool is not run");
    ExpectPaintsItselfAgain(program, program.WaitWindow());
    // A request to close it does nothing.
    ::PostMessageA(program.WaitWindow(), WM_CLOSE, 0, 0);
    Ask(program.WaitWindow(), WM_NULL);
    EXPECT_NE(program.WaitWindow(), nullptr);
    tool.Release();
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder_, folder_.Path(kTarget), kSmallImageBytes);
}

INSTANTIATE_TEST_SUITE_P(Each, PaintingWhileAToolWorks, testing::Values("cabarc", "bfi"),
                         [](const auto& info) { return std::string(info.param); });

TEST_F(Painting, WaitWindowComesBackWhileAPluginWorks) {
    folder_.Write("plugins\\slow\\SLOW.TXT", "a file of the plugin");
    CopyTestProgram("e2e_plugin.exe", folder_.Path("plugins\\slow.exe"));
    const HeldTool plugin(folder_, "plugins\\slow");
    ProgramUnderTest program(folder_, " -plugin slow" + kBuild);
    program.WaitUntil([&] { return plugin.IsAtWork(); }, "the plugin is not run");
    ExpectPaintsItselfAgain(program, program.WaitWindow());
    plugin.Release();
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    EXPECT_EQ("a file of the plugin",
              ExpectImage(folder_, folder_.Path(kTarget), kSmallImageBytes).Files().at("SLOW.TXT"));
}

TEST_F(Painting, WizardComesBackWhileTheImageIsWritten) {
    const HeldTool tool(folder_, "bfi");
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    wizard.Click(IDC_FINISH);
    Program().WaitUntil([&] { return tool.IsAtWork(); }, "the image is not written");
    ExpectPaintsItselfAgain(Program(), wizard.Handle());
    tool.Release();
    ExpectTheEnd(wizard, "Operation completed successfully");
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

}  // namespace
}  // namespace velbooter::e2e
