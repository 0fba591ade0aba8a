#include <algorithm>
#include <array>

#include "toolkit/layout.h"
#include "toolkit/native/first_paint.h"
#include "toolkit/window_place.h"
#include "ui/LSSmain.h"
#include "ui/LSSmain_menu.h"
#include "ui/LSSview.h"
#include "ui/wx_text.h"

// The main window's preview: when it is there, how large and where.

namespace warpline {
namespace {

struct PreviewSize {
  std::string_view item;
  int width;  // DIP
  int height;
};

// From the largest to the smallest.
constexpr std::array<PreviewSize, 3> kPreviewSizes{{
    {"menu_disp_magnification", 960, 720},
    {"menu_disp_regular", 640, 480},
    {"menu_disp_small", 400, 300},
}};

}  // namespace

void LSSmain::CreatePreviewWindow() {
  view_ = new LSSview(this, CaptionOf(parts_.engine.global, kMsgTestPattern),
                      [this] { controller_.SetTestPattern(false); });
  view_->SetPosition(GetPosition());  // that screen's scale counts for the size
  SetPreviewSize("menu_disp_regular");
}

// A window that has become too large for its place goes where there is room for it.
void LSSmain::SetPreviewSize(std::string_view item) {
  const auto* size = std::find_if(kPreviewSizes.begin(), kPreviewSizes.end(),
                                  [item](const PreviewSize& each) { return each.item == item; });
  view_->SetPictureSize(wxSize(size->width, size->height));
  GetMenuBar()->Check(MenuId(item), true);
  if (!view_->IsShown()) return;
  const wxRect own = GetScreenRect();
  const wxRect screen = UsableScreen(own.GetPosition());
  const wxRect there = view_->GetRect();
  if (screen.Contains(there) && !there.Intersects(own)) return;
  const auto free = FreePlace(screen, std::span(&own, 1), there.GetSize(), Gap(this));
  view_->SetPosition(free ? *free : HeldInside(screen, there.GetPosition(), there.GetSize()));
}

// Shown while Test Pattern is checked and the main window is on the screen.
void LSSmain::ShowPreview() {
  if (view_ == nullptr) return;
  const bool wanted = IsShown() && !IsIconized() && parts_.engine.global.Settings.TestPattern == 1;
  if (wanted && !view_->IsShown()) {
    PlacePreviewWindow();
    PaintOnce(*view_);
    view_->ShowWithoutActivating();
  } else if (!wanted) {
    view_->Hide();
  }
  RedrawPreview();
}

void LSSmain::RedrawPreview() {
  if (view_ != nullptr && view_->IsShown()) view_->SetDrawing(controller_.Preview());
}

// The first time where it was in the last run, if it covers nothing there, or beside the main
// window; later where the user has put it.
void LSSmain::PlacePreviewWindow() {
  if (preview_placed_) return;
  preview_placed_ = true;
  const wxRect own = GetScreenRect();
  const bool placed = KeepPlace(*view_);
  CheckPreviewSize();
  if (placed && !view_->GetRect().Intersects(own)) return;
  if (PlacePreviewClearOf(std::span(&own, 1))) return;
  view_->SetPosition(LeastCoveringCorner(UsableScreen(own.GetPosition()), own, view_->GetSize()));
}

// As large as it is or smaller. Where there is no room it is left as small as it can become. On a
// screen of another scale than the one that it comes from, it has another size.
bool LSSmain::PlacePreviewClearOf(std::span<const wxRect> others) {
  const wxRect screen = UsableScreen(GetPosition());
  const wxRect there = view_->GetRect();
  if (!screen.Contains(there.GetPosition() + there.GetSize() / 2)) {
    view_->SetPosition(screen.GetPosition());
  }
  const auto place = [&] {
    const auto free = FreePlace(screen, others, view_->GetSize(), Gap(this));
    if (free) view_->SetPosition(*free);
    return free.has_value();
  };
  if (place()) return true;
  for (const PreviewSize& size : kPreviewSizes) {
    if (view_->ToDIP(view_->GetClientSize()).x <= size.width) continue;
    SetPreviewSize(size.item);
    if (place()) return true;
  }
  return false;
}

// The menu item of the size that the window has, if there is one.
void LSSmain::CheckPreviewSize() {
  const wxSize now = view_->ToDIP(view_->GetClientSize());
  for (const PreviewSize& size : kPreviewSizes) {
    if (now == wxSize(size.width, size.height)) GetMenuBar()->Check(MenuId(size.item), true);
  }
}

// Out of the editor's way, and out of the main window's where both is possible; the editor goes to
// the top of the screen where that makes the room. Where the preview is then.
wxPoint LSSmain::MovePreviewAside(wxTopLevelWindow& editor) {
  const wxRect there = view_->GetRect();
  wxRect taken = editor.GetRect();
  if (!view_->IsShown() || !there.Intersects(taken)) return there.GetPosition();
  const std::array<wxRect, 2> both{taken, GetScreenRect()};
  if (PlacePreviewClearOf(both)) return view_->GetPosition();
  const wxRect screen = UsableScreen(GetPosition());
  for (const int top : {taken.y, screen.y}) {
    taken.y = top;
    PutAt(*view_, there);
    if (!PlacePreviewClearOf(std::span(&taken, 1))) continue;
    editor.SetPosition(taken.GetPosition());
    return view_->GetPosition();
  }
  view_->SetPosition(LeastCoveringCorner(screen, editor.GetRect(), view_->GetSize()));
  return view_->GetPosition();
}

}  // namespace warpline
