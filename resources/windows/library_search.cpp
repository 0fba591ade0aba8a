#include <windows.h>

// Part of every program for Windows: runs before main and before anything can load a library.

namespace {

// Libraries that are loaded by name alone come from the system's folder: whoever puts one beside
// the program does not get it loaded. The maker's are loaded by their full path, with their own
// folder for what they need themselves. Before all other constructors, for any may load a library.
[[gnu::constructor(101)]] void RestrictLibrarySearch() {
  SetDllDirectoryW(L"");
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  // The system's own libraries need not heed that when they load what they delayed; one that is
  // there already is not searched for.
  LoadLibraryExW(L"msimg32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

}  // namespace
