// The Objective-C language basics: BOOL and the null object pointers. `id`, `Class` and `SEL` are
// built into the compiler.
#pragma once

// BOOL differs by processor: a C++ bool on Apple processors, a signed char on Intel ones.
#if defined(__aarch64__) || defined(__arm64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif

#define YES __objc_yes
#define NO __objc_no

#if defined(__cplusplus)
#define nil nullptr
#define Nil nullptr
#else
#define nil ((id)0)
#define Nil ((Class)0)
#endif

@class Protocol;
