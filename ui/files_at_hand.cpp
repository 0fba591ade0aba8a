#include "ui/files_at_hand.h"

#include <wx/config.h>
#include <wx/dnd.h>

#include <utility>

#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr const char* kConfigGroup = "/RecentFiles";

class DropTarget : public wxFileDropTarget {
 public:
  explicit DropTarget(OpenFile open) : open_(std::move(open)) {}

  bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& names) override {
    if (names.empty()) return false;
    open_(PathOfWx(names[0]));
    return true;
  }

 private:
  OpenFile open_;
};

}  // namespace

void OpenDropped(wxWindow& window, OpenFile open) {
  window.SetDropTarget(new DropTarget(std::move(open)));
}

void RecentFiles::Attach(wxFrame& frame, wxMenu& menu, const OpenFile& open) {
  if (wxConfigBase* config = wxConfigBase::Get(false)) {
    const wxConfigPathChanger group(config, wxString(kConfigGroup) + "/");
    history_.Load(*config);
  }
  history_.UseMenu(&menu);
  history_.AddFilesToMenu();
  const auto chosen = [this, open](wxCommandEvent& event) {
    const auto number = static_cast<std::size_t>(event.GetId() - history_.GetBaseId());
    if (number < history_.GetCount()) open(PathOfWx(history_.GetHistoryFile(number)));
  };
  frame.Bind(wxEVT_MENU, chosen, history_.GetBaseId(),
             history_.GetBaseId() + static_cast<int>(kMostFiles) - 1);
}

void RecentFiles::Add(const std::filesystem::path& file) {
  history_.AddFileToHistory(WxPath(file));
  Keep();
}

void RecentFiles::Forget(const std::filesystem::path& file) {
  for (std::size_t i = 0; i < history_.GetCount(); ++i) {
    if (PathOfWx(history_.GetHistoryFile(i)) != file) continue;
    history_.RemoveFileFromHistory(i);
    return Keep();
  }
}

// At once, so that a run that is cut off has kept it.
void RecentFiles::Keep() {
  wxConfigBase* config = wxConfigBase::Get(false);
  if (config == nullptr) return;
  const wxConfigPathChanger group(config, wxString(kConfigGroup) + "/");
  history_.Save(*config);
  config->Flush();
}

}  // namespace warpline
