#pragma once

#include <cstddef>

#include "core/interfaces.h"

class wxWindow;

// Message boxes, each owned by the window that caused it.

namespace warpline {

class WindowMessages : public MessageDisplay {
 public:
  std::size_t Show(const UserMessage& message) override;
};

// The window that the user works in: the modal dialog opened last, else the main window, else none.
wxWindow* MessageOwner();

}  // namespace warpline
