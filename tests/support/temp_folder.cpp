#include "support/temp_folder.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace testing_support {

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kelvo-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    // Read-only folders are made writable again, so that everything can go.
    for (auto it = std::filesystem::recursive_directory_iterator(path_, ignored);
         it != std::filesystem::recursive_directory_iterator(); it.increment(ignored)) {
        if (it->is_directory(ignored) && !it->is_symlink(ignored)) chmod(it->path().c_str(), 0755);
    }
    std::filesystem::remove_all(path_, ignored);
}

void writeFile(const std::string& path, const std::string& contents, unsigned mode) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
    chmod(path.c_str(), mode);
}

std::string readFile(const std::string& path) {
    std::ostringstream contents;
    contents << std::ifstream(path, std::ios::binary).rdbuf();
    return contents.str();
}

}  // namespace testing_support
