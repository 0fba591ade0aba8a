#include "ui/file_chooser.h"

#include <wx/filedlg.h>

#include <string>

#include "ui/wx_text.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

// "Data Files (*.wlt)|*.wlt|All Files (*.*)|*.*": the second pattern has to be the system's own.
wxString FilterOf(const LSSglobal& global, const std::string& type) {
  return WxText(FilledText(TextOf(global, ToolText::kFileTypes),
                           {type, wxString(wxFileSelectorDefaultWildcardStr).utf8_string()}));
}

fs::path ChooseToOpen(const LSSglobal& global, const std::string& type, wxWindow* owner,
                      const fs::path& folder) {
  wxFileDialog dialog(owner, CaptionOf(global, kMsgOpen), WxPath(folder), "",
                      FilterOf(global, type), wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  return dialog.ShowModal() == wxID_OK ? PathOfWx(dialog.GetPath()) : fs::path();
}

fs::path ChooseToSave(const LSSglobal& global, const std::string& type, wxWindow* owner,
                      const fs::path& folder, const fs::path& current) {
  wxFileDialog dialog(owner, CaptionOf(global, kMsgSaveAs), WxPath(folder),
                      WxPath(current.filename()), FilterOf(global, type),
                      wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  return dialog.ShowModal() == wxID_OK ? PathOfWx(dialog.GetPath()) : fs::path();
}

}  // namespace

FileChoosers SystemFileChoosers(const LSSglobal& global, std::string_view type) {
  const std::string extension(type);
  return {[&global, extension](wxWindow* owner, const fs::path& folder) {
            return ChooseToOpen(global, extension, owner, folder);
          },
          [&global, extension](wxWindow* owner, const fs::path& folder, const fs::path& current) {
            return ChooseToSave(global, extension, owner, folder, current);
          }};
}

}  // namespace warpline
