#include "ui/LSSmain_slider_row.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ui/layout.h"
#include "ui/native/accessible_name.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

struct KeyRow {
  int key;
  int code;   // as the key release is reported; 0: as that of the mouse button
  int lines;  // what a press adds to the slider's value, in lines and in pages
  int pages;
};

constexpr int kToTheEnd = 1 << 17;  // more than any slider's range

constexpr std::array<KeyRow, 17> kKeyRows{{
    {WXK_PAGEUP, 0, 0, 1},
    {WXK_PAGEDOWN, 0, 0, -1},
    {WXK_END, 0, kToTheEnd, 0},
    {WXK_HOME, 0, -kToTheEnd, 0},
    {WXK_LEFT, 37, -1, 0},
    {WXK_UP, 38, 1, 0},
    {WXK_RIGHT, 39, 1, 0},
    {WXK_DOWN, 40, -1, 0},
    {WXK_NUMPAD_PAGEUP, 0, 0, 1},
    {WXK_NUMPAD_PAGEDOWN, 0, 0, -1},
    {WXK_NUMPAD_END, 0, kToTheEnd, 0},
    {WXK_NUMPAD_HOME, 0, -kToTheEnd, 0},
    {WXK_NUMPAD_LEFT, 37, -1, 0},
    {WXK_NUMPAD_UP, 38, 1, 0},
    {WXK_NUMPAD_RIGHT, 39, 1, 0},
    {WXK_NUMPAD_DOWN, 40, -1, 0},
    {WXK_SHIFT, 16, 0, 0},
}};

// How long no notch of the wheel comes before it counts as let go of, in milliseconds.
constexpr int kWheelRest = 250;

const KeyRow* FindKey(int key) {
  const auto row = std::find_if(kKeyRows.begin(), kKeyRows.end(),
                                [key](const KeyRow& each) { return each.key == key; });
  return row == kKeyRows.end() ? nullptr : &*row;
}

// Wide enough for every value, so that nothing moves when the group changes.
constexpr const char* kWidestEnd = "-32767";
constexpr const char* kWidestValue = "-32767";

wxStaticText* CreateEnd(wxWindow* parent, const wxString& name, long align) {
  auto* end = new wxStaticText(parent, wxID_ANY, kWidestEnd, wxDefaultPosition, wxDefaultSize,
                               align | wxST_NO_AUTORESIZE, name);
  end->SetMinSize(end->GetBestSize());
  return end;
}

}  // namespace

SliderRow::SliderRow(wxWindow* parent, int row, SliderHandlers handlers)
    : row_(row),
      handlers_(std::move(handlers)),
      icon_(new wxBitmapButton(parent, wxID_ANY, wxBitmapBundle::FromBitmap(wxBitmap(32, 32)),
                               wxDefaultPosition, wxDefaultSize, wxBU_NOTEXT, wxDefaultValidator,
                               wxString::Format("iconbutton%d", row))),
      name_(new wxStaticText(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                             wxST_NO_AUTORESIZE, wxString::Format("ctrl_name%d", row))),
      low_(CreateEnd(parent, wxString::Format("ctrl_low%d", row), wxALIGN_RIGHT)),
      bar_(new wxSlider(parent, wxID_ANY, 0, -1, 1, wxDefaultPosition, wxDefaultSize,
                        wxSL_HORIZONTAL, wxDefaultValidator, wxString::Format("ctrl_bar%d", row))),
      high_(CreateEnd(parent, wxString::Format("ctrl_high%d", row), wxALIGN_LEFT)),
      value_(new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                            wxTE_READONLY | wxTE_RIGHT, wxDefaultValidator,
                            wxString::Format("ctrl_value%d", row))) {
  Lay();
  BindSlider();
  icon_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { handlers_.icon_pressed(row_); });
}

void SliderRow::Lay() {
  bar_->SetMinSize(bar_->FromDIP(wxSize(120, -1)));
  value_->SetMinSize(
      wxSize(value_->GetSizeFromTextSize(value_->GetTextExtent(kWidestValue).x).x, -1));
  value_->DisableFocusFromKeyboard();
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->Add(low_, AtCentre());
  line->Add(bar_, Growing().Border(wxLEFT | wxRIGHT, Gap(bar_)));
  line->Add(high_, AtCentre());
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(name_, wxSizerFlags().Expand());
  column->Add(line, wxSizerFlags().Expand());
  sizer_ = new wxBoxSizer(wxHORIZONTAL);
  sizer_->Add(icon_, AtCentre());
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
    bar_->CallAfter([this] { handlers_.released(row_); });
  });
  bar_->Bind(wxEVT_KEY_DOWN, &SliderRow::OnKeyDown, this);
  bar_->Bind(wxEVT_KEY_UP, &SliderRow::OnKeyUp, this);
  bar_->Bind(wxEVT_MOUSEWHEEL, &SliderRow::OnWheel, this);
  wheel_rest_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { handlers_.released(row_); });
}

// Keys and the wheel are handled here and not by the native sliders, which do not agree about the
// vertical arrows, about the way that pages and the wheel go, nor about arrows with Shift.
void SliderRow::OnKeyDown(wxKeyEvent& event) {
  const KeyRow* key = FindKey(event.GetKeyCode());
  if (key == nullptr || key->key == WXK_SHIFT || event.ControlDown() || event.AltDown()) {
    event.Skip();
    return;
  }
  Step(key->lines + key->pages * bar_->GetPageSize());
}

void SliderRow::OnKeyUp(wxKeyEvent& event) {
  event.Skip();
  const KeyRow* key = FindKey(event.GetKeyCode());
  if (key == nullptr) return;
  // Some systems still report Shift as held when it is Shift that goes up.
  const bool shift_alone =
      key->key != WXK_SHIFT && event.ShiftDown() && !event.ControlDown() && !event.AltDown();
  bar_->CallAfter([this, code = key->code, shift_alone] {
    if (code != 0) {
      handlers_.key_released(row_, code, shift_alone);
    } else if (!shift_alone) {
      handlers_.released(row_);
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

void SliderRow::Show(const SliderSetup& setup, const wxString& group, const wxString& caption,
                     const wxBitmapBundle& picture, const wxString& icon_name) {
  filling_ = true;
  const wxString plain = wxStripMenuCodes(caption);
  spoken_name_ = wxStripMenuCodes(group) + ": " + plain;
  name_->SetLabel(caption);
  icon_->SetBitmap(picture);
  icon_->SetName(icon_name);
  icon_->SetToolTip(plain);
  SetAccessibleName(*icon_, spoken_name_);
  SetAccessibleName(*value_, spoken_name_);
  bar_->SetRange(setup.low, setup.high);
  bar_->SetPageSize(setup.large_step);
  bar_->SetValue(setup.value);
  low_->SetLabel(wxString::Format("%d", setup.low));
  high_->SetLabel(wxString::Format("%d", setup.high));
  filling_ = false;
  ShowValue(setup);
}

void SliderRow::ShowValue(const SliderSetup& setup) {
  const wxString text = WxText(setup.text);
  if (value_->GetValue() != text) value_->ChangeValue(text);
  SetAccessibleName(*bar_, spoken_name_, text);  // the slider itself says no unit
  Enable(setup.enabled);
}

void SliderRow::Enable(bool enabled) {
  for (wxWindow* each : std::initializer_list<wxWindow*>{icon_, name_, low_, bar_, high_, value_}) {
    each->Enable(enabled);
  }
}

}  // namespace warpline
