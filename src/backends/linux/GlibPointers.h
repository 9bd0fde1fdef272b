// Owning pointers to GLib's and GIO's objects and texts, for the .cpp files of this folder alone: the other
// headers here name no GLib type, so that whoever includes them needs no GLib.
#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>

namespace orbel::linux {

struct GlibFree {
  void operator()(void* memory) const { g_free(memory); }
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};

struct GlibUnref {
  void operator()(void* object) const { g_object_unref(object); }
};

template <typename T>
using GObjectPointer = std::unique_ptr<T, GlibUnref>;
using GlibText = std::unique_ptr<char, GlibFree>;
using GlibError = std::unique_ptr<GError, GlibFree>;
using GlibKeyFile = std::unique_ptr<GKeyFile, GlibFree>;

// The text, freeing GLib's copy; "" for none.
inline std::string takeText(char* text) {
  const GlibText owned(text);
  return owned ? std::string(owned.get()) : std::string();
}

} // namespace orbel::linux
