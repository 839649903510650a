#pragma once
// The five boxes of the product key, which a person fills as if they were one: typing goes on in the next box
// when one is full, and a whole key can be pasted.

#include <windows.h>

#include <array>

#include "src/setup/SetupData.h"
#include "src/ui/windows/FormWindow.h"

namespace velbooter {

class ProductKeyBoxes {
 public:
    ProductKeyBoxes() = default;
    ProductKeyBoxes(const ProductKeyBoxes&) = delete;
    ProductKeyBoxes& operator=(const ProductKeyBoxes&) = delete;

    /// Takes over the edit controls `boxes`, in their order, of the dialog `frame`. `failure` gets what their
    /// procedure throws. It and the object must live longer than the boxes do.
    void Attach(HWND frame, const std::array<HWND, kKeyGroups>& boxes, CaughtFailure& failure);

 private:
    static LRESULT CALLBACK Procedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR index,
                                      DWORD_PTR self);
    bool Paste(size_t first) const;
    void LeaveWhenFull(size_t index) const;

    HWND frame_ = nullptr;
    CaughtFailure* failure_ = nullptr;
    std::array<HWND, kKeyGroups> boxes_{};
};

}  // namespace velbooter
