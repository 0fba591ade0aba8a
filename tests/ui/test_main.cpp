#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>

// The tests run inside the toolkit's own start, with an event loop that can be asked to handle what
// is pending.

namespace warpline {
namespace {

class TestApplication : public wxApp {
 public:
  bool OnInit() override { return true; }

  int OnRun() override {
    wxGUIEventLoop loop;
    const wxEventLoopActivator active(&loop);
    return RUN_ALL_TESTS();
  }
};

}  // namespace
}  // namespace warpline

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  wxApp::SetInstance(new warpline::TestApplication);
  return wxEntry(argc, argv);
}
