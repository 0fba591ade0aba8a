#include "sim/recording/recorded_call.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "core/link_results.h"

namespace warpline::sim {
namespace {

struct Value {
  std::string_view key;  // empty: none
  std::size_t bytes = 0;
};

struct OperationRow {
  std::string_view name;
  LibraryOperation operation;
  Value argument;
  std::array<Value, 2> told;
};

constexpr std::array<OperationRow, 4> kOperations{{
    {"PJGetRunningStatus", kRunningOperation, {}, {{{"Power", 1}, {}}}},
    {"PJGetPcViewerInformation", kPanelOperation, {}, {{{"PanelWidth", 2}, {"PanelHeight", 2}}}},
    {"PJGetStatus", kStatusOperation, {}, {{{"Power", 1}, {"Input", 4}}}},
    {"PJSetInput", kInputOperation, {"input", 4}, {}},
}};

std::optional<std::int32_t> ValueIn(std::string_view details, std::string_view key) {
  while (!details.empty()) {
    const std::size_t end = std::min(details.find(' '), details.size());
    const std::string_view word = details.substr(0, end);
    details.remove_prefix(std::min(end + 1, details.size()));
    if (!word.starts_with(key) || word.substr(key.size(), 1) != "=") continue;
    std::int32_t value = 0;
    const char* const last = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data() + key.size() + 1, last, value);
    if (error == std::errc() && stop == last) return value;
  }
  return std::nullopt;
}

// False when the details lack the value.
bool Append(Bytes& payload, const Value& value, std::string_view details) {
  if (value.key.empty()) return true;
  const std::optional<std::int32_t> number = ValueIn(details, value.key);
  if (!number) return false;
  Bytes word;
  AppendWord(word, static_cast<std::uint32_t>(*number));
  payload.insert(payload.end(), word.begin(),
                 word.begin() + static_cast<std::ptrdiff_t>(value.bytes));
  return true;
}

// The error byte that the stand-in library turns into that result.
std::uint8_t ErrorByteOf(std::int32_t result) {
  if (result == kBeamlinkOk) return kAccepted;
  return result == kBeamlinkNoPanelInformation ? kNotSupported : kRefused;
}

bool IsAnswered(std::int32_t result) {
  return result == kBeamlinkOk || result == kBeamlinkNoPanelInformation ||
         result == kBeamlinkCommandFailed;
}

}  // namespace

std::optional<CallExchange> ExchangeOf(const RecordedCall& call) {
  const auto* row = std::ranges::find(kOperations, call.Name, &OperationRow::name);
  if (row == kOperations.end()) return std::nullopt;
  Bytes asked{row->operation};
  if (!Append(asked, row->argument, call.Details)) return std::nullopt;
  CallExchange exchange{MakeFrame(kLibraryHeader, asked), {}};
  if (!IsAnswered(call.Result)) {
    exchange.Reply = ReplyFor(call.Result, exchange.Request, {});
    return exchange;
  }
  Bytes told{ErrorByteOf(call.Result)};
  for (const Value& value : row->told) {
    if (call.Result == kBeamlinkOk && !Append(told, value, call.Details)) return std::nullopt;
  }
  exchange.Reply = MakeReply(exchange.Request, told);
  return exchange;
}

Bytes ReplyFor(std::int32_t result, ByteView request, Bytes reply) {
  if (result == kBeamlinkOk || result == kBeamlinkNoResponse || request.size() < 2) return reply;
  if (!reply.empty() && !IsWholeFrame(reply)) return reply;
  if (reply.empty()) reply = MakeReply(request, Bytes{kRefused});
  reply.back() = static_cast<std::uint8_t>(~reply.back());
  return reply;
}

}  // namespace warpline::sim
