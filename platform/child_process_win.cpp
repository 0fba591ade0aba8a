#include <windows.h>

#include <array>
#include <utility>

#include "platform/child_process.h"
#include "platform/wide_text_win.h"

namespace warpline {
namespace {

constexpr DWORD kLookAgainMs = 5;

// The codes of exceptions begin here; no program of ours ends with one by itself.
constexpr DWORD kFirstException = 0xC0000000;

HANDLE HandleOf(std::intptr_t value) {
  return reinterpret_cast<HANDLE>(value);
}

std::intptr_t NumberOf(HANDLE handle) {
  return reinterpret_cast<std::intptr_t>(handle);
}

std::wstring CommandLineOf(const std::filesystem::path& program,
                           const std::vector<std::string>& words) {
  std::wstring line = L"\"" + program.wstring() + L"\"";
  for (const std::string& word : words) {
    const std::wstring wide = WideOf(word);
    const std::size_t last = wide.find_last_not_of(L'\\');
    const std::size_t slashes = wide.size() - (last == wide.npos ? 0 : last + 1);
    line += L" \"" + wide + std::wstring(slashes, L'\\') + L"\"";  // else the quote would be read
  }
  return line;
}

// No box asks the user about a crash; a program that is started takes this over.
class QuietCrashes {
 public:
  QuietCrashes()
      : before_(::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX |
                               SEM_NOOPENFILEERRORBOX)) {}
  ~QuietCrashes() { ::SetErrorMode(before_); }
  QuietCrashes(const QuietCrashes&) = delete;
  QuietCrashes& operator=(const QuietCrashes&) = delete;

 private:
  UINT before_;
};

// The processes of a job end when its last handle is closed, however this program ends; they have
// no console whose Ctrl+C would reach them.
HANDLE MakeJob() {
  const HANDLE job = ::CreateJobObjectW(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  ::SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits));
  return job;
}

bool Create(const std::filesystem::path& program, std::wstring line, HANDLE output,
            PROCESS_INFORMATION& process) {
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = output;
  const QuietCrashes quiet;
  return ::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                          CREATE_NO_WINDOW | CREATE_SUSPENDED, nullptr, nullptr, &start,
                          &process) != FALSE;
}

}  // namespace

ChildProcess::~ChildProcess() {
  if (process_ != kNone) {
    Kill();
    Wait();
  }
  if (output_ != kNone) ::CloseHandle(HandleOf(output_));
  if (group_ != kNone) ::CloseHandle(HandleOf(group_));
}

bool ChildProcess::Start(const std::filesystem::path& program,
                         const std::vector<std::string>& words) {
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (::CreatePipe(&read, &write, nullptr, 0) == FALSE) return false;
  output_ = NumberOf(read);
  ::SetHandleInformation(write, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  PROCESS_INFORMATION process{};
  const bool started = Create(program, CommandLineOf(program, words), write, process);
  ::CloseHandle(write);
  if (!started) return false;
  const HANDLE job = MakeJob();
  ::AssignProcessToJobObject(job, process.hProcess);  // it starts without, where that fails
  group_ = NumberOf(job);
  ::ResumeThread(process.hThread);
  ::CloseHandle(process.hThread);
  process_ = NumberOf(process.hProcess);
  return true;
}

ChildProcess::Read ChildProcess::ReadOutput(std::string& bytes, std::chrono::milliseconds limit) {
  const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(limit.count());
  for (DWORD waiting = 0;; ::Sleep(kLookAgainMs)) {
    if (::PeekNamedPipe(HandleOf(output_), nullptr, 0, nullptr, &waiting, nullptr) == FALSE) {
      return Read::kEnd;
    }
    if (waiting > 0) break;
    if (::GetTickCount64() >= end) return Read::kNothing;
  }
  std::array<char, 4096> buffer{};
  DWORD count = 0;
  if (::ReadFile(HandleOf(output_), buffer.data(), static_cast<DWORD>(buffer.size()), &count,
                 nullptr) == FALSE) {
    return Read::kEnd;
  }
  bytes.append(buffer.data(), count);
  return Read::kBytes;
}

void ChildProcess::Kill() {
  ::TerminateProcess(HandleOf(process_), 1);
}

ProcessEnd ChildProcess::Wait() {
  const HANDLE process = HandleOf(std::exchange(process_, kNone));
  DWORD code = 0;
  ::WaitForSingleObject(process, INFINITE);
  ::GetExitCodeProcess(process, &code);
  ::CloseHandle(process);
  return {code >= kFirstException, code};
}

}  // namespace warpline
