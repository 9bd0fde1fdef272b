// Videos that are over when the test says so.
#pragma once

#include "platform/VideoPlayer.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class FakeVideoPlayers : public VideoPlayers {
public:
  ImagePointer still(const std::string&, Size size) override {
    lastStill = Image::withBitmap(size, Bitmap(2, 2));
    return lastStill;
  }
  Result<std::unique_ptr<VideoPlayer>> load(const std::string& resource, const std::string& extension,
                                            VideoPlayerHandlers newHandlers) override {
    loaded.push_back(resource + "." + extension);
    if (!loadSucceeds) return Failure{"the video " + loaded.back() + " cannot be played"};
    handlers = std::move(newHandlers);
    return std::make_unique<Player>(*this);
  }

  bool loadSucceeds = true;
  ImagePointer lastStill;
  std::vector<std::string> loaded;
  VideoPlayerHandlers handlers; // of the newest player
  int alive = 0;
  std::vector<std::string> happened; // "seekToStart", "play"

private:
  class Player : public VideoPlayer {
  public:
    explicit Player(FakeVideoPlayers& owner) : m_owner(owner) { ++m_owner.alive; }
    ~Player() override { --m_owner.alive; }
    void seekToStart() override { m_owner.happened.emplace_back("seekToStart"); }
    void play() override { m_owner.happened.emplace_back("play"); }

  private:
    FakeVideoPlayers& m_owner;
  };
};

} // namespace orbel
