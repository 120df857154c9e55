// How portable code reaches the window toolkit: one process-wide toolkit that makes the
// application object and every window, view and alert.
//
// `toolkit()` returns the backend's toolkit unless a test has put a scripted one in its place with
// `ScopedToolkit`. The toolkit lives in its own backend library (apart from the other platform
// services), so only programs with a user interface link a widget toolkit. Main thread only.
#pragma once

#include <memory>
#include <string>

#include "platform/ui/alert.h"
#include "platform/ui/application.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/progress_indicator.h"
#include "platform/ui/window.h"

namespace platform::ui {

class Toolkit {
public:
    virtual ~Toolkit() = default;

    // The one application object, made on the first call.
    virtual Application& sharedApplication() = 0;

    // A window whose content area has the size of `contentRect`; not shown yet.
    virtual std::shared_ptr<Window> makeWindow(const Rect& contentRect, unsigned styleMask,
                                               BackingStoreType backing, bool defer) = 0;

    virtual std::shared_ptr<View> makeView(const Rect& frame) = 0;
    virtual std::shared_ptr<ImageView> makeImageView(const Rect& frame) = 0;

    // A non-editable, unselectable label showing `text` on one line in the default font.
    virtual std::shared_ptr<Label> labelWithString(const std::string& text) = 0;

    // A determinate bar with an empty frame.
    virtual std::shared_ptr<ProgressIndicator> makeProgressIndicator() = 0;

    virtual std::shared_ptr<Alert> makeAlert() = 0;
};

// The toolkit in force.
Toolkit& toolkit();

// The backend's own toolkit, made on first use. Defined by the ui backend linked into the program.
Toolkit& backendToolkit();

// Puts `replacement` in force for the life of this object; the previous toolkit returns after.
class ScopedToolkit {
public:
    explicit ScopedToolkit(Toolkit& replacement);
    ~ScopedToolkit();

    ScopedToolkit(const ScopedToolkit&) = delete;
    ScopedToolkit& operator=(const ScopedToolkit&) = delete;

private:
    Toolkit* previous_;
};

}  // namespace platform::ui
