// The Spotlight metadata queries the Objective-C++ glue runs, as the macOS 13
// SDK declares them. Only the macOS compile check (./dev macos) reads this
// folder.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef UInt32 OptionBits;

typedef struct CF_BRIDGED_TYPE(id) __MDQuery* MDQueryRef;
typedef struct CF_BRIDGED_TYPE(id) __MDItem* MDItemRef;

typedef enum : OptionBits {
  kMDQuerySynchronous = 1,
  kMDQueryWantsUpdates = 4,
  kMDQueryAllowFSTranslation = 8,
} MDQueryOptionFlags;

MDQueryRef MDQueryCreate(CFAllocatorRef allocator, CFStringRef queryString,
                         CFArrayRef valueListAttrs, CFArrayRef sortingAttrs);
Boolean MDQueryExecute(MDQueryRef query, CFOptionFlags optionFlags);
CFIndex MDQueryGetResultCount(MDQueryRef query);
const void* MDQueryGetResultAtIndex(MDQueryRef query, CFIndex idx);

CFTypeRef MDItemCopyAttribute(MDItemRef item, CFStringRef name);
extern const CFStringRef kMDItemCFBundleIdentifier;

#ifdef __cplusplus
}
#endif
