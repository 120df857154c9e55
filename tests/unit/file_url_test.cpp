#include <gtest/gtest.h>

#include "platform/file_url.h"

namespace {

using platform::FileURL;

TEST(FileURL, LastPathComponent) {
    EXPECT_EQ(FileURL::fileURLWithPath("/x/Kelvo.app/Contents/MacOS/Kelvo").lastPathComponent(), "Kelvo");
    EXPECT_EQ(FileURL::fileURLWithPath("/x/").lastPathComponent(), "x");
    EXPECT_EQ(FileURL::fileURLWithPath("/").lastPathComponent(), "");
}

}  // namespace
