#include "app/hand_over.h"

#include <random>
#include <string>
#include <system_error>

#include "core/LSSglobal.h"
#include "platform/files.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRequest = ".open";
constexpr const char* kRefusal = ".busy";

// No two starts take the same name.
std::string NewName() {
  std::random_device random;
  return std::to_string(random()) + "-" + std::to_string(random());
}

bool MakeRequest(const fs::path& request, const fs::path& file) {
  std::error_code ignored;
  fs::create_directories(request.parent_path(), ignored);
  fs::permissions(request.parent_path(), fs::perms::owner_all, ignored);
  return !ReplaceFileContents(request, Utf8Of(file));
}

fs::path RefusalOf(fs::path request) {
  return request.replace_extension(kRefusal);
}

}  // namespace

fs::path RequestFolder(const fs::path& application_data) {
  return DataFolder(application_data) / "Opening";
}

HandOver::HandOver(const fs::path& folder, const fs::path& file)
    : request_(folder / (NewName() + kRequest)), made_(MakeRequest(request_, file)) {}

HandOver::~HandOver() {
  Withdraw();
}

HandOver::Answer HandOver::Look() const {
  std::error_code ignored;
  if (!made_) return Answer::kRefused;
  if (fs::exists(request_, ignored)) return Answer::kWaiting;
  return fs::exists(RefusalOf(request_), ignored) ? Answer::kRefused : Answer::kTaken;
}

// Only one of both sides can take a file away.
HandOver::Answer HandOver::Withdraw() {
  std::error_code ignored;
  const bool untouched = fs::remove(request_, ignored);
  const bool refused = fs::remove(RefusalOf(request_), ignored);
  return !made_ || untouched || refused ? Answer::kRefused : Answer::kTaken;
}

// Whoever removes the request decides: one that was withdrawn meanwhile is not opened. One that
// names nothing is gone then, too.
std::optional<fs::path> NextRequest(const fs::path& folder, Requests what) {
  std::error_code error;
  for (fs::directory_iterator each(folder, error), end; !error && each != end;
       each.increment(error)) {
    const fs::path request = each->path();
    std::string file;
    std::error_code ignored;
    if (request.extension() != kRequest || !each->is_regular_file(ignored)) continue;
    if (what == Requests::kRefuse) {
      fs::rename(request, RefusalOf(request), ignored);
    } else if (!ReadWholeFile(request, file) && fs::remove(request, ignored)) {
      return PathOfForeign(file);
    }
  }
  return std::nullopt;
}

}  // namespace warpline
