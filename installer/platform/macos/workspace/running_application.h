// One running application, as an NSRunningApplication handle.
//
// The handle's answers are AppKit's: its time-varying ones (isTerminated) change only as the main
// thread's event loop runs, which it does for the whole of an install. Safe to ask from any thread.
#pragma once

#include <memory>

#include "platform/workspace.h"

#ifdef __OBJC__
@class NSRunningApplication;
#else
class NSRunningApplication;
#endif

namespace platform::macos {

// The handle on `application`, which it keeps alive; null when `application` is nil.
std::shared_ptr<RunningApplication> makeRunningApplication(NSRunningApplication* application);

}  // namespace platform::macos
