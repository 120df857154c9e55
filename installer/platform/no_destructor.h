// An object made once and never destroyed, for what must outlive the process's own ending.
//
// The application ends through exit(), which runs the destructors of static objects while the
// install may still be running on a background thread and while the window toolkit is tearing
// itself down. Whatever those can reach (the platform services, the toolkit, the application's
// delegate) is therefore held in a NoDestructor: it lives until the process is gone, as an
// Objective-C global does. Its memory is the operating system's to take back.
#pragma once

#include <new>
#include <utility>

namespace platform {

template <class T>
class NoDestructor {
public:
    template <class... Arguments>
    explicit NoDestructor(Arguments&&... arguments) {
        new (storage_) T(std::forward<Arguments>(arguments)...);
    }

    NoDestructor(const NoDestructor&) = delete;
    NoDestructor& operator=(const NoDestructor&) = delete;

    T& operator*() { return *get(); }
    T* operator->() { return get(); }
    T* get() { return std::launder(reinterpret_cast<T*>(storage_)); }

private:
    alignas(T) unsigned char storage_[sizeof(T)];
};

}  // namespace platform
