#pragma once
// The five boxes of the product key, which the user fills as if they were one: typing continues in the next
// box when one is full, and a whole key can be pasted.

#include <windows.h>

#include <array>

#include "src/forms/Forms.h"
#include "src/ui/windows/FormWindow.h"

namespace velbooter {

/// Hooks into the procedures of the edit controls, so it can be neither copied nor moved.
class ProductKeyBoxes {
 public:
    ProductKeyBoxes() = default;
    ProductKeyBoxes(const ProductKeyBoxes&) = delete;
    ProductKeyBoxes& operator=(const ProductKeyBoxes&) = delete;

    /// Takes over the edit controls `boxes`, in their order, of the dialog `frame`, and limits each to a
    /// group's length. `failure` gets what their procedure throws. It and the object must outlive the boxes.
    void Attach(HWND frame, const std::array<HWND, kKeyGroups>& boxes, CaughtFailure& failure);

 private:
    static LRESULT CALLBACK Procedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam);
    bool Paste(size_t first) const;
    void LeaveWhenFull(size_t index) const;

    HWND frame_ = nullptr;
    CaughtFailure* failure_ = nullptr;
    std::array<HWND, kKeyGroups> boxes_{};
    WNDPROC edit_ = nullptr;  ///< the procedure of the system's edit controls
};

}  // namespace velbooter
