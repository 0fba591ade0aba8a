#include "app/hand_over.h"
#include "ui/LSSmain.h"
#include "ui/LSSmain_menu.h"

// Files that come to the main window by other ways than its open dialog.

namespace warpline {
namespace {

constexpr int kLookForRequests = 200;  // milliseconds

}  // namespace

// Whoever let the file fall waits until the drop has ended, so the file is opened afterwards.
void LSSmain::BindFiles() {
  const auto open = [this](const std::filesystem::path& file) { OpenNamed(file); };
  wxMenu* menu = nullptr;
  GetMenuBar()->FindItem(MenuId("menu_file_open"), &menu);
  recent_.Attach(*this, *menu, open);
  OpenDropped(*this, open);
  requests_.Begin(kLookForRequests, [this] { LookForRequest(); });
}

void LSSmain::OpenNamed(const std::filesystem::path& path) {
  CallAfter([this, path] {
    if (dialogs_.Any() || !IsThisEnabled()) return;
    WhenIdle([this, path] {
      if (!controller_.OpenNamed(path)) recent_.Forget(path);
    });
  });
}

// A dialog refuses it at once; a command is given the time to end.
void LSSmain::LookForRequest() {
  const std::filesystem::path folder = RequestFolder(parts_.application_data);
  if (dialogs_.Any() || (!IsThisEnabled() && !parts_.busy.IsBusy())) {
    NextRequest(folder, Requests::kRefuse);
  } else if (!parts_.busy.IsBusy()) {
    const auto file = NextRequest(folder, Requests::kTake);
    if (!file) return;
    if (IsIconized()) Iconize(false);
    Raise();
    OpenNamed(*file);
  }
}

void LSSmain::FileUsed(const std::filesystem::path& path) {
  recent_.Add(path);
}

}  // namespace warpline
