// The CoreFoundation types and calls the Objective-C++ glue uses, as the
// macOS 13 SDK declares them (64-bit). GNUstep has no CoreFoundation; only the
// macOS compile check (./dev macos) reads this folder. A call the glue starts
// to use is declared here first, from Apple's published declaration.
#pragma once

#include <stdint.h>

#define CF_BRIDGED_TYPE(T) __attribute__((objc_bridge(T)))

#ifdef __cplusplus
extern "C" {
#endif

// MacTypes
typedef unsigned char UInt8;
typedef unsigned int UInt32;
typedef signed int SInt32;
typedef unsigned char Boolean;

// Base
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef signed long CFIndex;
typedef const void* CFTypeRef;
typedef CFTypeRef CFPropertyListRef;
typedef double CFTimeInterval;

typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex loc, CFIndex len) {
  CFRange range;
  range.location = loc;
  range.length = len;
  return range;
}

typedef const struct CF_BRIDGED_TYPE(id) __CFAllocator* CFAllocatorRef;
extern const CFAllocatorRef kCFAllocatorDefault;

CFTypeID CFGetTypeID(CFTypeRef cf);
void CFRelease(CFTypeRef cf);

// Strings
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef UInt32 CFStringEncoding;
typedef enum : CFStringEncoding {
  kCFStringEncodingMacRoman = 0,
  kCFStringEncodingASCII = 0x0600,
  kCFStringEncodingUTF8 = 0x08000100,
} CFStringBuiltInEncodings;

CFTypeID CFStringGetTypeID(void);
CFIndex CFStringGetLength(CFStringRef theString);
CFIndex CFStringGetBytes(CFStringRef theString, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer,
                         CFIndex maxBufLen, CFIndex* usedBufLen);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef alloc, const UInt8* bytes, CFIndex numBytes,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);

// Booleans and numbers
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFBoolean* CFBooleanRef;
CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);

typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFNumber* CFNumberRef;
// Only the cases the glue reads.
typedef enum : CFIndex {
  kCFNumberSInt64Type = 4,
  kCFNumberFloat64Type = 6,
  kCFNumberDoubleType = 13,
} CFNumberType;
CFTypeID CFNumberGetTypeID(void);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void* valuePtr);

// Data
typedef const struct CF_BRIDGED_TYPE(NSData) __CFData* CFDataRef;
CFTypeID CFDataGetTypeID(void);
CFIndex CFDataGetLength(CFDataRef theData);
const UInt8* CFDataGetBytePtr(CFDataRef theData);

// Arrays and dictionaries
typedef const struct CF_BRIDGED_TYPE(NSArray) __CFArray* CFArrayRef;
CFTypeID CFArrayGetTypeID(void);
CFIndex CFArrayGetCount(CFArrayRef theArray);
const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);

typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;
CFTypeID CFDictionaryGetTypeID(void);
CFIndex CFDictionaryGetCount(CFDictionaryRef theDict);
void CFDictionaryGetKeysAndValues(CFDictionaryRef theDict, const void** keys, const void** values);

// Preferences
CFPropertyListRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef applicationID);

// Run loops
typedef CFStringRef CFRunLoopMode;
extern const CFRunLoopMode kCFRunLoopDefaultMode;
typedef enum : SInt32 {
  kCFRunLoopRunFinished = 1,
  kCFRunLoopRunStopped = 2,
  kCFRunLoopRunTimedOut = 3,
  kCFRunLoopRunHandledSource = 4,
} CFRunLoopRunResult;
CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                      Boolean returnAfterSourceHandled);

#ifdef __cplusplus
}
#endif
