// A location in the file system, with the semantics of the platform's file URLs.
//
// Nothing in the installer reads more of a file URL than its path, so this is a path with the two
// ways of making one that the installer uses. It is a plain value and safe to copy across threads.
#pragma once

#include <string>

namespace platform {

class FileURL {
public:
    // The URL of `path`. A relative path is resolved against the process's working folder at this
    // moment. Trailing slashes are dropped, except for
    // the root itself, so "/Applications/" and "/Applications" name the same URL.
    //
    // An empty path names the current working directory, as it does for the platform's own file
    // URLs: `--dest ""` therefore installs into the folder the installer was started from.
    //
    // When the working directory cannot be told, a relative path (the empty one included) stays
    // relative, as a platform file URL without a base does: it is never taken to lie below "/".
    static FileURL fileURLWithPath(const std::string& path);

    // This URL with one more component: exactly one slash between the two (none after an empty
    // relative path). `component` may itself hold slashes ("Contents/Info.plist").
    FileURL appendingPathComponent(const std::string& component) const;

    // The last component of the path ("Kelvo" for ".../MacOS/Kelvo"); empty for the root.
    std::string lastPathComponent() const;

    const std::string& path() const { return path_; }

    friend bool operator==(const FileURL&, const FileURL&) = default;

private:
    explicit FileURL(std::string path) : path_(std::move(path)) {}

    std::string path_;
};

}  // namespace platform
