// GNUstep's Foundation, plus the Foundation calls of macOS 13 that the
// Objective-C++ glue makes and GNUstep does not declare, as Apple's SDK
// declares them. Only the macOS compile check (./dev macos) reads this
// folder; it never reaches a build.
#pragma once

#include_next <Foundation/Foundation.h>

@interface NSFileManager (MacOSAdditions)
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domainMask;
@end
