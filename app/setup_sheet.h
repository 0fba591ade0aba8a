#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/projector_record.h"
#include "core/LSSglobal.h"
#include "core/correction.h"
#include "core/register_set.h"

// The setup sheet: a page to print and to keep beside the projector. It says all that there is to
// know of one correction, and carries the correction itself.

namespace warpline {

// The type word of the page.
inline constexpr std::string_view kTypeHtml = "html";

// The name, without its extension, of what belongs to a correction that has no file.
inline constexpr std::string_view kUnnamed = "correction";

// What a note may hold, so that the sheet has no more than two pages of A4.
inline constexpr int kMostNoteCharacters = 500;
inline constexpr int kMostNoteLines = 10;

// Whether a note (UTF-8) keeps these bounds.
bool NoteFits(const std::string& note);

struct SheetContent {
  CorrectionData correction;
  std::string correction_text;  // the same as a correction data file
  RegisterSet registers;        // that are built from it
  std::string register_text;    // the same as a register file
  PanelSize panel;              // that they are for
  std::string file_name;        // without its folder; empty: the correction has no file
  bool changed = false;         // since it was read from that file or saved there
  std::string date;             // of the sheet
  std::string note;
  std::optional<ProjectorReport> report;  // of the projector, when it was asked
};

// The sheet as one HTML page (UTF-8) without script that needs no other resource, in the language
// in force. The same values give the same page. Texts of the content may hold anything. Throws what
// drawing the preview and sampling a curve throw.
std::string SetupSheet(const LSSglobal& global, const SheetContent& content);

}  // namespace warpline
