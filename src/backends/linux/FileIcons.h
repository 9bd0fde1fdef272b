// The pictures of files, folders and applications: 320 by 320 points, drawn at the pixel size that is wanted.
// Files with the same picture share one image for as long as it is in use; our own pictures are few, stand in
// every menu, and are kept, pixels and all. Never empty, except imageNamed.
#pragma once

#include "backends/common/IconLoader.h"
#include "backends/linux/DesktopEntryIndex.h"
#include "scene/Image.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orbel::linux {

class FileIcons {
public:
  static constexpr Size kIconSize{320, 320};

  FileIcons(common::IconLoader& loader, const DesktopEntryIndex& entries)
      : m_loader(loader), m_entries(entries) {}

  ImagePointer iconForFile(const std::string& path);
  ImagePointer iconForEntry(const DesktopEntry& entry);
  // Whether the entry has a picture of its own, so that iconForEntry is more than the generic one.
  bool hasIcon(const DesktopEntry& entry) const;
  ImagePointer genericApplicationIcon();
  // Our own picture of that name; empty when there is none.
  ImagePointer imageNamed(const std::string& name);

private:
  // Where the pixels come from: the picture file, else the first theme name that yields something, else
  // our fallback.
  struct Source {
    std::string pictureFile;
    std::vector<std::string> themeNames;
    std::string fallback;
    bool operator<(const Source& other) const;
  };
  ImagePointer image(const Source& source);
  Source sourceForFile(const std::string& path) const;
  Source sourceForEntry(const DesktopEntry& entry) const;

  common::IconLoader& m_loader;
  const DesktopEntryIndex& m_entries;
  std::map<Source, std::weak_ptr<const Image>> m_images;
  std::map<std::string, ImagePointer> m_ownPictures; // by name, those that were asked for
};

} // namespace orbel::linux
