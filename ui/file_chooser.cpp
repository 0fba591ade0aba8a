#include "ui/file_chooser.h"

#include <wx/filedlg.h>
#include <wx/filedlgcustomize.h>

#include <string>

#include "core/tool_texts.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTextType = "txt";
constexpr const char* kRecordName = "recording.txt";

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

// The dialog's box for leaving addresses out.
class RedactBox : public wxFileDialogCustomizeHook {
 public:
  explicit RedactBox(const wxString& label) : label_(label) {}

  void AddCustomControls(wxFileDialogCustomize& customizer) override {
    box_ = customizer.AddCheckBox(label_);
  }
  void TransferDataFromCustomControls() override { checked_ = box_->GetValue(); }
  bool IsChecked() const { return checked_; }

 private:
  wxString label_;
  wxFileDialogCheckBox* box_ = nullptr;
  bool checked_ = false;
};

RecordChoice ChooseRecord(const LSSglobal& global, wxWindow* owner, const fs::path& folder) {
  wxFileDialog dialog(owner, CaptionOf(global, ToolText::kRecordTitle), WxPath(folder), kRecordName,
                      FilterOf(global, kTextType), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  RedactBox box(CaptionOf(global, ToolText::kRecordRedact));
  dialog.SetCustomizeHook(box);
  if (dialog.ShowModal() != wxID_OK) return {};
  return {PathOfWx(dialog.GetPath()), box.IsChecked()};
}

}  // namespace

RecordChooser SystemRecordChooser(const LSSglobal& global) {
  return [&global](wxWindow* owner, const fs::path& folder) {
    return ChooseRecord(global, owner, folder);
  };
}

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
