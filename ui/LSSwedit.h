#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <functional>

#include "app/curve_editor.h"
#include "app/engine.h"
#include "ui/LSSwedit_graph.h"
#include "ui/dialog_controls.h"
#include "ui/file_chooser.h"

// The curve editor's window: it forwards what the user does to the editor and shows what that
// holds. Closed without OK or Apply it leaves the live curve as it was.

namespace warpline {

// What the window works with; everything must outlive it.
struct EditorParts {
  Engine& engine;
  FileChoosers choosers;  // for shape files
  std::filesystem::path application_data;
  std::function<void()> applied;  // the live curve has changed
};

class LSSwedit : public wxDialog {
 public:
  LSSwedit(wxWindow* owner, Axis axis, EditorParts parts);

  const CurveEditor& Editor() const { return editor_; }

 private:
  wxSizer* CreateColumn();
  wxSizer* CreateReadOut();
  void BindControls();
  void SetSizes();
  void ShowPoint();
  void ShowCurve();
  void Seed();
  void Import();
  void Export();
  void Apply();
  void TakePointCount();
  void Confirm();

  EditorParts parts_;
  CurveEditor editor_;
  WaveGraph* graph_;
  wxSpinCtrl* point_num_ = nullptr;
  wxChoice* line_interp_ = nullptr;
  wxCheckBox* fixedpos_ = nullptr;
  wxCheckBox* symmetry_ = nullptr;
  wxButton* reverse_ = nullptr;
  wxButton* regularize_ = nullptr;
  wxButton* initselect_ = nullptr;
  wxButton* importbutton_ = nullptr;
  wxButton* exportbutton_ = nullptr;
  wxTextCtrl* posx_val_ = nullptr;
  wxTextCtrl* posy_val_ = nullptr;
  DialogButtons buttons_;
};

}  // namespace warpline
