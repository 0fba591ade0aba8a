#include "app/setup_sheet.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "app/curve_editor.h"
#include "app/deviation_report.h"
#include "app/html.h"
#include "app/mode_choice.h"
#include "app/plain_caption.h"
#include "app/preview_geometry.h"
#include "app/preview_svg.h"
#include "app/sheet_pictures.h"
#include "core/catalogue.h"
#include "core/conversions.h"
#include "core/sha256.h"
#include "core/tool_texts.h"
#include "model/parameter_groups.h"
#include "platform/files.h"

namespace warpline {
namespace embedded {

std::string_view Embedded_setup_sheet();

}  // namespace embedded

namespace {

constexpr int kPointsInColumn = 8;
constexpr double kMillionths = 1000000;  // what a file keeps of a coordinate

// The parts of the page, in one language.
class Page {
 public:
  Page(const LSSglobal& global, const SheetContent& content) : global_(global), content_(content) {}

  std::string Head() const;
  std::string Body() const;

 private:
  std::string Text(ToolText key, const std::vector<std::string>& values = {}) const {
    return FilledText(TextOf(global_, key), values);
  }
  std::string Heading(ToolText key, const std::vector<std::string>& values = {}) const {
    return TextElement("h2", Text(key, values));
  }
  std::string YesOrNo(int flag) const {
    return NameOf(global_, flag != 0 ? ToolText::kYes : ToolText::kNo);
  }
  std::string PanelText(PanelSize panel) const {
    return Text(ToolText::kSheetPixels,
                {std::to_string(panel.Width), std::to_string(panel.Height)});
  }
  static std::string Row(const std::string& name, const std::string& value) {
    return Element("tr", TextElement("th", name) + TextElement("td", value));
  }

  std::string FileText() const;
  std::string Title() const;
  std::string Screen() const;
  std::string Projector() const;
  std::string Save() const;
  std::string Parameters() const;
  std::string Group(int group) const;
  std::string Preview() const;
  std::string Note() const;
  std::string Curve(Axis axis) const;
  static std::string Points(const CurveDefinition& curve);
  std::string Registers() const;

  const LSSglobal& global_;
  const SheetContent& content_;
};

std::string Div(std::string_view kind, const std::string& content) {
  return Element(std::string("div class=\"").append(kind).append("\""), content);
}

std::string Page::Head() const {
  std::string head("<meta charset=\"utf-8\">\n");
  head += "<meta name=\"viewport\" content=\"width=device-width\">\n";
  head += TextElement("title", Text(ToolText::kSheetTitle) + " - " + FileText());
  return Element("head", head + Element("style", embedded::Embedded_setup_sheet()));
}

std::string Page::Body() const {
  const std::string settings = Title() + Div("pair", Screen() + Projector()) + Save() +
                               Div("pair", Parameters() + Preview()) + Note();
  const std::string data = Div("pair", Curve(kHorizontal) + Curve(kVertical)) + Registers();
  return Element("body", Div("settings", settings) + Div("data", data));
}

std::string Page::FileText() const {
  if (content_.file_name.empty()) return TextOf(global_, ToolText::kRecoveryNoFile);
  return content_.changed ? Text(ToolText::kSheetChanged, {content_.file_name})
                          : content_.file_name;
}

std::string Page::Title() const {
  const std::string file = TextElement("td", FileText());
  const std::string date = TextElement("td", content_.date);
  return Element("header", TextElement("h1", Text(ToolText::kSheetTitle)) +
                               TextElement("span", TextOf(global_, kMsgTitle))) +
         Element("table class=\"file\"",
                 Element("tr", TextElement("th", Text(ToolText::kSheetFile)) + file +
                                   TextElement("th", Text(ToolText::kSheetDate)) + date));
}

std::string Page::Screen() const {
  const CorrectionData& correction = content_.correction;
  const std::string name = TextOf(global_, RowOfScreenType(correction.ScreenType).caption);
  const std::string rows =
      Row(NameOf(global_, kMsgTypeOfScreen), name) +
      Row(NameOf(global_, kMsgMenuProjectDownward), YesOrNo(correction.Projection[kVertical])) +
      Row(NameOf(global_, kMsgMenuProjectRight), YesOrNo(correction.Projection[kHorizontal]));
  const std::string picture(ScreenPicture(correction.ScreenType));
  return Element("section",
                 Heading(ToolText::kSheetScreen) + Div("screen", picture + Element("table", rows)));
}

std::string Page::Projector() const {
  std::string told = TextElement("p", Text(ToolText::kSheetNotAsked));
  if (content_.report) {
    const ProjectorReport& report = *content_.report;
    const auto mode = std::clamp<std::size_t>(static_cast<std::size_t>(report.mode), 0,
                                              kProjectorModes.size() - 1);
    told =
        Element("table",
                Row(Text(ToolText::kSheetPanel), PanelText(report.panel)) +
                    Row(Text(ToolText::kSheetModelClass), std::to_string(report.model_class)) +
                    Row(Text(ToolText::kSheetMode), std::to_string(report.mode) + ": " +
                                                        NameOf(global_, kProjectorModes.at(mode))));
  }
  return Element("section", Heading(ToolText::kSheetProjector) + told);
}

// The file to save is named after the one that the correction came from.
std::string Page::Save() const {
  const std::string stem = content_.file_name.empty() ? std::string(kUnnamed)
                                                      : Utf8Of(PathOf(content_.file_name).stem());
  const std::string name = stem + ".wlt";
  return Div("save", TextElement("a download=\"" + Escaped(name) +
                                     "\" href=\"data:application/octet-stream;base64," +
                                     Base64Of(content_.correction_text) + "\"",
                                 Text(ToolText::kSheetSave, {name})));
}

std::string Page::Group(int group) const {
  const GroupRow& row = kGroups.at(static_cast<std::size_t>(group));
  std::vector<std::string> rows;
  for (int slider = 0; slider < kSliderCount; ++slider) {
    const SliderSetup setup = SetUpSlider(content_.correction, group, slider);
    const int caption = row.slider_captions.at(static_cast<std::size_t>(slider));
    const std::string range =
        Text(ToolText::kSheetBounds, {std::to_string(setup.low), std::to_string(setup.high)});
    rows.push_back(TextElement("td", NameOf(global_, caption)) +
                   TextElement("td class=\"number\"", setup.text) +
                   TextElement("td class=\"range\"", range));
  }
  if (group == kGroupLinearity) {
    for (const auto& [axis, caption] : {std::pair(kHorizontal, kMsgHorizontalSymmetry),
                                        std::pair(kVertical, kMsgVerticalSymmetry)}) {
      rows.push_back(
          TextElement("td", NameOf(global_, caption)) +
          TextElement("td class=\"number\"", YesOrNo(content_.correction.Axes[axis].Stadium)) +
          Element("td", ""));
    }
  }
  std::string body = TextElement("th rowspan=\"" + std::to_string(rows.size()) + "\"",
                                 NameOf(global_, row.caption));
  for (const std::string& cells : rows) {
    body += cells;
    if (&cells != &rows.back()) body += "<tr>";
  }
  return Element("tbody", "<tr>" + body);
}

std::string Page::Parameters() const {
  std::string head = TextElement("th colspan=\"2\"", Text(ToolText::kSheetParameter));
  head += TextElement("th", Text(ToolText::kSheetValue));
  head += TextElement("th", Text(ToolText::kSheetRange));
  std::string table = Element("thead", Element("tr", head));
  for (int group = 0; group < kGroupCount; ++group) table += Group(group);
  return Element("section", Heading(ToolText::kSheetParameters) + Element("table", table));
}

// Compared with itself nothing differs, so that the bands are drawn.
std::string Page::Preview() const {
  const CorrectionData& correction = content_.correction;
  PreviewDrawing drawing = Redraw(correction, correction.Axes);
  std::string words;
  if (const std::optional<Deviation> deviation = FindDeviation(correction, content_.panel)) {
    drawing = Over(DrawDeviation(*deviation, content_.panel), drawing);
    words = TextElement("p", DeviationText(global_, *deviation));
  }
  return Element("section class=\"preview\"",
                 Heading(ToolText::kSheetPreview) + PreviewSvg(drawing) + words);
}

std::string Page::Note() const {
  return Element("section",
                 Heading(ToolText::kSheetNote) + TextElement("p class=\"note\"", content_.note));
}

std::string Page::Curve(Axis axis) const {
  const CurveDefinition& curve = content_.correction.Curves[axis];
  const auto interpolation = static_cast<std::size_t>(curve.CorreInterp - 1);
  const std::string facts = NameOf(global_, kInterpolationEntries.at(interpolation).text) + "; " +
                            NameOf(global_, kMsgPointCount) + ": " +
                            std::to_string(curve.CorrePointNum) + "; " +
                            NameOf(global_, kMsgSymmetry) + ": " + YesOrNo(curve.CorreSymmetry) +
                            "; " + NameOf(global_, kMsgFixed) + ": " + YesOrNo(curve.CorreFixed);
  const ToolText heading =
      axis == kHorizontal ? ToolText::kSheetCurveHorizontal : ToolText::kSheetCurveVertical;
  return Element("section class=\"graph\"",
                 Heading(heading) + TextElement("p", facts) + CurvePicture(curve) + Points(curve));
}

// From the ninth point on they stand beside the first ones.
std::string Page::Points(const CurveDefinition& curve) {
  const auto coordinate = [](double value) {
    return TextElement("td class=\"number\"",
                       ShortestText(std::nearbyint(value * kMillionths) / kMillionths));
  };
  const int count = curve.CorrePointNum;
  const std::string names = "<th></th><th>X</th><th>Y</th>";
  std::string table = Element("thead", count > kPointsInColumn ? names + names : names);
  for (int row = 0; row < std::min(count, kPointsInColumn); ++row) {
    std::string cells;
    for (int point = row; point < count; point += kPointsInColumn) {
      const CurvePoint& place = curve.CorreDataPts.at(static_cast<std::size_t>(point));
      cells += TextElement("th", std::to_string(point + 1));
      cells += coordinate(place.X) + coordinate(place.Y);
    }
    table += Element("tr", cells);
  }
  return Element("table class=\"points\"", table);
}

std::string Page::Registers() const {
  constexpr std::string_view kPrefixes[] = {"h_", "v_"};
  std::string names = "<th></th>";
  std::string rows;
  std::string tables;
  for (const Axis axis : {kHorizontal, kVertical}) {
    const std::string prefix(kPrefixes[axis]);
    std::string cells = TextElement("th", prefix);
    for (std::size_t field = 0; field < kRegisterFieldCount; ++field) {
      const RegisterFieldRow& row = kRegisterFields.at(field);
      const std::string& digits = content_.registers[axis].at(field);
      if (row.hex_digits == 0) {
        tables += TextElement("h3", prefix + std::string(row.name));
        tables += TextElement("p class=\"hex\"", digits);
        continue;
      }
      cells += TextElement("td", digits);
      if (axis == kHorizontal) names += TextElement("th", row.name);
    }
    rows += Element("tr", cells);
  }
  return Heading(ToolText::kSheetRegisters, {PanelText(content_.panel)}) +
         Element("table class=\"registers\"",
                 Element("thead", Element("tr", names)) + Element("tbody", rows)) +
         tables + TextElement("h3", Text(ToolText::kSheetDigest)) +
         TextElement("p class=\"hex\"", Sha256Of(content_.register_text));
}

}  // namespace

bool NoteFits(const std::string& note) {
  const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; };
  const auto ends_line = [](char c) { return c == '\n' || c == '\r'; };
  const auto characters =
      static_cast<std::ptrdiff_t>(note.size()) - std::count_if(note.begin(), note.end(), continues);
  return characters <= kMostNoteCharacters &&
         std::count_if(note.begin(), note.end(), ends_line) < kMostNoteLines;
}

std::string SetupSheet(const LSSglobal& global, const SheetContent& content) {
  const Page page(global, content);
  const bool japanese = LanguageOf(global) == Language::kJapanese;
  const std::string start = japanese ? "html lang=\"ja\"" : "html lang=\"en\"";
  return "<!DOCTYPE html>\n" + Element(start, page.Head() + page.Body());
}

}  // namespace warpline
