#include "sim/window/fault_pane.h"

#include <wx/stattext.h>

#include <optional>
#include <sstream>

#include "sim/window/wx_texts.h"

namespace warpline::sim {
namespace {

enum When { kAlways, kOnce, kEvery, kChance };

// A kind of exchange as rules name it, and what a person reads; a command's number is its own name.
struct KindRow {
  const char* word;
  std::optional<ProjectorText> name;
};

constexpr KindRow kKinds[] = {
    {"any", ProjectorText::kKindAny},
    {"probe", ProjectorText::kFrameProbe},
    {"class", ProjectorText::kFrameClass},
    {"running", ProjectorText::kFrameRunning},
    {"panel", ProjectorText::kFramePanel},
    {"status", ProjectorText::kFrameStatus},
    {"input", ProjectorText::kFrameInput},
    {"prepare", ProjectorText::kFramePrepare},
    {"mode", ProjectorText::kFrameMode},
    {"block", ProjectorText::kFrameBlock},
    {"0", {}},
    {"1", {}},
    {"2", {}},
    {"3", {}},
    {"16", {}},
    {"17", {}},
    {"21", {}},
};

void Fill(wxListBox& list, const std::vector<std::string>& texts) {
  wxArrayString items;
  for (const std::string& text : texts) items.Add(Wx(text));
  if (items == list.GetStrings()) return;
  list.Set(items);
}

}  // namespace

FaultPane::FaultPane(wxWindow* parent, const ProjectorTexts& texts, Station& station)
    : wxPanel(parent, wxID_ANY), texts_(texts), station_(station) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(ActiveBox(), wxSizerFlags(1).Expand().Border(wxALL, FromDIP(6)));
  column->Add(NewBox(), wxSizerFlags().Expand().Border(wxALL, FromDIP(6)));
  column->Add(new wxStaticText(this, wxID_ANY, Label(texts_, ProjectorText::kStrikes)),
              wxSizerFlags().Border(wxLEFT | wxRIGHT, FromDIP(6)));
  strikes_ = new wxListBox(this, wxID_ANY);
  strikes_->SetMinSize(FromDIP(wxSize(100, 60)));
  column->Add(strikes_, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(6)));
  SetSizer(column);
  Follow();
}

wxSizer* FaultPane::ActiveBox() {
  auto* const box = new wxBoxSizer(wxVERTICAL);
  box->Add(new wxStaticText(this, wxID_ANY, Label(texts_, ProjectorText::kActiveFaults)));
  active_ = new wxListBox(this, wxID_ANY);
  active_->SetName("active_faults");
  active_->SetMinSize(FromDIP(wxSize(100, 60)));
  box->Add(active_, wxSizerFlags(1).Expand().Border(wxTOP | wxBOTTOM, FromDIP(4)));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  auto* const remove = new wxButton(this, wxID_ANY, Label(texts_, ProjectorText::kRemove));
  auto* const clear = new wxButton(this, wxID_ANY, Label(texts_, ProjectorText::kClearAll));
  clear->SetName("clear_faults");
  remove->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    station_.RemoveFault(active_->GetStringSelection().utf8_string());
  });
  clear->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { station_.SetFaults({}); });
  row->Add(remove, wxSizerFlags().Border(wxRIGHT, FromDIP(6)));
  row->Add(clear);
  box->Add(row);
  return box;
}

wxSpinCtrl* FaultPane::Number(const char* name, int least, int most, int value) {
  auto* const spin = new wxSpinCtrl(this, wxID_ANY);
  spin->SetRange(least, most);
  spin->SetValue(value);
  spin->SetInitialSize(spin->GetSizeFromTextSize(spin->GetTextExtent("600000").GetWidth()));
  spin->SetName(name);
  return spin;
}

wxSizer* FaultPane::NewBox() {
  what_ = new wxChoice(this, wxID_ANY);
  for (std::size_t i = 0; i < FaultNames().size(); ++i) {
    what_->Append(Label(texts_, Behind(ProjectorText::kFaultTimeout, static_cast<int>(i))));
  }
  when_ = new wxChoice(this, wxID_ANY);
  for (int i = 0; i < 4; ++i) when_->Append(Label(texts_, Behind(ProjectorText::kWhenAlways, i)));
  kind_ = new wxChoice(this, wxID_ANY);
  for (const KindRow& kind : kKinds) {
    kind_->Append(kind.name ? Label(texts_, *kind.name) : wxString(kind.word));
  }
  for (wxChoice* choice : {what_, when_, kind_}) choice->SetSelection(0);
  what_->SetName("fault_what");
  when_->SetName("fault_when");
  kind_->SetName("fault_kind");
  count_ = Number("fault_count", 1, 100, 10);
  delay_ = Number("fault_delay", 0, 600000, 500);
  jitter_ = Number("fault_jitter", 0, 600000, 0);
  for (wxChoice* choice : {what_, when_}) {
    choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { Follow(); });
  }
  auto* const add = new wxButton(this, wxID_ANY, Label(texts_, ProjectorText::kAddFault));
  add->SetName("add_fault");
  add->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Add(); });
  return LayNewBox(add);
}

wxSizer* FaultPane::LayNewBox(wxButton* add) {
  auto* const grid = new wxFlexGridSizer(3, FromDIP(wxSize(8, 4)));
  grid->AddGrowableCol(1);
  const auto row = [&](ProjectorText key, wxWindow* first, wxWindow* second) {
    grid->Add(new wxStaticText(this, wxID_ANY, Label(texts_, key)),
              wxSizerFlags().CentreVertical());
    grid->Add(first, wxSizerFlags().Expand());
    if (second != nullptr) grid->Add(second);
    if (second == nullptr) grid->AddStretchSpacer();
  };
  row(ProjectorText::kWhat, what_, nullptr);
  row(ProjectorText::kWhen, when_, count_);
  row(ProjectorText::kKind, kind_, nullptr);
  row(ProjectorText::kDelay, delay_, jitter_);
  grid->AddStretchSpacer();
  grid->Add(add);
  return grid;
}

// What the rule does not need cannot be set.
void FaultPane::Follow() {
  const std::string_view what = FaultNames()[static_cast<std::size_t>(what_->GetSelection())];
  const int when = when_->GetSelection();
  count_->Enable(when == kEvery || when == kChance);
  delay_->Enable(what == "late");
  jitter_->Enable(what == "late");
  kind_->Enable(what != "refuselink" && what != "halfopen" && what != "single");
}

std::string FaultPane::RuleText() const {
  const int when = when_->GetSelection();
  const int count = count_->GetValue();
  const std::string_view what = FaultNames()[static_cast<std::size_t>(what_->GetSelection())];
  std::ostringstream text;
  if (kind_->IsEnabled() && kind_->GetSelection() > 0) {
    text << "kind=" << kKinds[kind_->GetSelection()].word << ",";
  }
  if (when == kAlways) text << "always";
  if (when == kOnce) text << "once";
  if (when == kEvery) text << "every=" << count;
  if (when == kChance) text << "chance=" << count / 100.0;
  text << ":" << what;
  if (what == "late") text << "=" << delay_->GetValue();
  if (what == "late" && jitter_->GetValue() > 0) text << "~" << jitter_->GetValue();
  return text.str();
}

void FaultPane::Add() {
  NamedText reason;
  if (const auto rule = ParseFaultRule(RuleText(), reason)) station_.AddFault(*rule);
}

void FaultPane::Show(const StationSnapshot& state) {
  Fill(*active_, state.Faults);
  Fill(*strikes_, {state.Strikes.rbegin(), state.Strikes.rend()});
}

}  // namespace warpline::sim
