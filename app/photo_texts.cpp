#include "app/photo_texts.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "app/plain_caption.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "picture/marks_picture.h"

namespace warpline {
namespace {

constexpr std::string_view kPictureWide = "FitPictureWide";
constexpr std::string_view kPictureFilled = "PhotoFilled";  // the same, by the search for marks
constexpr std::string_view kMarksMissing = "PhotoMarksMissing";

constexpr std::array kCornerTexts{ToolText::kPhotoUpperLeft, ToolText::kPhotoUpperRight,
                                  ToolText::kPhotoLowerRight, ToolText::kPhotoLowerLeft};

std::string Figure(double value, int decimals) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  return text.data();
}

std::string Filled(const LSSglobal& global, ToolText text, const std::vector<std::string>& values) {
  return FilledText(TextOf(global, text), values);
}

void AddLine(std::string& text, const std::string& line) {
  if (!text.empty() && !line.empty()) text += '\n';
  text += line;
}

std::string EdgesText(const LSSglobal& global, double percent, double pixels) {
  return Filled(global, ToolText::kPhotoOffStraight, {Figure(percent, 2), Figure(pixels, 1)});
}

std::string WorstMarksText(const LSSglobal& global, const FitReport& report) {
  std::string marks;
  for (const MarkMisfit& mark : report.Worst) {
    if (mark.Dropped) continue;  // there is a warning of its own
    const std::string told =
        Filled(global, ToolText::kPhotoWorstMark,
               {std::to_string(mark.Column), std::to_string(mark.Row), Figure(mark.Pixels, 2)});
    marks = marks.empty() ? told : Filled(global, ToolText::kPhotoAndMark, {marks, told});
  }
  return marks.empty() ? marks : Filled(global, ToolText::kPhotoWorstMarks, {marks});
}

}  // namespace

std::string TextOfPhoto(const LSSglobal& global, const PhotoSession& session) {
  std::string text = session.Refused();
  if (!session.HasPhoto()) return text.empty() ? TextOf(global, ToolText::kPhotoNone) : text;
  const std::size_t all = session.Layout().Marks.All().size();
  const std::size_t counting = session.Layout().Marks.Counting().size();
  const PhotoSize size = session.Size();
  AddLine(text, Filled(global, ToolText::kPhotoFacts,
                       {std::to_string(size.Width), std::to_string(size.Height),
                        std::to_string(counting), std::to_string(all)}));
  if (session.MarksRefused()) AddLine(text, TextOf(global, *session.MarksRefused()));
  if (session.MarksRefused() && counting < all) {
    AddLine(text, TextOf(global, ToolText::kPhotoByHand));
  }
  for (NamedText warning : session.MarkWarnings()) {
    if (warning.Name == kMarksMissing) {
      if (counting == all || session.MarksRefused()) continue;
      warning.Values = {std::to_string(all - counting)};
    }
    AddLine(text, TextOf(global, warning));
  }
  return text;
}

std::string TextOfHandle(const LSSglobal& global, const PhotoSession& session) {
  const std::optional<PlacedHandle> selected = session.Selected();
  if (!selected) return {};
  const PhotoHandle& handle = selected->Handle;
  std::string name;
  if (handle.Kind == PhotoHandleKind::kMark) {
    constexpr std::array kTexts{ToolText::kPhotoMarkExpected, ToolText::kPhotoMarkFound,
                                ToolText::kPhotoMarkByHand};
    name = Filled(global, kTexts.at(static_cast<std::size_t>(selected->State)),
                  {std::to_string(handle.Index % kMarkColumns + 1),
                   std::to_string(handle.Index / kMarkColumns + 1)});
  } else if (handle.Kind == PhotoHandleKind::kCorner) {
    name = TextOf(global, kCornerTexts.at(handle.Index));
  } else {
    name = Filled(global, ToolText::kPhotoLinePoint,
                  {std::to_string(handle.Line + 1), std::to_string(handle.Index + 1)});
  }
  return Filled(global, ToolText::kPhotoHandleAt,
                {name, Figure(selected->At.X, 2), Figure(selected->At.Y, 2)});
}

std::string TextOfResult(const LSSglobal& global, const PhotoSession& session) {
  if (!session.HasPhoto()) return {};
  if (!session.Report()) return TextOf(global, session.FitRefused());
  const FitResult& chosen = *session.Chosen();
  std::string text;
  if (!chosen.Note.Name.empty()) AddLine(text, TextOf(global, chosen.Note));
  for (const NamedText& warning : session.Report()->Warnings) {
    const bool said = warning.Name == kPictureWide &&
                      std::ranges::count(session.MarkWarnings(), kPictureFilled, &NamedText::Name);
    if (!said) AddLine(text, TextOf(global, warning));
  }
  if (const std::optional<double> lens = session.Report()->LensTerm) {
    AddLine(text, Filled(global, ToolText::kPhotoLensKnown, {Figure(*lens, 4)}));
  }
  AddLine(text, WorstMarksText(global, *session.Report()));
  AddLine(text, Filled(global,
                       global.PanelReported ? ToolText::kPhotoPanel : ToolText::kPhotoPanelAssumed,
                       {std::to_string(global.Panel.Width), std::to_string(global.Panel.Height)}));
  return text;
}

std::vector<PhotoResultRow> ResultRows(const LSSglobal& global, const PhotoSession& session) {
  std::vector<PhotoResultRow> rows;
  if (!session.Report()) return rows;
  for (const FitResult& result : session.Report()->Results) {
    rows.push_back({PlainCaption(global, RowOfScreenType(result.ScreenType).caption),
                    EdgesText(global, result.Before.Edges, result.PixelsBefore),
                    EdgesText(global, result.After.Edges, result.PixelsAfter),
                    Filled(global, ToolText::kPhotoGridOff,
                           {Figure(result.Before.Grid, 2), Figure(result.After.Grid, 2)})});
  }
  return rows;
}

}  // namespace warpline
