// What the video program writes to its standard output, and what it reads from its standard input. Both ends
// run on one machine from one build, so numbers are in native byte order.
#pragma once

#include "scene/Bitmap.h"

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <span>

namespace orbel {

// One byte each, on standard input. The end of the input ends the program.
enum class VideoCommand : char {
  seekToStart = 's',
  play = 'p',
  // The latest frame has been taken. The next is sent only then, and those that came meanwhile but for the
  // last are left out: a busy reader sees fewer frames, not old ones.
  frameTaken = 'f',
};

struct VideoMessage {
  enum class Kind : std::uint32_t { frame = 1, playedToEnd = 2 };

  Kind kind = Kind::playedToEnd;
  Bitmap frame; // premultiplied ARGB; empty but for a frame

  // Larger frames are no frames of ours.
  static constexpr std::uint32_t kLargestSide = 4096; // pixels

  static QByteArray playedToEndBytes();
  // The pixels of a frame follow its header, row by row without padding.
  static QByteArray frameHeader(std::uint32_t width, std::uint32_t height);
};

// Puts messages together from bytes that come in pieces of any size.
class VideoMessageReader {
public:
  void add(const QByteArray& bytes) { m_bytes.append(bytes); }
  // The next whole message, or nothing yet.
  std::optional<VideoMessage> next();
  // What came was none of ours; nothing can be read from then on.
  bool isBroken() const { return m_broken; }

private:
  QByteArray m_bytes;
  bool m_broken = false;
};

} // namespace orbel
