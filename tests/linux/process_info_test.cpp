#include <gtest/gtest.h>

#include "platform/linux/process_info.h"

namespace {

TEST(ProcessArguments, SplitsCmdlineAtEachTerminator) {
    using platform::linux_backend::splitCommandLine;
    EXPECT_EQ(splitCommandLine(std::string("/bin/x\0--dest\0\0--no-launch\0", 27)),
              (std::vector<std::string>{"/bin/x", "--dest", "", "--no-launch"}));
    EXPECT_EQ(splitCommandLine(std::string("a b\0", 4)), (std::vector<std::string>{"a b"}));
    EXPECT_EQ(splitCommandLine(""), (std::vector<std::string>{}));
}

}  // namespace
