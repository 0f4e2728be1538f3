// The dynamic loader's call for the running executable's path, as the macOS
// SDK declares it. Only the macOS compile check (./dev macos) reads this
// folder.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Copies the main executable's path into `buf`; when it does not fit,
// returns -1 and sets `*bufsize` to the size needed.
extern int _NSGetExecutablePath(char* buf, uint32_t* bufsize);

#ifdef __cplusplus
}
#endif
