#pragma once

#include <gtest/gtest.h>

#include "files/LSSfile.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace warpline {

// The file layer over recorded messages and a folder of its own.
struct FileRig : Recorded {
  FileRig() { ResetModel(global); }

  LSSfile files{messages};
  TempFolder temp;
};

}  // namespace warpline
