#include <functional>

#include "sim/window/projector_frame.h"
#include "sim/window/wx_texts.h"

namespace warpline::sim {
namespace {

constexpr int kFastFactor = 20;

// Keys without Ctrl or Alt. They are not the menu's accelerators, which would take them from a
// number that is being typed.
struct KeyRow {
  int key;
  ProjectorText item;
};

constexpr KeyRow kKeys[] = {
    {'P', ProjectorText::kItemPanel},  {'W', ProjectorText::kItemWall},
    {'C', ProjectorText::kItemCamera}, {'1', ProjectorText::kItemCard},
    {'2', ProjectorText::kItemGrid},   {'3', ProjectorText::kItemChecker},
    {'4', ProjectorText::kItemWhite},  {'0', ProjectorText::kItemFit},
    {'M', ProjectorText::kItemMarks},  {'S', ProjectorText::kItemSave},
};

int IdOf(ProjectorText item) {
  return wxID_HIGHEST + 1 + static_cast<int>(item);
}

}  // namespace

struct ProjectorFrame::Item {
  ProjectorText text;
  std::function<void(bool checked)> run;
  wxItemKind kind = wxITEM_NORMAL;
  bool checked = false;
};

void ProjectorFrame::AddItem(wxMenu& menu, const Item& item) {
  wxMenuItem* const entry = menu.Append(IdOf(item.text), Label(texts_, item.text), "", item.kind);
  if (item.kind != wxITEM_NORMAL) entry->Check(item.checked);
  Bind(
      wxEVT_MENU, [run = item.run](wxCommandEvent& event) { run(event.IsChecked()); },
      entry->GetId());
}

std::vector<ProjectorFrame::Item> ProjectorFrame::PictureItems() {
  const auto pattern = [this](TestPattern chosen) {
    return [this, chosen](bool) { ChoosePattern(chosen); };
  };
  using enum ProjectorText;
  return {
      {kItemCard, pattern(TestPattern::kCard)},       {kItemGrid, pattern(TestPattern::kGrid)},
      {kItemChecker, pattern(TestPattern::kChecker)}, {kItemWhite, pattern(TestPattern::kWhite)},
      {kItemOpen, [this](bool) { OpenPicture(); }},   {kItemSave, [this](bool) { SavePicture(); }},
      {kItemExit, [this](bool) { Close(true); }}};
}

std::vector<ProjectorFrame::Item> ProjectorFrame::ViewItems() {
  const auto zoom = [this](int factor) {
    return [this, factor](bool) { canvas_->SetZoom(factor); };
  };
  const auto mark = [this](bool checked) {
    marks_ = checked;
    Redraw();
  };
  using enum ProjectorText;
  const bool wall = request_.Wall.has_value();
  const auto view = [this](View chosen) { return [this, chosen](bool) { ChooseView(chosen); }; };
  return {{kItemPanel, view(View::kPanel), wxITEM_RADIO, !wall},
          {kItemWall, view(View::kWall), wxITEM_RADIO, wall},
          {kItemCamera, view(View::kCamera), wxITEM_RADIO},
          {kItemFit, zoom(0)},
          {kItemActual, zoom(1)},
          {kItemDouble, zoom(2)},
          {kItemEightfold, zoom(8)},
          {kItemMarks, mark, wxITEM_CHECK, true},
          {kItemFullScreen, [this](bool) { SwitchFullScreen(!IsFullScreen()); }}};
}

std::vector<ProjectorFrame::Item> ProjectorFrame::ProjectorItems() {
  Station& station = request_.Station;
  const auto speed_up = [&station](bool checked) { station.SetSpeedUp(checked ? kFastFactor : 1); };
  using enum ProjectorText;
  return {{kItemPowerOn, [&station](bool) { station.TurnPower(true); }},
          {kItemStandby, [&station](bool) { station.TurnPower(false); }},
          {kItemSpeedUp, speed_up, wxITEM_CHECK, station.Snapshot().SpeedUp > 1},
          {kItemRestart, [&station](bool) { station.Restart(); }},
          {kItemClearFaults, [&station](bool) { station.SetFaults({}); }}};
}

std::vector<ProjectorFrame::Item> ProjectorFrame::HelpItems() {
  using enum ProjectorText;
  return {{kItemKeys, [this](bool) {
             ShowMessage(Label(texts_, kKeysText), Label(texts_, kKeysTitle), wxOK);
           }}};
}

void ProjectorFrame::BuildMenus() {
  auto* const bar = new wxMenuBar;
  const auto add = [this, bar](ProjectorText title, const std::vector<Item>& items) {
    auto* const menu = new wxMenu;
    for (const Item& item : items) AddItem(*menu, item);
    bar->Append(menu, Label(texts_, title));
  };
  add(ProjectorText::kMenuPicture, PictureItems());
  add(ProjectorText::kMenuView, ViewItems());
  add(ProjectorText::kMenuProjector, ProjectorItems());
  add(ProjectorText::kMenuHelp, HelpItems());
  SetMenuBar(bar);
}

// As if the item were chosen from its menu.
void ProjectorFrame::Choose(wxMenuItem& item) {
  if (item.IsCheckable()) item.Check(item.GetKind() == wxITEM_RADIO || !item.IsChecked());
  wxCommandEvent event(wxEVT_MENU, item.GetId());
  event.SetInt(item.IsCheckable() && item.IsChecked() ? 1 : 0);
  ProcessWindowEvent(event);
}

void ProjectorFrame::PressKey(wxKeyEvent& event) {
  event.Skip();
  if (event.GetKeyCode() == WXK_ESCAPE && IsFullScreen()) SwitchFullScreen(false);
  const bool typing = dynamic_cast<wxSpinCtrl*>(FindFocus()) != nullptr;
  if (typing || event.GetModifiers() != wxMOD_NONE) return;
  if (event.GetKeyCode() == kUncorrectedKey) {
    event.Skip(false);
    ShowUncorrected(true);
  }
  for (const KeyRow& row : kKeys) {
    if (row.key != event.GetKeyCode()) continue;
    event.Skip(false);
    Choose(*GetMenuBar()->FindItem(IdOf(row.item)));
  }
}

}  // namespace warpline::sim
