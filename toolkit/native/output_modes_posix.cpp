#include "toolkit/native/output_modes_posix.h"

#include <wx/utils.h>

#include <cstdint>
#include <list>
#include <string_view>

#include "toolkit/native/toolkit_symbols_posix.h"

// The compositor is asked once more, past GTK, on a queue of our own: GTK knows whole scales alone,
// and rounds up. The functions are those of Wayland's client library, which GTK stands on.

namespace warpline {
namespace {

// Of the protocol's core.
constexpr std::uint32_t kGetRegistry = 1;
constexpr std::uint32_t kRegistryVersion = 1;
constexpr std::uint32_t kBind = 0;
constexpr std::uint32_t kOutputVersion = 2;
constexpr std::uint32_t kCurrentMode = 1;
constexpr std::int32_t kQuarterTurn = 1;  // the lowest bit of an output's transform

using Listener = void (*)();

// Of the library; the interfaces are data, of which the address alone counts.
struct Client {
  void* (*create_queue)(void*) = ToolkitFunction<void*(void*)>("wl_display_create_queue");
  int (*round_trip)(void*,
                    void*) = ToolkitFunction<int(void*, void*)>("wl_display_roundtrip_queue");
  void* (*wrap)(void*) = ToolkitFunction<void*(void*)>("wl_proxy_create_wrapper");
  void (*unwrap)(void*) = ToolkitFunction<void(void*)>("wl_proxy_wrapper_destroy");
  void (*set_queue)(void*, void*) = ToolkitFunction<void(void*, void*)>("wl_proxy_set_queue");
  void (*destroy)(void*) = ToolkitFunction<void(void*)>("wl_proxy_destroy");
  int (*listen)(void*, const Listener*, void*) =
      ToolkitFunction<int(void*, const Listener*, void*)>("wl_proxy_add_listener");
  void* (*construct)(void*, std::uint32_t, Listener, std::uint32_t, ...) =
      ToolkitFunction<void*(void*, std::uint32_t, Listener, std::uint32_t, ...)>(
          "wl_proxy_marshal_constructor_versioned");
  Listener registry_interface = ToolkitFunction<void()>("wl_registry_interface");
  Listener output_interface = ToolkitFunction<void()>("wl_output_interface");

  bool IsWhole() const {
    return create_queue != nullptr && round_trip != nullptr && wrap != nullptr &&
           unwrap != nullptr && set_queue != nullptr && destroy != nullptr && listen != nullptr &&
           construct != nullptr && registry_interface != nullptr && output_interface != nullptr;
  }
};

struct Output {
  std::uint32_t name = 0;
  void* proxy = nullptr;
  wxSize pixels;
  bool turned = false;
};

// The outputs as they come and go. It lives until the program ends, for the protocol knows no end
// of such an object.
class Outputs {
 public:
  explicit Outputs(void* display) : display_(display) {
    if (!client_.IsWhole()) return;
    queue_ = client_.create_queue(display);
    void* wrapper = client_.wrap(display);
    client_.set_queue(wrapper, queue_);
    void* registry = client_.construct(wrapper, kGetRegistry, client_.registry_interface,
                                       kRegistryVersion, nullptr);
    client_.unwrap(wrapper);
    client_.listen(registry, kRegistryListener, this);
  }

  // Two rounds: what there is, and what that tells of itself.
  std::vector<wxSize> Pixels() {
    if (queue_ == nullptr) return {};
    client_.round_trip(display_, queue_);
    client_.round_trip(display_, queue_);
    std::vector<wxSize> pixels;
    for (const Output& output : outputs_) {
      const wxSize size = output.pixels;
      pixels.push_back(output.turned ? wxSize(size.y, size.x) : size);
    }
    return pixels;
  }

 private:
  static void OnGlobal(void* data, void* registry, std::uint32_t name, const char* interface,
                       std::uint32_t version) {
    auto& self = *static_cast<Outputs*>(data);
    if (std::string_view(interface) != "wl_output" || version < kOutputVersion) return;
    Output& output = self.outputs_.emplace_back();
    output.name = name;
    output.proxy = self.client_.construct(registry, kBind, self.client_.output_interface,
                                          kOutputVersion, name, interface, kOutputVersion, nullptr);
    self.client_.listen(output.proxy, kOutputListener, &output);
  }
  static void OnGlobalRemoved(void* data, void*, std::uint32_t name) {
    auto& self = *static_cast<Outputs*>(data);
    self.outputs_.remove_if([&](const Output& output) {
      if (output.name != name) return false;
      self.client_.destroy(output.proxy);
      return true;
    });
  }
  static void OnGeometry(void* data, void*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                         std::int32_t, const char*, const char*, std::int32_t transform) {
    static_cast<Output*>(data)->turned = (transform & kQuarterTurn) != 0;
  }
  static void OnMode(void* data, void*, std::uint32_t flags, std::int32_t width,
                     std::int32_t height, std::int32_t) {
    if ((flags & kCurrentMode) != 0) static_cast<Output*>(data)->pixels = {width, height};
  }
  static void OnDone(void*, void*) {}
  static void OnScale(void*, void*, std::int32_t) {}

  static inline const Listener kRegistryListener[] = {reinterpret_cast<Listener>(OnGlobal),
                                                      reinterpret_cast<Listener>(OnGlobalRemoved)};
  static inline const Listener kOutputListener[] = {
      reinterpret_cast<Listener>(OnGeometry), reinterpret_cast<Listener>(OnMode),
      reinterpret_cast<Listener>(OnDone), reinterpret_cast<Listener>(OnScale)};

  Client client_;
  void* display_;
  void* queue_ = nullptr;
  std::list<Output> outputs_;
};

}  // namespace

std::vector<wxSize> WaylandOutputPixels() {
  const wxDisplayInfo info = wxGetDisplayInfo();
  if (info.type != wxDisplayWayland) return {};
  static Outputs outputs(info.dpy);
  return outputs.Pixels();
}

}  // namespace warpline
