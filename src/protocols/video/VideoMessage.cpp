#include "protocols/video/VideoMessage.h"

#include <array>
#include <cstring>

namespace orbel {

namespace {
using Header = std::array<std::uint32_t, 3>; // kind, width, height

QByteArray bytesOf(const Header& header) {
  return QByteArray(reinterpret_cast<const char*>(header.data()), sizeof(header));
}

bool isGood(const Header& header) {
  const auto [kind, width, height] = header;
  if (kind == static_cast<std::uint32_t>(VideoMessage::Kind::playedToEnd)) return width == 0 && height == 0;
  return kind == static_cast<std::uint32_t>(VideoMessage::Kind::frame) && width > 0 && height > 0 &&
         width <= VideoMessage::kLargestSide && height <= VideoMessage::kLargestSide;
}
} // namespace

QByteArray VideoMessage::playedToEndBytes() {
  return bytesOf({static_cast<std::uint32_t>(Kind::playedToEnd), 0, 0});
}

QByteArray VideoMessage::frameHeader(std::uint32_t width, std::uint32_t height) {
  return bytesOf({static_cast<std::uint32_t>(Kind::frame), width, height});
}

std::optional<VideoMessage> VideoMessageReader::next() {
  Header header;
  if (m_broken || m_bytes.size() < static_cast<qsizetype>(sizeof(header))) return std::nullopt;
  std::memcpy(header.data(), m_bytes.constData(), sizeof(header));
  if (!isGood(header)) {
    m_broken = true;
    m_bytes.clear();
    return std::nullopt;
  }
  const auto [kind, width, height] = header;
  const auto pixelBytes = static_cast<qsizetype>(width) * height * 4;
  if (m_bytes.size() < static_cast<qsizetype>(sizeof(header)) + pixelBytes) return std::nullopt;
  VideoMessage message{static_cast<VideoMessage::Kind>(kind), {}};
  if (message.kind == VideoMessage::Kind::frame) {
    message.frame = Bitmap(static_cast<int>(width), static_cast<int>(height));
    std::memcpy(message.frame.pixels.data(), m_bytes.constData() + sizeof(header),
                static_cast<std::size_t>(pixelBytes));
  }
  m_bytes.remove(0, static_cast<qsizetype>(sizeof(header)) + pixelBytes);
  return message;
}

} // namespace orbel
