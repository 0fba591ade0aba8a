#include <windows.h>

// Part of every program for Windows: runs before main and before anything can load a library.

namespace {

// Libraries that are loaded by name alone come from the system's folder or the program's own, never
// from the current folder or from the search path.
[[gnu::constructor]] void RestrictLibrarySearch() {
  SetDllDirectoryW(L"");
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
}

}  // namespace
