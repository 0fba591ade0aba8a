#include "ui/picture_on_display.h"

#include <wx/app.h>
#include <wx/display.h>

#include <algorithm>
#include <utility>

#include "core/tool_texts.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kFirstDisplayItem = wxID_HIGHEST + 500;
constexpr std::size_t kMostDisplays = 16;

// Not every system tells when a display comes or goes. In milliseconds.
constexpr int kLookInterval = 1000;

}  // namespace

PictureOnDisplay::PictureOnDisplay(wxFrame& owner, const MainParts& parts,
                                   MainController& controller,
                                   std::function<void(std::string_view)> run)
    : owner_(owner), parts_(parts), control_(parts.engine, controller, std::move(run)) {}

void PictureOnDisplay::Attach(wxMenu& menu, int off_item) {
  menu_ = &menu;
  off_item_ = off_item;
  Refresh();
  owner_.Bind(wxEVT_MENU_OPEN, [this](wxMenuEvent& event) {
    event.Skip();
    Refresh();
  });
  owner_.Bind(wxEVT_MENU_CLOSE, [this](wxMenuEvent& event) {
    event.Skip();
    labels_.Hide();
  });
  owner_.Bind(wxEVT_MENU_HIGHLIGHT, &PictureOnDisplay::OnHighlight, this);
  owner_.Bind(
      wxEVT_MENU,
      [this](wxCommandEvent& event) {
        Put(static_cast<std::size_t>(event.GetId() - kFirstDisplayItem));
      },
      kFirstDisplayItem, kFirstDisplayItem + static_cast<int>(kMostDisplays) - 1);
  owner_.Bind(wxEVT_DISPLAY_CHANGED, [this](wxDisplayChangedEvent& event) {
    event.Skip();
    Look();
  });
  owner_.Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
    event.Skip();
    if (event.GetActive()) wxTheApp->SetTopWindow(&owner_);
  });
}

void PictureOnDisplay::Refresh() {
  std::vector<DisplayPlace> now = parts_.displays();
  now.resize(std::min(now.size(), kMostDisplays));
  if (now != displays_) {
    labels_.Hide();
    displays_ = std::move(now);
    FillMenu();
  }
  CheckItems();
}

void PictureOnDisplay::FillMenu() {
  while (menu_->FindItemByPosition(0)->GetId() != off_item_) {
    menu_->Destroy(menu_->FindItemByPosition(0));
  }
  for (std::size_t i = 0; i < displays_.size(); ++i) {
    wxString text = WxText(TextOf(ToolText::kPictureDisplay, i));
    text.Replace("&", "&&");
    menu_->Insert(i, kFirstDisplayItem + static_cast<int>(i),
                  wxString::Format("&%zu ", i + 1) + text, "", wxITEM_CHECK);
  }
}

void PictureOnDisplay::CheckItems() {
  if (menu_ == nullptr) return;
  for (std::size_t i = 0; i < displays_.size(); ++i) {
    menu_->Check(kFirstDisplayItem + static_cast<int>(i),
                 IsShown() && window_->Display() == displays_[i]);
  }
  menu_->Check(off_item_, !IsShown());
}

std::string PictureOnDisplay::NameOf(std::size_t display) const {
  const wxString& name = displays_[display].Name;
  if (!name.empty()) return name.utf8_string();
  return FilledText(warpline::TextOf(parts_.engine.global, ToolText::kPictureNoName),
                    {std::to_string(display + 1)});
}

std::string PictureOnDisplay::TextOf(ToolText text, std::size_t display) const {
  const DisplayPlace& place = displays_[display];
  return FilledText(
      warpline::TextOf(parts_.engine.global, text),
      {NameOf(display), std::to_string(place.Pixels.x), std::to_string(place.Pixels.y),
       std::to_string(place.Area.x), std::to_string(place.Area.y)});
}

void PictureOnDisplay::OnHighlight(wxMenuEvent& event) {
  event.Skip();
  const auto marked = static_cast<std::size_t>(event.GetMenuId() - kFirstDisplayItem);
  if (event.GetMenuId() < kFirstDisplayItem || marked >= displays_.size()) {
    labels_.Hide();
    return;
  }
  std::vector<PictureOverlay> texts;
  for (std::size_t i = 0; i < displays_.size(); ++i) {
    texts.push_back({NameOf(i),
                     TextOf(ToolText::kPictureLabelSize, i),
                     {TextOf(ToolText::kPictureLabelPlace, i)}});
  }
  labels_.Show(owner_, displays_, texts, marked);
}

std::vector<std::string> PictureOnDisplay::DisplayNames() {
  Refresh();
  std::vector<std::string> names;
  for (std::size_t i = 0; i < displays_.size(); ++i) {
    names.push_back(TextOf(ToolText::kPictureDisplay, i));
  }
  return names;
}

std::size_t PictureOnDisplay::OtherDisplay() const {
  const wxRect own = owner_.GetScreenRect();
  const wxPoint middle(own.x + own.width / 2, own.y + own.height / 2);
  const auto other = std::ranges::find_if(
      displays_, [&](const DisplayPlace& display) { return !display.Area.Contains(middle); });
  return other == displays_.end() ? 0 : static_cast<std::size_t>(other - displays_.begin());
}

void PictureOnDisplay::PutMarks(std::size_t display, wxWindow& asking) {
  control_.ChooseMarks();
  Put(display);
  asking_ = &asking;
}

void PictureOnDisplay::CreateWindow() {
  const auto takes_keys = [&busy = parts_.busy] { return !busy.IsBusy() || busy.IsFollowing(); };
  window_ = new PictureWindow(
      &owner_, CaptionOf(parts_.engine.global, ToolText::kPictureTitle), control_,
      {takes_keys, [this] { return parts_.pictures(window_, {}); }, [this] { End(); }});
  // It may live on a moment longer than this object.
  window_->Bind(wxEVT_ACTIVATE, [window = window_](wxActivateEvent& event) {
    event.Skip();
    if (event.GetActive() && window->IsShown()) wxTheApp->SetTopWindow(window);
  });
}

void PictureOnDisplay::Put(std::size_t display) {
  labels_.Hide();
  if (display >= displays_.size()) return;
  if (window_ == nullptr) CreateWindow();
  window_->ShowOn(displays_[display]);
  CheckItems();
  watch_.Begin(kLookInterval, [this] { Look(); });
}

// A picture whose display has gone ends; one whose display has changed follows.
void PictureOnDisplay::Look() {
  if (!IsShown()) return;
  const DisplayPlace before = window_->Display();
  Refresh();
  if (std::ranges::find(displays_, before) != displays_.end()) return;
  const auto same = std::ranges::find_if(displays_, [&](const DisplayPlace& each) {
    return each.Number == before.Number && each.Name == before.Name;
  });
  if (same == displays_.end()) {
    End();
  } else {
    Put(static_cast<std::size_t>(same - displays_.begin()));
  }
}

void PictureOnDisplay::Changed() {
  if (IsShown()) window_->ShowOverlay();
}

// What the user is told next belongs to the main window again.
void PictureOnDisplay::End() {
  watch_.Stop();
  if (IsShown()) {
    window_->End();
    wxTheApp->SetTopWindow(&owner_);
    owner_.Raise();
    if (asking_) asking_->Raise();
    asking_ = nullptr;
  }
  CheckItems();  // choosing an item has turned its own over
}

}  // namespace warpline
