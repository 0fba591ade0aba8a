#include "ui/LSSmain_controls.h"

#include <wx/panel.h>
#include <wx/statline.h>

#include <algorithm>

#include "core/tool_texts.h"
#include "toolkit/layout.h"
#include "ui/dialog_controls.h"
#include "ui/icons.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

wxSizer* CreateScreenLine(MainControls& controls, wxWindow* panel, const ControlMaker& make) {
  auto* caption = new wxStaticText(panel, wxID_ANY, make.Text(kMsgSelectScreen), wxDefaultPosition,
                                   wxDefaultSize, 0, "scr_select_name");
  controls.scr_select = make.Choice("scr_select", kMsgSelectScreen);
  for (const ScreenTypeRow& type : kScreenTypes) {
    controls.scr_select->Append(make.Text(type.caption));
  }
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->Add(caption, AtCentre());
  line->Add(controls.scr_select, AtCentre().Border(wxLEFT, Gap(panel)));
  return line;
}

wxWindow* CreateGroupButtons(MainControls& controls, wxWindow* panel, const ControlMaker& make) {
  auto* holder = new wxPanel(panel, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL,
                             "ctrl_select");
  auto* column = new wxBoxSizer(wxVERTICAL);
  for (std::size_t group = 0; group < controls.ctrl_select.size(); ++group) {
    auto* button = new wxRadioButton(holder, wxID_ANY, make.Text(kGroups[group].caption),
                                     wxDefaultPosition, wxDefaultSize, group == 0 ? wxRB_GROUP : 0,
                                     wxDefaultValidator, wxString::Format("ctrl_select%zu", group));
    controls.ctrl_select[group] = button;
    // All around: the focus is drawn outside the button's own area.
    column->Add(button, wxSizerFlags().Border(wxALL, Gap(panel) / 2));
  }
  holder->SetSizer(column);
  return holder;
}

// Symmetry boxes and editor button share one place of constant height.
wxSizer* CreateExtrasLine(MainControls& controls, wxWindow* panel, const ControlMaker& make) {
  controls.lr_symm = make.CheckBox("lr_symm", kMsgHorizontalSymmetry);
  controls.ud_symm = make.CheckBox("ud_symm", kMsgVerticalSymmetry);
  controls.corre_edit = make.Button("corre_edit", kMsgEditCurve);
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->Add(0, std::max(controls.corre_edit->GetBestSize().y, controls.lr_symm->GetBestSize().y));
  line->Add(controls.lr_symm, AtCentre());
  line->Add(controls.ud_symm, AtCentre().Border(wxLEFT, WideGap(panel)));
  line->Add(controls.corre_edit, AtCentre());
  return line;
}

wxSizer* CreateParameterBlock(MainControls& controls, wxWindow* panel, const ControlMaker& make,
                              const SliderHandlers& handlers) {
  wxWindow* groups = CreateGroupButtons(controls, panel, make);
  auto* column = new wxBoxSizer(wxVERTICAL);
  for (int row = 0; row < kSliderCount; ++row) {
    auto& place = controls.rows[static_cast<std::size_t>(row)];
    place = std::make_unique<SliderRow>(panel, row, handlers);
    column->Add(place->Sizer(), wxSizerFlags().Expand().Border(wxBOTTOM, WideGap(panel)));
  }
  column->Add(CreateExtrasLine(controls, panel, make), wxSizerFlags().Expand());
  auto* block = new wxBoxSizer(wxHORIZONTAL);
  block->Add(groups);
  block->Add(column, wxSizerFlags(1).Border(wxLEFT, 2 * WideGap(panel)));
  return block;
}

wxSizer* CreateButtonLine(MainControls& controls, wxWindow* panel, const ControlMaker& make) {
  controls.testpattern = make.CheckBox("testpattern", kMsgTestPattern);
  controls.initbutton = make.Button("initbutton", kMsgInitialize);
  controls.applybutton = make.Button("applybutton", kMsgApply);
  controls.storebutton = make.Button("storebutton", kMsgStore);
  controls.exitbutton = make.Button("exitbutton", kMsgExit);
  controls.applybutton->SetDefault();
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->Add(controls.testpattern, AtCentre());
  line->AddStretchSpacer();
  for (wxButton* button :
       {controls.initbutton, controls.applybutton, controls.storebutton, controls.exitbutton}) {
    line->Add(button, AtCentre().Border(wxLEFT, Gap(panel)));
  }
  return line;
}

SliderRow::Texts TextsOf(const LSSglobal& global, int group, int row) {
  const GroupRow& texts = kGroups[static_cast<std::size_t>(group)];
  const bool acts = OpticalSlider(global.Correction, group) == row;
  return {CaptionOf(global, texts.caption),
          CaptionOf(global, texts.slider_captions[static_cast<std::size_t>(row)]),
          acts ? CaptionOf(global, ToolText::kPutOpticalBack) : wxString()};
}

// What only some groups have beside their sliders.
void ShowExtras(MainControls& controls, int group) {
  controls.lr_symm->Show(group == kGroupLinearity);
  controls.ud_symm->Show(group == kGroupLinearity);
  controls.corre_edit->Show(CurveEditorShown(group));
  controls.lr_symm->GetParent()->Layout();
}

}  // namespace

MainControls CreateMainControls(wxWindow* panel, const LSSglobal& global,
                                const SliderHandlers& handlers,
                                const MainStatus::Handlers& status_handlers) {
  MainControls controls;
  const ControlMaker make(panel, global);
  const int edge = WideGap(panel);
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(CreateScreenLine(controls, panel, make), wxSizerFlags().Expand().Border(wxALL, edge));
  all->Add(CreateParameterBlock(controls, panel, make, handlers),
           wxSizerFlags().Expand().Border(wxALL, edge));
  all->AddStretchSpacer();
  all->Add(new wxStaticLine(panel), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, edge));
  all->Add(CreateButtonLine(controls, panel, make), wxSizerFlags().Expand().Border(wxALL, edge));
  controls.status = std::make_unique<MainStatus>(panel, global, status_handlers);
  all->Add(new wxStaticLine(panel), wxSizerFlags().Expand());
  all->Add(controls.status->Sizer(), wxSizerFlags().Expand().Border(wxALL, Gap(panel) / 2));
  panel->SetSizer(all);
  return controls;
}

void ShowGroup(MainControls& controls, const LSSglobal& global, int group) {
  const CorrectionData& correction = global.Correction;
  for (int row = 0; row < kSliderCount; ++row) {
    const SliderTarget target = TargetOf(correction, group, row);
    controls.rows[static_cast<std::size_t>(row)]->Show(
        SetUpSlider(correction, group, row),
        {TextsOf(global, group, row), IconOf(target, correction.Axes[target.axis].Stadium == 1),
         wxString::Format("iconbutton%d", kSliderCount * group + row)});
  }
  controls.ctrl_select[static_cast<std::size_t>(group)]->SetValue(true);
  ShowGroupValues(controls, global, group);
  ShowExtras(controls, group);
}

void ShowGroupTexts(MainControls& controls, const LSSglobal& global, int group) {
  for (int row = 0; row < kSliderCount; ++row) {
    controls.rows[static_cast<std::size_t>(row)]->ShowTexts(
        SetUpSlider(global.Correction, group, row), TextsOf(global, group, row));
  }
  ShowExtras(controls, group);
}

void ShowGroupValues(MainControls& controls, const LSSglobal& global, int group, bool bars) {
  const CorrectionData& correction = global.Correction;
  for (int row = 0; row < kSliderCount; ++row) {
    SliderRow& place = *controls.rows[static_cast<std::size_t>(row)];
    const SliderSetup setup = SetUpSlider(correction, group, row);
    if (bars) place.ShowBar(setup);
    place.ShowValue(setup);
  }
  controls.lr_symm->SetValue(correction.Axes[kHorizontal].Stadium == 1);
  controls.ud_symm->SetValue(correction.Axes[kVertical].Stadium == 1);
  controls.corre_edit->Enable(CurveEditorEnabled(correction, group));
}

}  // namespace warpline
