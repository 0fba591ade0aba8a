#include "ui/LSSmain.h"

#include <wx/wupdlock.h>

#include <algorithm>
#include <utility>

#include "core/messages.h"
#include "core/tool_texts.h"
#include "link/beamlink.h"
#include "link/library_origin.h"
#include "toolkit/layout.h"
#include "toolkit/native/first_paint.h"
#include "toolkit/native/list_choice.h"
#include "ui/LSSmain_menu.h"
#include "ui/LSSview.h"
#include "ui/icons.h"
#include "ui/number_entry.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// Drawn in many sizes, the icons are no part of the work, and come when all else is painted.
constexpr int kUntilIcons = 100;  // milliseconds

}  // namespace

LSSmain::LSSmain(MainParts parts)
    : wxFrame(nullptr, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE,
              "LSSmain"),
      parts_(std::move(parts)),
      controller_(parts_.engine, *this, parts_.application_data),
      recovery_(parts_.engine, controller_, parts_.application_data),
      panel_(new wxPanel(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL,
                         "main_panel")),
      picture_(*this, parts_, controller_, [this](std::string_view name) { Run(name); }) {
  SetTitle(WxText(controller_.Caption()));
  // By its client area: after SetSize GTK puts a window up only when it knows the frame around it.
  SetClientSize(WindowToClientSize(FirstSize(this)));
  PlaceAsStored();
}

void LSSmain::PlaceAsStored() {
  const wxPoint stored(parts_.engine.global.Settings.DialogPosX,
                       parts_.engine.global.Settings.DialogPosY);
  const wxPoint held = HeldInside(UsableScreen(stored), stored, GetSize());
  // GTK takes a move to where the window believes to be for none, and a window that was never
  // moved is put up anywhere.
  if (held == GetPosition()) SetPosition(held + wxPoint(1, 1));
  SetPosition(held);
}

// The window comes up painted whole. What may come a moment later follows when it can be used.
void LSSmain::ShowFirst() {
  ExpectLibrary();
  CreateContent();
  PaintOnce(*this);
  Show();
  controls_.ctrl_select[0]->SetFocus();
  CallAfter([this] {
    PlaceAsStored();  // only now does the window know the frame around it
    CreatePreviewWindow();
    ShowPreview();
    BindFiles();
    icons_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
      SetIcons(ProgramIcons());
      view_->SetIcons(GetIcons());
    });
    icons_.StartOnce(kUntilIcons);
  });
}

void LSSmain::CreateContent() {
  SetMenuBar(CreateMenuBar(parts_.engine.global));
  controls_ = CreateMainControls(panel_, parts_.engine.global, CreateSliderHandlers(),
                                 CreateStatusHandlers());
  SetSizes();
  parts_.busy.Attach(this);
  parts_.busy.SetTexts(parts_.engine.global);
  parts_.busy.SetWatcher([this] { FollowingChanged(); });
  parts_.busy.SetSilentControl(controls_.scr_select);
  BindControls();
  BindWindow();
  const int off = MenuId("menu_opt_picture_off");
  picture_.Attach(*GetMenuBar()->FindItem(off)->GetMenu(), off);
  ShowModel();
}

wxSize LSSmain::FirstSize(const wxWindow* where) {
  return wxWindow::FromDIP(wxSize(560, 360), where);
}

// Shows everything of every group. Leaves the last one shown.
void LSSmain::SetLeastSize() {
  wxSize least = GetSizer()->ComputeFittingClientSize(this);
  for (int group = 0; group < kGroupCount; ++group) {
    ShowGroupTexts(controls_, parts_.engine.global, group);
    least.IncTo(GetSizer()->ComputeFittingClientSize(this));
  }
  SetMinClientSize(least);
}

// Only the width grows.
void LSSmain::SetSizes() {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(panel_, wxSizerFlags(1).Expand());
  SetSizer(sizer);
  SetLeastSize();
  SetSize(FirstSize(this));
  wxSize first = GetClientSize();
  first.IncTo(GetMinClientSize());
  SetClientSize(first);
  SetMaxSize(wxSize(-1, GetSize().y));
  PlaceAsStored();
  Layout();  // a window that has its size already is not told of it again
}

// Letters do not grow quite as the scale does.
void LSSmain::FitToScale() {
  const wxWindowUpdateLocker unpainted(panel_);
  SetMaxSize(wxDefaultSize);
  SetLeastSize();
  ShowGroup(controls_, parts_.engine.global, controller_.Group());
  wxSize fitting = GetClientSize();
  fitting.IncTo(GetMinClientSize());
  SetClientSize(fitting);
  SetMaxSize(wxSize(-1, std::max(FirstSize(this).y, GetSize().y)));
  Layout();
}

SliderHandlers LSSmain::CreateSliderHandlers() {
  const auto idle = [this] { return !parts_.busy.IsBusy() || parts_.busy.IsFollowing(); };
  return {
      [this, idle](int row, int value) {
        if (idle()) controller_.MoveSlider(row, value);
      },
      [this, idle](int row) {
        if (!idle()) return;
        controller_.ReleaseSlider();
        controls_.rows[static_cast<std::size_t>(row)]->FocusSlider();
      },
      [this, idle](int, int key_code, bool shift_alone) {
        if (idle()) controller_.ReleaseKey(key_code, shift_alone);
      },
      [this, idle](int) {
        if (idle()) controller_.ReleasePageKey();
      },
      [this, idle](int row) {
        if (idle()) controller_.PressIcon(kSliderCount * controller_.Group() + row);
      },
      [this](int row) { WhenIdle([this, row] { EnterNumber(row); }); },
  };
}

void LSSmain::EnterNumber(int row) {
  SliderRow& slider = *controls_.rows[static_cast<std::size_t>(row)];
  const LSSglobal& global = parts_.engine.global;
  const auto number = AskNumber(this, global, slider.SpokenName(),
                                SetUpSlider(global.Correction, controller_.Group(), row));
  if (number) slider.Take(*number);
}

MainStatus::Handlers LSSmain::CreateStatusHandlers() {
  return {[this] { WhenIdle([this] { controller_.Apply(); }); }, [this] { parts_.busy.Cancel(); }};
}

void LSSmain::BindControls() {
  WhenChosen(
      *controls_.scr_select, [this] { return parts_.engine.global.Correction.ScreenType; },
      [this](int type) { WhenIdle([this, type] { controller_.SelectScreenType(type); }); });
  for (int group = 0; group < kGroupCount; ++group) {
    controls_.ctrl_select[static_cast<std::size_t>(group)]->Bind(
        wxEVT_RADIOBUTTON, [this, group](wxCommandEvent&) { controller_.SelectGroup(group); });
  }
  controls_.lr_symm->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    controller_.SetSymmetry(kHorizontal, event.IsChecked());
  });
  controls_.ud_symm->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    controller_.SetSymmetry(kVertical, event.IsChecked());
  });
  controls_.testpattern->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    controller_.SetTestPattern(event.IsChecked());
  });
  for (wxButton* button : {controls_.initbutton, controls_.applybutton, controls_.storebutton,
                           controls_.exitbutton, controls_.corre_edit}) {
    button->Bind(wxEVT_BUTTON,
                 [this, button](wxCommandEvent&) { Run(button->GetName().utf8_string()); });
  }
}

void LSSmain::BindWindow() {
  Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
    if (MenuName(event.GetId()).empty()) {
      event.Skip();
    } else {
      Run(MenuName(event.GetId()));
    }
  });
  Bind(wxEVT_CHILD_FOCUS, [this](wxChildFocusEvent& event) {
    parts_.busy.NoteFocus(event.GetWindow());
    event.Skip();
  });
  Bind(wxEVT_CLOSE_WINDOW, &LSSmain::OnClose, this);
  Bind(wxEVT_ICONIZE, &LSSmain::OnIconize, this);
  Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
    event.Skip();
    CallAfter([this] { FitToScale(); });
  });
  Bind(wxEVT_CHAR_HOOK, &LSSmain::OnCharHook, this);
}

// Who tries the tool with a simulated projector sees so before anything is sent. The library is not
// loaded for that: one that fails then takes the tool with it.
void LSSmain::ExpectLibrary() {
  const bool stands_in = OriginOf(parts_.program_folder, kBeamlinkName) == LibraryOrigin::kStandIn;
  parts_.engine.link.ExpectSimulators(stands_in);
}

void LSSmain::ShowTitle() {
  const wxString title = WxText(controller_.Caption());
  if (title != GetTitle()) SetTitle(title);
}

void LSSmain::ShowModel() {
  ShowTitle();
  controls_.scr_select->SetSelection(parts_.engine.global.Correction.ScreenType);
  ShowMenus();
  ShowGroup(controls_, parts_.engine.global, controller_.Group());
  parts_.busy.SetFallbackControl(
      controls_.ctrl_select[static_cast<std::size_t>(controller_.Group())]);
  controls_.applybutton->Enable(controller_.ApplyEnabled());
  controls_.testpattern->SetValue(parts_.engine.global.Settings.TestPattern == 1);
  ShowStatus();
  ShowPreview();
}

void LSSmain::ShowValues() {
  ShowTitle();
  ShowGroupValues(controls_, parts_.engine.global, controller_.Group(), picture_.IsShown());
  GetMenuBar()->Check(MenuId("menu_edit_compare"), controller_.Comparing());
  ShowSteps();
  ShowStatus();
  RedrawPreview();
  recovery_.NoteMove();
}

void LSSmain::ShowSteps() {
  const LSSglobal& global = parts_.engine.global;
  NameStep(*GetMenuBar(), "menu_edit_undo", warpline::TextOf(global, ToolText::kMenuUndo),
           controller_.UndoName(), "Ctrl+Z");
  NameStep(*GetMenuBar(), "menu_edit_redo", warpline::TextOf(global, ToolText::kMenuRedo),
           controller_.RedoName(), "Ctrl+Y");
}

void LSSmain::ShowStatus() {
  const WindowBusy& busy = parts_.busy;
  GetMenuBar()->Check(MenuId("menu_help_record"), parts_.engine.recording.IsOn());
  picture_.Changed();
  controls_.status->Show(controller_.Status());
  if (!busy.IsFollowing() || busy.Steps() == 0) return;
  controls_.status->ShowWork(ProgressText(parts_.engine.global, busy.Step(), busy.Steps()),
                             busy.IsLong());
}

// What had to wait comes with the next events, when nothing is under way any more.
void LSSmain::FollowingChanged() {
  ShowStatus();
  if (waiting_ && !parts_.busy.IsFollowing()) {
    CallAfter([this] { WhenIdle(std::exchange(waiting_, nullptr)); });
  }
}

void LSSmain::WhenIdle(const std::function<void()>& act) {
  if (!act) return;
  if (parts_.busy.IsFollowing()) {
    waiting_ = act;
  } else if (!parts_.busy.IsBusy() && !dialogs_.Any() && !closing_) {
    act();  // what waited may come when a dialog has been opened, even to close the window
  }
}

void LSSmain::ShowMenus() {
  wxMenuBar* bar = GetMenuBar();
  const Settings& settings = parts_.engine.global.Settings;
  const auto& projection = parts_.engine.global.Correction.Projection;
  bar->Check(MenuId(controller_.RealTime() ? "menu_opt_auto_on" : "menu_opt_auto_off"), true);
  bar->Check(MenuId(settings.CommunicationMode == 1 ? "menu_opt_detailed" : "menu_opt_simple"),
             true);
  bar->Check(MenuId("menu_opt_ud_reverse"), projection[kVertical] != 0);
  bar->Check(MenuId("menu_opt_lr_reverse"), projection[kHorizontal] != 0);
  bar->Enable(MenuId("menu_opt_auto"), controller_.RealTimeMenuEnabled());
  bar->Check(MenuId("menu_edit_compare"), controller_.Comparing());
  ShowSteps();
}

std::filesystem::path LSSmain::ChooseFileToOpen(const std::filesystem::path& folder) {
  return parts_.choosers.open(this, folder);
}

std::filesystem::path LSSmain::ChooseFileToSave(const std::filesystem::path& folder,
                                                const std::filesystem::path& current) {
  return parts_.choosers.save(this, folder, current);
}

// A question may be open already when the window system asks once more, and a command that is at
// work, or a dialog that keeps the window disabled, still uses it.
void LSSmain::OnClose(wxCloseEvent& event) {
  if (event.CanVeto() && parts_.busy.IsFollowing()) {
    WhenIdle([this] { Close(); });
    event.Veto();
    return;
  }
  if (event.CanVeto() && (closing_ || parts_.busy.IsBusy() || !IsThisEnabled())) {
    event.Veto();
    return;
  }
  closing_ = true;
  const wxPoint position = GetPosition();
  const bool may_close = controller_.Close(position.x, position.y);
  closing_ = false;
  if (!may_close && event.CanVeto()) {
    event.Veto();
    return;
  }
  closing_ = true;                 // for good: no dialog may open any more
  if (may_close) recovery_.End();  // who ends without an answer may want the work back
  if (view_ != nullptr) view_->Hide();
  picture_.End();
  requests_.Stop();  // who asks now takes this one's place
  Destroy();
}

}  // namespace warpline
