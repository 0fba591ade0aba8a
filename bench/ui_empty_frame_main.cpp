#include <wx/app.h>
#include <wx/frame.h>

// The least that a program of this toolkit can be: what the tool's start is compared with.

namespace {

class EmptyFrameApplication : public wxApp {
 public:
  bool OnInit() override {
    (new wxFrame(nullptr, wxID_ANY, "Empty frame"))->Show();
    return true;
  }
};

}  // namespace

wxIMPLEMENT_APP(EmptyFrameApplication);
