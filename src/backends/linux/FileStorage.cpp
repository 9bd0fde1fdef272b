#include "backends/linux/FileStorage.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace orbel::linux {

namespace {

constexpr int kMostLinks = 40; // what the kernel follows

class Descriptor {
public:
  explicit Descriptor(int number) : m_number(number) {}
  ~Descriptor() {
    if (m_number >= 0) ::close(m_number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const { return m_number; }
  bool isOpen() const { return m_number >= 0; }
  // False when the last bytes could not be stored, which a full network disk reports only now.
  bool close() { return ::close(std::exchange(m_number, -1)) == 0; }

private:
  int m_number;
};

bool writeAll(int descriptor, const PropertyList::Data& bytes) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count = ::write(descriptor, bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return true;
}

// A new file beside the one whose name it is to take, with its bytes on the disk. Whatever stands under its
// own name at the end is removed.
class TemporaryFile {
public:
  explicit TemporaryFile(const std::string& path)
      : m_path(path), m_name(FileStorage::folderOf(path) + "/." + FileStorage::nameOf(path) + ".XXXXXX") {}
  ~TemporaryFile() {
    if (m_exists) ::unlink(m_name.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Once, before anything else. Fails also when the file of that name may not be written: a rename would get
  // past a write protection that the user has set on the file alone.
  Result<> write(const PropertyList::Data& bytes) {
    if (::access(m_path.c_str(), W_OK) != 0 && errno != ENOENT) return Failure{std::strerror(errno)};
    Descriptor file(::mkostemp(m_name.data(), O_CLOEXEC)); // mode 0600
    m_exists = file.isOpen();
    struct stat status {};
    if (!m_exists || !writeAll(file.number(), bytes) || ::fsync(file.number()) != 0 ||
        ::fstat(file.number(), &status) != 0 || !file.close())
      return Failure{std::strerror(errno)};
    m_number = status.st_ino;
    return {};
  }

  const std::string& name() const { return m_name; }
  ino_t number() const { return m_number; }

  Result<> takeName() {
    if (::rename(m_name.c_str(), m_path.c_str()) != 0) return Failure{std::strerror(errno)};
    nameIsTaken();
    return {};
  }
  void nameIsTaken() {
    m_exists = false;
    syncFolder();
  }
  void syncFolder() const {
    const Descriptor folder(
        ::open(FileStorage::folderOf(m_path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) ::fsync(folder.number()); // some file systems cannot; the file itself is safe
  }

private:
  std::string m_path, m_name;
  ino_t m_number = 0;
  bool m_exists = false;
};

// 0 where there is none.
ino_t numberOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

// Another program's file stands under the temporary name, ours under the path. The other one gets its name
// back; where one more has taken that name meanwhile, it is the newer one and keeps it.
void giveBack(const TemporaryFile& ours, const std::string& path) {
  ino_t put = ours.number(); // what stands at the path by our doing
  while (true) {
    const ino_t held = numberOf(ours.name());
    if (::renameat2(AT_FDCWD, ours.name().c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0) return;
    if (numberOf(ours.name()) == put) return;
    put = held;
  }
}

} // namespace

FileStorage::Content FileStorage::read(const std::string& path, std::size_t limit) {
  // Non-blocking, because a pipe without a writer would hold the open() up for ever.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.isOpen()) {
    if (errno == ENOENT || errno == ENOTDIR) return {Outcome::missing, {}, {}};
    return {Outcome::refused, {}, std::strerror(errno)};
  }
  struct stat status {};
  if (fstat(file.number(), &status) != 0) return {Outcome::refused, {}, std::strerror(errno)};
  if (!S_ISREG(status.st_mode)) return {Outcome::refused, {}, "it is not an ordinary file"};

  Content content{Outcome::read, {}, {}};
  std::vector<std::byte> chunk(64 * 1024);
  while (true) {
    const ssize_t count = ::read(file.number(), chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return {Outcome::refused, {}, std::strerror(errno)};
    if (count == 0) return content;
    content.bytes.insert(content.bytes.end(), chunk.begin(), chunk.begin() + count);
    if (content.bytes.size() > limit) {
      return {Outcome::tooLarge, {}, "it is larger than " + std::to_string(limit) + " bytes"};
    }
  }
}

Result<> FileStorage::replace(const std::string& path, const PropertyList::Data& bytes) {
  TemporaryFile file(path);
  if (auto written = file.write(bytes); !written) return written;
  return file.takeName();
}

Result<FileStorage::Replacement>
FileStorage::replaceIfStill(const std::string& path, const std::optional<PropertyList::Data>& expected,
                            const PropertyList::Data& bytes) {
  TemporaryFile file(path);
  if (const auto written = file.write(bytes); !written) return written.failure();
  // One step, so that no other program's file can appear between a look and the replacement.
  const unsigned how = expected ? RENAME_EXCHANGE : RENAME_NOREPLACE;
  if (::renameat2(AT_FDCWD, file.name().c_str(), AT_FDCWD, path.c_str(), how) == 0) {
    if (!expected) {
      file.nameIsTaken();
      return Replacement::done;
    }
    const Content earlier = read(file.name(), expected->size());
    if (earlier.outcome == Outcome::read && earlier.bytes == *expected) {
      file.syncFolder();
      return Replacement::done; // what has the temporary name now is removed with it
    }
    giveBack(file, path);
    return Replacement::overtaken;
  }
  if (errno == (expected ? ENOENT : EEXIST)) return Replacement::overtaken;
  const bool cannotExchange = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
  if (!cannotExchange) return Failure{std::strerror(errno)};
  if (const auto taken = file.takeName(); !taken) return taken.failure();
  return Replacement::done;
}

std::string FileStorage::followLinks(const std::string& path) {
  std::string current = path;
  for (int i = 0; i < kMostLinks; ++i) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(current.c_str(), target.data(), target.size());
    if (length <= 0) return current;
    const std::string next(target.data(), static_cast<std::size_t>(length));
    current = next.front() == '/' ? next : folderOf(current) + "/" + next;
  }
  return path; // links in a circle: opening it fails
}

std::string FileStorage::withoutLinks(const std::string& path) {
  struct Free {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, Free> real(::realpath(path.c_str(), nullptr));
  return real ? std::string(real.get()) : path;
}

Result<> FileStorage::makeFolder(const std::string& folder) {
  if (::mkdir(folder.c_str(), 0700) == 0) return {};
  if (errno == ENOENT && folder != "/" && folder != ".") {
    if (auto above = makeFolder(folderOf(folder)); !above) return above;
    if (::mkdir(folder.c_str(), 0700) == 0) return {};
  }
  const int error = errno;
  struct stat status {};
  if (::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return {};
  return Failure{std::strerror(error)};
}

std::string FileStorage::folderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string FileStorage::nameOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace orbel::linux
