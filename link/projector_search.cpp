#include "link/projector_search.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <mutex>
#include <string_view>
#include <utility>

#include "core/conversions.h"
#include "link/adapters.h"

namespace warpline {
namespace {

// These failures have no catalogue texts; they read the same in both languages.
constexpr const char* kCreateFailed = "ConnectSelectCreate() に失敗しました。";
constexpr const char* kStartFailed = "ConnectSelectStart() 戻り値が FALSE でした";
constexpr const char* kHandleInvalid = "Handle Error!!";

// How many entries of the record hold something, whatever its count says.
std::int32_t EntryCount(const csResData& result) {
  return std::clamp(result.iPjNum, 0, kMostSearchProjectors);
}

std::string NameText(const char (&name)[kSearchNameSize]) {
  return {name, std::find(std::begin(name), std::end(name), '\0')};
}

}  // namespace

// Where the library's callback leaves its notifications.
class ProjectorSearch::Mailbox {
 public:
  static void WARPLINE_LIBRARY_CALL Record(std::uint32_t code, std::uint32_t first,
                                           std::uint32_t second, void* user) {
    auto* mailbox = static_cast<Mailbox*>(user);
    const std::lock_guard lock(mailbox->mutex_);
    mailbox->pending_.push_back({code, first, second});
  }

  std::optional<Notification> Take() {
    const std::lock_guard lock(mutex_);
    if (pending_.empty()) return std::nullopt;
    const Notification oldest = pending_.front();
    pending_.pop_front();
    return oldest;
  }

  void Clear() {
    const std::lock_guard lock(mutex_);
    pending_.clear();
  }

 private:
  std::mutex mutex_;
  std::deque<Notification> pending_;
};

struct ProjectorSearch::Row {
  std::uint32_t code;
  SearchRequest (ProjectorSearch::*handle)(const Notification& notification);
};

const ProjectorSearch::Row* ProjectorSearch::FindRow(std::uint32_t code) {
  static constexpr std::array<Row, 7> kRows{{
      {kSearchSelected, &ProjectorSearch::TakeSelected},
      {kSearchClosed, &ProjectorSearch::End},
      {kSearchCancelled, &ProjectorSearch::End},
      {kSearchReadMe, &ProjectorSearch::OpenReadMe},
      {kSearchRepeat, &ProjectorSearch::Repeat},
      {kSearchFinished, &ProjectorSearch::TakeFinished},
      {kSearchRepeatOther, &ProjectorSearch::Repeat},
  }};
  const auto* row = std::find_if(kRows.begin(), kRows.end(),
                                 [code](const Row& each) { return each.code == code; });
  return row == kRows.end() ? nullptr : row;
}

ProjectorSearch::ProjectorSearch(const Messages& messages, BeamseekProvider provider)
    : messages_(messages), provider_(std::move(provider)), mailbox_(std::make_unique<Mailbox>()) {}

ProjectorSearch::~ProjectorSearch() {
  Destroy();
}

bool ProjectorSearch::Start(const SearchOptions& options) {
  if (IsRunning()) return false;
  mailbox_->Clear();
  result_ = {};
  chosen_.reset();
  library_ = provider_();
  if (library_ == nullptr) {
    messages_.ShowText(kMsgLibraryMissing);
    return false;
  }
  if (!Create(options)) return false;
  std::array<char, kSearchAddressSize> last{};
  options.FirstAddress.copy(last.data(), last.size() - 1);
  // An address that the library does not want is merely not offered first.
  library_->ConnectSelectSetLastPJ(handle_, last.data());
  if (library_->ConnectSelectStart(handle_) != 0) return true;
  Destroy();
  messages_.ShowSystemError(kStartFailed);
  return false;
}

bool ProjectorSearch::Create(const SearchOptions& options) {
  const csAdapterList adapters = AdapterListOf(options.Adapters);
  window_ = options.Window;
  std::int32_t flags = window_ == SearchWindow::kShown ? kSearchShowWindow : 0;
  if (options.Japanese) flags |= kSearchJapanese;
  std::int32_t handle = 0;
  if (library_->ConnectSelectCreate(&adapters, &Mailbox::Record, mailbox_.get(), flags, &handle,
                                    &library_result_) == 0) {
    messages_.ShowSystemError(kCreateFailed);
    return false;
  }
  if (handle == 0) {
    messages_.ShowSystemError(kHandleInvalid);
    return false;
  }
  handle_ = handle;
  return true;
}

SearchRequest ProjectorSearch::Poll() {
  if (!IsRunning() || polling_) return SearchRequest::kNone;
  const std::optional<Notification> notification = mailbox_->Take();
  const Row* row = notification ? FindRow(notification->code) : nullptr;
  if (row == nullptr) return SearchRequest::kNone;
  polling_ = true;
  const SearchRequest request = (this->*row->handle)(*notification);
  polling_ = false;
  return request;
}

SearchRequest ProjectorSearch::TakeSelected(const Notification& notification) {
  CopyResult();
  Destroy();
  if (notification.first >= static_cast<std::uint32_t>(EntryCount(result_))) {
    messages_.ShowFault(FaultCode::kIndexOutOfRange);
    return SearchRequest::kNone;
  }
  chosen_ = AddressText(result_.PJData[notification.first].ucIP);
  return SearchRequest::kNone;
}

SearchRequest ProjectorSearch::End(const Notification&) {
  CopyResult();
  Destroy();
  return SearchRequest::kNone;
}

// The read-me opens even when the search could not go on: the user asked for it.
SearchRequest ProjectorSearch::OpenReadMe(const Notification&) {
  Restart(kRestartGoOn);
  return SearchRequest::kOpenReadMe;
}

SearchRequest ProjectorSearch::Repeat(const Notification&) {
  Restart(kRestartFromStart);
  return SearchRequest::kNone;
}

// With a window the choice is still to come.
SearchRequest ProjectorSearch::TakeFinished(const Notification& notification) {
  return window_ == SearchWindow::kHidden ? End(notification) : SearchRequest::kNone;
}

void ProjectorSearch::CopyResult() {
  if (library_result_ != nullptr) std::memcpy(&result_, library_result_, sizeof result_);
}

// The library restarts every search that it knows, so a failure means that it lost this one.
void ProjectorSearch::Restart(std::int32_t flag) {
  if (library_->ConnectSelectRestart(handle_, flag) != 0) return;
  Destroy();
  messages_.ShowSystemError(kHandleInvalid);
}

void ProjectorSearch::Destroy() {
  if (IsRunning()) library_->ConnectSelectDestroy(std::exchange(handle_, 0));
  library_result_ = nullptr;
}

std::vector<FoundProjector> ProjectorSearch::Found() const {
  std::vector<FoundProjector> found;
  for (std::int32_t i = 0; i < EntryCount(result_); ++i) {
    const auto& entry = result_.PJData[i];
    found.push_back({AddressText(entry.ucIP), NameText(entry.cName), entry.bSelectable != 0});
  }
  return found;
}

std::string ProjectorSearch::Diagnosis() const {
  std::string text = "csResData.iPjNum = " + std::to_string(result_.iPjNum);
  for (std::int32_t i = 0; i < EntryCount(result_); ++i) {
    const auto& entry = result_.PJData[i];
    const std::string start = "\r\ncsResData.PJData(" + std::to_string(i) + ")";
    text.append(start).append(".bSelectable = ").append(std::to_string(entry.bSelectable));
    text.append(start).append(".ucIP        = ").append(AddressText(entry.ucIP));
  }
  return text;
}

}  // namespace warpline
