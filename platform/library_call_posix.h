#pragma once

// What a declaration must say on this system to cross a shared library's border.

// Calling convention of the projector maker's libraries.
#define WARPLINE_LIBRARY_CALL
// Makes a function of a shared library visible to programs that load it.
#define WARPLINE_EXPORT __attribute__((visibility("default")))
