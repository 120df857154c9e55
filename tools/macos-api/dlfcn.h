// Loading a library and looking up its symbols at run time, as macOS declares it.
#pragma once

#pragma clang assume_nonnull begin

#if defined(__cplusplus)
extern "C" {
#endif

#define RTLD_LAZY 0x1
#define RTLD_NOW 0x2
#define RTLD_LOCAL 0x4
#define RTLD_GLOBAL 0x8
#define RTLD_NOLOAD 0x10
#define RTLD_FIRST 0x100

void* _Nullable dlopen(const char* _Nullable path, int mode);
void* _Nullable dlsym(void* _Nullable handle, const char* symbol);
int dlclose(void* handle);
char* _Nullable dlerror(void);

#if defined(__cplusplus)
}
#endif

#pragma clang assume_nonnull end
