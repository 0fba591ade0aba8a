#include "toolkit/native/display_sleep.h"

#include <wx/utils.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "toolkit/native/toolkit_symbols_posix.h"

// The desktop is asked over the session's message bus, by the library that GTK itself does so with.
// Nothing waits for its answers: where there is no bus, or nobody who listens, nothing happens.

namespace warpline {
namespace {

constexpr int kSessionBus = 2;
constexpr const char* kService = "org.freedesktop.ScreenSaver";
constexpr const char* kObject = "/org/freedesktop/ScreenSaver";
constexpr int kUsualTimeOut = -1;

using Answer = void(void* source, void* result, void* data);

// Without one the library would start one.
bool SessionBusRuns() {
  wxString folder;
  std::error_code ignored;
  if (wxGetEnv("DBUS_SESSION_BUS_ADDRESS", nullptr)) return true;
  return wxGetEnv("XDG_RUNTIME_DIR", &folder) &&
         std::filesystem::exists(folder.utf8_string() + "/bus", ignored);
}

void Call(void* bus, const char* method, void* arguments, Answer* answer, void* data) {
  using Caller = void(void*, const char*, const char*, const char*, const char*, void*, const void*,
                      unsigned, int, void*, Answer*, void*);
  auto* call = ToolkitFunction<Caller>("g_dbus_connection_call");
  if (call == nullptr) return;
  call(bus, kService, kObject, kService, method, arguments, nullptr, 0, kUsualTimeOut, nullptr,
       answer, data);
}

template <typename... Values>
void* Arguments(const char* types, Values... values) {
  auto* make = ToolkitFunction<void*(const char*, ...)>("g_variant_new");
  return make == nullptr ? nullptr : make(types, values...);
}

}  // namespace

struct DisplaysAwake::Request {
  std::string reason;
  bool wanted = true;
  void* bus = nullptr;  // stays open while the program runs
  unsigned cookie = 0;  // 0: none yet

  using Shared = std::shared_ptr<Request>;

  static Shared Taken(void* data) {
    const std::unique_ptr<Shared> holder(static_cast<Shared*>(data));
    return *holder;
  }

  void End() const {
    if (bus != nullptr && cookie != 0) {
      Call(bus, "UnInhibit", Arguments("(u)", cookie), nullptr, nullptr);
    }
  }

  static void OnBus(void*, void* result, void* data) {
    const Shared request = Taken(data);
    auto* finish = ToolkitFunction<void*(void*, void**)>("g_bus_get_finish");
    request->bus = finish == nullptr ? nullptr : finish(result, nullptr);
    if (request->bus == nullptr || !request->wanted) return;
    // Or the end of the bus would be that of the program.
    auto* live_on = ToolkitFunction<void(void*, int)>("g_dbus_connection_set_exit_on_close");
    if (live_on != nullptr) live_on(request->bus, 0);
    Call(request->bus, "Inhibit", Arguments("(ss)", "WarplineTool", request->reason.c_str()),
         &OnInhibited, std::make_unique<Shared>(request).release());
  }

  static void OnInhibited(void* bus, void* result, void* data) {
    const Shared request = Taken(data);
    auto* finish = ToolkitFunction<void*(void*, void*, void**)>("g_dbus_connection_call_finish");
    auto* read = ToolkitFunction<void(void*, const char*, ...)>("g_variant_get");
    auto* type_of = ToolkitFunction<const char*(void*)>("g_variant_get_type_string");
    auto* forget = ToolkitFunction<void(void*)>("g_variant_unref");
    if (finish == nullptr || read == nullptr || type_of == nullptr || forget == nullptr) return;
    void* reply = finish(bus, result, nullptr);
    if (reply == nullptr) return;
    if (type_of(reply) == std::string("(u)")) read(reply, "(u)", &request->cookie);
    forget(reply);
    if (!request->wanted) request->End();
  }
};

DisplaysAwake::DisplaysAwake(const char* reason) : request_(std::make_shared<Request>()) {
  request_->reason = reason;
  auto* get = ToolkitFunction<void(int, void*, Answer*, void*)>("g_bus_get");
  if (get != nullptr && SessionBusRuns()) {
    get(kSessionBus, nullptr, &Request::OnBus,
        std::make_unique<Request::Shared>(request_).release());
  }
}

DisplaysAwake::~DisplaysAwake() {
  request_->wanted = false;
  request_->End();
}

}  // namespace warpline
