#include "backends/linux/DefaultApplications.h"

#include "backends/linux/GlibPointers.h"

#include <gio/gdesktopappinfo.h>

#include <algorithm>

namespace orbel::linux {

namespace {

std::optional<std::string> pathOf(GAppInfo* application) {
  if (!application || !G_IS_DESKTOP_APP_INFO(application)) return std::nullopt;
  const char* path = g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(application));
  return path ? std::optional<std::string>(path) : std::nullopt;
}

} // namespace

std::optional<std::string> DefaultApplications::contentType(const std::string& path) {
  const GObjectPointer<GFile> file(g_file_new_for_path(path.c_str()));
  const GObjectPointer<GFileInfo> info(g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                         G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
  if (!info) return std::nullopt;
  const char* type = g_file_info_get_content_type(info.get());
  return type ? std::optional<std::string>(type) : std::nullopt;
}

std::optional<std::string> DefaultApplications::forContentType(const std::string& contentType) {
  const GObjectPointer<GAppInfo> application(g_app_info_get_default_for_type(contentType.c_str(), FALSE));
  return pathOf(application.get());
}

std::optional<std::string> DefaultApplications::forFile(const std::string& path) {
  const auto type = contentType(path);
  return type ? forContentType(*type) : std::nullopt;
}

std::vector<std::string> DefaultApplications::allForFile(const std::string& path) {
  const auto type = contentType(path);
  if (!type) return {};
  std::vector<std::string> paths;
  if (auto standard = forContentType(*type)) paths.push_back(std::move(*standard));
  GList* all = g_app_info_get_all_for_type(type->c_str());
  for (GList* item = all; item; item = item->next) {
    auto entry = pathOf(G_APP_INFO(item->data));
    if (entry && std::find(paths.begin(), paths.end(), *entry) == paths.end())
      paths.push_back(std::move(*entry));
  }
  g_list_free_full(all, g_object_unref);
  return paths;
}

std::optional<std::string> DefaultApplications::forUrl(const std::string& url) {
  const char* scheme = g_uri_peek_scheme(url.c_str());
  if (!scheme) return std::nullopt;
  const GObjectPointer<GAppInfo> application(g_app_info_get_default_for_uri_scheme(scheme));
  return pathOf(application.get());
}

std::string DefaultApplications::uriForPath(const std::string& path) {
  return takeText(g_filename_to_uri(path.c_str(), nullptr, nullptr));
}

} // namespace orbel::linux
