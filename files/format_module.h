#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/messages.h"

// What a text format offers to the file layer: one line in, a list of lines out. Modules never
// touch a file.

namespace warpline {

class FormatModule {
 public:
  virtual ~FormatModule() = default;

  // Called before the first line of a file.
  virtual void ResetRead() = 0;

  // Takes one line (without its end, never empty) into the staging data; false when the line is
  // invalid. Throws Fault(kDoesNotFit) for digits that do not fit their type.
  virtual bool ParseLine(std::string_view line) = 0;

  // Asked after the last line: a header of a version that is refused was met; an accepted header
  // was met.
  virtual bool OldVersionSeen() const { return false; }
  virtual bool HeaderSeen() const { return true; }

  // Whether what was read makes sense as a whole.
  virtual bool CheckContents() = 0;

  // Called once everything was accepted, for data that must not show half-read.
  virtual void Commit() {}

  // Appends the lines of a whole file, without line ends. False when the data cannot be written;
  // lines is then partial.
  virtual bool Write(std::vector<std::string>& lines) const = 0;
};

// Where reading is in a file, or where it has ended before its time.
struct FilePlace {
  std::size_t line = 0;  // from 1; 0: at no line
  std::string start;     // how the line begins

  // The line's key; empty when it begins with nothing that could be one.
  std::string Key() const;
};

// The read loop and the checks after it over a file's whole text; the module has been reset before.
// Lines end with LF or CR LF, the last one may end with the text, and the first empty line ends the
// file. Returns the code of the message to show, nothing when the file was accepted. Faults of
// ParseLine pass through. The place is that of the line which was not accepted, whatever ended the
// reading, and none when all lines were.
std::optional<FileErrorCode> ReadLines(std::string_view text, FormatModule& module,
                                       FilePlace& place);

inline std::optional<FileErrorCode> ReadLines(std::string_view text, FormatModule& module) {
  FilePlace unused;
  return ReadLines(text, module, unused);
}

// The lines as one text, each with CR LF.
std::string JoinLines(const std::vector<std::string>& lines);

// The line up to its first ";".
inline std::string_view WithoutComment(std::string_view line) {
  return line.substr(0, line.find(';'));
}

// A "key=value" line, cut at the first "=" and without any blank.
struct KeyAndValue {
  std::string_view key;
  std::string_view value;
};

// Nothing when the line has no "=". The views live as long as line and buffer; the buffer only
// serves lines with blanks.
std::optional<KeyAndValue> SplitLine(std::string_view line, std::string& buffer);

}  // namespace warpline
