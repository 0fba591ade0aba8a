#include <wx/log.h>
#include <wx/utils.h>

#include "ui/read_me.h"
#include "ui/wx_text.h"

namespace warpline {

bool OpenInTextEditor(const std::filesystem::path& file) {
  const wxLogNull no_boxes_of_the_toolkit;
  return wxLaunchDefaultApplication(WxPath(file));
}

}  // namespace warpline
