// Plays one of the program's own videos into pictures. A player is expensive as long as it lives: it is made
// to be watched and destroyed after. Used by the settings window's help. Main thread only.
#pragma once

#include "foundation/Geometry.h"
#include "foundation/Result.h"
#include "scene/Image.h"

#include <functional>
#include <memory>
#include <string>

namespace orbel {

class VideoPlayer {
public:
  virtual ~VideoPlayer() = default; // stops it
  virtual void seekToStart() = 0;
  // Continues until the end, without sound.
  virtual void play() = 0;
};

// Never called from within a call to the player. Each may end the player.
struct VideoPlayerHandlers {
  std::function<void(ImagePointer frame)> frameReady;
  std::function<void()> didPlayToEnd;
};

class VideoPlayerFactory {
public:
  virtual ~VideoPlayerFactory() = default;
  // A picture of that size that stands in for the video where no frame of it is there; empty when there
  // is none.
  virtual ImagePointer still(const std::string& resource, Size size) = 0;
  // The resource of that name and extension, at its start and not playing. Fails when it cannot be played;
  // where that shows only later it is logged then, and no frame ever comes.
  virtual Result<std::unique_ptr<VideoPlayer>> load(const std::string& resource, const std::string& extension,
                                                    VideoPlayerHandlers handlers) = 0;
};

} // namespace orbel
