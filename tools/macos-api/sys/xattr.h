// Extended attributes, as macOS declares them: every call takes options, among them whether a link
// at the path is followed.
#pragma once

#include <sys/types.h>

#pragma clang assume_nonnull begin

#if defined(__cplusplus)
extern "C" {
#endif

#define XATTR_NOFOLLOW 0x0001

ssize_t getxattr(const char* path, const char* name, void* _Nullable value, size_t size, u_int32_t position,
                 int options);
int setxattr(const char* path, const char* name, const void* value, size_t size, u_int32_t position,
             int options);
int removexattr(const char* path, const char* name, int options);
ssize_t listxattr(const char* path, char* _Nullable names, size_t size, int options);

#if defined(__cplusplus)
}
#endif

#pragma clang assume_nonnull end
