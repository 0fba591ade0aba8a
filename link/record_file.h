#pragma once

#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

#include "link/exchange_recorder.h"

namespace warpline {

// The file of a recording, written by a thread of its own, so that a slow disk holds nothing up.
// What cannot be written is lost, and all that follows.
class RecordFile : public RecordSink {
 public:
  // Null when the file cannot be made. Its first line is written.
  static std::unique_ptr<RecordFile> Create(const std::filesystem::path& path);

  explicit RecordFile(std::unique_ptr<std::ofstream> file);

  // The same into a stream, which must outlive this object and is this object's alone until then.
  explicit RecordFile(std::ostream& stream);
  ~RecordFile() override;
  RecordFile(const RecordFile&) = delete;
  RecordFile& operator=(const RecordFile&) = delete;

  void Write(std::string lines) override;
  void Complete() override;

  // Something was lost.
  bool Failed() const;

 private:
  void Work();

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::unique_ptr<std::ofstream> file_;
  std::ostream& stream_;  // the thread's alone
  std::string waiting_;
  bool writing_ = false;
  bool failed_ = false;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace warpline
