#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/LSSglobal.h"
#include "core/catalogue.h"
#include "core/fault.h"
#include "core/interfaces.h"
#include "core/message_numbers.h"

// What the program says when something fails: one place that turns an outcome into one localized
// message box.

namespace warpline {

// Which operation failed; together with its result code it chooses the text.
enum class MessageCategory : int {
  kReply = 0,     // the projector refused in its reply
  kOpen = 1,      // opening the link
  kClose = 2,     // closing the link
  kTimeOut = 3,   // setting the acknowledge time-out
  kExchange = 4,  // any other exchange of the control library
  kFile = 5,      // files, codes -1..-8
};

// Codes of the reply category.
inline constexpr int kReplyNotSupported = 1;
inline constexpr int kReplyFailed = 2;
inline constexpr int kReplyPowerOff = 3;

// Codes of the file category.
enum FileErrorCode : int {
  kFileNameWrong = -1,
  kFileCorrupted = -2,
  kFileVersionDiffers = -3,
  kFileNoSpace = -4,
  kFileIniSaveFailed = -5,
  kFileIniLoadFailed = -6,
  kFileWriteFailed = -7,
  kFileValueWrong = -8,
};

// The catalogue's text for an outcome.
const std::string& OutcomeText(const LSSglobal& global, MessageCategory category, int code);

// Shows the messages of one run in the language in force; every box has the program's title.
class Messages {
 public:
  // Both must outlive this object.
  Messages(const LSSglobal& global, MessageDisplay& display) : global_(global), display_(display) {}

  // The error display: the text for category and code, followed by "  Error : " and the code except
  // for files.
  void ShowMessage(MessageCategory category, int code) const;

  // A catalogue text alone.
  void ShowText(int number, MessageIcon icon = MessageIcon::kCritical) const;

  // A text without a number.
  void ShowText(ToolText key, MessageIcon icon) const;
  void ShowText(ToolText key, const std::vector<std::string>& values, MessageIcon icon) const;

  // A catalogue text about a file, and under it the file's whole path.
  void ShowFileText(int number, const std::filesystem::path& file) const;

  // The system's own description of an error (UTF-8).
  void ShowSystemError(const std::string& description) const;

  // The run-time error report: "[code] " and the text for a wrong value.
  void ShowFault(FaultCode code) const;

  // A catalogue text as a question with Yes, No and Cancel.
  MessageAnswer Ask(int number) const;

  // A text with buttons of its own, the one that gives up last: the number of the one pressed.
  std::size_t Choose(std::string text, MessageIcon icon, std::vector<std::string> choices) const;

 private:
  const LSSglobal& global_;
  MessageDisplay& display_;
};

}  // namespace warpline
