#include "toolkit/native/open_file.h"

#include <wx/process.h>
#include <wx/utils.h>

#include <algorithm>
#include <array>
#include <memory>

namespace warpline {
namespace {

// What xdg-open ends with when it finds no program for a file, or that program does not start; and
// what the toolkit tells where there is no xdg-open, or it did not come to an end of its own.
constexpr std::array kNothingOpened = {3, 4, -1};

// The system's opener, while it runs.
class Opener : public wxProcess {
 public:
  explicit Opener(const std::function<void()>& failed) : failed_(failed) {}

  void OnTerminate(int /*process*/, int code) override {
    const std::unique_ptr<Opener> ended(this);
    if (std::ranges::find(kNothingOpened, code) != kNothingOpened.end()) failed_();
  }

 private:
  std::function<void()> failed_;
};

}  // namespace

bool OpenInTextEditor(const std::filesystem::path& file, const std::function<void()>& failed) {
  const std::array<const char*, 3> words{"xdg-open", file.c_str(), nullptr};
  auto opener = std::make_unique<Opener>(failed);
  if (wxExecute(words.data(), wxEXEC_ASYNC, opener.get()) == 0) return false;
  static_cast<void>(opener.release());  // it deletes itself when it has ended
  return true;
}

// The desktop knows what shows a page.
bool OpenInBrowser(const std::filesystem::path& page, const std::function<void()>& failed) {
  return OpenInTextEditor(page, failed);
}

}  // namespace warpline
