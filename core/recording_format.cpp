#include "core/recording_format.h"

#include "platform/files.h"

namespace warpline {

std::string RecordingLine(std::uint64_t link, std::chrono::milliseconds time,
                          std::string_view event, std::initializer_list<std::string_view> more) {
  std::string line = std::to_string(link) + '\t' + std::to_string(time.count()) + '\t';
  line += event;
  for (const std::string_view field : more) line.append("\t").append(field);
  return line + '\n';
}

std::unique_ptr<std::ofstream> OpenRecord(const std::filesystem::path& path) {
  // A link that somebody laid here would lead to a file that is none of ours.
  if ((FileAttributes(path) & kAlias) != 0) return nullptr;
  auto file = std::make_unique<std::ofstream>(path, std::ios::binary | std::ios::trunc);
  return *file ? std::move(file) : nullptr;
}

}  // namespace warpline
