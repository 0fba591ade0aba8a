#include "ui/LSSphoto_steps.h"

#include <wx/sizer.h>

#include <algorithm>
#include <array>

#include "app/plain_caption.h"
#include "core/tool_texts.h"
#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// All in DIP.
constexpr int kTextWidth = 564;
constexpr int kScrollBar = 20;
constexpr int kLeastHeight = 120;
constexpr int kListHeight = 172;
constexpr int kScrollStep = 12;
constexpr int kDisplayWidth = 300;

struct Column {
  ToolText caption;
  int width;
};
constexpr std::array<Column, 4> kColumns{{
    {ToolText::kPhotoColumnScreen, 240},
    {ToolText::kPhotoColumnNow, 112},
    {ToolText::kPhotoColumnCorrected, 112},
    {ToolText::kPhotoColumnGrid, 100},
}};

}  // namespace

PhotoSteps::PhotoSteps(wxWindow* parent, const LSSglobal& global)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, "photo_steps"),
      global_(global),
      first_(new wxScrolledWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                  wxVSCROLL | wxTAB_TRAVERSAL, "photo_first_steps")),
      pane_(first_),
      column_(new wxBoxSizer(wxVERTICAL)) {
  AddMarksStep();
  AddPhotoStep();
  AddCheckStep();
  first_->SetSizer(column_);
  first_->SetScrollRate(0, FromDIP(kScrollStep));
  first_->SetMinSize(FromDIP(wxSize(kTextWidth + kScrollBar, kLeastHeight)));
  pane_ = this;
  column_ = new wxBoxSizer(wxVERTICAL);
  column_->Add(first_, wxSizerFlags(1).Expand());
  AddResultStep();
  SetSizer(column_);
}

wxButton* PhotoSteps::Button(const char* name, ToolText caption) {
  return new wxButton(pane_, wxID_ANY, CaptionOf(global_, caption), wxDefaultPosition,
                      wxDefaultSize, 0, wxDefaultValidator, name);
}

void PhotoSteps::AddHeading(ToolText caption) {
  auto* heading = new wxStaticText(pane_, wxID_ANY, CaptionOf(global_, caption));
  heading->SetFont(heading->GetFont().Bold());
  column_->Add(heading, wxSizerFlags().Border(wxTOP, column_->IsEmpty() ? 0 : WideGap(this)));
}

void PhotoSteps::AddText(ToolText text) {
  column_->Add(new wxStaticText(pane_, wxID_ANY, Wrapped(warpline::TextOf(global_, text))),
               wxSizerFlags().Border(wxTOP, Gap(this) / 2));
}

PhotoSteps::Said PhotoSteps::AddSaid(const char* name) {
  auto* label = new wxStaticText(pane_, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, 0, name);
  column_->Add(label, wxSizerFlags().Border(wxTOP, Gap(this) / 2));
  return {label, ""};
}

void PhotoSteps::AddRow(std::initializer_list<wxWindow*> controls) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  for (wxWindow* control : controls) row->Add(control, AtCentre().Border(wxRIGHT, Gap(this)));
  column_->Add(row, wxSizerFlags().Border(wxTOP, Gap(this)));
}

void PhotoSteps::AddMarksStep() {
  AddHeading(ToolText::kPhotoStepMarks);
  AddText(ToolText::kPhotoMarksHow);
  clear = Button("photo_clear", ToolText::kPhotoClear);
  display = new wxChoice(pane_, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kDisplayWidth, -1)), 0,
                         nullptr, 0, wxDefaultValidator, "photo_display");
  display->Disable();
  SetAccessibleName(*display, CaptionOf(global_, ToolText::kPhotoOnDisplay));
  AddRow({clear, display});
}

void PhotoSteps::AddPhotoStep() {
  AddHeading(ToolText::kPhotoStepPhoto);
  AddText(ToolText::kPhotoOpenHow);
  open = Button("photo_open", ToolText::kPhotoOpen);
  left = Button("photo_left", ToolText::kPhotoTurnLeft);
  right = Button("photo_right", ToolText::kPhotoTurnRight);
  AddRow({open, left, right});
  photo_ = AddSaid("photo_said");
}

void PhotoSteps::AddCheckStep() {
  AddHeading(ToolText::kPhotoStepCheck);
  AddText(ToolText::kPhotoCheckHow);
  AddText(ToolText::kPhotoLensHow);
  find_near = Button("photo_near", ToolText::kPhotoFindNear);
  largest = Button("photo_largest", ToolText::kPhotoLargest);
  line = Button("photo_line", ToolText::kPhotoLineBegin);
  AddRow({find_near, largest, line});
}

void PhotoSteps::AddResultStep() {
  AddHeading(ToolText::kPhotoStepResult);
  AddText(ToolText::kPhotoResultHow);
  results =
      new wxListCtrl(pane_, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kTextWidth, kListHeight)),
                     wxLC_REPORT | wxLC_SINGLE_SEL, wxDefaultValidator, "photo_results");
  SetAccessibleName(*results, CaptionOf(global_, ToolText::kPhotoStepResult));
  for (const Column& column : kColumns) {
    results->AppendColumn(CaptionOf(global_, column.caption), wxLIST_FORMAT_LEFT,
                          FromDIP(column.width));
  }
  column_->Add(results, wxSizerFlags().Border(wxTOP, Gap(this)));
  result_ = AddSaid("photo_result");
}

wxString PhotoSteps::Wrapped(const std::string& text) const {
  return wxControl::EscapeMnemonics(WrappedText(*this, WxText(text), FromDIP(kTextWidth)));
}

bool PhotoSteps::Say(Said& said, const std::string& text) const {
  if (said.text == text) return false;
  said.text = text;
  said.label->SetLabel(Wrapped(text));
  return true;
}

void PhotoSteps::ShowDisplays(const std::vector<std::string>& names, std::size_t chosen) {
  if (names == displays_) return;
  displays_ = names;
  display->Clear();
  for (const std::string& name : names) display->Append(WxText(name));
  display->Enable(!names.empty());
  if (!names.empty()) display->SetSelection(static_cast<int>(chosen));
}

void PhotoSteps::ShowSession(const PhotoSession& session) {
  const bool there = session.HasPhoto();
  for (wxButton* button : {left, right, find_near, line}) button->Enable(there);
  largest->Enable(session.Layout().Corners.has_value());
  const wxString caption =
      CaptionOf(global_, session.Drawing() ? ToolText::kPhotoLineEnd : ToolText::kPhotoLineBegin);
  if (line->GetLabel() != caption) line->SetLabel(caption);
  bool other = Say(photo_, TextOfPhoto(global_, session));
  other = Say(result_, TextOfResult(global_, session)) || other;
  ShowRows(session);
  if (!other) return;
  first_->FitInside();
  Layout();
}

// Showing a row tells as much as choosing it; who listens to the list asks what is chosen already.
void PhotoSteps::ShowRows(const PhotoSession& session) {
  const std::vector<PhotoResultRow> rows = ResultRows(global_, session);
  if (rows != rows_) {
    rows_ = rows;
    results->DeleteAllItems();
    for (const PhotoResultRow& row : rows) {
      const long at = results->InsertItem(results->GetItemCount(), WxText(row.Screen));
      results->SetItem(at, 1, WxText(row.Now));
      results->SetItem(at, 2, WxText(row.Corrected));
      results->SetItem(at, 3, WxText(row.Grid));
    }
  }
  if (rows.empty()) return;
  const auto chosen = static_cast<long>(session.ChosenIndex());
  results->SetItemState(chosen, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                        wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
  results->EnsureVisible(chosen);
}

}  // namespace warpline
