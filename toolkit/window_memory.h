#pragma once

#include <wx/persist/toplevel.h>

#include <filesystem>
#include <memory>

class wxConfigBase;

// Where windows stood and how large they were, kept in a file from one run to the next.

namespace warpline {

// The toolkit's own memory of windows while this lives, but in a file of its own. Nobody is told of
// a file that cannot be read or written: the windows then stand where they do without one.
class WindowMemory : private wxPersistenceManager {
 public:
  // Makes the file's folder. A file that is not there is as good as an empty one.
  explicit WindowMemory(const std::filesystem::path& file);

  // Writes the file. The windows are gone by then.
  ~WindowMemory() override;
  WindowMemory(const WindowMemory&) = delete;
  WindowMemory& operator=(const WindowMemory&) = delete;

  // Gives the window the size and, where the system allows it, the place that the one of its name
  // (wxWindow::SetName, not empty) had, held inside the screen; false when nothing is known. What
  // the window has at its end is kept. Once a window, before it is shown.
  bool Restore(wxTopLevelWindow& window);

 private:
  wxConfigBase* GetConfig() const override;

  wxPersistenceManager& former_;
  std::unique_ptr<wxConfigBase> config_;
};

// Moves the window to the nearest place inside the usable part of its screen, and makes it as small
// as that where it is larger.
void HoldOnScreen(wxTopLevelWindow& window);

}  // namespace warpline
