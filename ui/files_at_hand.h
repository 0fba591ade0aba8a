#pragma once

#include <wx/filehistory.h>
#include <wx/frame.h>
#include <wx/modalhook.h>
#include <wx/timer.h>

#include <filesystem>
#include <functional>

// How files come to the main window beside its open dialog, and what it has to know for that.

namespace warpline {

using OpenFile = std::function<void(const std::filesystem::path& file)>;

// Opens the first of the files that are dropped onto the window, its controls included.
void OpenDropped(wxWindow& window, OpenFile open);

// The files used last, at the end of a menu, and in the program's configuration (wxConfigBase)
// when there is one.
class RecentFiles {
 public:
  // Shows them in a menu of the frame's, which lives as long as this object.
  void Attach(wxFrame& frame, wxMenu& menu, const OpenFile& open);

  void Add(const std::filesystem::path& file);
  void Forget(const std::filesystem::path& file);

 private:
  void Keep();

  static constexpr std::size_t kMostFiles = 8;
  wxFileHistory history_{kMostFiles};
};

// Counts the modal dialogs and boxes that are open, the system's own among them.
class OpenDialogs : private wxModalDialogHook {
 public:
  OpenDialogs() { Register(); }
  ~OpenDialogs() override { Unregister(); }
  OpenDialogs(const OpenDialogs&) = delete;
  OpenDialogs& operator=(const OpenDialogs&) = delete;

  bool Any() const { return count_ > 0; }

 private:
  int Enter(wxDialog*) override {
    ++count_;
    return wxID_NONE;
  }
  void Exit(wxDialog*) override { --count_; }

  int count_ = 0;
};

// Does something again and again (interval in milliseconds), also while a dialog is open.
class Repeat : public wxTimer {
 public:
  void Begin(int interval, std::function<void()> act) {
    act_ = std::move(act);
    Start(interval);
  }
  void Notify() override { act_(); }

 private:
  std::function<void()> act_;
};

}  // namespace warpline
