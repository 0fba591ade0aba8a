#include "sim/window/state_pane.h"

#include <wx/sizer.h>

#include <array>

#include "sim/device/register_layout.h"
#include "sim/recording/frame_names.h"
#include "sim/window/wx_texts.h"

namespace warpline::sim {
namespace {

constexpr std::size_t kShownBytes = 64;
constexpr std::size_t kShownDigits = 64;

// What matters comes first; the counters stand below it.
constexpr std::size_t kMainRows = 4;
constexpr std::array kRows{
    ProjectorText::kShownSet,    ProjectorText::kKeptSet,        ProjectorText::kMode,
    ProjectorText::kPanel,       ProjectorText::kPower,          ProjectorText::kInput,
    ProjectorText::kModelClass,  ProjectorText::kReply5,         ProjectorText::kFrames,
    ProjectorText::kRefusals,    ProjectorText::kShows,          ProjectorText::kStores,
    ProjectorText::kRowsAtLimit, ProjectorText::kColumnsAtLimit, ProjectorText::kLinks,
    ProjectorText::kBytesIn,     ProjectorText::kBytesOut,       ProjectorText::kSeed,
    ProjectorText::kMismatches,
};

std::string PowerText(const ProjectorTexts& texts, const StationSnapshot& state) {
  const ProjectorText key =
      Behind(ProjectorText::kPowerStandby, static_cast<int>(state.Setup.PowerState));
  return texts.Fill(key, {std::to_string((state.PowerLeft.count() + 999) / 1000)});
}

// An optical centre alone moves nothing.
bool IsCorrection(RegisterSet set, PanelSize panel) {
  const RegisterSet neutral = NeutralRegisters(panel);
  for (std::size_t axis = 0; axis < kAxisCount; ++axis) {
    set[axis][kOptCenter] = neutral[axis][kOptCenter];
  }
  return set != neutral;
}

ProjectorText ShownText(const StationSnapshot& state) {
  return IsCorrection(state.Working, state.Setup.Panel) ? ProjectorText::kSomeCorrection
                                                        : ProjectorText::kNoCorrection;
}

ProjectorText KeptText(const StationSnapshot& state) {
  if (!IsCorrection(state.Stored, state.Setup.Panel)) return ProjectorText::kNoCorrection;
  return state.Stored == state.Working ? ProjectorText::kSameCorrection
                                       : ProjectorText::kOtherCorrection;
}

// In the order of the rows.
std::vector<std::string> Values(const ProjectorTexts& texts, const StationSnapshot& state,
                                const ShownPicture& shown) {
  const PanelSize panel = state.Setup.Panel;
  return {texts[ShownText(state)],
          texts[KeptText(state)],
          std::to_string(state.Mode),
          std::to_string(panel.Width) + "x" + std::to_string(panel.Height),
          PowerText(texts, state),
          std::to_string(state.Input),
          std::to_string(state.Setup.ModelClass),
          std::to_string(state.Setup.Reply5),
          std::to_string(state.Count.Exchanges),
          std::to_string(state.Count.Refused),
          std::to_string(state.Count.Shows),
          std::to_string(state.Count.Stores),
          std::to_string(shown.RowsAtLimit),
          std::to_string(shown.ColumnsAtLimit),
          std::to_string(state.Links) + " (" + std::to_string(state.OpenLinks) + ")",
          std::to_string(state.BytesIn),
          std::to_string(state.BytesOut),
          std::to_string(state.Seed),
          std::to_string(state.Mismatches)};
}

void AddColumns(wxListCtrl& list, const ProjectorTexts& texts,
                std::initializer_list<std::pair<ProjectorText, int>> columns) {
  for (const auto& [key, width] : columns) {
    list.AppendColumn(Label(texts, key), wxLIST_FORMAT_LEFT, list.FromDIP(width));
  }
}

wxString Shortened(const std::string& text) {
  return Wx(text.size() > kShownDigits ? text.substr(0, kShownDigits) + "..." : text);
}

}  // namespace

StatePane::StatePane(wxWindow* parent, const ProjectorTexts& texts)
    : wxPanel(parent, wxID_ANY), texts_(texts) {
  auto* const grid = new wxFlexGridSizer(2, FromDIP(wxSize(12, 4)));
  for (const ProjectorText key : kRows) {
    grid->Add(new wxStaticText(this, wxID_ANY, Label(texts, key)));
    values_.push_back(new wxStaticText(this, wxID_ANY, ""));
    grid->Add(values_.back());
    if (values_.size() != kMainRows) continue;
    for (int column = 0; column < grid->GetCols(); ++column) grid->AddSpacer(FromDIP(8));
  }
  auto* const border = new wxBoxSizer(wxVERTICAL);
  border->Add(grid, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(8)));
  SetSizer(border);
}

void StatePane::Show(const StationSnapshot& state, const ShownPicture& shown) {
  const std::vector<std::string> texts = Values(texts_, state, shown);
  for (std::size_t i = 0; i < values_.size(); ++i) {
    const wxString text = Wx(texts[i]);
    if (values_[i]->GetLabel() != text) values_[i]->SetLabel(text);
  }
}

RegisterList::RegisterList(wxWindow* parent, const ProjectorTexts& texts)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLC_REPORT) {
  AddColumns(*this, texts,
             {{ProjectorText::kRegister, 110},
              {ProjectorText::kWorking, 130},
              {ProjectorText::kStored, 130}});
  SetName("registers");
  for (std::size_t entry = 0; entry < kEntryCount; ++entry) {
    InsertItem(static_cast<long>(entry), Wx(EntryName(entry)));
  }
}

void RegisterList::Show(const StationSnapshot& state) {
  for (std::size_t entry = 0; entry < kEntryCount; ++entry) {
    const auto item = static_cast<long>(entry);
    const std::string& working = EntryText(state.Working, entry);
    const std::string& stored = EntryText(state.Stored, entry);
    SetItem(item, 1, Shortened(working));
    SetItem(item, 2, Shortened(stored));
    wxFont font = GetFont();
    if (working != stored) font.MakeBold();
    SetItemFont(item, font);
  }
}

FrameList::FrameList(wxWindow* parent, const ProjectorTexts& texts)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLC_REPORT | wxLC_VIRTUAL),
      texts_(texts) {
  SetName("frames");
  AddColumns(*this, texts,
             {{ProjectorText::kNumber, 55},
              {ProjectorText::kName, 130},
              {ProjectorText::kRequest, 260},
              {ProjectorText::kReply, 200},
              {ProjectorText::kFault, 120}});
}

void FrameList::Show(const StationSnapshot& state) {
  exchanges_ = state.Exchanges;
  SetItemCount(static_cast<long>(exchanges_.size()));
  Refresh();
}

wxString FrameList::OnGetItemText(long item, long column) const {
  const auto index = static_cast<std::size_t>(item);
  if (index >= exchanges_.size()) return {};
  const LoggedExchange& exchange = exchanges_[exchanges_.size() - 1 - index];
  const std::array<std::string, 5> texts{std::to_string(exchange.Number),
                                         FrameName(texts_, exchange.Request),
                                         FrameHex(exchange.Request, kShownBytes),
                                         FrameHex(exchange.Reply, kShownBytes), exchange.Fault};
  return Wx(texts[static_cast<std::size_t>(column)]);
}

}  // namespace warpline::sim
