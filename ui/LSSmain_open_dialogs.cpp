#include "ui/LSSmain_open_dialogs.h"

#include <wx/toplevel.h>

#include <chrono>

#include "app/communication_settings.h"
#include "app/save_name.h"
#include "app/setup_sheet.h"
#include "app/sheet_file.h"
#include "app/startup.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "platform/files.h"
#include "ui/LSSapmode.h"
#include "ui/LSSset.h"
#include "ui/LSSwedit.h"
#include "ui/connection_check_window.h"
#include "ui/frmPjSearchCallDlg.h"
#include "ui/read_me.h"
#include "ui/sheet_dialog.h"

namespace warpline {
namespace {

void WriteSettings(const MainParts& parts, const wxTopLevelWindow* owner) {
  const wxPoint position = owner->GetPosition();
  SaveSettings(parts.engine.global, parts.engine.messages, parts.application_data, position.x,
               position.y);
}

// A sheet stands beside the correction that it tells of, under the same name.
std::filesystem::path ChooseSheet(const MainParts& parts, wxWindow* owner) {
  const LSSglobal& global = parts.engine.global;
  const std::filesystem::path folder = DialogFolder(global, parts.application_data);
  std::filesystem::path offered = global.CurrentFile.stem();
  if (offered.empty()) offered = kUnnamed;
  offered += std::string(".").append(kTypeHtml);
  return ChooseSaveName(
      [&](const std::filesystem::path& name) {
        return parts.sheet_files.save(owner, folder, name);
      },
      offered, kTypeHtml);
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
    const auto file = ReadMeFile(engine.global, parts.program_folder);
    ShowHelpFile(engine, file, parts.show_text);
  });
  const auto address = dialog.Search(SearchOptionsOf(engine.global, SearchWindow::kShown));
  if (!address) return;
  StoreFoundAddress(*address, engine.global.Settings);
  WriteSettings(parts, owner);
}

void OpenSetupSheet(const MainParts& parts, wxTopLevelWindow* owner, bool changed) {
  std::filesystem::path sheet;
  SheetDialog dialog(owner, parts.engine.global, [&](const std::string& note, bool ask_projector) {
    sheet = ChooseSheet(parts, &dialog);
    const WallTime now = std::chrono::system_clock::now();
    return !sheet.empty() &&
           WriteSetupSheet(parts.engine, {note, changed, ask_projector, now, sheet});
  });
  parts.busy.Attach(&dialog);
  const bool made = dialog.ShowModal() == wxID_OK;
  parts.busy.Attach(owner);
  if (!made || parts.show_page(sheet)) return;
  parts.engine.messages.ShowSystemError(
      FilledText(TextOf(parts.engine.global, ToolText::kSheetNotShown), {Utf8Of(sheet)}));
}

void OpenConnectionCheck(const MainParts& parts, wxTopLevelWindow* owner) {
  ConnectionCheckWindow dialog(owner, parts);
  dialog.ShowModal();
}

void OpenProjectorModes(const MainParts& parts, wxTopLevelWindow* owner) {
  if (!parts.engine.commands.ReadMode()) return;
  LSSapmode dialog(owner, parts.engine.global, parts.engine.commands, parts.busy);
  dialog.ShowModal();
}

}  // namespace warpline
