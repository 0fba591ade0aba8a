#pragma once

#include <wx/dialog.h>
#include <wx/listctrl.h>
#include <wx/stattext.h>

#include <optional>
#include <vector>

#include "app/check_rows.h"
#include "ui/LSSmain_parts.h"

namespace warpline {

// The check of the connection as a table that is filled while it runs. Closing ends the check.
class ConnectionCheckWindow : public wxDialog {
 public:
  // parts must outlive it. The check begins when the dialog is shown.
  ConnectionCheckWindow(wxWindow* owner, const MainParts& parts);

 private:
  wxSizer* CreateButtons();
  wxButton* CreateButton(const char* name, ToolText caption, wxWindowID id,
                         void (ConnectionCheckWindow::*press)());
  void Run();
  bool LookOn() const;
  void Add(const CheckRow& row);
  void ShowVerdict();
  void Save();
  void Copy();
  void Leave();

  const MainParts& parts_;
  const LSSglobal& global_;
  wxListCtrl* list_ = nullptr;
  wxStaticText* verdict_text_ = nullptr;
  wxButton* save_ = nullptr;
  wxButton* copy_ = nullptr;
  std::vector<CheckRow> rows_;
  std::optional<CheckVerdict> verdict_;  // when the check has ended
  bool leaving_ = false;
};

}  // namespace warpline
