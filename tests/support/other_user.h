// Running part of a test as an ordinary user: root reads, writes and elevates as it likes, so a
// root test meets an ordinary user's failures only in a child that has given up its rights.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace testing_support {

constexpr uid_t kNobody = 65534;

// Runs `work` in a child process that has become `user` (its group too, and no others), in a
// session of its own with no terminal, and returns what `work` returned; "no ordinary user" when
// the child could not become one (this process is not root). `beforeWork` runs here first, given
// the child's id.
std::string asOrdinaryUser(uid_t user, const std::function<std::string()>& work,
                           const std::function<void(pid_t)>& beforeWork = {});

}  // namespace testing_support
