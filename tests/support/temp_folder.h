// A fresh folder under the system's temporary folder, removed with everything in it on destruction.
#pragma once

#include <string>

namespace testing_support {

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return path_; }
    // `path()` + "/" + `relative`.
    std::string operator/(const std::string& relative) const { return path_ + "/" + relative; }

private:
    std::string path_;
};

// Writes `contents` to `path`, creating missing folders; `mode` sets the permissions.
void writeFile(const std::string& path, const std::string& contents, unsigned mode = 0644);

// The whole contents of `path`; empty when it cannot be read.
std::string readFile(const std::string& path);

}  // namespace testing_support
