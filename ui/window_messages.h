#pragma once

#include <string>

#include "core/interfaces.h"

class wxWindow;

// Message boxes, each owned by the window that caused it.

namespace warpline {

class WindowMessages : public MessageDisplay {
 public:
  void Show(const std::string& title, const std::string& text, MessageIcon icon) override;
  MessageAnswer Ask(const std::string& title, const std::string& text) override;
};

// The window that the user works in: the modal dialog opened last, else the main window, else none.
wxWindow* MessageOwner();

}  // namespace warpline
