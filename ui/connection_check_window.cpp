#include "ui/connection_check_window.h"

#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/evtloop.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <array>

#include "app/check_texts.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "platform/files.h"
#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// A column and its width in DIP while the check runs.
struct TableColumn {
  ToolText caption;
  int width;
};
constexpr std::array<TableColumn, 7> kTableColumns{{
    {ToolText::kCheckColumnGroup, 80},
    {ToolText::kCheckColumnStep, 210},
    {ToolText::kCheckColumnState, 60},
    {ToolText::kCheckColumnTime, 65},
    {ToolText::kCheckColumnCode, 45},
    {ToolText::kCheckColumnText, 300},
    {ToolText::kCheckColumnAdvice, 380},
}};

constexpr int kTableWidth = 900;  // of the table, DIP
constexpr int kTableHeight = 420;

// Of what has failed. It stands out on light and dark ground, and the row says it in words too.
const wxColour kFailedColour(0xD0, 0x30, 0x30);

std::array<std::string, kTableColumns.size()> CellsOf(const LSSglobal& global,
                                                      const CheckRow& row) {
  return {row.group_name,
          row.name,
          StateName(global, row.state),
          row.milliseconds ? std::to_string(*row.milliseconds) + " ms" : "",
          row.code ? std::to_string(*row.code) : "",
          row.text,
          row.advice};
}

}  // namespace

ConnectionCheckWindow::ConnectionCheckWindow(wxWindow* owner, const MainParts& parts)
    : wxDialog(owner, wxID_ANY, CaptionOf(parts.engine.global, ToolText::kCheckTitle),
               wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER,
               "connection_check"),
      parts_(parts),
      global_(parts.engine.global),
      list_(new wxListCtrl(this, wxID_ANY, wxDefaultPosition,
                           FromDIP(wxSize(kTableWidth, kTableHeight)),
                           wxLC_REPORT | wxLC_SINGLE_SEL, wxDefaultValidator, "check_rows")),
      verdict_text_(new wxStaticText(this, wxID_ANY, CaptionOf(global_, ToolText::kCheckRuns),
                                     wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE,
                                     "check_verdict")) {
  SetAccessibleName(*list_, CaptionOf(global_, ToolText::kCheckTitle));
  for (const TableColumn& column : kTableColumns) {
    list_->AppendColumn(CaptionOf(global_, column.caption), wxLIST_FORMAT_LEFT,
                        FromDIP(column.width));
  }
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(list_, wxSizerFlags(1).Expand().Border(wxALL, WideGap(this)));
  all->Add(verdict_text_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, WideGap(this)));
  all->Add(CreateButtons(), wxSizerFlags().Expand().Border(wxALL, WideGap(this)));
  verdict_text_->SetMinSize(wxSize(-1, 2 * GetCharHeight()));
  SetSizerAndFit(all);
  CentreOverParent(*this);
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Leave(); });
  CallAfter(&ConnectionCheckWindow::Run);
}

wxSizer* ConnectionCheckWindow::CreateButtons() {
  save_ = CreateButton("check_save", ToolText::kCheckSave, wxID_ANY, &ConnectionCheckWindow::Save);
  copy_ = CreateButton("check_copy", ToolText::kCheckCopy, wxID_ANY, &ConnectionCheckWindow::Copy);
  wxButton* close =
      CreateButton("check_close", ToolText::kClose, wxID_CANCEL, &ConnectionCheckWindow::Leave);
  save_->Disable();
  copy_->Disable();
  close->SetDefault();
  close->SetFocus();
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->AddStretchSpacer();
  for (wxButton* button : {save_, copy_, close}) {
    line->Add(button, AtCentre().Border(wxLEFT, Gap(this)));
  }
  return line;
}

wxButton* ConnectionCheckWindow::CreateButton(const char* name, ToolText caption, wxWindowID id,
                                              void (ConnectionCheckWindow::*press)()) {
  auto* button = new wxButton(this, id, CaptionOf(global_, caption), wxDefaultPosition,
                              wxDefaultSize, 0, wxDefaultValidator, name);
  button->Bind(wxEVT_BUTTON, [this, press](wxCommandEvent&) { (this->*press)(); });
  return button;
}

void ConnectionCheckWindow::Run() {
  verdict_ =
      ConnectionCheck({global_, parts_.application_data, parts_.trials([this] { return LookOn(); }),
                       parts_.engine.recording, [this](const CheckRow& row) { Add(row); }})
          .Run();
  if (leaving_) return EndModal(wxID_CANCEL);
  ShowVerdict();
}

// The window lives while the check waits.
bool ConnectionCheckWindow::LookOn() const {
  if (wxEventLoopBase* loop = wxEventLoopBase::GetActive();
      loop != nullptr && !loop->IsYielding()) {
    loop->YieldFor(wxEVT_CATEGORY_ALL);
  }
  return !leaving_;
}

void ConnectionCheckWindow::Add(const CheckRow& row) {
  rows_.push_back(row);
  const auto cells = CellsOf(global_, row);
  const long line = list_->InsertItem(list_->GetItemCount(), WxText(cells[0]));
  for (std::size_t i = 1; i < cells.size(); ++i) {
    list_->SetItem(line, static_cast<int>(i), WxText(cells[i]));
  }
  if (row.state == CheckState::kFailed) {
    list_->SetItemTextColour(line, kFailedColour);
    list_->SetItemFont(line, list_->GetFont().Bold());
  }
  list_->EnsureVisible(line);
}

void ConnectionCheckWindow::ShowVerdict() {
  const wxString text = WxText(VerdictText(global_, *verdict_)).Trim();
  verdict_text_->SetLabel(
      wxControl::EscapeMnemonics(WrappedText(*this, text, verdict_text_->GetSize().x)));
  if (!verdict_->good) verdict_text_->SetFont(verdict_text_->GetFont().Bold());
  for (int column = 0; column < list_->GetColumnCount(); ++column) {
    list_->SetColumnWidth(column, wxLIST_AUTOSIZE_USEHEADER);
    list_->SetColumnWidth(column, list_->GetColumnWidth(column) + WideGap(this));  // bold is wider
  }
  save_->Enable();
  copy_->Enable();
}

void ConnectionCheckWindow::Save() {
  const std::filesystem::path file =
      parts_.text_files.save(this, DataFolder(parts_.application_data), PathOf("check.txt"));
  if (file.empty()) return;
  const std::error_code error = ReplaceFileContents(file, CheckText(global_, rows_, *verdict_));
  if (error) parts_.engine.messages.ShowSystemError(SystemErrorText(error) + "\n" + Utf8Of(file));
}

void ConnectionCheckWindow::Copy() {
  const wxClipboardLocker clipboard;
  if (!clipboard) return;
  wxTheClipboard->SetData(new wxTextDataObject(WxText(CheckText(global_, rows_, *verdict_))));
}

// A check that runs ends first.
void ConnectionCheckWindow::Leave() {
  leaving_ = true;
  if (verdict_) EndModal(wxID_CANCEL);
}

}  // namespace warpline
