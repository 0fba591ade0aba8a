#include "link/record_file.h"

#include <utility>

#include "core/recording_format.h"

namespace warpline {

std::unique_ptr<RecordFile> RecordFile::Create(const std::filesystem::path& path) {
  std::unique_ptr<std::ofstream> file = OpenRecord(path);
  return file ? std::make_unique<RecordFile>(std::move(file)) : nullptr;
}

RecordFile::RecordFile(std::unique_ptr<std::ofstream> file) : RecordFile(*file) {
  file_ = std::move(file);
}

RecordFile::RecordFile(std::ostream& stream)
    : stream_(stream), waiting_(RecordTitleLine()), thread_([this] { Work(); }) {}

RecordFile::~RecordFile() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void RecordFile::Write(std::string lines) {
  {
    const std::lock_guard lock(mutex_);
    if (failed_) return;
    waiting_ += lines;
  }
  changed_.notify_all();
}

void RecordFile::Complete() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return waiting_.empty() && !writing_; });
}

bool RecordFile::Failed() const {
  const std::lock_guard lock(mutex_);
  return failed_;
}

void RecordFile::Work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    const std::string lines = std::exchange(waiting_, {});
    writing_ = true;
    lock.unlock();
    const bool written = failed_ || (stream_ << lines << std::flush);
    lock.lock();
    writing_ = false;
    failed_ = failed_ || !written;
    changed_.notify_all();
  }
}

}  // namespace warpline
