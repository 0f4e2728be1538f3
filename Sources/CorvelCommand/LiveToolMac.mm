// The live world's effects on macOS: where the app keeps its files and
// settings, finding the app and handing it links through the shared
// workspace, and finding apps named on the command line among the running
// apps, the application folders and Spotlight's index. Only the system calls
// live here; the rules they feed are in EnclosingApp, HandOverWait and
// AppFinder.

#import <AppKit/AppKit.h>
#import <CoreFoundation/CoreFoundation.h>
#import <CoreServices/CoreServices.h>
#include <mach-o/dyld.h>
#include <os/lock.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include "CorvelCommand/AppFinder.h"
#include "CorvelCommand/EnclosingApp.h"
#include "CorvelCommand/HandOverWait.h"
#include "CorvelCommand/LiveTool.h"
#include "CorvelCommand/Locations.h"
#include "CorvelCore/Brand/Brand.h"

namespace corvel {
namespace {

struct CFReleaser {
  void operator()(CFTypeRef object) const {
    if (object != nullptr) CFRelease(object);
  }
};
// Owns one CoreFoundation reference.
using CFOwned = std::unique_ptr<const void, CFReleaser>;

// The lock the completion handler and the waiting thread share.
class UnfairLock {
 public:
  void lock() { os_unfair_lock_lock(&lock_); }
  void unlock() { os_unfair_lock_unlock(&lock_); }

 private:
  os_unfair_lock lock_ = OS_UNFAIR_LOCK_INIT;
};

// A CoreFoundation string as UTF-8; nothing when it cannot be converted.
std::optional<std::string> text(CFStringRef string) {
  if (string == nullptr) return std::nullopt;
  const CFIndex length = CFStringGetLength(string);
  CFIndex bytes = 0;
  if (CFStringGetBytes(string, CFRangeMake(0, length), kCFStringEncodingUTF8, 0, false, nullptr, 0,
                       &bytes) != length) {
    return std::nullopt;
  }
  std::string result(static_cast<std::size_t>(bytes), '\0');
  CFStringGetBytes(string, CFRangeMake(0, length), kCFStringEncodingUTF8, 0, false,
                   reinterpret_cast<UInt8*>(result.data()), bytes, &bytes);
  return result;
}

std::optional<std::string> text(NSString* string) { return text((__bridge CFStringRef)string); }

// A CoreFoundation string from UTF-8, or null when the bytes are not UTF-8.
CFOwned cfString(std::string_view utf8) {
  return CFOwned(
      CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(utf8.data()),
                              static_cast<CFIndex>(utf8.size()), kCFStringEncodingUTF8, false));
}

NSString* nsString(std::string_view utf8) {
  return [[NSString alloc] initWithBytes:utf8.data()
                                  length:utf8.size()
                                encoding:NSUTF8StringEncoding];
}

NSBundle* bundleAt(const std::string& path) {
  NSString* folder = nsString(path);
  if (folder == nil) return nil;
  return [NSBundle bundleWithURL:[NSURL fileURLWithPath:folder isDirectory:YES]];
}

std::optional<std::string> bundleIdentifierAt(const std::string& path) {
  @autoreleasepool {
    return text(bundleAt(path).bundleIdentifier);
  }
}

std::optional<std::string> infoStringAt(const std::string& path, std::string_view key) {
  @autoreleasepool {
    NSString* name = nsString(key);
    if (name == nil) return std::nullopt;
    id value = bundleAt(path).infoDictionary[name];
    if (![value isKindOfClass:[NSString class]]) return std::nullopt;
    NSString* string = value;
    return text(string);
  }
}

std::optional<std::string> executablePath() {
  std::uint32_t size = 0;
  _NSGetExecutablePath(nullptr, &size);  // fails, telling the size it needs
  std::string path(size, '\0');
  if (size == 0 || _NSGetExecutablePath(path.data(), &size) != 0) return std::nullopt;
  path.resize(path.find('\0') == std::string::npos ? path.size() : path.find('\0'));
  return path;
}

std::optional<std::string> applicationURLFor(std::string_view bundleID) {
  @autoreleasepool {
    NSString* identifier = nsString(bundleID);
    if (identifier == nil) return std::nullopt;
    NSURL* url = [[NSWorkspace sharedWorkspace] URLForApplicationWithBundleIdentifier:identifier];
    if (url == nil || !url.fileURL) return std::nullopt;
    return text(url.path);
  }
}

void openWithWorkspace(const std::string& link, const std::string& app,
                       HandOverWait::Report report) {
  @autoreleasepool {
    NSString* linkText = nsString(link);
    NSString* appPath = nsString(app);
    NSURL* url = linkText != nil ? [NSURL URLWithString:linkText] : nil;
    if (url == nil || appPath == nil) {
      report(true);
      return;
    }
    NSURL* appURL = [NSURL fileURLWithPath:appPath isDirectory:YES];
    NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
    configuration.activates = NO;
    configuration.addsToRecentItems = NO;
    configuration.promptsUserIfNeeded = NO;
    [[NSWorkspace sharedWorkspace] openURLs:@[ url ]
                       withApplicationAtURL:appURL
                              configuration:configuration
                          completionHandler:^(NSRunningApplication*, NSError* error) {
                            report(error != nil);
                          }];
  }
}

void turnRunLoop(double seconds) {
  const auto result = CFRunLoopRunInMode(kCFRunLoopDefaultMode, seconds, true);
  // A run loop with nothing to watch returns at once; sleep out the slice
  // rather than spin.
  if (result == kCFRunLoopRunFinished) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  }
}

std::set<std::string> spotlightApps(std::string_view name) {
  std::set<std::string> found;
  const CFOwned queryText(cfString(AppFinder::spotlightQuery(name)));
  if (!queryText) return found;
  const CFOwned query(MDQueryCreate(kCFAllocatorDefault, static_cast<CFStringRef>(queryText.get()),
                                    nullptr, nullptr));
  if (!query) return found;
  const auto queryRef = static_cast<MDQueryRef>(const_cast<void*>(query.get()));
  if (!MDQueryExecute(queryRef, kMDQuerySynchronous)) return found;
  const CFIndex count = MDQueryGetResultCount(queryRef);
  for (CFIndex index = 0; index < count; ++index) {
    const auto item =
        static_cast<MDItemRef>(const_cast<void*>(MDQueryGetResultAtIndex(queryRef, index)));
    if (item == nullptr) continue;
    const CFOwned value(MDItemCopyAttribute(item, kMDItemCFBundleIdentifier));
    if (value && CFGetTypeID(value.get()) == CFStringGetTypeID()) {
      if (std::optional<std::string> bundleID = text(static_cast<CFStringRef>(value.get()))) {
        found.insert(*bundleID);
      }
    }
  }
  return found;
}

AppFinder::Catalogue workspaceCatalogue() {
  AppFinder::Catalogue catalogue;
  catalogue.knowsBundleID = [](const std::string& bundleID) {
    return applicationURLFor(bundleID).has_value();
  };
  catalogue.listedApps = [] {
    std::vector<AppFinder::ListedApp> apps;
    @autoreleasepool {
      for (NSRunningApplication* running in [NSWorkspace sharedWorkspace].runningApplications) {
        if (std::optional<std::string> name = text(running.localizedName)) {
          apps.push_back({*name, text(running.bundleIdentifier)});
        }
      }
    }
    return apps;
  };
  catalogue.applicationFolders = [] {
    std::vector<std::string> folders;
    @autoreleasepool {
      for (NSURL* folder in [[NSFileManager defaultManager] URLsForDirectory:NSApplicationDirectory
                                                                   inDomains:NSAllDomainsMask]) {
        if (std::optional<std::string> path = text(folder.path)) folders.push_back(*path);
      }
    }
    for (std::string_view folder : AppFinder::moreApplicationFolders) folders.emplace_back(folder);
    return folders;
  };
  catalogue.bundleIdentifier = &bundleIdentifierAt;
  catalogue.indexedApps = &spotlightApps;
  return catalogue;
}

// A property-list value as JSON: texts, numbers, booleans, arrays and
// dictionaries with text keys. Nothing when any part has no JSON form
// (dates, data inside a collection, numbers that are not finite).
std::optional<JSONValue> jsonValue(CFTypeRef value, int depth) {
  if (value == nullptr || depth > JSONValue::maxDepth) return std::nullopt;
  const CFTypeID type = CFGetTypeID(value);
  if (type == CFStringGetTypeID()) {
    std::optional<std::string> string = text(static_cast<CFStringRef>(value));
    if (!string) return std::nullopt;
    return JSONValue(std::move(*string));
  }
  if (type == CFBooleanGetTypeID()) {
    return JSONValue(CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0);
  }
  if (type == CFNumberGetTypeID()) {
    double number = 0;
    // A conversion that loses precision still gives the nearest double.
    CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &number);
    if (!std::isfinite(number)) return std::nullopt;
    return JSONValue(number);
  }
  if (type == CFArrayGetTypeID()) {
    const auto array = static_cast<CFArrayRef>(value);
    JSONArray elements;
    for (CFIndex index = 0, count = CFArrayGetCount(array); index < count; ++index) {
      std::optional<JSONValue> element = jsonValue(CFArrayGetValueAtIndex(array, index), depth + 1);
      if (!element) return std::nullopt;
      elements.push_back(std::move(*element));
    }
    return JSONValue(std::move(elements));
  }
  if (type == CFDictionaryGetTypeID()) {
    const auto dictionary = static_cast<CFDictionaryRef>(value);
    const CFIndex count = CFDictionaryGetCount(dictionary);
    std::vector<const void*> keys(static_cast<std::size_t>(count));
    std::vector<const void*> values(static_cast<std::size_t>(count));
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    std::vector<JSONObject::Member> members;
    for (std::size_t index = 0; index < keys.size(); ++index) {
      if (keys[index] == nullptr || CFGetTypeID(keys[index]) != CFStringGetTypeID()) {
        return std::nullopt;
      }
      std::optional<std::string> key = text(static_cast<CFStringRef>(keys[index]));
      std::optional<JSONValue> member = jsonValue(values[index], depth + 1);
      if (!key || !member) return std::nullopt;
      members.emplace_back(std::move(*key), std::move(*member));
    }
    return JSONValue(JSONObject(std::move(members)));
  }
  return std::nullopt;
}

}  // namespace

std::string LiveTool::supportFolder() {
  @autoreleasepool {
    NSURL* folder = [[NSFileManager defaultManager] URLsForDirectory:NSApplicationSupportDirectory
                                                           inDomains:NSUserDomainMask]
                        .firstObject;
    const std::optional<std::string> base = text(folder.path);
    if (!base) return Locations::supportFolder(Locations::current());
    return *base + "/" + std::string(Brand::supportFolderName);
  }
}

std::optional<JSONValue> LiveTool::preference(std::string_view key) {
  const CFOwned name(cfString(key));
  const CFOwned domain(cfString(Brand::bundleID));
  if (!name || !domain) return std::nullopt;
  const CFOwned value(CFPreferencesCopyAppValue(static_cast<CFStringRef>(name.get()),
                                                static_cast<CFStringRef>(domain.get())));
  if (!value) return std::nullopt;
  // Settings records are stored as the bytes of their JSON text.
  if (CFGetTypeID(value.get()) == CFDataGetTypeID()) {
    const auto data = static_cast<CFDataRef>(value.get());
    const std::string_view bytes(reinterpret_cast<const char*>(CFDataGetBytePtr(data)),
                                 static_cast<std::size_t>(CFDataGetLength(data)));
    auto decoded = JSONValue::decode(bytes);
    if (!decoded) return std::nullopt;
    return *std::move(decoded);
  }
  return jsonValue(value.get(), 0);
}

std::optional<std::string> LiveTool::enclosingApp() {
  const std::optional<std::string> executable = executablePath();
  if (!executable) return std::nullopt;
  return EnclosingApp::find(*executable, &bundleIdentifierAt);
}

std::optional<std::string> LiveTool::quillonApp() {
  if (std::optional<std::string> app = enclosingApp()) return app;
  return applicationURLFor(Brand::bundleID);
}

HandOver LiveTool::handOver(const std::string& link, const std::string& app) {
  return HandOverWait::run<UnfairLock>(link, app, &openWithWorkspace, &turnRunLoop,
                                       [] { return HandOverWait::Clock::now(); });
}

AppMatch LiveTool::app(std::string_view name) {
  @autoreleasepool {
    return AppFinder::find(name, workspaceCatalogue());
  }
}

ToolWorld::Version LiveTool::version() {
  return EnclosingApp::version(enclosingApp(), &infoStringAt);
}

}  // namespace corvel
