// Finding the app and handing it links on Linux desktops, through GIO. The
// app is the desktop's handler of quillon:// links; its desktop entry file is
// where it is. Apps named on the command line are the installed desktop
// entries, the entry's id (without ".desktop") standing for the bundle
// identifier. Linux has no app bundles, so no tool is ever inside one.
#if !defined(__APPLE__) && defined(QUILLON_HAVE_GIO)

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <mutex>

#include "CorvelCommand/AppFinder.h"
#include "CorvelCommand/HandOverWait.h"
#include "CorvelCommand/LiveTool.h"
#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/Layers/LayerNames.h"

namespace corvel {
namespace {

struct ObjectRelease {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, ObjectRelease>;

constexpr std::string_view kDesktopSuffix = ".desktop";

// What a launch in flight needs until GIO calls back: the report to make and
// the list of links GIO was given.
struct Launch {
  HandOverWait::Report report;
  GList* links = nullptr;
  ~Launch() { g_list_free_full(links, g_free); }
};

void launched(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Launch> launch(static_cast<Launch*>(data));
  GError* error = nullptr;
  const bool launchedApp = g_app_info_launch_uris_finish(G_APP_INFO(source), result, &error);
  if (error != nullptr) g_error_free(error);
  launch->report(!launchedApp);
}

void openWithDesktopEntry(const std::string& link, const std::string& app,
                          HandOverWait::Report report) {
  const Owned<GDesktopAppInfo> entry(g_desktop_app_info_new_from_filename(app.c_str()));
  if (!entry) {
    report(true);
    return;
  }
  auto launch = std::make_unique<Launch>();
  launch->report = std::move(report);
  launch->links = g_list_append(nullptr, g_strdup(link.c_str()));
  // No launch context: nothing asks the desktop to bring the app forward.
  GList* links = launch->links;
  g_app_info_launch_uris_async(G_APP_INFO(entry.get()), links, nullptr, nullptr, &launched,
                               launch.release());
}

gboolean stopWaiting(gpointer) { return G_SOURCE_REMOVE; }

// One iteration of the default main context, woken by a timer at the latest
// after `seconds`, so the launch's callback runs here on this thread.
void turnMainContext(double seconds) {
  const double milliseconds = std::clamp(std::ceil(seconds * 1000.0), 1.0, 60'000.0);
  GMainContext* context = g_main_context_default();
  GSource* timer = g_timeout_source_new(static_cast<guint>(milliseconds));
  g_source_set_callback(timer, &stopWaiting, nullptr, nullptr);
  g_source_attach(timer, context);
  g_main_context_iteration(context, TRUE);
  g_source_destroy(timer);
  g_source_unref(timer);
}

std::optional<std::string> bundleIDOfEntry(const char* desktopID) {
  if (desktopID == nullptr) return std::nullopt;
  std::string_view id(desktopID);
  if (id.ends_with(kDesktopSuffix)) id.remove_suffix(kDesktopSuffix.size());
  // Links carry only bundle identifiers; an id of another form cannot be one.
  if (!LayerNames::isBundleID(id)) return std::nullopt;
  return std::string(id);
}

AppFinder::Catalogue desktopCatalogue() {
  AppFinder::Catalogue catalogue;
  catalogue.knowsBundleID = [](const std::string& bundleID) {
    const std::string desktopID = bundleID + std::string(kDesktopSuffix);
    return Owned<GDesktopAppInfo>(g_desktop_app_info_new(desktopID.c_str())) != nullptr;
  };
  catalogue.listedApps = [] {
    std::vector<AppFinder::ListedApp> apps;
    GList* all = g_app_info_get_all();
    for (GList* item = all; item != nullptr; item = item->next) {
      auto* info = static_cast<GAppInfo*>(item->data);
      const char* name = g_app_info_get_display_name(info);
      if (name == nullptr) continue;
      apps.push_back({name, bundleIDOfEntry(g_app_info_get_id(info))});
    }
    g_list_free_full(all, g_object_unref);
    return apps;
  };
  return catalogue;
}

}  // namespace

std::optional<std::string> LiveTool::enclosingApp() { return std::nullopt; }

std::optional<std::string> LiveTool::quillonApp() {
  if (std::optional<std::string> app = enclosingApp()) return app;
  const std::string scheme(Brand::linkScheme);
  // GIO counts a handler whose program cannot be found as not installed.
  const Owned<GAppInfo> handler(g_app_info_get_default_for_uri_scheme(scheme.c_str()));
  if (!handler || !G_IS_DESKTOP_APP_INFO(handler.get())) return std::nullopt;
  const char* file = g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(handler.get()));
  if (file == nullptr) return std::nullopt;
  return std::string(file);
}

HandOver LiveTool::handOver(const std::string& link, const std::string& app) {
  return HandOverWait::run<std::mutex>(link, app, &openWithDesktopEntry, &turnMainContext,
                                       [] { return HandOverWait::Clock::now(); });
}

AppMatch LiveTool::app(std::string_view name) { return AppFinder::find(name, desktopCatalogue()); }

ToolWorld::Version LiveTool::version() { return {}; }

}  // namespace corvel

#endif
