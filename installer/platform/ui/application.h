// The process's application object and the delegate it reports to.
//
// There is one application object per process, made by the toolkit on first request on the main
// thread. It runs the event loop and ends the process. It calls its delegate on the main thread.
#pragma once

#include <memory>

#include "platform/ui/image.h"

namespace platform::ui {

class Application;

enum class ActivationPolicy {
    Regular,  // an ordinary application with windows, shown among the running applications
};

class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    // Once, when the event loop has started and the application is ready for windows.
    virtual void applicationDidFinishLaunching() {}

    // When the user has closed the last window: true ends the application (through terminate).
    virtual bool applicationShouldTerminateAfterLastWindowClosed(Application&) { return false; }
};

class Application {
public:
    virtual ~Application() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    // The application does not own its delegate: the caller keeps it alive for the process's life.
    virtual void setDelegate(ApplicationDelegate* delegate) = 0;

    // Runs the event loop on the main thread; returns only once the application has terminated,
    // if at all.
    virtual void run() = 0;

    // Ends the application at once: nobody is asked, and work still running on other threads is
    // not waited for. Windows go away and `run` returns, or, on toolkits that end the process
    // themselves, the process exits. Either way the process ends through exit(), whose static
    // destructors run while those other threads may still work: what they use must not be among
    // them (see platform/no_destructor.h).
    virtual void terminate() = 0;

    // Brings the application's windows to the front; with `ignoringOtherApps` also when another
    // application is active.
    virtual void activateIgnoringOtherApps(bool ignoringOtherApps) = 0;

    // The application's own icon from its bundle. When the bundle has none: none, or the toolkit's
    // generic application icon where the toolkit has one.
    virtual std::shared_ptr<Image> applicationIconImage() = 0;
};

}  // namespace platform::ui
