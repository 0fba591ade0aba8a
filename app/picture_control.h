#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/engine.h"
#include "app/main_controller.h"
#include "picture/picture.h"

// What the test picture on the projector does with its keys, and what it says over the picture,
// without a window. It moves the main window's sliders, so what is released is sent in Real Time.

namespace warpline {

// A display as the picture sees it.
struct PictureDisplay {
  PanelSize Pixels;
  int Scale = 100;  // per cent; at another one no pixel of the picture is one of the display's

  bool operator==(const PictureDisplay&) const = default;
};

// What stands over the picture.
struct PictureOverlay {
  std::string heading;
  std::string line;                // the largest
  std::vector<std::string> notes;  // one a line

  bool operator==(const PictureOverlay&) const = default;
};

enum class OverlayPlace { kMiddle, kTopLeft, kTopRight, kBottomRight, kBottomLeft };
inline constexpr int kOverlayPlaceCount = 5;

// How long the overlay stays after the last key, and how long it takes to fade.
inline constexpr std::chrono::seconds kOverlayStay{2};
inline constexpr std::chrono::milliseconds kOverlayFade{400};

class PictureControl {
 public:
  enum class Choice { kTaken, kRefused, kFileWanted };

  using Time = std::chrono::steady_clock::time_point;
  using Clock = std::function<Time()>;

  // Engine and controller must outlive this object. run does a command of the main window by its
  // product name.
  PictureControl(const Engine& engine, MainController& controller,
                 std::function<void(std::string_view)> run,
                 Clock clock = std::chrono::steady_clock::now);

  // The picture is put on a display, or the display has changed.
  void Begin(PictureDisplay display);

  // The picture chosen, in the display's pixels.
  RgbImage Picture() const;

  // Chooses by the key's number, 1 and up; the last one is the user's own picture, for which a file
  // is wanted at first and when it is chosen once more. Refused, and said so in the overlay, is one
  // that needs pixel for pixel on a display that does not show it so, or a number without one.
  Choice ChoosePicture(int number);

  // Chooses the picture of marks.
  void ChooseMarks();

  // The user's own picture becomes that of a PNG or JPEG file, and is chosen. False, and a message,
  // when it cannot be read.
  bool TakeOwnPicture(const std::filesystem::path& file);

  // A key went down that moves the slider of the present row, by steps and by large steps.
  void Step(int steps, int large_steps);

  // It went up; key_code and shift_alone as the main controller takes them. Code 0: a page key.
  void Release(int key_code, bool shift_alone);

  // The next row that can be moved, or the group 0..4.
  void NextRow();
  void SelectGroup(int group);
  int Row() const { return row_; }

  void Undo();
  void Redo();

  // Asks first; Confirm stores when it was asked. Whatever else is done takes the question back.
  void AskToStore();
  void Confirm();

  // Shows all keys, or hides them.
  void ToggleKeys();

  // The overlay goes to the next of its places.
  void MoveOverlay();
  OverlayPlace Place() const { return place_; }

  // Takes the question back. False when there was none: the picture ends.
  bool Escape();

  // What the overlay says, and how much of it shows: 0 nothing, 1 all.
  PictureOverlay Overlay() const;
  double Opacity() const;

 private:
  enum class Page { kStart, kRow, kPicture, kRefused, kKeys, kStore };

  void Show(Page page);
  void KeepRow();
  bool CanShow(std::size_t picture) const;
  PictureOverlay RowOverlay() const;
  PictureOverlay PicturesOverlay() const;
  void AddDisplayNotes(std::vector<std::string>& notes) const;
  void AddProjectorNotes(std::vector<std::string>& notes) const;

  const Engine& engine_;
  MainController& controller_;
  std::function<void(std::string_view)> run_;
  Clock clock_;
  PictureDisplay display_;
  OverlayPlace place_ = OverlayPlace::kMiddle;
  Page page_ = Page::kStart;
  Time shown_;  // at the last key
  std::size_t picture_ = 0;
  std::size_t wanted_ = 0;  // that was asked for last
  RgbImage own_;            // of no size until there is one
  int row_ = 0;
};

}  // namespace warpline
