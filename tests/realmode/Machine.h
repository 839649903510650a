#pragma once
// An emulated PC with one floppy drive and only what a test adds, in which an image is started. It runs in
// QEMU, whose firmware repeats the screen's text on the first serial line when there is no display.

#include <sys/types.h>

#include <string>
#include <vector>

namespace realmode::testing {

class Machine {
 public:
    enum class Display {
        Mirrored,  ///< Text() is the screen's text and what a program sends to COM1
        Apart,     ///< Text() is only what a program sends to COM1
    };

    /// Switches the machine on. `reportFile` receives what a program writes to port E9h; `more` are further
    /// words for QEMU, of which a later one overrides an earlier one.
    Machine(const std::string& image, const std::string& reportFile, Display display = Display::Mirrored,
            const std::vector<std::string>& more = {});
    /// Switches it off.
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    /// Waits until Text() contains `text` at least `times` times; returns false after 20 seconds, or when
    /// the machine has ended.
    bool WaitFor(const std::string& text, int times = 1);

    /// Waits until the machine ends by itself; returns its exit code, or -1 after 20 seconds.
    int WaitForEnd();

    /// Types a character on the keyboard. Needs a mirrored display.
    void Press(char key);

    const std::string& Text() const { return text_; }

 private:
    bool ReadMore(double secondsLeft);

    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string text_;
};

}  // namespace realmode::testing
