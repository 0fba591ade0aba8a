#include "app/recovery.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/local_time.h"
#include "app/main_controller.h"
#include "app/startup.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStemStart = "recovery-";
constexpr std::string_view kCopyExtension = ".wlt";
constexpr std::string_view kLockExtension = ".lock";
constexpr std::string_view kRefused = "recovered-";
constexpr std::string_view kBroken = "unreadable-";
constexpr std::size_t kMostPutAside = 10;  // of each of these two
constexpr int kNameAttempts = 100;
constexpr std::chrono::seconds kLeastPause(1);

fs::path WithExtension(fs::path stem, std::string_view extension) {
  stem += extension;
  return stem;
}

void RemoveFile(const fs::path& file) {
  std::error_code ignored;
  fs::remove(file, ignored);
}

bool Exists(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(file, ignored));
}

// The files of a folder whose name fits, sorted.
template <typename Fits>
std::set<fs::path> FilesOf(const fs::path& folder, Fits fits) {
  std::set<fs::path> files;
  std::error_code ignored;
  for (fs::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
       entry.increment(ignored)) {
    if (fits(entry->path())) files.insert(entry->path());
  }
  return files;
}

// A file that the user has given such a beginning is none of ours.
bool IsPutAside(const fs::path& file, std::string_view start) {
  const fs::path::string_type name = file.filename().native();
  const fs::path::string_type begin = fs::path(start).native();
  const fs::path::string_type digits = fs::path("0123456789-").native();
  return file.extension() == kCopyExtension && name.starts_with(begin) &&
         file.stem().native().find_first_not_of(digits, begin.size()) ==
             fs::path::string_type::npos;
}

void KeepTheLast(const fs::path& newest, std::string_view start) {
  const auto others = FilesOf(newest.parent_path(), [&](const fs::path& file) {
    return file != newest && IsPutAside(file, start);
  });
  std::size_t left = others.size() + 1;
  for (auto file = others.begin(); left > kMostPutAside; ++file, --left) RemoveFile(*file);
}

// What is put aside within the same second gets the next ones.
void PutAsideAs(std::string_view start, const fs::path& copy, WallTime now) {
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    const std::string date = LocalTime(now + std::chrono::seconds(attempt), "%Y-%m-%d-%H%M%S");
    const fs::path name = WithExtension(std::string(start) + date, kCopyExtension);
    const fs::path kept = copy.parent_path() / name;
    if (Exists(kept)) continue;
    std::error_code error;
    fs::rename(copy, kept, error);
    if (!error) KeepTheLast(kept, start);
    return;
  }
}

// Nothing is lost with work that its file holds already.
bool IsSaved(const UnsavedWork& work) {
  std::error_code ignored;
  std::string bytes;
  return fs::is_regular_file(work.file, ignored) && !ReadWholeFile(work.file, bytes) &&
         CorrectionOf(bytes) == work.correction;
}

std::optional<UnsavedWork> ReadCopy(const fs::path& copy) {
  std::string bytes;
  return ReadWholeFile(copy, bytes) ? std::nullopt : WorkOf(bytes);
}

void LookInto(const fs::path& stem, WallTime now, std::vector<FoundWork>& found) {
  std::unique_ptr<RecoveryName> name = RecoveryName::Take(stem);
  std::error_code ignored;
  if (!name || !fs::is_regular_file(fs::symlink_status(name->Copy(), ignored))) return;
  std::optional<UnsavedWork> work = ReadCopy(name->Copy());
  if (!work) {
    PutAsideAs(kBroken, name->Copy(), now);
  } else if (IsSaved(*work)) {
    RemoveFile(name->Copy());
  } else {
    found.push_back({std::move(name), *std::move(work)});
  }
}

std::string QuestionAbout(const LSSglobal& global, const UnsavedWork& work) {
  const int screen = RowOfScreenType(work.correction.ScreenType).caption;
  const std::string file =
      work.file.empty() ? TextOf(global, ToolText::kRecoveryNoFile) : Utf8Of(work.file);
  return FilledText(TextOf(global, ToolText::kRecoveryQuestion),
                    {TextOf(global, screen), LocalTime(work.changed, kDateAndTime), file});
}

}  // namespace

std::unique_ptr<RecoveryName> RecoveryName::Take(const fs::path& stem) {
  std::unique_ptr<RecoveryName> name(new RecoveryName(stem));
  const FileLock::Result result = name->lock_.emplace().Take(WithExtension(stem, kLockExtension));
  if (result == FileLock::Result::kTaken) return name;
  name->lock_.reset();
  return nullptr;
}

// Some systems remove no file that is open.
RecoveryName::~RecoveryName() {
  if (!lock_) return;
  lock_.reset();
  RemoveFile(WithExtension(stem_, kLockExtension));
}

fs::path RecoveryName::Copy() const {
  return WithExtension(stem_, kCopyExtension);
}

std::vector<FoundWork> FindUnsavedWork(const fs::path& application_data, WallTime now) {
  const fs::path start(kStemStart);
  const auto files = FilesOf(DataFolder(application_data), [&](const fs::path& file) {
    return file.filename().native().starts_with(start.native()) &&
           (file.extension() == kCopyExtension || file.extension() == kLockExtension);
  });
  std::set<fs::path> stems;
  for (const fs::path& file : files) stems.insert(file.parent_path() / file.stem());
  std::vector<FoundWork> found;
  for (const fs::path& stem : stems) LookInto(stem, now, found);
  std::stable_sort(found.begin(), found.end(), [](const FoundWork& a, const FoundWork& b) {
    return a.work.changed > b.work.changed;
  });
  return found;
}

void PutAside(const FoundWork& found, WallTime now) {
  PutAsideAs(kRefused, found.name->Copy(), now);
}

void RecoveryCopy::NoteStep(const CorrectionData& correction, const fs::path& file, bool unsaved) {
  if (!unsaved) {
    Remove();
    return;
  }
  std::error_code ignored;
  const fs::path whole = file.empty() ? file : fs::absolute(file, ignored);
  const bool stands = written_ && written_->correction == correction && written_->file == whole;
  noted_.reset();
  if (!stands) noted_ = UnsavedWork{correction, whole, {}};
}

// The clock may be put back at any time.
std::optional<std::chrono::milliseconds> RecoveryCopy::Due(WallTime now) const {
  if (!noted_ && !writing_.valid()) return std::nullopt;
  const bool long_ago = !attempted_ || now < *attempted_ || now >= *attempted_ + kLeastPause;
  if (long_ago) return std::chrono::milliseconds(0);
  return std::chrono::ceil<std::chrono::milliseconds>(*attempted_ + kLeastPause - now);
}

void RecoveryCopy::WriteIfDue(WallTime now) {
  if (Due(now) != std::chrono::milliseconds(0)) return;
  attempted_ = now;
  if (IsWriting()) return;
  Finish();
  if (!noted_) return;
  noted_->changed = now;
  const std::optional<std::string> text = RecoveryText(*noted_);
  if (!text || !TakeName()) return;
  written_ = std::exchange(noted_, std::nullopt);
  // Where no thread can be had, the next attempt writes.
  writing_ = std::async(
      [file = name_->Copy(), bytes = *text] { return !ReplaceFileContents(file, bytes); });
}

bool RecoveryCopy::IsWriting() const {
  return writing_.valid() &&
         writing_.wait_for(std::chrono::seconds(0)) == std::future_status::timeout;
}

void RecoveryCopy::Finish() {
  if (!writing_.valid() || writing_.get()) return;
  if (!noted_) noted_ = written_;
  written_.reset();
}

// The name of another one's copy may be free to take: of one that ended, under the same number.
bool RecoveryCopy::TakeName() {
  const fs::path stem =
      MakeDataFolder(application_data_) / (std::string(kStemStart) + std::to_string(ProcessId()));
  for (int attempt = 1; !name_ && attempt <= kNameAttempts; ++attempt) {
    const fs::path other = attempt == 1 ? stem : WithExtension(stem, std::to_string(-attempt));
    if (!Exists(WithExtension(other, kCopyExtension))) name_ = RecoveryName::Take(other);
  }
  return name_ != nullptr;
}

void RecoveryCopy::Remove() {
  Finish();
  if (name_) RemoveFile(name_->Copy());
  name_.reset();
  noted_.reset();
  written_.reset();
}

// A copy that cannot be moved keeps its name.
void RecoveryCopy::TakeUp(FoundWork found) {
  Remove();
  std::error_code error;
  if (TakeName()) fs::rename(found.name->Copy(), name_->Copy(), error);
  if (!name_ || error) name_ = std::move(found.name);
  written_ = std::move(found.work);
}

void OfferUnsavedWork(const LSSglobal& global, const Messages& messages, MainController& controller,
                      RecoveryCopy& copy, const fs::path& application_data, WallTime now) {
  for (FoundWork& found : FindUnsavedWork(application_data, now)) {
    const std::size_t answer =
        messages.Choose(QuestionAbout(global, found.work), MessageIcon::kQuestion,
                        {TextOf(global, ToolText::kTakeUp), TextOf(global, ToolText::kPutAside)});
    if (answer == 0) {
      const UnsavedWork work = found.work;
      copy.TakeUp(std::move(found));
      controller.Restore(work.correction, work.file);
      return;
    }
    PutAside(found, now);
  }
}

}  // namespace warpline
