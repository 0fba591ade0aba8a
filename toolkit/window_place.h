#pragma once

#include <wx/confbase.h>
#include <wx/toplevel.h>

#include <filesystem>
#include <memory>

// Where windows were and how large, from one run to the next, by the windows' names.

namespace warpline {

// The file of those places, from its construction on. Makes its folder. A file that cannot be read
// or written is none and nothing is said of it.
class WindowPlaces {
 public:
  explicit WindowPlaces(const std::filesystem::path& file);
  ~WindowPlaces();
  WindowPlaces(const WindowPlaces&) = delete;
  WindowPlaces& operator=(const WindowPlaces&) = delete;

 private:
  std::unique_ptr<wxConfigBase> config_;
};

// Gives the window the size that one of its name had last, and its place, both held inside the
// screen, and remembers its own when it goes. True when it has got a place. Nothing happens while
// there are no WindowPlaces. To be called once a window, before it is shown.
bool KeepPlace(wxTopLevelWindow& window);

}  // namespace warpline
