#include "ui/file_chooser.h"

#include <wx/filedlg.h>

#include <string>

#include "ui/wx_text.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

constexpr int kTitleOpen = 144;
constexpr int kTitleSaveAs = 146;

// "Data Files (*.wlt)|*.wlt|All Files (*.*)|*.*": the second pattern has to be the system's own.
wxString FilterOf(const std::string& type) {
  return wxString::Format("Data Files (*.%s)|*.%s|All Files (*.*)|%s", WxText(type), WxText(type),
                          wxFileSelectorDefaultWildcardStr);
}

fs::path ChooseToOpen(const wxString& title, const std::string& type, wxWindow* owner,
                      const fs::path& folder) {
  wxFileDialog dialog(owner, title, WxPath(folder), "", FilterOf(type),
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  return dialog.ShowModal() == wxID_OK ? PathOfWx(dialog.GetPath()) : fs::path();
}

fs::path ChooseToSave(const wxString& title, const std::string& type, wxWindow* owner,
                      const fs::path& folder, const fs::path& current) {
  wxFileDialog dialog(owner, title, WxPath(folder), WxPath(current.filename()), FilterOf(type),
                      wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  return dialog.ShowModal() == wxID_OK ? PathOfWx(dialog.GetPath()) : fs::path();
}

}  // namespace

FileChoosers SystemFileChoosers(const LSSglobal& global, std::string_view type) {
  const std::string extension(type);
  return {[&global, extension](wxWindow* owner, const fs::path& folder) {
            return ChooseToOpen(CaptionOf(global, kTitleOpen), extension, owner, folder);
          },
          [&global, extension](wxWindow* owner, const fs::path& folder, const fs::path& current) {
            return ChooseToSave(CaptionOf(global, kTitleSaveAs), extension, owner, folder, current);
          }};
}

}  // namespace warpline
