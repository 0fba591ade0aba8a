#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include <filesystem>
#include <functional>
#include <memory>

#include "app/curve_editor.h"
#include "app/engine.h"
#include "ui/LSSwedit_coordinates.h"
#include "ui/LSSwedit_graph.h"
#include "ui/dialog_controls.h"
#include "ui/file_chooser.h"
#include "ui/window_busy.h"

// The curve editor's window: it forwards what the user does to the editor and shows what that
// holds. Closed without OK or Apply it leaves the live curve as it was.

namespace warpline {

// What the window works with; everything must outlive it.
struct EditorParts {
  Engine& engine;
  WindowBusy& busy;       // the engine's
  FileChoosers choosers;  // for shape files
  std::filesystem::path application_data;
  std::function<void(bool finished)> applied;  // the live curve has changed, for good or for now
};

class LSSwedit : public wxDialog {
 public:
  // While it exists, input is taken away from it instead of the main window, which is the owner.
  LSSwedit(wxTopLevelWindow* owner, Axis axis, EditorParts parts);
  ~LSSwedit() override;

  const CurveEditor& Editor() const { return editor_; }

 private:
  WaveGraph* CreateGraph();
  wxSizer* CreateColumn();
  wxSizer* CreateFoot();
  void BindButtons();
  void BindControls();
  void BindWindow();
  void BindSteps();
  void SetSizes();
  void ShowPoint();
  void ShowSteps();
  void ShowCurve();
  void Edited();
  void GoTo(bool (CurveEditor::*step)());
  bool IsTyping() const;
  void Seed();
  void Import();
  void Export();
  void Apply();
  void TakeTyped();
  void Confirm();
  void Cancel();

  bool IsLive() const;
  void Settled();

  EditorParts parts_;
  wxTopLevelWindow* owner_;
  CurveEditor editor_;
  bool leaving_ = false;  // nothing that the controls tell from then on is a change
  WaveGraph* graph_;
  wxStaticText* note_;  // what is wrong with the curve or with what was typed
  std::unique_ptr<CoordinateBoxes> coordinates_;
  wxSpinCtrl* point_num_ = nullptr;
  wxChoice* line_interp_ = nullptr;
  wxCheckBox* fixedpos_ = nullptr;
  wxCheckBox* symmetry_ = nullptr;
  wxButton* reverse_ = nullptr;
  wxButton* regularize_ = nullptr;
  wxButton* initselect_ = nullptr;
  wxButton* importbutton_ = nullptr;
  wxButton* exportbutton_ = nullptr;
  wxCheckBox* live_ = nullptr;
  wxButton* undo_ = nullptr;
  wxButton* redo_ = nullptr;
  DialogButtons buttons_;
};

}  // namespace warpline
