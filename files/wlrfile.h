#pragma once

#include "core/messages.h"
#include "core/register_set.h"
#include "files/format_module.h"

// The register file: the hexadecimal register texts of both axes. Reading empties them first and
// fills them as the lines come. A bad line shows its own messages, length before value, ahead of
// the file layer's.

namespace warpline {

class WlrFile : public FormatModule {
 public:
  WlrFile(RegisterSet& registers, const Messages& messages)
      : registers_(registers), messages_(messages) {}

  void ResetRead() override;
  bool ParseLine(std::string_view line) override;
  bool HeaderSeen() const override { return header_seen_; }
  bool CheckContents() override;
  bool Write(std::vector<std::string>& lines) const override;

 private:
  // Puts a value where its key says and returns the length that the line may have, 0 for an unknown
  // key.
  std::size_t StoreValue(std::string_view key, std::string_view value);
  bool CheckValue(std::string_view value, std::size_t max_length) const;

  RegisterSet& registers_;
  const Messages& messages_;
  bool header_seen_ = false;
  std::string buffer_;
};

}  // namespace warpline
