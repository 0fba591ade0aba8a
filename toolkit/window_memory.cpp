#include "toolkit/window_memory.h"

#include <wx/display.h>
#include <wx/fileconf.h>
#include <wx/log.h>

#include <algorithm>
#include <system_error>

#include "platform/files.h"

namespace warpline {
namespace {

// A pipe or a device in the file's place is left alone; the memory then lasts as long as the run.
std::unique_ptr<wxConfigBase> ConfigOf(const std::filesystem::path& file) {
  const wxLogNull quiet;
  std::error_code ignored;
  std::filesystem::create_directories(file.parent_path(), ignored);
  const auto type = std::filesystem::status(file, ignored).type();
  const bool usable =
      type == std::filesystem::file_type::regular || type == std::filesystem::file_type::not_found;
  return std::make_unique<wxFileConfig>("", "", wxString::FromUTF8(Utf8Of(file)), "",
                                        usable ? wxCONFIG_USE_LOCAL_FILE : 0);
}

}  // namespace

WindowMemory::WindowMemory(const std::filesystem::path& file)
    : former_(wxPersistenceManager::Get()), config_(ConfigOf(file)) {
  wxPersistenceManager::Set(*this);
}

WindowMemory::~WindowMemory() {
  wxPersistenceManager::Set(former_);
  const wxLogNull quiet;
  config_.reset();
}

bool WindowMemory::Restore(wxTopLevelWindow& window) {
  if (!RegisterAndRestore(&window)) return false;
  // One that ended as an icon is wanted as a window again.
  window.Iconize(false);
  HoldOnScreen(window);
  return true;
}

wxConfigBase* WindowMemory::GetConfig() const {
  return config_.get();
}

void HoldOnScreen(wxTopLevelWindow& window) {
  const int number = wxDisplay::GetFromWindow(&window);
  const wxRect screen = wxDisplay(static_cast<unsigned>(std::max(number, 0))).GetClientArea();
  const wxRect place = window.GetRect();
  wxSize size = place.GetSize();
  size.DecTo(screen.GetSize());
  const wxPoint last = screen.GetBottomRight() - size + wxSize(1, 1);
  const wxRect held(wxPoint(std::clamp(place.x, screen.x, std::max(last.x, screen.x)),
                            std::clamp(place.y, screen.y, std::max(last.y, screen.y))),
                    size);
  if (held != place) window.SetSize(held);
}

}  // namespace warpline
