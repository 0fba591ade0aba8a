#pragma once

#include <chrono>
#include <filesystem>
#include <future>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "app/recovery_text.h"
#include "core/LSSglobal.h"
#include "core/messages.h"
#include "platform/file_lock.h"

// What keeps unsaved work over a crash: a copy of it in the data folder,
// "recovery-<process>.wlt". It belongs to the process that holds the lock on the file beside it,
// "recovery-<process>.lock"; a copy that no living process owns is work that was left unsaved.

namespace warpline {

class MainController;

// A copy's name, owned by this process for as long as this object lives.
class RecoveryName {
 public:
  // The stem is the name without extension, with its folder. Null when another living process owns
  // it, and where the file system knows no locks.
  static std::unique_ptr<RecoveryName> Take(const std::filesystem::path& stem);

  ~RecoveryName();
  RecoveryName(const RecoveryName&) = delete;
  RecoveryName& operator=(const RecoveryName&) = delete;

  // The file of the copy, which need not be there.
  std::filesystem::path Copy() const;

 private:
  explicit RecoveryName(std::filesystem::path stem) : stem_(std::move(stem)) {}

  std::filesystem::path stem_;
  std::optional<FileLock> lock_;
};

// Work that was left unsaved. The copy stays until the work is taken up or put aside.
struct FoundWork {
  std::unique_ptr<RecoveryName> name;
  UnsavedWork work;
};

// Everything that was left unsaved, the newest first. Copies that are broken are put aside on the
// way ("unreadable-DATE.wlt"), those that do not differ from their saved file are removed; a folder
// or a file that cannot be read is passed over.
std::vector<FoundWork> FindUnsavedWork(const std::filesystem::path& application_data, WallTime now);

// Keeps the copy as "recovered-DATE.wlt" in the data folder (local time), the last ten of them.
void PutAside(const FoundWork& found, WallTime now);

// The copy of this process. It goes with Remove alone: what ends without it leaves the copy.
class RecoveryCopy {
 public:
  // application_data is the user's application-data folder. Nothing is made in it before there is
  // something to keep.
  explicit RecoveryCopy(std::filesystem::path application_data)
      : application_data_(std::move(application_data)) {}

  // What stands now. The copy is written later, with WriteIfDue, but without unsaved changes it is
  // removed at once.
  void NoteStep(const CorrectionData& correction, const std::filesystem::path& file, bool unsaved);

  // How long until WriteIfDue has something to do, a second after the last time; nothing when the
  // copy holds what was noted last.
  std::optional<std::chrono::milliseconds> Due(WallTime now) const;

  // Writes on a thread of its own, so that nobody waits for the disk. The copy is afterwards the
  // one before or the new one, whatever happens; one that cannot be written stays due.
  void WriteIfDue(WallTime now);

  // These wait for what is being written.
  void Finish();
  void Remove();

  // The copy found becomes this one, in one move.
  void TakeUp(FoundWork found);

 private:
  bool IsWriting() const;
  bool TakeName();

  std::filesystem::path application_data_;
  std::unique_ptr<RecoveryName> name_;
  std::optional<UnsavedWork> noted_;    // not written yet
  std::optional<UnsavedWork> written_;  // what the copy holds, or will when it is written
  std::optional<WallTime> attempted_;
  std::future<bool> writing_;  // whether it was written; valid until somebody has asked
};

// Asks about the work left unsaved, the newest first, until some is taken up: it is the model then,
// with its file name and unsaved, and nothing is sent. What is refused is put aside; what was not
// asked about waits for the next start.
void OfferUnsavedWork(const LSSglobal& global, const Messages& messages, MainController& controller,
                      RecoveryCopy& copy, const std::filesystem::path& application_data,
                      WallTime now);

}  // namespace warpline
