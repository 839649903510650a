#include "tests/support/ScriptedDesktop.h"

#include <gtest/gtest.h>

namespace velbooter::testing {

namespace {

std::string NameOf(Buttons choice) {
    switch (choice) {
        case Buttons::Ok:
            return "OK";
        case Buttons::OkCancel:
            return "OK, Cancel";
        case Buttons::AbortRetryIgnore:
            return "Abort, Retry, Ignore";
    }
    return "unknown buttons";
}

std::string NameOf(Icon picture) {
    switch (picture) {
        case Icon::None:
            return "no icon";
        case Icon::Critical:
            return "critical";
        case Icon::Exclamation:
            return "exclamation";
        case Icon::Information:
            return "information";
    }
    return "unknown icon";
}

/// The button that ends a question soonest, so that an unexpected question cannot loop.
Answer WayOut(Buttons choice) {
    if (choice == Buttons::AbortRetryIgnore) return Answer::Abort;
    return choice == Buttons::OkCancel ? Answer::Cancel : Answer::Ok;
}

}  // namespace

std::string Describe(const Message& message) {
    return "text: " + message.Text + "\ntitle: " + message.Title + "\nbuttons: " + NameOf(message.Choice) +
           "\nicon: " + NameOf(message.Picture) + "\nhelp: " + message.HelpFile + " " +
           std::to_string(message.HelpTopic);
}

Message CopyFailure(const std::string& source) {
    return {"Error while copying the file :\r\n" + source, "Error While Copying", Buttons::AbortRetryIgnore,
            Icon::Critical};
}

ScriptedDesktop::~ScriptedDesktop() {
    for (const Step& step : script_) {
        switch (step.What) {
            case Kind::Message:
                ADD_FAILURE() << "never shown:\n" << Describe(step.Shown);
                break;
            case Kind::MessageParts:
                ADD_FAILURE() << "a message was never shown that holds: "
                              << (step.Parts.empty() ? "" : step.Parts.front());
                break;
            case Kind::Format:
                ADD_FAILURE() << "the format dialog was never shown";
                break;
            case Kind::Open:
                ADD_FAILURE() << "the open dialog was never shown";
                break;
            case Kind::Save:
                ADD_FAILURE() << "the save dialog was never shown";
                break;
            case Kind::Drivers:
                ADD_FAILURE() << "the driver selection was never shown";
                break;
        }
    }
}

void ScriptedDesktop::Expect(const Message& message, Answer answer, Action meanwhile) {
    Step step;
    step.What = Kind::Message;
    step.Shown = message;
    step.Reply = answer;
    step.Meanwhile = std::move(meanwhile);
    script_.push_back(std::move(step));
}

void ScriptedDesktop::ExpectMessageWith(const std::vector<std::string>& parts, Answer answer) {
    Step step;
    step.What = Kind::MessageParts;
    step.Parts = parts;
    step.Reply = answer;
    script_.push_back(std::move(step));
}

void ScriptedDesktop::ExpectFormatDialog(std::int32_t result, Action meanwhile) {
    Step step;
    step.What = Kind::Format;
    step.FormatReply = result;
    step.Meanwhile = std::move(meanwhile);
    script_.push_back(std::move(step));
}

void ScriptedDesktop::ExpectOpenDialog(const std::string& preset, const std::optional<std::string>& chosen) {
    Step step;
    step.What = Kind::Open;
    step.Preset = preset;
    step.Chosen = chosen;
    script_.push_back(std::move(step));
}

void ScriptedDesktop::ExpectSaveDialog(const std::string& preset, const std::optional<std::string>& chosen) {
    Step step;
    step.What = Kind::Save;
    step.Preset = preset;
    step.Chosen = chosen;
    script_.push_back(std::move(step));
}

void ScriptedDesktop::ExpectDriverSelection(Action meanwhile) {
    Step step;
    step.What = Kind::Drivers;
    step.Meanwhile = std::move(meanwhile);
    script_.push_back(std::move(step));
}

std::optional<ScriptedDesktop::Step> ScriptedDesktop::Take() {
    if (script_.empty()) return std::nullopt;
    Step step = std::move(script_.front());
    script_.pop_front();
    return step;
}

Answer ScriptedDesktop::ShowMessage(const Message& message) {
    Messages.push_back(message);
    const std::optional<Step> step = Take();
    if (!step) {
        ADD_FAILURE() << "unexpected message\n" << Describe(message);
        return WayOut(message.Choice);
    }
    if (step->What == Kind::Message) {
        EXPECT_EQ(Describe(step->Shown), Describe(message));
    } else if (step->What == Kind::MessageParts) {
        for (const std::string& part : step->Parts) {
            EXPECT_NE(message.Text.find(part), std::string::npos) << "\"" << part << "\" is missing in\n"
                                                                  << Describe(message);
        }
    } else {
        ADD_FAILURE() << "a dialog was expected, not the message\n" << Describe(message);
        return WayOut(message.Choice);
    }
    if (step->Meanwhile) step->Meanwhile();
    return step->Reply;
}

std::int32_t ScriptedDesktop::ShowFormatDialog() {
    const std::optional<Step> step = Take();
    if (!step || step->What != Kind::Format) {
        ADD_FAILURE() << "unexpected format dialog";
        return kFormatCanceled;
    }
    if (step->Meanwhile) step->Meanwhile();
    return step->FormatReply;
}

std::optional<std::string> ScriptedDesktop::ShowFileDialog(Kind kind, const CommonDialog& dialog) {
    const std::optional<Step> step = Take();
    if (!step || step->What != kind) {
        ADD_FAILURE() << "unexpected " << (kind == Kind::Open ? "open" : "save") << " dialog, preset to "
                      << dialog.FileName;
        return std::nullopt;
    }
    EXPECT_EQ(step->Preset, dialog.FileName);
    return step->Chosen;
}

std::optional<std::string> ScriptedDesktop::ShowOpenDialog(const CommonDialog& dialog) {
    return ShowFileDialog(Kind::Open, dialog);
}

std::optional<std::string> ScriptedDesktop::ShowSaveDialog(const CommonDialog& dialog) {
    return ShowFileDialog(Kind::Save, dialog);
}

bool ScriptedDesktop::IsHelpOpen(const std::string& title) {
    EXPECT_EQ("The Corvane Help", title);
    return HelpIsOpen;
}

void ScriptedDesktop::ShowDriverSelection() {
    const std::optional<Step> step = Take();
    if (!step || step->What != Kind::Drivers) {
        ADD_FAILURE() << "unexpected driver selection";
        return;
    }
    EXPECT_TRUE(app_->Drivers.Visible);
    if (step->Meanwhile) step->Meanwhile();
    EXPECT_FALSE(app_->Drivers.Visible) << "nobody has closed the driver selection";
}

void ScriptedDesktop::Record(bool pendingEvents) {
    View view;
    view.PendingEvents = pendingEvents;
    if (app_ != nullptr) {
        const FrmWizard& wizard = app_->Wizard;
        view.WizardStatus = wizard.LblStatus.Caption;
        view.WaitStatus = app_->Wait.LblStatus.Caption;
        view.WaitVisible = app_->Wait.Visible;
        view.Step1 = wizard.LblMsg1;
        view.Step2 = wizard.LblMsg2;
        view.Step3 = wizard.LblMsg3;
        view.Step4 = wizard.LblMsg4;
        view.Mark1 = wizard.LblRight1.Caption;
        view.Mark2 = wizard.LblRight2.Caption;
        view.Mark3 = wizard.LblRight3.Caption;
        view.Mark4 = wizard.LblRight4.Caption;
        view.Progress = wizard.WorkProgress.Value;
        view.ProgressMax = wizard.WorkProgress.Max;
    }
    Views.push_back(view);
    if (OnPaint) OnPaint();
}

void ScriptedDesktop::Repaint() {
    Record(false);
}

void ScriptedDesktop::PendingEvents() {
    Record(true);
}

std::vector<std::string> ScriptedDesktop::Painted(std::string View::*field) const {
    std::vector<std::string> texts;
    for (const View& view : Views) {
        if (texts.empty() || texts.back() != view.*field) texts.push_back(view.*field);
    }
    return texts;
}

std::vector<std::string> ScriptedDesktop::WaitStatuses() const {
    return Painted(&View::WaitStatus);
}

std::vector<std::string> ScriptedDesktop::WizardStatuses() const {
    return Painted(&View::WizardStatus);
}

int ScriptedDesktop::Repaints() const {
    int count = 0;
    for (const View& view : Views) count += view.PendingEvents ? 0 : 1;
    return count;
}

}  // namespace velbooter::testing
