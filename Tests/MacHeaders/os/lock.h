// The unfair lock of macOS, as the SDK declares it. Only the macOS compile
// check (./dev macos) reads this folder.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct os_unfair_lock_s {
  uint32_t _os_unfair_lock_opaque;
} os_unfair_lock, *os_unfair_lock_t;

#if defined(__cplusplus)
#define OS_UNFAIR_LOCK_INIT (os_unfair_lock{})
#else
#define OS_UNFAIR_LOCK_INIT ((os_unfair_lock){0})
#endif

void os_unfair_lock_lock(os_unfair_lock_t lock);
void os_unfair_lock_unlock(os_unfair_lock_t lock);

#ifdef __cplusplus
}
#endif
