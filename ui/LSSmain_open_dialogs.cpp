#include "ui/LSSmain_open_dialogs.h"

#include <wx/toplevel.h>

#include "app/communication_settings.h"
#include "app/startup.h"
#include "ui/LSSapmode.h"
#include "ui/LSSset.h"
#include "ui/LSSwedit.h"
#include "ui/frmPjSearchCallDlg.h"
#include "ui/read_me.h"

namespace warpline {
namespace {

void WriteSettings(const MainParts& parts, const wxTopLevelWindow* owner) {
  const wxPoint position = owner->GetPosition();
  SaveSettings(parts.engine.global, parts.engine.messages, parts.application_data, position.x,
               position.y);
}

}  // namespace

void OpenCurveEditor(const MainParts& parts, wxTopLevelWindow* owner, Axis axis,
                     const std::function<void(bool finished)>& applied,
                     const std::function<void(wxTopLevelWindow&)>& opening) {
  LSSwedit dialog(owner, axis,
                  {parts.engine, parts.busy, parts.shape_files, parts.application_data, applied});
  opening(dialog);
  dialog.ShowModal();
}

void OpenCommunicationSettings(const MainParts& parts, wxTopLevelWindow* owner) {
  LSSset dialog(owner, parts.engine.global, parts.engine.messages);
  if (dialog.ShowModal() == wxID_OK) WriteSettings(parts, owner);
}

void OpenProjectorSearch(const MainParts& parts, wxTopLevelWindow* owner) {
  Engine& engine = parts.engine;
  frmPjSearchCallDlg dialog(owner, engine.messages, parts.beamseek, [&parts, &engine] {
    ShowReadMe(engine.global, engine.messages, parts.program_folder, parts.show_text);
  });
  const auto address = dialog.Search(SearchOptionsOf(engine.global, SearchWindow::kShown));
  if (!address) return;
  StoreFoundAddress(*address, engine.global.Settings);
  WriteSettings(parts, owner);
}

void OpenProjectorModes(const MainParts& parts, wxTopLevelWindow* owner) {
  if (!parts.engine.commands.ReadMode()) return;
  LSSapmode dialog(owner, parts.engine.global, parts.engine.commands, parts.busy);
  dialog.ShowModal();
}

}  // namespace warpline
