#include "backends/linux/FolderWatch.h"

#include "backends/linux/FileStorage.h"

#include <glib-unix.h>

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace orbel::linux {

namespace {
// Not IN_MODIFY: a writer is read once it has closed the file, not in the middle.
constexpr std::uint32_t kFileEvents =
    IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE | IN_ATTRIB;
constexpr std::uint32_t kEndEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;
} // namespace

struct FolderWatch::State : std::enable_shared_from_this<State> {
  std::string path;
  std::string fileName;
  std::function<void()> block;
  int descriptor = -1;
  GSource* source = nullptr;

  ~State() {
    stop();
    if (descriptor >= 0) close(descriptor);
  }

  void stop() {
    if (!source) return;
    g_source_destroy(source);
    g_source_unref(std::exchange(source, nullptr));
  }

  void readEvents() {
    const auto self = shared_from_this(); // the block may end the watch
    bool concernsFile = false;
    bool hasEnded = false;
    alignas(inotify_event) std::array<char, 4096> buffer;
    ssize_t length = 0;
    while ((length = read(descriptor, buffer.data(), buffer.size())) > 0) {
      for (std::size_t offset = 0; offset < static_cast<std::size_t>(length);) {
        inotify_event event;
        std::memcpy(&event, buffer.data() + offset, sizeof event);
        const char* name = event.len > 0 ? buffer.data() + offset + sizeof event : "";
        // After an overflow anything may have happened.
        concernsFile = concernsFile || fileName == name || (event.mask & IN_Q_OVERFLOW) != 0;
        hasEnded = hasEnded || (event.mask & kEndEvents) != 0;
        offset += sizeof event + event.len;
      }
    }
    if (hasEnded) stop();
    if (concernsFile || hasEnded) block();
  }
};

Result<std::unique_ptr<FolderWatch>> FolderWatch::start(const std::string& path,
                                                        std::function<void()> block) {
  auto state = std::make_shared<State>();
  state->path = path;
  state->fileName = FileStorage::nameOf(path);
  state->block = std::move(block);
  state->descriptor = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (state->descriptor < 0 ||
      inotify_add_watch(state->descriptor, FileStorage::folderOf(path).c_str(),
                        kFileEvents | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR) < 0)
    return Failure{std::strerror(errno)};
  state->source = g_unix_fd_source_new(state->descriptor, G_IO_IN);
  const GUnixFDSourceFunc readable = [](gint, GIOCondition, gpointer data) -> gboolean {
    static_cast<State*>(data)->readEvents();
    return G_SOURCE_CONTINUE;
  };
  // The callback's type depends on the source; GLib takes it in the guise of the general one.
  g_source_set_callback(state->source, G_SOURCE_FUNC(readable), state.get(), nullptr);
  g_source_attach(state->source, nullptr);
  return std::unique_ptr<FolderWatch>(new FolderWatch(std::move(state)));
}

FolderWatch::FolderWatch(std::shared_ptr<State> state) : m_state(std::move(state)) {}

FolderWatch::~FolderWatch() {
  m_state->stop();
}

const std::string& FolderWatch::path() const {
  return m_state->path;
}

bool FolderWatch::isAlive() const {
  return m_state->source != nullptr;
}

} // namespace orbel::linux
