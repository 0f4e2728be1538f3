// The blocks runtime calls GNUstep's headers expect beside an Objective-C
// runtime with blocks. Debian's GNUstep is built on GCC's runtime, which has
// none; the macOS compile check (./dev macos) compiles with blocks on, as
// macOS does, so it declares them here (as macOS's <Block.h> does).
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

void* _Block_copy(const void* block);
void _Block_release(const void* block);

#ifdef __cplusplus
}
#endif

#define Block_copy(block) ((__typeof(block))_Block_copy((const void*)(block)))
#define Block_release(block) _Block_release((const void*)(block))
