#include "bench_tree.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

namespace bench {
namespace {

constexpr int kFrameworks = 20;
constexpr std::uint64_t kMainExecutableBytes = 40ull << 20;
constexpr std::uint64_t kFrameworkBinaryBytes = 8ull << 20;
constexpr int kResourceFolders = 40;       // per framework and in the app's own resources
constexpr int kFilesPerResourceFolder = 14;
constexpr std::size_t kBlock = 4096;

// A small fixed-seed generator, so the tree is the same on every machine and run.
class Random {
public:
    std::uint64_t next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return state_;
    }
    std::uint64_t below(std::uint64_t bound) { return next() % bound; }

private:
    std::uint64_t state_ = 0x4b656c766f417070ull;
};

// 85% small, 14% medium, 1% large, as in the resources of an app.
std::uint64_t resourceSize(Random& random) {
    std::uint64_t roll = random.below(100);
    if (roll < 85) return 1024 + random.below(11 * 1024);
    if (roll < 99) return 12 * 1024 + random.below(48 * 1024);
    return 200 * 1024 + random.below(800 * 1024);
}

class Writer {
public:
    TreeTotals totals;

    void file(const std::string& path, std::uint64_t size, mode_t mode = 0644) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        std::vector<char> block(kBlock);
        for (std::uint64_t written = 0; written < size; written += kBlock) {
            bool randomBlock = (written / kBlock) % 2 == 0;
            for (std::size_t i = 0; i < kBlock; i += 8) {
                std::uint64_t word = randomBlock ? random_.next() : 0x2e6f766c654b2e2eull + i;
                std::copy_n(reinterpret_cast<const char*>(&word), 8, block.data() + i);
            }
            out.write(block.data(), static_cast<std::streamsize>(std::min<std::uint64_t>(kBlock, size - written)));
        }
        out.close();
        chmod(path.c_str(), mode);
        if (totals.files % 10 == 0) {
            std::string value = "bench " + std::to_string(totals.files);
            setxattr(path.c_str(), "user.com.apple.quarantine", value.data(), value.size(), 0);
        }
        ++totals.files;
        totals.bytes += size;
    }

    void resources(const std::string& folder) {
        for (int f = 0; f < kResourceFolders; ++f) {
            std::string sub = folder + "/Group " + std::to_string(f) + (f % 3 == 0 ? ".lproj" : "");
            for (int i = 0; i < kFilesPerResourceFolder; ++i) {
                file(sub + "/item-" + std::to_string(i) + (i % 2 ? ".png" : ".nib"), resourceSize(random_));
            }
        }
    }

    Random& random() { return random_; }

private:
    Random random_;
};

}  // namespace

TreeTotals makeBenchmarkBundle(const std::string& folder) {
    Writer writer;
    const std::string contents = folder + "/Kelvo.app/Contents";
    writer.file(contents + "/Info.plist", 2048);
    writer.file(contents + "/MacOS/Kelvo", kMainExecutableBytes, 0755);
    writer.resources(contents + "/Resources");
    for (int i = 0; i < kFrameworks; ++i) {
        std::string name = "Kit" + std::to_string(i);
        std::string framework = contents + "/Frameworks/" + name + ".framework";
        writer.file(framework + "/Versions/A/" + name, kFrameworkBinaryBytes, 0755);
        writer.file(framework + "/Versions/A/Resources/Info.plist", 1024);
        writer.resources(framework + "/Versions/A/Resources");
        std::filesystem::create_directory_symlink("A", framework + "/Versions/Current");
        std::filesystem::create_symlink("Versions/Current/" + name, framework + "/" + name);
        std::filesystem::create_directory_symlink("Versions/Current/Resources", framework + "/Resources");
    }
    return writer.totals;
}

}  // namespace bench
