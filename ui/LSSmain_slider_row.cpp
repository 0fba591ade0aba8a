#include "ui/LSSmain_slider_row.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

#include <algorithm>
#include <utility>

#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "toolkit/native/slider_place.h"
#include "ui/icons.h"
#include "ui/slider_keys.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// How long no notch of the wheel comes before it counts as let go of, in milliseconds.
constexpr int kWheelRest = 250;

constexpr int kZeroHeight = 5;  // DIP

// As wide as any value.
constexpr const char* kWidestEnd = "-32767";
constexpr const char* kWidestValue = "-32767";

wxStaticText* CreateEnd(wxWindow* parent, const wxString& name, long align) {
  return new wxStaticText(parent, wxID_ANY, kWidestEnd, wxDefaultPosition, wxDefaultSize,
                          align | wxST_NO_AUTORESIZE, name);
}

}  // namespace

SliderRow::SliderRow(wxWindow* parent, int row, SliderHandlers handlers)
    : row_(row),
      handlers_(std::move(handlers)),
      picture_(new wxStaticBitmap(parent, wxID_ANY, EmptyIcon())),
      icon_(new wxBitmapButton(parent, wxID_ANY, EmptyIcon(), wxDefaultPosition, wxDefaultSize,
                               wxBU_NOTEXT)),
      name_(new wxStaticText(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                             wxST_NO_AUTORESIZE, wxString::Format("ctrl_name%d", row))),
      low_(CreateEnd(parent, wxString::Format("ctrl_low%d", row), wxALIGN_RIGHT)),
      bar_(new wxSlider(parent, wxID_ANY, 0, -1, 1, wxDefaultPosition, wxDefaultSize,
                        wxSL_HORIZONTAL, wxDefaultValidator, wxString::Format("ctrl_bar%d", row))),
      zero_(new wxWindow(parent, wxID_ANY)),
      high_(CreateEnd(parent, wxString::Format("ctrl_high%d", row), wxALIGN_LEFT)),
      value_(new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                            wxTE_READONLY | wxTE_RIGHT | wxBORDER_NONE, wxDefaultValidator,
                            wxString::Format("ctrl_value%d", row))) {
  Lay();
  // The last of the row's controls to take the letters of a screen of another scale.
  value_->Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
    event.Skip();
    SetWidths();
  });
  BindSlider();
  BindNumberEntry();
  zero_->Bind(wxEVT_PAINT, [this](wxPaintEvent&) { PaintZero(); });
  icon_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { handlers_.icon_pressed(row_); });
}

// Nothing moves when the group changes: what shows and what may show is given its room.
void SliderRow::SetWidths() {
  for (wxStaticText* end : {low_, high_}) {
    end->SetMinSize(wxSize(end->GetTextExtent(kWidestEnd).x, -1));
  }
  value_->SetMinSize(
      wxSize(value_->GetSizeFromTextSize(value_->GetTextExtent(kWidestValue).x).x, -1));
  place_->SetMinSize(icon_->GetBestSize());  // as large with the picture as with the button
}

void SliderRow::Lay() {
  bar_->SetMinSize(bar_->FromDIP(wxSize(120, -1)));
  zero_->SetMinSize(zero_->FromDIP(wxSize(-1, kZeroHeight)));
  zero_->SetCanFocus(false);
  value_->DisableFocusFromKeyboard();
  zero_->DisableFocusFromKeyboard();
  value_->SetCanFocus(false);
  value_->SetBackgroundColour(value_->GetParent()->GetBackgroundColour());
  place_ = new wxBoxSizer(wxHORIZONTAL);
  place_->AddStretchSpacer();
  place_->Add(picture_, AtCentre());
  place_->Add(icon_, AtCentre());
  place_->AddStretchSpacer();
  SetWidths();
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->Add(low_, AtCentre());
  auto* scale = new wxBoxSizer(wxVERTICAL);
  scale->AddSpacer(bar_->FromDIP(kZeroHeight));  // keeps the slider in the middle
  scale->Add(bar_, wxSizerFlags().Expand());
  scale->Add(zero_, wxSizerFlags().Expand());
  line->Add(scale, Growing().Border(wxLEFT | wxRIGHT, Gap(bar_)));
  line->Add(high_, AtCentre());
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(name_, wxSizerFlags().Expand());
  column->Add(line, wxSizerFlags().Expand());
  sizer_ = new wxBoxSizer(wxHORIZONTAL);
  sizer_->Add(place_, AtCentre());
  sizer_->Add(column, Growing().Border(wxLEFT | wxRIGHT, Gap(bar_)));
  sizer_->Add(value_, AtCentre());
}

void SliderRow::BindSlider() {
  bar_->SetLineSize(1);
  bar_->Bind(wxEVT_SLIDER, [this](wxCommandEvent&) {
    if (!filling_) handlers_.moved(row_, bar_->GetValue());
  });
  // The native control has to see the release first: the work that follows disables it.
  bar_->Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
    event.Skip();
    bar_->CallAfter([this] {
      handlers_.released(row_);
      if (std::exchange(clicked_twice_, false)) AskForNumber();
    });
  });
  bar_->Bind(wxEVT_KEY_DOWN, &SliderRow::OnKeyDown, this);
  bar_->Bind(wxEVT_KEY_UP, &SliderRow::OnKeyUp, this);
  bar_->Bind(wxEVT_MOUSEWHEEL, &SliderRow::OnWheel, this);
  wheel_rest_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { handlers_.released(row_); });
}

// The value box takes no focus by the mouse, and nothing of its text can be marked.
void SliderRow::BindNumberEntry() {
  bar_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool asks = key == WXK_RETURN || key == WXK_NUMPAD_ENTER || key == WXK_F2;
    if (asks && !event.HasAnyModifiers()) {
      AskForNumber();
    } else {
      event.Skip();
    }
  });
  bar_->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
    clicked_twice_ = true;
    event.Skip();
  });
  for (wxWindow* each :
       std::initializer_list<wxWindow*>{picture_, name_, low_, zero_, high_, value_}) {
    each->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { AskForNumber(); });
  }
  value_->Bind(wxEVT_LEFT_DOWN, [](wxMouseEvent&) {});
  value_->Bind(wxEVT_RIGHT_DOWN, [](wxMouseEvent&) {});
  // Some systems give the clicks on texts and pictures to what they stand on.
  bar_->GetParent()->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
    event.Skip();
    if (wxRect(sizer_->GetPosition(), sizer_->GetSize()).Contains(event.GetPosition())) {
      AskForNumber();
    }
  });
}

// Not by the native sliders' own marks: one of those catches the thumb at 0 and does not let it
// come to rest nearby.
void SliderRow::PaintZero() {
  wxPaintDC dc(zero_);
  const wxColour text = wxSystemSettings::GetColour(bar_->IsEnabled() ? wxSYS_COLOUR_WINDOWTEXT
                                                                      : wxSYS_COLOUR_GRAYTEXT);
  dc.SetPen(wxPen(text, zero_->FromDIP(1)));
  const int x = ThumbCentre(*bar_, 0);
  dc.DrawLine(x, 0, x, zero_->GetClientSize().y);
}

void SliderRow::AskForNumber() {
  bar_->CallAfter([this] {
    if (bar_->IsEnabled()) handlers_.number_wanted(row_);
  });
}

void SliderRow::Take(int value) {
  Step(value - bar_->GetValue());
  handlers_.released(row_);
}

// Keys and the wheel are handled here and not by the native sliders, which do not agree about the
// vertical arrows, about the way that pages and the wheel go, nor about arrows with Shift.
void SliderRow::OnKeyDown(wxKeyEvent& event) {
  const SliderKey* key = FindSliderKey(event.GetKeyCode());
  if (key == nullptr || key->key == WXK_SHIFT || event.ControlDown() || event.AltDown()) {
    event.Skip();
    return;
  }
  Step(key->steps + key->large_steps * bar_->GetPageSize());
}

void SliderRow::OnKeyUp(wxKeyEvent& event) {
  event.Skip();
  const SliderKey* key = FindSliderKey(event.GetKeyCode());
  if (key == nullptr) return;
  // Some systems still report Shift as held when it is Shift that goes up.
  const bool shift_alone =
      key->key != WXK_SHIFT && event.ShiftDown() && !event.ControlDown() && !event.AltDown();
  bar_->CallAfter([this, code = key->code, shift_alone] {
    if (code != 0) {
      handlers_.key_released(row_, code, shift_alone);
    } else if (!shift_alone) {
      handlers_.page_released(row_);
    }
  });
}

void SliderRow::OnWheel(wxMouseEvent& event) {
  if (event.GetWheelDelta() <= 0) return;
  wheel_rotation_ += event.GetWheelRotation();
  const int notches = wheel_rotation_ / event.GetWheelDelta();
  wheel_rotation_ -= notches * event.GetWheelDelta();
  Step(notches);
  wheel_rest_.StartOnce(kWheelRest);
}

void SliderRow::Step(int step) {
  const int value = std::clamp(bar_->GetValue() + step, bar_->GetMin(), bar_->GetMax());
  if (value == bar_->GetValue()) return;
  filling_ = true;
  bar_->SetValue(value);
  filling_ = false;
  handlers_.moved(row_, value);
}

void SliderRow::ShowTexts(const SliderSetup& setup, const Texts& texts) {
  name_->SetLabel(texts.caption);
  low_->SetLabel(wxString::Format("%d", setup.low));
  high_->SetLabel(wxString::Format("%d", setup.high));
  icon_->Show(!texts.action.empty());
  picture_->Show(texts.action.empty());
}

void SliderRow::Show(const SliderSetup& setup, const Looks& looks) {
  filling_ = true;
  spoken_name_ = wxStripMenuCodes(looks.texts.group) + ": " + wxStripMenuCodes(looks.texts.caption);
  ShowTexts(setup, looks.texts);
  ShowPicture(looks);
  SetAccessibleName(*value_, spoken_name_);
  bar_->SetRange(setup.low, setup.high);
  zero_->Refresh();
  bar_->SetPageSize(setup.large_step);
  bar_->SetValue(setup.value);
  filling_ = false;
  ShowValue(setup);
}

void SliderRow::ShowPicture(const Looks& looks) {
  const wxString& action = looks.texts.action;
  if (action.empty()) {
    picture_->SetBitmap(looks.picture);
  } else {
    icon_->SetBitmap(looks.picture);
  }
  icon_->SetName(action.empty() ? "" : looks.icon_name);
  picture_->SetName(action.empty() ? looks.icon_name : "");
  icon_->SetToolTip(action);
  picture_->SetToolTip(wxStripMenuCodes(looks.texts.caption));
  SetAccessibleName(*icon_, spoken_name_, action);
  SetAccessibleName(*picture_, spoken_name_);
}

void SliderRow::ShowValue(const SliderSetup& setup) {
  const wxString text = WxText(setup.text);
  if (value_->GetValue() != text) value_->ChangeValue(text);
  SetAccessibleName(*bar_, spoken_name_, text);  // the slider itself says no unit
  Enable(setup.enabled);
}

void SliderRow::ShowBar(const SliderSetup& setup) {
  filling_ = true;
  if (bar_->GetValue() != setup.value) bar_->SetValue(setup.value);
  filling_ = false;
}

void SliderRow::Enable(bool enabled) {
  for (wxWindow* each :
       std::initializer_list<wxWindow*>{picture_, icon_, name_, low_, bar_, zero_, high_, value_}) {
    each->Enable(enabled);
  }
}

}  // namespace warpline
