#pragma once

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <functional>

#include "app/status_line.h"

// The line at the foot of the main window: connection, what the projector shows, a note, and a
// button that belongs to the note.

namespace warpline {

class MainStatus {
 public:
  // What the button does: try again what the note says that failed; stop what is under way.
  struct Handlers {
    std::function<void()> retry;
    std::function<void()> stop;
  };

  // Creates the controls as children of parent.
  MainStatus(wxWindow* parent, const LSSglobal& global, Handlers handlers);

  wxSizer* Sizer() const { return sizer_; }

  void Show(const StatusLine& line);

  // Work that follows the hand stands in the note's place; stoppable: with the button to end it.
  void ShowWork(const std::string& text, bool stoppable);

 private:
  enum class Offer { kNothing, kRetry, kStop };

  wxStaticText* Create(wxWindow* parent, const wxString& name, int proportion);
  void ShowLink(const std::string& link);
  void GiveLinkRoom();
  void SetNote(const std::string& note, const std::string& detail);
  void SetOffer(Offer offer);
  void Press() const;

  const LSSglobal& global_;
  Handlers handlers_;
  wxSizer* sizer_;
  wxStaticText* link_;
  wxStaticText* shown_;
  wxStaticText* note_;
  wxButton* act_;
  Offer offer_ = Offer::kNothing;
};

}  // namespace warpline
