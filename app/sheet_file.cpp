#include "app/sheet_file.h"

#include <optional>
#include <string_view>
#include <utility>

#include "app/fault_report.h"
#include "app/setup_sheet.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "model/registers.h"
#include "platform/files.h"

namespace warpline {
namespace {

bool CheckNote(const Engine& engine, const std::string& note) {
  if (NoteFits(note)) return true;
  engine.messages.ShowSystemError(
      FilledText(TextOf(engine.global, ToolText::kSheetNoteTooLong),
                 {std::to_string(kMostNoteCharacters), std::to_string(kMostNoteLines)}));
  return false;
}

bool AskProjector(Engine& engine, SheetContent& content) {
  if (engine.global.Settings.DemoMode == 1) return true;
  content.report = engine.commands.AskReport();
  return content.report.has_value();
}

bool BuildContent(const Engine& engine, SheetContent& content) {
  content.correction = engine.global.Correction;
  content.panel = engine.global.Panel;
  content.registers = BuildRegisters(content.correction, content.panel);
  FileData data;
  data.Correction = content.correction;
  data.Registers = content.registers;
  const auto correction = engine.files.TextOf(kTypeWlt, data);
  const auto registers = correction ? engine.files.TextOf(kTypeWlr, data) : std::nullopt;
  if (!registers) return false;
  content.correction_text = *correction;
  content.register_text = *registers;
  return true;
}

bool MakePage(Engine& engine, const SheetRequest& request, std::string& page) {
  SheetContent content;
  content.note = request.note;
  content.date = LocalTime(request.now, kDateAndTime);
  content.file_name = Utf8Of(engine.global.CurrentFile.filename());
  content.changed = request.changed;
  if (!CheckNote(engine, request.note)) return false;
  if (request.ask_projector && !AskProjector(engine, content)) return false;
  if (!BuildContent(engine, content)) return false;
  page = SetupSheet(engine.global, content);
  return true;
}

}  // namespace

std::optional<std::string> SetupSheetPage(Engine& engine, const SheetRequest& request) {
  std::string page;
  const bool made =
      ReportingFaults(engine.messages, [&] { return MakePage(engine, request, page); });
  return made ? std::optional(std::move(page)) : std::nullopt;
}

bool WriteSetupSheet(Engine& engine, const SheetRequest& request) {
  return ReportingFaults(engine.messages, [&] {
    std::string page;
    return engine.files.MayWrite(request.sheet) && MakePage(engine, request, page) &&
           engine.files.SaveBytes(request.sheet, page);
  });
}

}  // namespace warpline
