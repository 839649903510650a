#pragma once
// Carries an exception past the system: none may cross a window procedure, so the procedure catches it at its
// edge and the message loop, which runs in the program's own code, throws it again.

#include <exception>
#include <utility>

namespace velbooter {

class CaughtFailure {
 public:
    /// Runs `action` and returns its result. What it throws is remembered, unless an earlier failure still
    /// is, and `otherwise` returned.
    template <class Action, class Result>
    Result Guard(Action action, Result otherwise) noexcept {
        try {
            return action();
        } catch (...) {
            if (!failure_) failure_ = std::current_exception();
            return otherwise;
        }
    }

    /// Whether a failure is remembered.
    bool Holds() const { return failure_ != nullptr; }

    /// Throws the remembered failure and forgets it; does nothing when there is none.
    void Rethrow() {
        if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
    }

 private:
    std::exception_ptr failure_;
};

}  // namespace velbooter
