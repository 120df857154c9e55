// window_close_request WINDOW_ID: asks an X window to close the way a window manager does when its
// close button is pressed (a WM_DELETE_WINDOW message), rather than destroying the window.
#include <X11/Xlib.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: window_close_request WINDOW_ID\n");
        return 2;
    }
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "window_close_request: cannot open the display\n");
        return 1;
    }
    Window window = std::strtoul(argv[1], nullptr, 0);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, window, False, NoEventMask, &event);
    XSync(display, False);
    XCloseDisplay(display);
    return 0;
}
