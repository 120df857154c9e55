// What every AppKit declaration here builds on.
#pragma once

#include <Foundation/Foundation.h>

#if defined(__cplusplus)
#define APPKIT_EXTERN extern "C"
#else
#define APPKIT_EXTERN extern
#endif
