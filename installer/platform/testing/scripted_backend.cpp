// The backend hooks of a unit-test program, which links no backend: each test puts in force the
// scripted services and toolkit it uses (ScopedServices, ScopedToolkit). One a test forgot stops
// the program at its first use, with a message naming it.
#include <cstdio>
#include <cstdlib>

#include "platform/services.h"
#include "platform/ui/toolkit.h"

namespace platform {

// No entry given: the registry aborts with "platform: the backend provides no <name> service".
ServiceTable makeBackendServices() { return {}; }

namespace ui {

Toolkit& backendToolkit() {
    std::fprintf(stderr, "platform: this test program has no toolkit; a test must put a scripted one "
                         "in force with ScopedToolkit\n");
    std::abort();
}

}  // namespace ui
}  // namespace platform
