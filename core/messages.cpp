#include "core/messages.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "core/link_results.h"
#include "core/tool_texts.h"
#include "platform/files.h"

namespace warpline {
namespace {

// Stands for every code that the category's rows above it do not name.
constexpr int kAnyCode = std::numeric_limits<int>::max();

struct MessageRow {
  MessageCategory category;
  int code;
  int number;
};

// The first row that fits counts. Opening has no row for -1, and a failed time-out is always
// reported as a send error; both are the product's behaviour.
constexpr std::array<MessageRow, 32> kMessageRows{{
    {MessageCategory::kOpen, kOpenBadPort, kMsgPortNotSupported},
    {MessageCategory::kOpen, kOpenPortInUse, kMsgDeviceInUse},
    {MessageCategory::kOpen, kOpenWinSock, kMsgSocketStartFailed},
    {MessageCategory::kOpen, kOpenSocket, kMsgSocketFailed},
    {MessageCategory::kOpen, kOpenBind, kMsgSocketAddressFailed},
    {MessageCategory::kOpen, kOpenHost, kMsgHostNotFound},
    {MessageCategory::kOpen, kOpenConnect, kMsgConnectionFailed},
    {MessageCategory::kOpen, kOpenSelect, kMsgSocketModeFailed},
    {MessageCategory::kOpen, kOpenCancelled, kMsgOpenCancelled},
    {MessageCategory::kOpen, kAnyCode, kMsgOpenDeviceIdInvalid},
    {MessageCategory::kClose, kCloseBadHandle, kMsgCloseDeviceIdInvalid},
    {MessageCategory::kClose, kCloseAlreadyClosed, kMsgAlreadyClosed},
    {MessageCategory::kClose, kAnyCode, kMsgCloseFailed},
    {MessageCategory::kTimeOut, kAnyCode, kMsgSendError},
    {MessageCategory::kExchange, kBeamlinkNotInitialized, kMsgNotInitialized},
    {MessageCategory::kExchange, kBeamlinkBadHandle, kMsgDeviceIdInvalid},
    {MessageCategory::kExchange, kBeamlinkNoResponse, kMsgNoResponse},
    {MessageCategory::kExchange, kBeamlinkSendError, kMsgSendError},
    {MessageCategory::kExchange, kBeamlinkReceiveError, kMsgReceiveError},
    {MessageCategory::kExchange, kAnyCode, kMsgCommandFailed},
    {MessageCategory::kFile, kFileNameWrong, kMsgFileNameWrong},
    {MessageCategory::kFile, kFileCorrupted, kMsgFileCorrupted},
    {MessageCategory::kFile, kFileVersionDiffers, kMsgFileVersionDiffers},
    {MessageCategory::kFile, kFileNoSpace, kMsgDiskFull},
    {MessageCategory::kFile, kFileIniSaveFailed, kMsgIniSaveFailed},
    {MessageCategory::kFile, kFileIniLoadFailed, kMsgIniLoadFailed},
    {MessageCategory::kFile, kFileWriteFailed, kMsgWriteFailed},
    {MessageCategory::kFile, kFileValueWrong, kMsgParameterValue},
    {MessageCategory::kFile, kAnyCode, kMsgWrongValue},
    {MessageCategory::kReply, kReplyNotSupported, kMsgNotSupported},
    {MessageCategory::kReply, kReplyPowerOff, kMsgPowerOff},
    {MessageCategory::kReply, kAnyCode, kMsgCommandFailed},
}};

// In the order of the categories.
constexpr std::array<std::string_view, 6> kKinds{"reply",   "open",     "close",
                                                 "timeout", "exchange", "file"};

// A category that nobody knows counts as the first one, as it does in the table above.
std::string_view KindOf(MessageCategory category) {
  const auto index = static_cast<std::size_t>(category);
  return kKinds.at(index < kKinds.size() ? index : 0);
}

int MessageNumber(MessageCategory category, int code) {
  const auto fits = [code](MessageCategory wanted) {
    return [code, wanted](const MessageRow& row) {
      return row.category == wanted && (row.code == code || row.code == kAnyCode);
    };
  };
  auto row = std::find_if(kMessageRows.begin(), kMessageRows.end(), fits(category));
  if (row == kMessageRows.end()) {
    row = std::find_if(kMessageRows.begin(), kMessageRows.end(), fits(MessageCategory::kReply));
  }
  return row->number;
}

}  // namespace

const std::string& OutcomeText(const LSSglobal& global, MessageCategory category, int code) {
  return TextOf(global, MessageNumber(category, code));
}

void Messages::ShowMessage(MessageCategory category, int code) const {
  std::string text = OutcomeText(global_, category, code);
  if (category != MessageCategory::kFile) text += "  Error : " + std::to_string(code);
  display_.Show({TextOf(global_, kMsgTitle),
                 std::move(text),
                 MessageIcon::kCritical,
                 {TextOf(global_, kMsgOk)},
                 KindOf(category),
                 code});
}

void Messages::ShowText(int number, MessageIcon icon) const {
  Choose(TextOf(global_, number), icon, {TextOf(global_, kMsgOk)});
}

void Messages::ShowText(ToolText key, MessageIcon icon) const {
  Choose(TextOf(global_, key), icon, {TextOf(global_, kMsgOk)});
}

void Messages::ShowText(ToolText key, const std::vector<std::string>& values,
                        MessageIcon icon) const {
  Choose(FilledText(TextOf(global_, key), values), icon, {TextOf(global_, kMsgOk)});
}

void Messages::ShowFileText(int number, const std::filesystem::path& file) const {
  ShowSystemError(TextOf(global_, number) + "\n" + Utf8Of(file));
}

void Messages::ShowSystemError(const std::string& description) const {
  Choose(description, MessageIcon::kCritical, {TextOf(global_, kMsgOk)});
}

void Messages::ShowFault(FaultCode code) const {
  std::string report = "[";
  report.append(std::to_string(static_cast<int>(code))).append("] ");
  report.append(TextOf(global_, kMsgWrongValue));
  ShowSystemError(report);
}

MessageAnswer Messages::Ask(int number) const {
  return static_cast<MessageAnswer>(
      Choose(TextOf(global_, number), MessageIcon::kQuestion,
             {TextOf(global_, ToolText::kYes), TextOf(global_, ToolText::kNo),
              TextOf(global_, kMsgCancel)}));
}

std::size_t Messages::Choose(std::string text, MessageIcon icon,
                             std::vector<std::string> choices) const {
  return display_.Show({TextOf(global_, kMsgTitle), std::move(text), icon, std::move(choices)});
}

}  // namespace warpline
