#pragma once

#include <functional>

#include "core/correction.h"
#include "ui/LSSmain_parts.h"

class wxTopLevelWindow;

// The dialogs that the main window opens, each modal to it. The two that choose a connection write
// the settings file when they were confirmed, the owner's position included.

namespace warpline {

// applied is called whenever the live curve of the axis has changed, opening with the editor before
// it is shown.
void OpenCurveEditor(const MainParts& parts, wxTopLevelWindow* owner, Axis axis,
                     const std::function<void(bool finished)>& applied,
                     const std::function<void(wxTopLevelWindow&)>& opening);

void OpenCommunicationSettings(const MainParts& parts, wxTopLevelWindow* owner);
void OpenProjectorSearch(const MainParts& parts, wxTopLevelWindow* owner);

// Asks for a note and a file, writes the setup sheet and shows it in the browser. changed: the
// correction differs from its file.
void OpenSetupSheet(const MainParts& parts, wxTopLevelWindow* owner, bool changed);

// The check begins with the dialog.
void OpenConnectionCheck(const MainParts& parts, wxTopLevelWindow* owner);

// Opens when the mode in force could be read.
void OpenProjectorModes(const MainParts& parts, wxTopLevelWindow* owner);

}  // namespace warpline
