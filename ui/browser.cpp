#include "ui/browser.h"

#include <wx/filename.h>
#include <wx/filesys.h>
#include <wx/log.h>
#include <wx/utils.h>

#include "ui/wx_text.h"

namespace warpline {

// The toolkit would tell of a failure itself, in its own words.
bool OpenInBrowser(const std::filesystem::path& page) {
  const wxLogNull silent;
  return wxLaunchDefaultBrowser(wxFileSystem::FileNameToURL(wxFileName(WxPath(page))));
}

}  // namespace warpline
