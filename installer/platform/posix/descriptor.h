// An open file descriptor, closed when its owner goes: the one way the POSIX code of both backends
// owns a descriptor.
#pragma once

#include <unistd.h>

#include <utility>

namespace platform::posix {

class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) close(fd_);
    }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }

    int get() const { return fd_; }
    // Hands the descriptor over to the caller, who closes it.
    int release() { return std::exchange(fd_, -1); }

private:
    int fd_;
};

}  // namespace platform::posix
