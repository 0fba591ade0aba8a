#include "ui/LSSmain_open_dialogs.h"

#include <wx/toplevel.h>

#include <memory>
#include <utility>

#include "app/communication_settings.h"
#include "app/startup.h"
#include "ui/LSSapmode.h"
#include "ui/LSSset.h"
#include "ui/LSSwedit.h"
#include "ui/frmPjSearchCallDlg.h"
#include "ui/read_me.h"

namespace warpline {
namespace {

void WriteSettings(const DialogParts& parts, const wxTopLevelWindow* owner) {
  const wxPoint position = owner->GetPosition();
  SaveSettings(parts.global, parts.files, parts.application_data, position.x, position.y);
}

void EditCurve(const DialogParts& parts, wxTopLevelWindow* owner, Axis axis,
               const std::function<void()>& applied) {
  LSSwedit dialog(owner, axis,
                  {parts.global, parts.files, parts.messages, parts.shape_files,
                   parts.application_data, applied});
  dialog.ShowModal();
}

void ChangeCommunication(const DialogParts& parts, wxTopLevelWindow* owner) {
  LSSset dialog(owner, parts.global, parts.messages);
  if (dialog.ShowModal() == wxID_OK) WriteSettings(parts, owner);
}

void SearchProjector(const DialogParts& parts, wxTopLevelWindow* owner) {
  frmPjSearchCallDlg dialog(owner, parts.messages, parts.beamseek, [&parts] {
    ShowReadMe(parts.global, parts.messages, parts.program_folder, parts.show_text);
  });
  const auto address = dialog.Search(SearchOptionsOf(parts.global, SearchWindow::kShown));
  if (!address) return;
  StoreFoundAddress(*address, parts.global.Settings);
  WriteSettings(parts, owner);
}

void ChangeProjectorMode(const DialogParts& parts, wxTopLevelWindow* owner) {
  if (!parts.commands.ReadMode()) return;
  LSSapmode dialog(owner, parts.global, parts.commands, parts.busy);
  dialog.ShowModal();
}

}  // namespace

MainDialogs CreateMainDialogs(DialogParts parts) {
  const auto shared = std::make_shared<const DialogParts>(std::move(parts));
  MainDialogs dialogs;
  dialogs.curve_editor = [shared](wxTopLevelWindow* owner, Axis axis,
                                  const std::function<void()>& applied) {
    EditCurve(*shared, owner, axis, applied);
  };
  dialogs.communication_settings = [shared](wxTopLevelWindow* owner) {
    ChangeCommunication(*shared, owner);
  };
  dialogs.projector_search = [shared](wxTopLevelWindow* owner) { SearchProjector(*shared, owner); };
  dialogs.projector_mode = [shared](wxTopLevelWindow* owner) {
    ChangeProjectorMode(*shared, owner);
  };
  return dialogs;
}

}  // namespace warpline
