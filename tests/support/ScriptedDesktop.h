#pragma once
// A Desktop without a screen. The answers are scripted in the order in which the program must ask; every
// question is compared in full with the script, and what the forms showed at each repaint is recorded. A
// question that is not in the script fails the test, and so does a scripted one that was never asked.

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "src/run/Application.h"
#include "src/run/Desktop.h"

namespace velbooter::testing {

/// What the forms showed at one repaint.
struct View {
    bool PendingEvents = false;  ///< whether it was PendingEvents that painted, not Repaint
    std::string WizardStatus;
    std::string WaitStatus;
    bool WaitVisible = false;
    Label Step1, Step2, Step3, Step4;
    std::string Mark1, Mark2, Mark3, Mark4;
    int Progress = 0;
    int ProgressMax = 0;
};

/// One call of the help viewer.
struct HelpCall {
    std::int32_t Owner;
    std::string File;
    std::uint32_t Command;
    std::uint32_t Data;
    bool operator==(const HelpCall&) const = default;
};

/// Returns all fields of a message in readable lines; two messages are equal when these texts are.
std::string Describe(const Message& message);

/// Returns the message about a failed copy of `source`.
Message CopyFailure(const std::string& source);

class ScriptedDesktop : public Desktop {
 public:
    using Action = std::function<void()>;

    ScriptedDesktop() = default;
    ScriptedDesktop(const ScriptedDesktop&) = delete;
    ScriptedDesktop& operator=(const ScriptedDesktop&) = delete;
    /// Fails the test when scripted questions have not been asked.
    ~ScriptedDesktop() override;

    /// Records the forms of `app`, which must exist as long as the desktop is used, at every repaint.
    void Watch(const Application& app) { app_ = &app; }

    /// The next question must be exactly `message`; `meanwhile` runs while it is open.
    void Expect(const Message& message, Answer answer = Answer::Ok, Action meanwhile = {});

    /// The next question must be a message whose text contains all of `parts`.
    void ExpectMessageWith(const std::vector<std::string>& parts, Answer answer = Answer::Ok);

    /// The next question must be the format dialog, which closes with `result`.
    void ExpectFormatDialog(std::int32_t result, Action meanwhile = {});

    /// The next question must be the open dialog, preset to the file name `preset`; nothing means cancelled.
    void ExpectOpenDialog(const std::string& preset, const std::optional<std::string>& chosen);

    /// The next question must be the save dialog, preset to the file name `preset`; nothing means cancelled.
    void ExpectSaveDialog(const std::string& preset, const std::optional<std::string>& chosen);

    /// The next question must be the driver selection; `meanwhile` acts as the user.
    void ExpectDriverSelection(Action meanwhile);

    /// Whether the help window is open, and the calls of the help viewer so far.
    bool HelpIsOpen = false;
    std::vector<HelpCall> HelpCalls;
    /// The addresses opened so far.
    std::vector<std::string> Addresses;

    /// All messages so far; other questions are not among them.
    std::vector<Message> Messages;
    std::vector<View> Views;
    /// Runs at each Repaint and PendingEvents, after the view was recorded.
    Action OnPaint;

    /// Returns the texts of the wait window's status line as they were painted, without repetitions.
    std::vector<std::string> WaitStatuses() const;
    /// Returns the texts of the wizard's status label in the same way.
    std::vector<std::string> WizardStatuses() const;
    int Repaints() const;
    int EventPumps() const { return static_cast<int>(Views.size()) - Repaints(); }

    Answer ShowMessage(const Message& message) override;
    std::int32_t ShowFormatDialog() override;
    std::optional<std::string> ShowOpenDialog(const CommonDialog& dialog) override;
    std::optional<std::string> ShowSaveDialog(const CommonDialog& dialog) override;
    void CallHelp(std::int32_t owner, const std::string& file, HelpCommand command,
                  std::uint32_t data) override {
        HelpCalls.push_back({owner, file, static_cast<std::uint32_t>(command), data});
    }
    bool IsHelpOpen(const std::string& title) override;
    void OpenAddress(const std::string& address) override { Addresses.push_back(address); }
    void ShowDriverSelection() override;
    void Repaint() override;
    void PendingEvents() override;

 private:
    enum class Kind { Message, MessageParts, Format, Open, Save, Drivers };
    struct Step {
        Kind What = Kind::Message;
        Message Shown{};
        std::vector<std::string> Parts{};
        Answer Reply = Answer::Ok;
        std::int32_t FormatReply = 0;
        std::string Preset{};
        std::optional<std::string> Chosen{};
        Action Meanwhile{};
    };

    std::optional<Step> Take();
    std::optional<std::string> ShowFileDialog(Kind kind, const CommonDialog& dialog);
    void Record(bool pendingEvents);
    std::vector<std::string> Painted(std::string View::*field) const;

    const Application* app_ = nullptr;
    std::deque<Step> script_;
};

}  // namespace velbooter::testing
