#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "app/link_trial.h"
#include "core/messages.h"
#include "link/exchange_recorder.h"
#include "link/projector_link.h"
#include "link/record_file.h"

namespace warpline {

// A recording of the exchange with the projector, while there is one. It never fails the exchange.
class ExchangeRecording {
 public:
  // Both must outlive this object.
  ExchangeRecording(ProjectorLink& link, const Messages& messages)
      : link_(link), messages_(messages) {}
  ~ExchangeRecording() { Drop(); }
  ExchangeRecording(const ExchangeRecording&) = delete;
  ExchangeRecording& operator=(const ExchangeRecording&) = delete;

  // Records into a new file, in an old one's place; redacted: without addresses. False, with the
  // message shown, when it cannot be made.
  bool Begin(const std::filesystem::path& file, bool redacted);

  // The same into a stream, which must outlive the recording and is not written otherwise
  // meanwhile; messages call it by that name.
  void BeginIn(std::ostream& stream, const std::filesystem::path& name, bool redacted);

  bool IsOn() const { return running_.has_value(); }

  // For a process that opens a link of its own: whether and how it tells what to record, and the
  // lines that it tells.
  TrialRecord ForTrial();
  void Adopt(std::string line);

  // Returns when everything recorded is in the file, or lost; that is told as Look does.
  void Complete();

  // To be called when a link was closed: when the file can be written no more, the recording ends
  // with one message.
  void Look();

  // Ends the recording; what was lost is told.
  void End();

 private:
  struct Running {
    std::filesystem::path path;
    std::unique_ptr<RecordFile> file;
    std::unique_ptr<ExchangeRecorder> recorder;
    bool redacted = false;
  };

  void Start(Running running);
  void Drop();

  ProjectorLink& link_;
  const Messages& messages_;
  std::optional<Running> running_;
};

}  // namespace warpline
