#include "toolkit/window_memory.h"

#include <gtest/gtest.h>
#include <wx/display.h>
#include <wx/frame.h>

#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

// What a run finds, and what it leaves when the user has moved the window there.
wxRect RunOnce(const std::filesystem::path& file, const wxRect& left) {
  WindowMemory memory(file);
  const std::unique_ptr<wxFrame> frame(new wxFrame(nullptr, wxID_ANY, ""));
  frame->SetName("frame");
  const wxRect found = memory.Restore(*frame) ? frame->GetRect() : wxRect();
  frame->SetSize(left);
  return found;
}

TEST(WindowMemory, GivesBackWhatFitsOnTheScreen) {
  const TempFolder folder;
  const std::filesystem::path file = folder / "new" / "windows.ini";
  const wxRect screen = wxDisplay(0U).GetClientArea();
  EXPECT_EQ(RunOnce(file, {20, 30, 500, 300}), wxRect());
  EXPECT_EQ(RunOnce(file, {screen.width - 100, screen.height - 100, 500, 300}),
            wxRect(20, 30, 500, 300));
  EXPECT_EQ(RunOnce(file, {-40, -50, 9000, 300}),
            wxRect(screen.width - 500, screen.height - 300, 500, 300));
  EXPECT_EQ(RunOnce(file, {}), wxRect(0, 0, screen.width, 300));
}

}  // namespace
}  // namespace warpline
