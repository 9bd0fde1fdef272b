// Videos that are over when the test says so.
#pragma once

#include "platform/VideoPlayer.h"

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class FakeVideoPlayerFactory : public VideoPlayerFactory {
public:
  ImagePointer still(const std::string& resource, Size size) override {
    if (missing.contains(resource)) return nullptr;
    lastStill = Image::withBitmap(size, Bitmap(2, 2));
    return lastStill;
  }
  Result<std::unique_ptr<VideoPlayer>> load(const std::string& resource, const std::string& extension,
                                            VideoPlayerHandlers newHandlers) override {
    loaded.push_back(resource + "." + extension);
    if (!loadSucceeds || missing.contains(resource))
      return Failure{"the video " + loaded.back() + " cannot be played"};
    handlers = std::move(newHandlers);
    return std::make_unique<Player>(*this);
  }

  // What the newest player does while it plays: a frame, and in the end nothing more.
  void playFrame() const {
    if (!m_isPlaying) return;
    const VideoPlayerHandlers called = handlers; // may end the player
    called.frameReady(Image::withBitmap({2, 2}, Bitmap(2, 2)));
  }
  void playToEnd() {
    if (!std::exchange(m_isPlaying, false)) return;
    const VideoPlayerHandlers called = handlers; // may end the player
    called.didPlayToEnd();
  }

  bool loadSucceeds = true;
  std::set<std::string> missing; // resources that can neither be shown nor played
  ImagePointer lastStill;
  std::vector<std::string> loaded;
  VideoPlayerHandlers handlers; // of the newest player
  int alive = 0;
  std::vector<std::string> happened; // "seekToStart", "play"

private:
  class Player : public VideoPlayer {
  public:
    explicit Player(FakeVideoPlayerFactory& owner) : m_owner(owner) { ++m_owner.alive; }
    ~Player() override {
      --m_owner.alive;
      m_owner.m_isPlaying = false;
    }
    void seekToStart() override { m_owner.happened.emplace_back("seekToStart"); }
    void play() override {
      m_owner.happened.emplace_back("play");
      m_owner.m_isPlaying = true;
    }

  private:
    FakeVideoPlayerFactory& m_owner;
  };

  bool m_isPlaying = false; // the newest player
};

} // namespace orbel
