#include "support/x11_windows.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace testing_support {
namespace {

constexpr auto kPollInterval = std::chrono::milliseconds(20);

// Frees an xcb reply when it goes out of scope.
template <class Reply>
struct Owned {
    Reply* reply;
    ~Owned() { std::free(reply); }
    Reply* operator->() const { return reply; }
    explicit operator bool() const { return reply != nullptr; }
};

}  // namespace

X11Windows::X11Windows(const std::string& display) {
    connection_ = xcb_connect(display.c_str(), nullptr);
    if (xcb_connection_has_error(connection_)) return;
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

X11Windows::~X11Windows() { xcb_disconnect(connection_); }

bool X11Windows::connected() const { return xcb_connection_has_error(connection_) == 0; }

std::uint32_t X11Windows::atom(const char* name) {
    Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
        connection_, xcb_intern_atom(connection_, 0, std::strlen(name), name), nullptr)};
    return reply ? reply->atom : static_cast<std::uint32_t>(XCB_ATOM_NONE);
}

std::optional<std::uint32_t> X11Windows::findWindow(const std::string& title) {
    Owned<xcb_query_tree_reply_t> tree{xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr)};
    if (!tree) return std::nullopt;
    std::uint32_t netName = atom("_NET_WM_NAME");
    std::uint32_t utf8 = atom("UTF8_STRING");
    xcb_window_t* children = xcb_query_tree_children(tree.reply);
    for (int index = 0; index < xcb_query_tree_children_length(tree.reply); ++index) {
        xcb_window_t window = children[index];
        Owned<xcb_get_window_attributes_reply_t> attributes{xcb_get_window_attributes_reply(
            connection_, xcb_get_window_attributes(connection_, window), nullptr)};
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) continue;
        Owned<xcb_get_property_reply_t> name{xcb_get_property_reply(
            connection_, xcb_get_property(connection_, 0, window, netName, utf8, 0, 1024), nullptr)};
        if (!name) continue;
        std::string text(static_cast<const char*>(xcb_get_property_value(name.reply)),
                         xcb_get_property_value_length(name.reply));
        if (text == title) return window;
    }
    return std::nullopt;
}

std::optional<std::uint32_t> X11Windows::waitForWindow(const std::string& title, double timeoutSeconds) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeoutSeconds);
    while (connected()) {
        if (auto window = findWindow(title)) return window;
        if (std::chrono::steady_clock::now() > deadline) break;
        std::this_thread::sleep_for(kPollInterval);
    }
    return std::nullopt;
}

bool X11Windows::isShown(const std::string& title) { return findWindow(title).has_value(); }

WindowGeometry X11Windows::geometry(std::uint32_t window) {
    WindowGeometry result;
    Owned<xcb_get_geometry_reply_t> size{xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr)};
    Owned<xcb_translate_coordinates_reply_t> place{xcb_translate_coordinates_reply(
        connection_, xcb_translate_coordinates(connection_, window, root_, 0, 0), nullptr)};
    if (!size || !place) return result;
    return WindowGeometry{place->dst_x, place->dst_y, size->width, size->height};
}

void X11Windows::requestClose(std::uint32_t window) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("WM_PROTOCOLS");
    event.data.data32[0] = atom("WM_DELETE_WINDOW");
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
}

}  // namespace testing_support
