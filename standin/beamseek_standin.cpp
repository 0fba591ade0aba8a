#include "standin/beamseek_standin.h"

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <utility>

namespace warpline::sim {

SearchResult ResultOf(const std::vector<DiscoveredProjector>& projectors) {
  SearchResult result;
  csResData& record = result.Record;
  for (const DiscoveredProjector& projector : projectors) {
    if (record.iPjNum == kMostSearchProjectors) break;
    result.PowerState.at(record.iPjNum) = projector.Answer.PowerState;
    auto& entry = record.PJData[record.iPjNum++];
    entry.bSelectable = projector.Answer.Selectable && projector.Answer.TcpPort == kDefaultLanPort;
    for (int part = 0; part < 4; ++part) {
      entry.ucIP[part] = static_cast<std::uint8_t>(projector.Address >> (24 - 8 * part) & 255);
    }
    projector.Answer.Name.copy(entry.cName, kSearchNameSize - 1);
  }
  return result;
}

// One search: its projectors come from a thread of its own, everything else happens on the caller's
// threads.
class BeamseekStandin::Search {
 public:
  Search(const DiscoveryRange& range, ConnectSelectCallback* callback, void* user)
      : range_(range), callback_(callback), user_(user) {}
  ~Search() {
    window_.reset();
    EndLooking();
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  bool MakeWindow(const SelectionWindowFactory& make_window, Language language) {
    SelectionWindowHost host;
    host.TakeResult = [this] { return TakeResult(); };
    host.Notify = [this](std::uint32_t code, std::uint32_t index) { Notify(code, index); };
    window_ = make_window ? make_window(std::move(host), language) : nullptr;
    return window_ != nullptr;
  }

  const csResData* Result() const { return &result_; }
  void SetLastAddress(std::string address) { last_address_ = std::move(address); }

  bool Start() {
    if (std::exchange(started_, true)) return false;
    Look();
    return true;
  }

  bool Restart(std::int32_t flag) {
    if (!started_) return false;
    if (flag == kRestartFromStart) {
      Look();
    } else if (window_) {
      window_->GoOn();
    }
    return true;
  }

 private:
  void Look() {
    EndLooking();
    stop_ = false;
    if (window_) window_->ShowSearching(last_address_);
    thread_ = std::thread([this, with_window = window_ != nullptr] {
      const SearchResult found = ResultOf(DiscoverProjectors(range_, stop_));
      if (stop_) return;
      if (with_window) {
        const std::lock_guard lock(mutex_);
        found_ = found;
      } else {
        result_ = found.Record;
        Notify(kSearchFinished, 0);
      }
    });
  }

  void EndLooking() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
    found_.reset();
  }

  // The caller reads the record on the thread of the windows, so that is where it changes.
  std::optional<SearchResult> TakeResult() {
    const std::lock_guard lock(mutex_);
    if (found_) result_ = found_->Record;
    return std::exchange(found_, std::nullopt);
  }

  void Notify(std::uint32_t code, std::uint32_t index) { callback_(code, index, 0, user_); }

  DiscoveryRange range_;
  ConnectSelectCallback* callback_;
  void* user_;
  csResData result_{};
  std::string last_address_;
  bool started_ = false;
  std::unique_ptr<SelectionWindow> window_;
  std::atomic<bool> stop_{false};
  std::mutex mutex_;
  std::optional<SearchResult> found_;
  std::thread thread_;
};

BeamseekStandin::BeamseekStandin(SelectionWindowFactory make_window, const DiscoveryRange& range)
    : make_window_(std::move(make_window)), range_(range) {}

BeamseekStandin::~BeamseekStandin() = default;

std::int32_t BeamseekStandin::Create(const csAdapterList* adapters, ConnectSelectCallback* callback,
                                     void* user, std::int32_t flags, std::int32_t* handle,
                                     const csResData** result) {
  if (adapters == nullptr || callback == nullptr || handle == nullptr || result == nullptr) {
    return 0;
  }
  DiscoveryRange range = range_;
  if (range.Port == 0) range.Port = DiscoveryPort();
  auto search = std::make_shared<Search>(range, callback, user);
  const Language language =
      (flags & kSearchJapanese) != 0 ? Language::kJapanese : Language::kEnglish;
  if ((flags & kSearchShowWindow) != 0 && !search->MakeWindow(make_window_, language)) return 0;
  *result = search->Result();
  const std::lock_guard lock(mutex_);
  *handle = next_handle_++;
  searches_[*handle] = std::move(search);
  return 1;
}

std::int32_t BeamseekStandin::SetLastPJ(std::int32_t handle, const char* address) {
  const std::shared_ptr<Search> search = Find(handle);
  if (!search || address == nullptr) return 0;
  const char* end = std::find(address, address + kSearchAddressSize, '\0');
  search->SetLastAddress({address, end});
  return 1;
}

std::int32_t BeamseekStandin::Start(std::int32_t handle) {
  const std::shared_ptr<Search> search = Find(handle);
  return search && search->Start() ? 1 : 0;
}

std::int32_t BeamseekStandin::Restart(std::int32_t handle, std::int32_t flag) {
  const std::shared_ptr<Search> search = Find(handle);
  return search && search->Restart(flag) ? 1 : 0;
}

std::int32_t BeamseekStandin::Destroy(std::int32_t handle) {
  std::shared_ptr<Search> search;
  const std::lock_guard lock(mutex_);
  const auto place = searches_.find(handle);
  if (place == searches_.end()) return 0;
  search = std::move(place->second);
  searches_.erase(place);
  return 1;
}

std::shared_ptr<BeamseekStandin::Search> BeamseekStandin::Find(std::int32_t handle) {
  const std::lock_guard lock(mutex_);
  const auto place = searches_.find(handle);
  return place == searches_.end() ? nullptr : place->second;
}

}  // namespace warpline::sim
