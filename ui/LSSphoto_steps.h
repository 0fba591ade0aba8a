#pragma once

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/stattext.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "app/photo_texts.h"
#include "core/LSSglobal.h"

// The four steps of straightening from a photograph, one under the other. Where there is no room
// for all the first ones scroll.

namespace warpline {

class PhotoSteps : public wxPanel {
 public:
  PhotoSteps(wxWindow* parent, const LSSglobal& global);

  // What the session knows by now.
  void ShowSession(const PhotoSession& session);
  void ShowDisplays(const std::vector<std::string>& names, std::size_t chosen);

  wxButton* clear = nullptr;
  wxChoice* display = nullptr;
  wxButton* open = nullptr;
  wxButton* left = nullptr;
  wxButton* right = nullptr;
  wxButton* find_near = nullptr;
  wxButton* largest = nullptr;
  wxButton* line = nullptr;
  wxListCtrl* results = nullptr;

  // Brings the step behind the photograph into view, where not all of them have room.
  void ShowCheck() { first_->Scroll(-1, first_->GetScrollLines(wxVERTICAL)); }

 private:
  // A text that may become another one.
  struct Said {
    wxStaticText* label = nullptr;
    std::string text;
  };

  wxButton* Button(const char* name, ToolText caption);
  void AddHeading(ToolText caption);
  void AddText(ToolText text);
  Said AddSaid(const char* name);
  void AddRow(std::initializer_list<wxWindow*> controls);
  void AddMarksStep();
  void AddPhotoStep();
  void AddCheckStep();
  void AddResultStep();
  wxString Wrapped(const std::string& text) const;
  bool Say(Said& said, const std::string& text) const;
  void ShowRows(const PhotoSession& session);

  const LSSglobal& global_;
  wxScrolledWindow* first_;  // the steps up to the result, which always shows
  wxWindow* pane_;           // that is being filled
  wxSizer* column_;          // of the pane
  std::vector<std::string> displays_;
  std::vector<PhotoResultRow> rows_;
  Said photo_;
  Said result_;
};

}  // namespace warpline
