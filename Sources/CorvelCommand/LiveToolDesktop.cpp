// Finding the app and handing it links on Linux desktops, through GIO. The
// app is the desktop's handler of quillon:// links; its desktop entry file is
// where it is. Apps named on the command line are the installed desktop
// entries, the entry's id (without ".desktop") standing for the bundle
// identifier. Linux has no app bundles, so no tool is ever inside one.
//
// GIO is loaded only when one of these is first asked for: it brings a chain
// of GLib libraries whose loading would otherwise be most of the start-up of
// every command, and most commands never reach the desktop. A machine
// without GIO has no desktop to ask, so it has no handler and no apps.
#if !defined(__APPLE__) && defined(QUILLON_HAVE_GIO)

#include <dlfcn.h>
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

// The GIO, GObject and GLib functions this file calls, found in the loaded
// library. The headers give their types only: nothing here is linked, and
// their checking cast macros, which call into GObject, are not used.
struct Gio {
  decltype(&g_object_unref) objectUnref = nullptr;
  decltype(&g_type_check_instance_is_a) isInstanceOf = nullptr;
  decltype(&g_free) free = nullptr;
  decltype(&g_strdup) duplicate = nullptr;
  decltype(&g_error_free) errorFree = nullptr;
  decltype(&g_list_append) listAppend = nullptr;
  decltype(&g_list_free_full) listFreeFull = nullptr;
  decltype(&g_main_context_default) mainContextDefault = nullptr;
  decltype(&g_main_context_iteration) mainContextIteration = nullptr;
  decltype(&g_timeout_source_new) timeoutSourceNew = nullptr;
  decltype(&g_source_set_callback) sourceSetCallback = nullptr;
  decltype(&g_source_attach) sourceAttach = nullptr;
  decltype(&g_source_destroy) sourceDestroy = nullptr;
  decltype(&g_source_unref) sourceUnref = nullptr;
  decltype(&g_app_info_get_default_for_uri_scheme) defaultForScheme = nullptr;
  decltype(&g_app_info_get_all) allApps = nullptr;
  decltype(&g_app_info_get_display_name) displayName = nullptr;
  decltype(&g_app_info_get_id) appID = nullptr;
  decltype(&g_app_info_launch_uris_async) launchAsync = nullptr;
  decltype(&g_app_info_launch_uris_finish) launchFinish = nullptr;
  decltype(&g_desktop_app_info_get_type) desktopEntryType = nullptr;
  decltype(&g_desktop_app_info_new) desktopEntryNamed = nullptr;
  decltype(&g_desktop_app_info_new_from_filename) desktopEntryAt = nullptr;
  decltype(&g_desktop_app_info_get_filename) desktopEntryFile = nullptr;
};

template <class Function>
bool resolve(void* library, const char* name, Function& function) {
  // A function's address comes back as data; POSIX makes the conversion work.
  function = reinterpret_cast<Function>(::dlsym(library, name));
  return function != nullptr;
}

// GIO's functions, or nullptr when GIO cannot be loaded or lacks one of
// them. Loaded once and never unloaded: GLib keeps threads and types that
// outlive any use of them.
const Gio* gio() {
  static const std::unique_ptr<const Gio> loaded = []() -> std::unique_ptr<const Gio> {
    void* library = ::dlopen("libgio-2.0.so.0", RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr) return nullptr;
    auto functions = std::make_unique<Gio>();
    Gio& f = *functions;
    const bool complete =
        resolve(library, "g_object_unref", f.objectUnref) &&
        resolve(library, "g_type_check_instance_is_a", f.isInstanceOf) &&
        resolve(library, "g_free", f.free) && resolve(library, "g_strdup", f.duplicate) &&
        resolve(library, "g_error_free", f.errorFree) &&
        resolve(library, "g_list_append", f.listAppend) &&
        resolve(library, "g_list_free_full", f.listFreeFull) &&
        resolve(library, "g_main_context_default", f.mainContextDefault) &&
        resolve(library, "g_main_context_iteration", f.mainContextIteration) &&
        resolve(library, "g_timeout_source_new", f.timeoutSourceNew) &&
        resolve(library, "g_source_set_callback", f.sourceSetCallback) &&
        resolve(library, "g_source_attach", f.sourceAttach) &&
        resolve(library, "g_source_destroy", f.sourceDestroy) &&
        resolve(library, "g_source_unref", f.sourceUnref) &&
        resolve(library, "g_app_info_get_default_for_uri_scheme", f.defaultForScheme) &&
        resolve(library, "g_app_info_get_all", f.allApps) &&
        resolve(library, "g_app_info_get_display_name", f.displayName) &&
        resolve(library, "g_app_info_get_id", f.appID) &&
        resolve(library, "g_app_info_launch_uris_async", f.launchAsync) &&
        resolve(library, "g_app_info_launch_uris_finish", f.launchFinish) &&
        resolve(library, "g_desktop_app_info_get_type", f.desktopEntryType) &&
        resolve(library, "g_desktop_app_info_new", f.desktopEntryNamed) &&
        resolve(library, "g_desktop_app_info_new_from_filename", f.desktopEntryAt) &&
        resolve(library, "g_desktop_app_info_get_filename", f.desktopEntryFile);
    if (!complete) return nullptr;
    return functions;
  }();
  return loaded.get();
}

// The same object seen as another of the types it is (a desktop entry is an
// app info); GObject's own casts would check it through the library.
template <class To, class From>
To* as(From* object) {
  return static_cast<To*>(static_cast<void*>(object));
}

struct ObjectRelease {
  void operator()(gpointer object) const { gio()->objectUnref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, ObjectRelease>;

constexpr std::string_view kDesktopSuffix = ".desktop";

// What a launch in flight needs until GIO calls back: the report to make and
// the list of links GIO was given.
struct Launch {
  HandOverWait::Report report;
  GList* links = nullptr;
  ~Launch() { gio()->listFreeFull(links, gio()->free); }
};

void launched(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Launch> launch(static_cast<Launch*>(data));
  GError* error = nullptr;
  const bool launchedApp = gio()->launchFinish(as<GAppInfo>(source), result, &error);
  if (error != nullptr) gio()->errorFree(error);
  launch->report(!launchedApp);
}

void openWithDesktopEntry(const std::string& link, const std::string& app,
                          HandOverWait::Report report) {
  const Gio* f = gio();
  const Owned<GDesktopAppInfo> entry(f == nullptr ? nullptr : f->desktopEntryAt(app.c_str()));
  if (!entry) {
    report(true);
    return;
  }
  auto launch = std::make_unique<Launch>();
  launch->report = std::move(report);
  launch->links = f->listAppend(nullptr, f->duplicate(link.c_str()));
  // No launch context: nothing asks the desktop to bring the app forward.
  GList* links = launch->links;
  f->launchAsync(as<GAppInfo>(entry.get()), links, nullptr, nullptr, &launched, launch.release());
}

gboolean stopWaiting(gpointer) { return G_SOURCE_REMOVE; }

// One iteration of the default main context, woken by a timer at the latest
// after `seconds`, so the launch's callback runs here on this thread.
void turnMainContext(double seconds) {
  const Gio* f = gio();
  if (f == nullptr) return;
  const double milliseconds = std::clamp(std::ceil(seconds * 1000.0), 1.0, 60'000.0);
  GMainContext* context = f->mainContextDefault();
  GSource* timer = f->timeoutSourceNew(static_cast<guint>(milliseconds));
  f->sourceSetCallback(timer, &stopWaiting, nullptr, nullptr);
  f->sourceAttach(timer, context);
  f->mainContextIteration(context, TRUE);
  f->sourceDestroy(timer);
  f->sourceUnref(timer);
}

std::optional<std::string> bundleIDOfEntry(const char* desktopID) {
  if (desktopID == nullptr) return std::nullopt;
  std::string_view id(desktopID);
  if (id.ends_with(kDesktopSuffix)) id.remove_suffix(kDesktopSuffix.size());
  // Links carry only bundle identifiers; an id of another form cannot be one.
  if (!LayerNames::isBundleID(id)) return std::nullopt;
  return std::string(id);
}

AppFinder::Catalogue desktopCatalogue(const Gio& f) {
  AppFinder::Catalogue catalogue;
  catalogue.knowsBundleID = [&f](const std::string& bundleID) {
    const std::string desktopID = bundleID + std::string(kDesktopSuffix);
    return Owned<GDesktopAppInfo>(f.desktopEntryNamed(desktopID.c_str())) != nullptr;
  };
  catalogue.listedApps = [&f] {
    std::vector<AppFinder::ListedApp> apps;
    GList* all = f.allApps();
    for (GList* item = all; item != nullptr; item = item->next) {
      auto* info = static_cast<GAppInfo*>(item->data);
      const char* name = f.displayName(info);
      if (name == nullptr) continue;
      apps.push_back({name, bundleIDOfEntry(f.appID(info))});
    }
    f.listFreeFull(all, f.objectUnref);
    return apps;
  };
  return catalogue;
}

}  // namespace

std::optional<std::string> LiveTool::enclosingApp() { return std::nullopt; }

std::optional<std::string> LiveTool::quillonApp() {
  if (std::optional<std::string> app = enclosingApp()) return app;
  const Gio* f = gio();
  if (f == nullptr) return std::nullopt;
  const std::string scheme(Brand::linkScheme);
  // GIO counts a handler whose program cannot be found as not installed.
  const Owned<GAppInfo> handler(f->defaultForScheme(scheme.c_str()));
  if (!handler ||
      f->isInstanceOf(as<GTypeInstance>(handler.get()), f->desktopEntryType()) == FALSE) {
    return std::nullopt;
  }
  const char* file = f->desktopEntryFile(as<GDesktopAppInfo>(handler.get()));
  if (file == nullptr) return std::nullopt;
  return std::string(file);
}

HandOver LiveTool::handOver(const std::string& link, const std::string& app) {
  return HandOverWait::run<std::mutex>(link, app, &openWithDesktopEntry, &turnMainContext,
                                       [] { return HandOverWait::Clock::now(); });
}

AppMatch LiveTool::app(std::string_view name) {
  const Gio* f = gio();
  if (f == nullptr) return AppMatch::none();
  return AppFinder::find(name, desktopCatalogue(*f));
}

ToolWorld::Version LiveTool::version() { return {}; }

}  // namespace corvel

#endif
