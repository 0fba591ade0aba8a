#include "toolkit/window_place.h"

#include <wx/fileconf.h>
#include <wx/log.h>
#include <wx/persist/window.h>

#include <algorithm>
#include <system_error>

#include "platform/files.h"
#include "toolkit/layout.h"

namespace warpline {
namespace {

constexpr int kLargest = 20000;  // DIP

// The size is that of the client area in DIP, so that it fits a screen of another scale too.
class PersistentPlace : public wxPersistentWindow<wxTopLevelWindow> {
 public:
  explicit PersistentPlace(wxTopLevelWindow* window) : wxPersistentWindow(window) {}

  wxString GetKind() const override { return "Window"; }

  void Save() const override {
    const wxTopLevelWindow* window = Get();
    if (window->IsMaximized() || window->IsIconized()) return;
    const wxSize size = window->ToDIP(window->GetClientSize());
    const wxPoint position = window->GetPosition();
    SaveValue("width", size.x);
    SaveValue("height", size.y);
    SaveValue("x", position.x);
    SaveValue("y", position.y);
  }

  bool Restore() override {
    wxTopLevelWindow* window = Get();
    wxSize size;
    wxPoint position;
    const bool sized = RestoreValue("width", &size.x) && RestoreValue("height", &size.y);
    const bool placed = RestoreValue("x", &position.x) && RestoreValue("y", &position.y);
    const wxRect screen = UsableScreen(placed ? position : window->GetPosition());
    // First to its screen, whose scale counts for the size.
    if (placed) window->SetPosition(HeldInside(screen, position, window->GetSize()));
    if (sized) {
      size =
          window->FromDIP(wxSize(std::clamp(size.x, 1, kLargest), std::clamp(size.y, 1, kLargest)));
      size.IncTo(window->GetMinClientSize());
      window->SetClientSize(size);
      wxSize outer = window->GetSize();
      outer.DecTo(screen.GetSize());
      window->SetSize(outer);
    }
    if (placed) window->SetPosition(HeldInside(screen, position, window->GetSize()));
    return placed;
  }
};

}  // namespace

WindowPlaces::WindowPlaces(const std::filesystem::path& file) {
  const wxLogNull quiet;
  std::error_code ignored;
  std::filesystem::create_directories(file.parent_path(), ignored);
  // A pipe or a device in the file's place is left alone; the places then last as long as the run.
  const auto type = std::filesystem::status(file, ignored).type();
  const bool usable =
      type == std::filesystem::file_type::regular || type == std::filesystem::file_type::not_found;
  config_ = std::make_unique<wxFileConfig>("", "", wxString::FromUTF8(Utf8Of(file)), "",
                                           usable ? wxCONFIG_USE_LOCAL_FILE : 0);
  wxConfigBase::Set(config_.get());
}

WindowPlaces::~WindowPlaces() {
  const wxLogNull quiet;
  wxConfigBase::Set(nullptr);
  config_.reset();
}

bool KeepPlace(wxTopLevelWindow& window) {
  if (wxConfigBase::Get(false) == nullptr) return false;
  return wxPersistenceManager::Get().RegisterAndRestore(static_cast<wxWindow*>(&window),
                                                        new PersistentPlace(&window));
}

}  // namespace warpline
