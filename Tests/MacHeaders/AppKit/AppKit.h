// GNUstep's AppKit, plus the workspace calls of macOS 13 that the
// Objective-C++ glue makes and GNUstep does not declare, as Apple's SDK
// declares them. Only the macOS compile check (./dev macos) reads this
// folder; it never reaches a build.
#pragma once

#include_next <AppKit/AppKit.h>

@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
+ (instancetype)configuration;
@property BOOL promptsUserIfNeeded;
@property BOOL addsToRecentItems;
@property BOOL activates;
@end

@interface NSWorkspace (MacOSAdditions)
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (nullable NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;
- (void)openURLs:(NSArray<NSURL*>*)urls
    withApplicationAtURL:(NSURL*)applicationURL
           configuration:(NSWorkspaceOpenConfiguration*)configuration
       completionHandler:(void (^_Nullable)(NSRunningApplication* _Nullable app,
                                            NSError* _Nullable error))completionHandler;
@end
