#pragma once

#include <wx/dynlib.h>

// Functions of GTK, which every window of the program stands on and wxWidgets hides. They are asked
// of the library that is loaded already, so that building needs none of its development files.

namespace warpline {

// Null when there is no such function. Function is its C type; objects of GTK are void*.
template <typename Function>
Function* ToolkitFunction(const char* name) {
  static wxDynamicLibrary library("libgtk-3.so.0", wxDL_VERBATIM | wxDL_QUIET | wxDL_NOW);
  return library.IsLoaded()
             ? reinterpret_cast<Function*>(library.RawGetSymbol(library.GetLibHandle(), name))
             : nullptr;
}

}  // namespace warpline
