// Dispatch: work queues, delayed work and groups. Dispatch objects are Objective-C objects, so ARC
// retains and releases them; dispatch_retain and dispatch_release are not to be called.
#pragma once

#include <stdint.h>

#include <objc/NSObject.h>

#pragma clang assume_nonnull begin

#if defined(__cplusplus)
extern "C" {
#endif

@protocol OS_dispatch_object <NSObject>
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
@protocol OS_dispatch_group <OS_dispatch_object>
@end
typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_group>* dispatch_group_t;

typedef void (^dispatch_block_t)(void);

// Nanoseconds on a clock that does not follow changes of the wall-clock time.
typedef uint64_t dispatch_time_t;
#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)
#define NSEC_PER_SEC 1000000000ull
#define NSEC_PER_MSEC 1000000ull

// Quality-of-service classes, which name the global queues.
typedef enum : unsigned int {
    QOS_CLASS_USER_INTERACTIVE = 0x21,
    QOS_CLASS_USER_INITIATED = 0x19,
    QOS_CLASS_DEFAULT = 0x15,
    QOS_CLASS_UTILITY = 0x11,
    QOS_CLASS_BACKGROUND = 0x09,
    QOS_CLASS_UNSPECIFIED = 0x00,
} qos_class_t;

dispatch_queue_t dispatch_get_main_queue(void);
// `identifier` is a qos_class_t; `flags` must be 0.
dispatch_queue_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_sync(dispatch_queue_t queue, __attribute__((noescape)) dispatch_block_t block);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t deltaNanoseconds);

dispatch_group_t dispatch_group_create(void);
void dispatch_group_async(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block);
void dispatch_group_enter(dispatch_group_t group);
void dispatch_group_leave(dispatch_group_t group);
// 0 when the group's work finished before `timeout`, non-zero when the timeout passed first.
intptr_t dispatch_group_wait(dispatch_group_t group, dispatch_time_t timeout);

void dispatch_retain(dispatch_object_t object) MACOS_ARC_UNAVAILABLE;
void dispatch_release(dispatch_object_t object) MACOS_ARC_UNAVAILABLE;
dispatch_queue_t dispatch_get_current_queue(void) MACOS_DEPRECATED("10.9", "dispatch_get_main_queue");

#if defined(__cplusplus)
}
#endif

#pragma clang assume_nonnull end
