#include "support/temp_folder.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace testing_support {

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kelvo-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    // Make read-only folders writable again so that everything can go.
    for (auto it = std::filesystem::recursive_directory_iterator(path_, ignored);
         it != std::filesystem::recursive_directory_iterator(); it.increment(ignored)) {
        if (it->is_directory(ignored) && !it->is_symlink(ignored)) chmod(it->path().c_str(), 0755);
    }
    chmod(path_.c_str(), 0755);
    std::filesystem::remove_all(path_, ignored);
}

void writeFile(const std::string& path, const std::string& contents, unsigned mode) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
    chmod(path.c_str(), mode);
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

}  // namespace testing_support
