#include <wx/listctrl.h>
#include <wx/timer.h>
#include <wx/weakref.h>
#include <wx/wx.h>

#include <utility>

#include "core/conversions.h"
#include "standin/beamseek_window.h"
#include "standin/search_texts.h"

// The selection window, made with the toolkit that the tool's own windows run on: both share one
// process and one event loop.

namespace warpline::sim {
namespace {

constexpr int kLookMilliseconds = 30;
constexpr int kListWidth = 460;   // DIP
constexpr int kListHeight = 180;  // DIP
constexpr int kBorder = 8;        // DIP

wxString Text(const std::string& utf8) {
  return wxString::FromUTF8(utf8);
}

class SelectionDialog : public wxDialog {
 public:
  SelectionDialog(wxWindow* parent, SelectionWindowHost host, const SearchTexts& texts)
      : wxDialog(parent, wxID_ANY, Text(texts[SearchText::kTitle]), wxDefaultPosition,
                 wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "Beamseek2"),
        host_(std::move(host)),
        texts_(texts) {
    MakeControls();
    BindEvents();
    CentreOnParent();
  }

  void ShowSearching(const wxString& last_address) {
    last_address_ = last_address;
    found_ = {};
    list_->DeleteAllItems();
    state_->SetLabel(Text(texts_[SearchText::kSearching]));
    list_->SetFocus();
    again_->Disable();
    ShowChoice();
    timer_.Start(kLookMilliseconds);
    Show();
    Raise();
  }

  void GoOn() {
    decided_ = false;
    Show();
    Raise();
  }

  // From now on the host is not asked or told any more.
  void Leave() {
    timer_.Stop();
    host_ = {};
    Hide();
    Destroy();
  }

 private:
  void MakeControls() {
    state_ = new wxStaticText(this, wxID_ANY, Text(texts_[SearchText::kSearching]),
                              wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE, "search_state");
    list_ =
        new wxListView(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kListWidth, kListHeight)),
                       wxLC_REPORT | wxLC_SINGLE_SEL, wxDefaultValidator, "search_list");
    list_->AppendColumn(Text(texts_[SearchText::kNameColumn]), wxLIST_FORMAT_LEFT, FromDIP(200));
    list_->AppendColumn(Text(texts_[SearchText::kAddressColumn]), wxLIST_FORMAT_LEFT, FromDIP(110));
    list_->AppendColumn(Text(texts_[SearchText::kStateColumn]), wxLIST_FORMAT_LEFT, FromDIP(140));
    again_ = NewButton(wxID_ANY, texts_[SearchText::kSearchAgain], "search_again");
    read_me_ = NewButton(wxID_ANY, texts_[SearchText::kReadMe], "search_read_me");
    ok_ = NewButton(wxID_OK, texts_[SearchText::kOk], "search_ok");
    cancel_ = NewButton(wxID_CANCEL, texts_[SearchText::kCancel], "search_cancel");
    ok_->SetDefault();
    LayOut();
  }

  wxButton* NewButton(int id, const std::string& label, const char* name) {
    return new wxButton(this, id, Text(label), wxDefaultPosition, wxDefaultSize, 0,
                        wxDefaultValidator, name);
  }

  void LayOut() {
    const int border = FromDIP(kBorder);
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(again_);
    buttons->Add(read_me_, wxSizerFlags().Border(wxLEFT, border));
    buttons->AddStretchSpacer();
    buttons->Add(ok_, wxSizerFlags().Border(wxLEFT, 2 * border));
    buttons->Add(cancel_, wxSizerFlags().Border(wxLEFT, border));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(state_, wxSizerFlags().Expand().Border(wxALL, border));
    column->Add(list_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, border));
    column->Add(buttons, wxSizerFlags().Expand().Border(wxALL, border));
    SetSizerAndFit(column);
  }

  void BindEvents() {
    timer_.SetOwner(this);
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { LookForResult(); });
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Decide(kSearchClosed); });
    list_->Bind(wxEVT_LIST_ITEM_SELECTED, [this](wxListEvent&) { ShowChoice(); });
    list_->Bind(wxEVT_LIST_ITEM_DESELECTED, [this](wxListEvent&) { ShowChoice(); });
    list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { TakeChoice(); });
    again_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { SearchAgain(); });
    read_me_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Tell(kSearchReadMe, 0); });
    ok_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { TakeChoice(); });
    cancel_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Decide(kSearchCancelled); });
  }

  void Tell(std::uint32_t code, std::uint32_t index) {
    if (host_.Notify) host_.Notify(code, index);
  }

  // One decision a search: whatever is clicked before the tool has taken it is too late.
  void Decide(std::uint32_t code, std::uint32_t index = 0) {
    if (std::exchange(decided_, true)) return;
    Hide();
    Tell(code, index);
  }

  void SearchAgain() {
    again_->Disable();
    Tell(kSearchRepeat, 0);
  }

  void LookForResult() {
    if (!host_.TakeResult) return;
    const std::optional<SearchResult> result = host_.TakeResult();
    if (!result) return;
    timer_.Stop();
    found_ = *result;
    again_->Enable();
    FillList();
  }

  void FillList() {
    const wxColour grey = wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT);
    for (int i = 0; i < found_.Record.iPjNum; ++i) {
      const auto& entry = found_.Record.PJData[i];
      const bool selectable = entry.bSelectable != 0;
      list_->InsertItem(i, Text(entry.cName));
      list_->SetItem(i, 1, Text(AddressText(entry.ucIP)));
      list_->SetItem(i, 2, Text(texts_[StateOf(selectable, found_.PowerState.at(i))]));
      if (!selectable) list_->SetItemTextColour(i, grey);
    }
    state_->SetLabel(
        Text(texts_[found_.Record.iPjNum > 0 ? SearchText::kFound : SearchText::kNothingFound]));
    OfferOne();
    ShowChoice();
  }

  // The projector used last, else the first one that can be chosen.
  void OfferOne() {
    int offered = -1;
    for (int i = found_.Record.iPjNum - 1; i >= 0; --i) {
      if (found_.Record.PJData[i].bSelectable) offered = i;
    }
    for (int i = 0; i < found_.Record.iPjNum; ++i) {
      const auto& entry = found_.Record.PJData[i];
      if (entry.bSelectable && Text(AddressText(entry.ucIP)) == last_address_) offered = i;
    }
    if (offered < 0) return;
    list_->Select(offered);
    list_->Focus(offered);
    list_->SetFocus();
  }

  // The chosen projector, or -1 when there is none or it cannot be chosen.
  int Choice() const {
    const long index = list_->GetFirstSelected();
    if (index < 0 || index >= found_.Record.iPjNum) return -1;
    return found_.Record.PJData[index].bSelectable ? static_cast<int>(index) : -1;
  }

  void ShowChoice() { ok_->Enable(Choice() >= 0); }

  void TakeChoice() {
    const int choice = Choice();
    if (choice >= 0) Decide(kSearchSelected, static_cast<std::uint32_t>(choice));
  }

  SelectionWindowHost host_;
  const SearchTexts& texts_;
  wxTimer timer_;
  wxString last_address_;
  SearchResult found_;
  bool decided_ = false;
  wxStaticText* state_ = nullptr;
  wxListView* list_ = nullptr;
  wxButton* again_ = nullptr;
  wxButton* read_me_ = nullptr;
  wxButton* ok_ = nullptr;
  wxButton* cancel_ = nullptr;
};

class WxSelectionWindow : public SelectionWindow {
 public:
  WxSelectionWindow(SelectionWindowHost host, Language language)
      : dialog_(new SelectionDialog(wxTheApp->GetTopWindow(), std::move(host),
                                    SearchTextsOf(language))) {}
  ~WxSelectionWindow() override {
    // The toolkit may have deleted it together with its parent.
    if (dialog_) dialog_->Leave();
  }
  WxSelectionWindow(const WxSelectionWindow&) = delete;
  WxSelectionWindow& operator=(const WxSelectionWindow&) = delete;

  void ShowSearching(const std::string& last_address) override {
    if (dialog_) dialog_->ShowSearching(wxString::FromUTF8(last_address));
  }
  void GoOn() override {
    if (dialog_) dialog_->GoOn();
  }

 private:
  wxWeakRef<SelectionDialog> dialog_;
};

}  // namespace

std::unique_ptr<SelectionWindow> MakeSelectionWindow(SelectionWindowHost host, Language language) {
  const bool has_windows = wxTheApp != nullptr && wxTheApp->IsGUI();
  if (!has_windows) return nullptr;
  return std::make_unique<WxSelectionWindow>(std::move(host), language);
}

}  // namespace warpline::sim
