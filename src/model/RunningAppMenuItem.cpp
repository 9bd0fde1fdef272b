#include "model/RunningAppMenuItem.h"

#include "foundation/Log.h"
#include "model/GrayscaleFilter.h"
#include "model/ImageCache.h"
#include "platform/Platform.h"

namespace orbel {

namespace {

constexpr Size kIconSize = {320, 320}; // points

ImagePointer iconOf(const RunningApplication& application) {
  if (auto icon = application.icon()) return icon;
  const auto bundlePath = application.bundlePath();
  return bundlePath ? Platform::current().workspace.iconForFile(*bundlePath) : nullptr;
}

} // namespace

RunningAppMenuItem::RunningAppMenuItem(RunningApplicationPointer application)
    : m_app(std::move(application)) {
  createImage();
}

std::shared_ptr<RunningAppMenuItem>
RunningAppMenuItem::withRunningApplication(RunningApplicationPointer application) {
  return std::shared_ptr<RunningAppMenuItem>(new RunningAppMenuItem(std::move(application)));
}

std::string RunningAppMenuItem::identity() const {
  // Programs of which no path is known must not share one icon.
  const auto bundlePath = m_app->bundlePath();
  return kClassName + (bundlePath ? *bundlePath : m_app->localizedName());
}

std::optional<std::string> RunningAppMenuItem::name() const {
  return m_app->localizedName();
}

void RunningAppMenuItem::open() {
  if (const auto executablePath = m_app->executablePath()) {
    const auto launch = Platform::current().workspace.launchApplication(*executablePath);
    Log::warningIfFailed(launch);
    if (launch && *launch == Workspace::Launch::done) return;
  }
  m_app->activate(ActivationReason::userChoice);
}

bool RunningAppMenuItem::canOpenPath(const std::string& /*path*/) const {
  return true;
}

void RunningAppMenuItem::openPath(const std::string& path) {
  if (const auto bundlePath = m_app->bundlePath()) {
    Log::warningIfFailed(Platform::current().workspace.openFileWithApplication(path, *bundlePath));
  } else {
    Log::warning(m_app->localizedName() + " cannot open " + path + ": no file is known to start it from");
  }
}

void RunningAppMenuItem::quit() {
  quitFirstRepresentedApplication();
}

bool RunningAppMenuItem::representsRunningApplication(const RunningApplication& application) const {
  return m_app->isEqual(application);
}

void RunningAppMenuItem::createImage() {
  ImageCache& cache = ImageCache::sharedCache();
  m_image = cache.imageForKey(identity());
  if (m_image) return;
  auto icon = iconOf(*m_app);
  if (!icon) return;
  m_image = GrayscaleFilter::filtered(std::move(icon), kIconSize);
  cache.storeImage(m_image, identity());
}

} // namespace orbel
