#include <windows.h>

#include <string>

// A library that somebody puts beside a program in the name of the system's. It leaves a file of
// its own name and ".loaded" behind, so that a test sees whether it was taken.

extern "C" BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  std::wstring name(MAX_PATH, L'\0');
  name.resize(::GetModuleFileNameW(self, name.data(), MAX_PATH));
  name += L".loaded";
  ::CloseHandle(::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  return TRUE;
}
