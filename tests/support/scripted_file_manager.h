// A file manager whose file system is a set of paths and whose failures a test chooses.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>

#include "platform/file_manager.h"
#include "support/install_event_log.h"

namespace testing_support {

class ScriptedFileManager final : public platform::FileManager {
public:
    explicit ScriptedFileManager(InstallEventLog& log) : log_(log) {}

    std::set<std::string> existing;                   // every path that exists
    std::optional<platform::Error> removalError;      // removeItem fails with this
    std::optional<platform::Error> copyError;         // copyItem fails with this
    std::set<std::string> copiedItemContents = {"Contents/Info.plist"};  // what a copy creates

    bool fileExistsAtPath(const std::string& path) override {
        log_.add("exists " + path);
        return existing.count(path) > 0;
    }
    std::optional<std::string> currentDirectoryPath() override { return "/"; }
    std::optional<platform::Error> removeItem(const platform::FileURL& url) override {
        log_.add("remove " + url.path());
        if (removalError) return removalError;
        std::erase_if(existing, [&](const std::string& path) { return path.starts_with(url.path()); });
        return std::nullopt;
    }
    // Logs "lock <path>" now and "unlock <path>" when the handle goes.
    std::unique_ptr<platform::ItemLock> lockItem(const platform::FileURL& url) override {
        struct LoggedLock final : platform::ItemLock {
            InstallEventLog& log;
            std::string path;
            LoggedLock(InstallEventLog& log, std::string path) : log(log), path(std::move(path)) {}
            ~LoggedLock() override { log.add("unlock " + path); }
        };
        log_.add("lock " + url.path());
        return std::make_unique<LoggedLock>(log_, url.path());
    }
    std::optional<platform::Error> copyItem(const platform::FileURL& from, const platform::FileURL& to) override {
        log_.add("copy " + from.path() + " -> " + to.path());
        if (copyError) return copyError;
        existing.insert(to.path());
        for (const std::string& inside : copiedItemContents) existing.insert(to.path() + "/" + inside);
        return std::nullopt;
    }

private:
    InstallEventLog& log_;
};

}  // namespace testing_support
