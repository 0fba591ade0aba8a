#include "app/exchange_recording.h"

#include <utility>

#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "platform/files.h"

namespace warpline {

bool ExchangeRecording::Begin(const std::filesystem::path& file, bool redacted) {
  End();
  Running running{
      .path = file, .file = RecordFile::Create(file), .recorder = nullptr, .redacted = redacted};
  if (!running.file) {
    messages_.ShowText(ToolText::kRecordingNotBegun, {Utf8Of(file)}, MessageIcon::kCritical);
    return false;
  }
  Start(std::move(running));
  return true;
}

void ExchangeRecording::BeginIn(std::ostream& stream, const std::filesystem::path& name,
                                bool redacted) {
  End();
  Start({name, std::make_unique<RecordFile>(stream), nullptr, redacted});
}

void ExchangeRecording::Start(Running running) {
  running.recorder = std::make_unique<ExchangeRecorder>(*running.file, running.redacted);
  running_ = std::move(running);
  link_.Observe(running_->recorder.get());
}

TrialRecord ExchangeRecording::ForTrial() {
  if (!running_) return {};
  return {true, running_->redacted, running_->recorder->TakeLink()};
}

void ExchangeRecording::Adopt(std::string line) {
  if (running_) running_->file->Write(std::move(line));
}

void ExchangeRecording::Complete() {
  if (running_) running_->file->Complete();
  Look();
}

void ExchangeRecording::Look() {
  if (!running_ || !running_->file->Failed()) return;
  const std::filesystem::path path = running_->path;
  Drop();
  messages_.ShowText(ToolText::kRecordingLost, {Utf8Of(path)}, MessageIcon::kWarning);
}

void ExchangeRecording::End() {
  Complete();
  Drop();
}

void ExchangeRecording::Drop() {
  link_.Observe(nullptr);
  running_.reset();
}

}  // namespace warpline
