#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/messages.h"
#include "link/beamseek.h"
#include "platform/network.h"

// Lets the maker's search library find projectors and tells the address of the chosen one.
// The library's callback only records; everything else happens in Start and Poll, which one thread
// calls (the one of the windows: the library may open its own window in them).

namespace warpline {

// The loaded library, or null when it cannot be loaded or lacks a required entry point. Asked once
// for every Start; what it returned must stay valid as long as the search exists.
using BeamseekProvider = std::function<const BeamseekFunctions*()>;

// Loads the library of that name from the program's own folder at the first call and keeps it.
BeamseekProvider BeamseekFromProgramFolder();

// How often a window's timer should call Poll.
inline constexpr int kSearchPollMilliseconds = 50;

enum class SearchWindow { kHidden, kShown };  // of the library's own

struct SearchOptions {
  std::string FirstAddress{};           // offered first; dotted
  std::vector<IPv4Address> Adapters{};  // to search through, 16 at most
  bool Japanese = false;                // language of the library's window; else English
  SearchWindow Window = SearchWindow::kShown;
};

// What Poll asks its caller to do.
enum class SearchRequest {
  kNone,
  kOpenReadMe,  // open the read-me text of the tool's language in the system's text editor
};

struct FoundProjector {
  std::string Address;  // dotted
  std::string Name;     // UTF-8, may be empty
  bool Selectable = false;

  bool operator==(const FoundProjector&) const = default;
};

class ProjectorSearch {
 public:
  // The messages must outlive this object. A search still running at the end is destroyed.
  ProjectorSearch(const Messages& messages, BeamseekProvider provider);
  ~ProjectorSearch();
  ProjectorSearch(const ProjectorSearch&) = delete;
  ProjectorSearch& operator=(const ProjectorSearch&) = delete;

  // Creates the search, offers the first address, starts. False when that failed, which has been
  // shown in exactly one message, or when a search runs already.
  bool Start(const SearchOptions& options);

  // Handles the oldest notification, if there is one. Does nothing when it is called again while a
  // message of its own is on the screen.
  SearchRequest Poll();

  // From a successful Start until a notification (or a failure, which has been shown) ended it.
  bool IsRunning() const { return handle_ != 0; }

  // The dotted address of the projector with whose choice the last search ended; nothing when none
  // was chosen.
  const std::optional<std::string>& Chosen() const { return chosen_; }

  // The projectors of the result record as it was when the search ended.
  std::vector<FoundProjector> Found() const;

  // The same record as lines for a support case, separated by carriage return and line feed.
  std::string Diagnosis() const;

 private:
  class Mailbox;
  struct Notification {
    std::uint32_t code = 0;
    std::uint32_t first = 0;
    std::uint32_t second = 0;
  };
  struct Row;
  static const Row* FindRow(std::uint32_t code);

  bool Create(const SearchOptions& options);
  SearchRequest TakeSelected(const Notification& notification);
  SearchRequest End(const Notification& notification);
  SearchRequest OpenReadMe(const Notification& notification);
  SearchRequest Repeat(const Notification& notification);
  SearchRequest TakeFinished(const Notification& notification);
  void CopyResult();
  void Restart(std::int32_t flag);
  void Destroy();

  const Messages& messages_;
  BeamseekProvider provider_;
  const BeamseekFunctions* library_ = nullptr;
  std::unique_ptr<Mailbox> mailbox_;
  SearchWindow window_ = SearchWindow::kShown;
  std::int32_t handle_ = 0;
  const csResData* library_result_ = nullptr;  // the library's own memory
  csResData result_{};
  std::optional<std::string> chosen_;
  bool polling_ = false;
};

}  // namespace warpline
