#include <wx/dnd.h>
#include <wx/fileconf.h>

#include "app/hand_over.h"
#include "tests/ui/window_rig.h"

// Files that come to the main window by other ways than its open dialog.

namespace warpline {
namespace {

struct FilesRig : WindowRig {
  FilesRig()
      : config(new wxFileConfig("", "", WxPath(temp / "memory"))),
        former(wxConfigBase::Set(config)) {
    global.Settings.AutoApply = 0;
    for (const char* name : {"a & b.wlt", "gone.wlt"}) {
      EXPECT_TRUE(engine.files.SaveDataFile(temp / name, kTypeWlt, engine.files.Staging()));
    }
  }
  ~FilesRig() { delete wxConfigBase::Set(former); }

  bool Opens(const std::string& name) const {
    return SettleUntil([&] { return Title() == "Warpline Tool 3.0 - " + name; });
  }
  wxMenu& FileMenu() const { return *window->GetMenuBar()->GetMenu(0); }

  wxFileConfig* config;
  wxConfigBase* former;
};

TEST(FilesAtHand, RecentFilesSurviveTheRunAndOneThatIsGoneIsTakenOff) {
  FilesRig rig;
  rig.choices = {rig.temp / "gone.wlt", rig.temp / "a & b.wlt"};
  rig.Open();
  rig.Pick("menu_file_open");
  rig.Pick("menu_file_open");
  rig.Pick("menu_file_exit");
  Settle();
  rig.Open();
  ASSERT_NE(rig.FileMenu().FindItem(wxID_FILE2), nullptr);
  EXPECT_EQ(rig.FileMenu().FindItem(wxID_FILE1)->GetItemLabelText(),
            "1 " + WxPath(rig.temp / "a & b.wlt"));
  fs::remove(rig.temp / "gone.wlt");
  wxCommandEvent gone(wxEVT_MENU, wxID_FILE2), there(wxEVT_MENU, wxID_FILE1);
  Handle(*rig.window, gone);
  EXPECT_EQ(rig.display.messages.size(), 1U);
  EXPECT_EQ(rig.FileMenu().FindItem(wxID_FILE2), nullptr);
  EXPECT_EQ(rig.SentBy([&] { Handle(*rig.window, there); }), kApplyWords);
  EXPECT_TRUE(rig.Opens("a & b.wlt"));
}

TEST(FilesAtHand, DroppedAndHandedOverFilesOpenUnlessADialogDoes) {
  FilesRig rig;
  rig.Open();
  wxArrayString names;
  names.push_back(WxPath(rig.temp / "gone.wlt"));
  auto& target = dynamic_cast<wxFileDropTarget&>(*rig.window->GetDropTarget());
  EXPECT_TRUE(target.OnDropFiles(1, 1, names));
  EXPECT_TRUE(rig.Opens("gone.wlt"));

  const fs::path requests = RequestFolder(rig.temp.Path());
  {
    const ModalScript about("about_box", [&](wxDialog&) {
      const HandOver refused(requests, rig.temp / "a & b.wlt");
      EXPECT_TRUE(SettleUntil([&] { return refused.Look() == HandOver::Answer::kRefused; }));
      names[0] = WxPath(rig.temp / "a & b.wlt");
      target.OnDropFiles(1, 1, names);
      Settle();
    });
    rig.Pick("menu_help_about");
  }
  EXPECT_TRUE(rig.Opens("gone.wlt")) << "still";
  const HandOver taken(requests, rig.temp / "a & b.wlt");
  EXPECT_TRUE(rig.Opens("a & b.wlt"));
  EXPECT_EQ(taken.Look(), HandOver::Answer::kTaken);
}

TEST(FilesAtHand, KeysAndTitleOfAChangedFile) {
  FilesRig rig;
  rig.choices = {rig.temp / "a & b.wlt"};
  rig.Open();
  rig.Pick("menu_file_open");
  rig.Move("ctrl_bar1", 30);
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 - *a & b.wlt");
  rig.window->Raise();
  rig.Find("ctrl_bar1").SetFocus();
  ASSERT_TRUE(SettleUntil([&] { return rig.window->IsActive(); }));
  wxUIActionSimulator keys;
  keys.Char('S', wxMOD_CONTROL);
  EXPECT_TRUE(rig.Opens("a & b.wlt"));
  keys.Char(WXK_F1);
  EXPECT_TRUE(SettleUntil([&] { return !rig.display.messages.empty(); })) << "there is no guide";
}

}  // namespace
}  // namespace warpline
