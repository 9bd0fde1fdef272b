#include "backends/linux/FileIcons.h"

#include "backends/linux/ApplicationFinder.h"
#include "backends/linux/GlibPointers.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

namespace orbel::linux {

namespace {

constexpr const char* kApplicationPicture = "fallback-application";
constexpr const char* kFolderPicture = "fallback-folder";
constexpr const char* kFilePicture = "fallback-file";

// By the standard an Icon name carries no extension, but many do.
std::string withoutPictureSuffix(const std::string& name) {
  constexpr std::array<std::string_view, 3> kSuffixes{".png", ".svg", ".xpm"};
  for (const auto suffix : kSuffixes) {
    if (name.size() > suffix.size() && name.ends_with(suffix))
      return name.substr(0, name.size() - suffix.size());
  }
  return name;
}

// Where icons lie that belong to no theme.
std::string pixmapFile(const std::string& name) {
  for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder) {
    for (const char* suffix : {"", ".svg", ".png", ".xpm"}) {
      std::string path = std::string(*folder) + "/pixmaps/" + name + suffix;
      struct stat status {};
      if (::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)) return path;
    }
  }
  return {};
}

std::vector<std::string> themeNamesOf(const std::string& path) {
  const GObjectPointer<GFile> file(g_file_new_for_path(path.c_str()));
  const GObjectPointer<GFileInfo> info(g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_ICON,
                                                         G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
  std::vector<std::string> names;
  GIcon* icon = info ? g_file_info_get_icon(info.get()) : nullptr;
  if (!icon || !G_IS_THEMED_ICON(icon)) return names;
  for (const char* const* name = g_themed_icon_get_names(G_THEMED_ICON(icon)); *name; ++name) {
    // The symbolic variants are for toolbars.
    if (!g_str_has_suffix(*name, "-symbolic")) names.emplace_back(*name);
  }
  return names;
}

} // namespace

bool FileIcons::Source::operator<(const Source& other) const {
  return std::tie(pictureFile, themeNames, fallback) <
         std::tie(other.pictureFile, other.themeNames, other.fallback);
}

ImagePointer FileIcons::iconForFile(const std::string& path) {
  return image(sourceForFile(path));
}

ImagePointer FileIcons::iconForEntry(const DesktopEntry& entry) {
  return image(sourceForEntry(entry));
}

ImagePointer FileIcons::genericApplicationIcon() {
  return image({"", {"application-x-executable"}, kApplicationPicture});
}

bool FileIcons::hasIcon(const DesktopEntry& entry) const {
  const Source source = sourceForEntry(entry);
  if (!source.pictureFile.empty() && ::access(source.pictureFile.c_str(), R_OK) == 0) return true;
  return !source.themeNames.empty() && m_loader.hasThemeIcon(source.themeNames);
}

ImagePointer FileIcons::imageNamed(const std::string& name) {
  const auto kept = m_ownPictures.find(name);
  if (kept != m_ownPictures.end()) return kept->second;
  if (!m_loader.hasOwnPicture(name)) return nullptr;
  return m_ownPictures[name] = image({"", {}, name});
}

ImagePointer FileIcons::image(const Source& source) {
  std::weak_ptr<const Image>& kept = m_images[source];
  if (auto present = kept.lock()) return present;
  auto made = std::make_shared<const Image>(kIconSize, [&loader = m_loader, source](int width, int height) {
    const int side = std::max(width, height);
    Bitmap bitmap;
    if (!source.pictureFile.empty()) bitmap = loader.pictureFile(source.pictureFile, side);
    if (bitmap.isEmpty() && !source.themeNames.empty()) bitmap = loader.themeIcon(source.themeNames, side);
    if (bitmap.isEmpty()) bitmap = loader.ownPicture(source.fallback, side);
    return bitmap;
  });
  kept = made;
  std::erase_if(m_images, [](const auto& entry) { return entry.second.expired(); });
  return made;
}

FileIcons::Source FileIcons::sourceForEntry(const DesktopEntry& entry) const {
  if (entry.icon.starts_with('/')) return {entry.icon, {}, kApplicationPicture};
  if (entry.icon.empty()) return {"", {}, kApplicationPicture};
  const std::string name = withoutPictureSuffix(entry.icon);
  // A theme's icon takes precedence over one outside of all themes.
  const std::string file = m_loader.hasThemeIcon({name}) ? std::string() : pixmapFile(name);
  return {file, {name}, kApplicationPicture};
}

FileIcons::Source FileIcons::sourceForFile(const std::string& path) const {
  if (DesktopEntry::isEntryPath(path)) {
    if (const DesktopEntry* entry = m_entries.withPath(path)) return sourceForEntry(*entry);
    if (const auto read = DesktopEntry::read(path)) return sourceForEntry(*read);
    return {"", {"application-x-executable"}, kApplicationPicture};
  }

  const bool isApplication = ApplicationFinder::isAppImage(path) || path.find(".app") != std::string::npos;
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) {
    return {"", {}, isApplication ? kApplicationPicture : kFilePicture};
  }
  if (S_ISDIR(status.st_mode)) {
    if (path.ends_with(".app")) return {"", {"application-x-executable"}, kApplicationPicture};
    std::vector<std::string> names = themeNamesOf(path);
    names.emplace_back("folder"); // which GIO leaves out where the table of content types is missing
    return {"", std::move(names), kFolderPicture};
  }
  const bool isProgram = ApplicationFinder::isProgram(path);
  if (isApplication || isProgram) {
    if (const DesktopEntry* entry = m_entries.withExecutable(path)) return sourceForEntry(*entry);
  }
  return {"", themeNamesOf(path), isApplication || isProgram ? kApplicationPicture : kFilePicture};
}

} // namespace orbel::linux
