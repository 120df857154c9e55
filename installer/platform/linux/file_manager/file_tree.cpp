#include "platform/linux/file_manager/file_tree.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/linux/file_manager/copy_workers.h"
#include "platform/linux/file_manager/file_contents.h"
#include "platform/linux/file_manager/folder_entries.h"
#include "platform/linux/file_manager/item_metadata.h"
#include "platform/posix/copy_into_itself.h"
#include "platform/posix/descriptor.h"
#include "platform/linux/file_manager/tree_removal.h"

namespace platform::linux_backend {
namespace {

using posix::copyError;
using posix::Descriptor;
using Result = Expected<void, Error>;

// A walker thread creates folders and links while these copy files: on two cores, one reads
// while another waits for the disk.
constexpr std::size_t kCopyThreads = 4;
// Files queued ahead of the copying threads: enough to keep them busy, little memory.
constexpr std::size_t kQueuedFiles = 256;
constexpr std::size_t kCopyBufferSize = 256 * 1024;
constexpr const char* kUnsupportedKind = "it is neither a file, a folder nor a symbolic link";
constexpr int kNewFileFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;

class TreeCopy {
public:
    explicit TreeCopy(bool merge) : merge_(merge), workers_(kCopyThreads, kQueuedFiles) {}

    Result run(const std::string& from, const std::string& to) {
        struct stat status{};
        if (lstat(from.c_str(), &status) != 0) {
            return Result::failure(copyError(from, to, errorNumberText(errno)));
        }
        if (Result allowed = posix::ensureNotIntoItself(from, to); !allowed) return allowed;
        copyItem(from, to, S_ISREG(status.st_mode) ? DT_REG : DT_UNKNOWN);
        workers_.finish();
        if (!failed()) finishFolders();
        if (error_) return Result::failure(*error_);
        return {};
    }

private:
    struct Folder {
        std::string from;
        std::string to;
        struct stat status;
    };

    bool failed() const { return failed_.load(std::memory_order_relaxed); }

    void fail(const std::string& from, const std::string& to, const std::string& reason) {
        std::lock_guard lock(errorMutex_);
        if (!error_) error_ = copyError(from, to, reason);
        failed_ = true;
    }
    void fail(const std::string& from, const std::string& to, int error) {
        fail(from, to, errorNumberText(error));
    }
    void fail(const std::string& from, const std::string& to, const Result& failure) {
        fail(from, to, failure.error().localizedDescription());
    }

    // Called by the walker. Regular files go to the copying threads, which read their status.
    void copyItem(const std::string& from, const std::string& to, unsigned char type) {
        if (type == DT_REG) {
            workers_.submit([this, from, to] { copyFile(from, to); });
            return;
        }
        struct stat status{};
        if (lstat(from.c_str(), &status) != 0) return fail(from, to, errno);
        if (S_ISDIR(status.st_mode)) return copyFolder(from, to, status);
        if (S_ISLNK(status.st_mode)) return copyLink(from, to, status);
        if (S_ISREG(status.st_mode)) return copyItem(from, to, DT_REG);
        fail(from, to, kUnsupportedKind);
    }

    // When merging, makes way for a new item at `to`: keeps a folder if a folder is coming,
    // removes anything else. True when a folder is kept.
    bool clearWay(const std::string& from, const std::string& to, bool folderComing) {
        struct stat existing{};
        if (!merge_ || lstat(to.c_str(), &existing) != 0) return false;
        if (S_ISDIR(existing.st_mode)) {
            if (folderComing) return true;
            if (Result removal = removeTree(to); !removal) fail(from, to, removal);
        } else if (unlink(to.c_str()) != 0) {
            fail(from, to, errno);
        }
        return false;
    }

    void copyFolder(const std::string& from, const std::string& to, const struct stat& status) {
        bool kept = clearWay(from, to, true);
        if (failed()) return;
        // Owner-only until finished, so that nobody else writes into it meanwhile.
        if (!kept && mkdir(to.c_str(), S_IRWXU) != 0) return fail(from, to, errno);
        folders_.push_back({from, to, status});

        FolderEntries entries;
        {
            // Closed before going deeper, so that a deep tree costs no descriptor per level.
            Descriptor folder(open(from.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
            if (folder.get() < 0) return fail(from, to, errno);
            auto listed = folderEntries(folder.get());
            if (!listed) return fail(from, to, listed.error().localizedDescription());
            entries = std::move(listed).value();
        }
        for (const auto& [name, type] : entries) {
            if (failed()) return;
            copyItem(from + "/" + name, to + "/" + name, type);
        }
    }

    void copyLink(const std::string& from, const std::string& to, const struct stat& status) {
        std::string target(static_cast<std::size_t>(status.st_size) + 1, '\0');
        ssize_t length;
        while ((length = readlink(from.c_str(), target.data(), target.size())) >= static_cast<ssize_t>(target.size())) {
            target.resize(target.size() * 2);
        }
        if (length < 0) return fail(from, to, errno);
        target.resize(static_cast<std::size_t>(length));
        clearWay(from, to, false);
        if (failed()) return;
        if (symlink(target.c_str(), to.c_str()) != 0) return fail(from, to, errno);
        if (Result copied = copyMetadata({-1, from}, {-1, to}, status); !copied) fail(from, to, copied);
    }

    // Opens the new file `to` into `out`. For a further name of a file with several names (hard
    // links) whose copy is made already, makes `to` one more name of that copy instead, leaving
    // `out` closed.
    Result createFile(const std::string& to, const struct stat& status, Descriptor& out) {
        std::unique_lock lock(linksMutex_, std::defer_lock);
        if (status.st_nlink > 1) {
            lock.lock();  // held while the first copy is made, so no other name links to it before
            auto [copy, isFirst] = copiesOfLinkedFiles_.try_emplace({status.st_dev, status.st_ino}, to);
            if (!isFirst) return link(copy->second.c_str(), to.c_str()) == 0 ? Result() : errorNumberFailure(errno);
        }
        out = Descriptor(open(to.c_str(), kNewFileFlags, S_IRUSR | S_IWUSR));
        return out.get() < 0 ? errorNumberFailure(errno) : Result();
    }

    // Runs on a copying thread.
    void copyFile(const std::string& from, const std::string& to) {
        if (failed()) return;
        Descriptor in(open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
        struct stat status{};
        if (in.get() < 0 || fstat(in.get(), &status) != 0) return fail(from, to, errno);
        if (!S_ISREG(status.st_mode)) return fail(from, to, kUnsupportedKind);
        clearWay(from, to, false);
        if (failed()) return;
        Descriptor out;
        if (Result created = createFile(to, status, out); !created) return fail(from, to, created);
        if (out.get() < 0) return;  // one more name of a file copied already
        posix_fadvise(in.get(), 0, 0, POSIX_FADV_SEQUENTIAL);

        thread_local std::vector<char> buffer;
        if (buffer.empty()) buffer.resize(kCopyBufferSize);
        Result copied = copyFileContents(in.get(), out.get(), status, rangeCopyWorks_, buffer);
        if (copied) copied = copyMetadata({in.get(), from}, {out.get(), to}, status);
        if (copied && close(out.release()) != 0) copied = errorNumberFailure(errno);
        if (!copied) fail(from, to, copied);
    }

    // Folder metadata comes last and deepest first: writing into a folder changes its times, and
    // a read-only folder could not take its contents.
    void finishFolders() {
        for (auto folder = folders_.rbegin(); folder != folders_.rend() && !failed(); ++folder) {
            Descriptor fd(open(folder->to.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
            Result finished = fd.get() < 0 ? errorNumberFailure(errno) : Result();
            if (finished) finished = copyMetadata({-1, folder->from}, {fd.get(), folder->to}, folder->status);
            if (!finished) fail(folder->from, folder->to, finished);
        }
    }

    const bool merge_;
    std::atomic<bool> rangeCopyWorks_{true};
    std::atomic<bool> failed_{false};
    std::mutex errorMutex_;
    std::optional<Error> error_;
    std::vector<Folder> folders_;  // in the order made, so parents before their children
    std::mutex linksMutex_;
    // The first copy of each file with several names met so far, by the original's device and inode.
    std::map<std::pair<dev_t, ino_t>, std::string> copiesOfLinkedFiles_;
    CopyWorkers workers_;  // last, so its threads are joined before the rest goes
};

}  // namespace

Result copyTree(const std::string& from, const std::string& to) {
    return TreeCopy(false).run(from, to);
}

Result mergeTree(const std::string& from, const std::string& to) {
    return TreeCopy(true).run(from, to);
}

}  // namespace platform::linux_backend
