#include <wx/dnd.h>
#include <wx/fileconf.h>

#include "app/hand_over.h"
#include "tests/ui/window_rig.h"

// Files that come to the main window by other ways than its open dialog.

namespace warpline {
namespace {

struct FilesRig : WindowRig {
  FilesRig() : former(wxConfigBase::Set(new wxFileConfig("", "", WxPath(temp / "memory")))) {
    for (const fs::path& file : {first, second}) {
      EXPECT_TRUE(engine.files.SaveDataFile(file, kTypeWlt, engine.files.Staging()));
    }
  }
  // The windows write where they were before the configuration goes.
  ~FilesRig() {
    if (window) window->Destroy();
    Settle();
    delete wxConfigBase::Set(former);
  }

  bool Opens(const fs::path& file) const {
    const std::string title = "Warpline Tool 3.0 (simulator) - " + Utf8Of(file.filename());
    return SettleUntil([&] { return Title() == title; });
  }
  const wxMenuItem* Recent(int id) const { return window->GetMenuBar()->FindItem(id); }

  const fs::path first = temp / "a & b.wlt", second = temp / "second.wlt";
  wxConfigBase* former;
};

TEST(FilesAtHand, RecentFilesSurviveTheRunAndOneThatIsGoneIsTakenOff) {
  FilesRig rig;
  rig.choices = {rig.second, rig.first};
  rig.Open();
  rig.Pick("menu_file_open");
  rig.Pick("menu_file_open");
  rig.Pick("menu_file_exit");
  rig.Open();
  ASSERT_NE(rig.Recent(wxID_FILE2), nullptr);
  EXPECT_TRUE(rig.Recent(wxID_FILE1)->GetItemLabelText().Contains(WxPath(rig.first)));
  fs::remove(rig.second);
  wxCommandEvent gone(wxEVT_MENU, wxID_FILE2), there(wxEVT_MENU, wxID_FILE1);
  Handle(*rig.window, gone);
  EXPECT_EQ(rig.display.Texts().at(0), "This file is not there.\n" + Utf8Of(rig.second));
  EXPECT_EQ(rig.Recent(wxID_FILE2), nullptr);
  EXPECT_EQ(rig.SentBy([&] { Handle(*rig.window, there); }), kApplyWords);
}

TEST(FilesAtHand, DroppedAndHandedOverFilesOpenUnlessADialogDoes) {
  FilesRig rig;
  rig.Open();
  const fs::path requests = RequestFolder(rig.temp.Path());
  const auto drop = [&](const fs::path& file) {
    auto& target = dynamic_cast<wxFileDropTarget&>(*rig.window->GetDropTarget());
    target.OnDropFiles(1, 1, wxArrayString(1, std::to_array({WxPath(file)}).data()));
  };
  drop(rig.second);
  EXPECT_TRUE(rig.Opens(rig.second));
  {
    const ModalScript about("about_box", [&](wxDialog&) {
      const HandOver refused(requests, rig.first);
      EXPECT_TRUE(SettleUntil([&] { return refused.Look() == HandOver::Answer::kRefused; }));
      drop(rig.first);
      Settle();
    });
    rig.Pick("menu_help_about");
  }
  EXPECT_TRUE(rig.Opens(rig.second)) << "still open";
  const HandOver taken(requests, rig.first);
  EXPECT_TRUE(rig.Opens(rig.first));

  rig.Move("ctrl_bar1", 30);
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 (simulator) - *a & b.wlt");
  rig.window->Raise();
  rig.Find("ctrl_bar1").SetFocus();
  ASSERT_TRUE(SettleUntil([&] { return rig.window->IsActive(); }));
  wxUIActionSimulator().Char('S', wxMOD_CONTROL);
  EXPECT_TRUE(rig.Opens(rig.first)) << "saved";
}

}  // namespace
}  // namespace warpline
