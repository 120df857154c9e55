// Which copies of Kelvo are running: the running-application list and pgrep, merged.
#include <set>

#include "engine/installer.h"
#include "engine/product_identity.h"
#include "engine/text_lines.h"
#include "platform/services.h"
#include "platform/utf8.h"

namespace engine {
namespace {

constexpr const char* kProcessTool = "/usr/bin/pgrep";
constexpr std::int32_t kMatchesFound = 0;
constexpr std::int32_t kNoMatch = 1;
constexpr const char* kCheckFailedWithoutText = "The process check failed.";

bool countsAsKelvo(const platform::RunningApplication& application, std::int32_t ownIdentifier) {
    if (application.processIdentifier() == ownIdentifier) return false;
    if (application.isTerminated()) return false;
    if (application.bundleIdentifier() == kTargetBundleIdentifier) return true;
    std::optional<platform::FileURL> executable = application.executableURL();
    return executable && executable->lastPathComponent() == kTargetExecutableName;
}

std::set<std::int32_t> applicationScan(std::int32_t ownIdentifier) {
    std::set<std::int32_t> found;
    for (const auto& application : platform::workspace().runningApplications()) {
        if (countsAsKelvo(*application, ownIdentifier)) found.insert(application->processIdentifier());
    }
    return found;
}

void addListedIdentifiers(const std::string& output, std::int32_t ownIdentifier, std::set<std::int32_t>& found) {
    for (const std::u32string& line : text::nonEmptyLines(platform::utf8::decode(output))) {
        std::optional<std::int32_t> identifier = text::parseInt32(line);
        if (identifier && *identifier != ownIdentifier) found.insert(*identifier);
    }
}

std::string failureText(const std::string& errorOutput) {
    std::string trimmed = platform::utf8::encode(text::trimmedOfWhitespaceAndNewlines(platform::utf8::decode(errorOutput)));
    return trimmed.empty() ? kCheckFailedWithoutText : trimmed;
}

}  // namespace

platform::Expected<ProcessIdentifiers, InstallError> Installer::runningKelvoProcessIdentifiers() const {
    using Result = platform::Expected<ProcessIdentifiers, InstallError>;
    const std::int32_t ownIdentifier = platform::processInfo().processIdentifier();
    std::set<std::int32_t> found = applicationScan(ownIdentifier);

    const std::string user = std::to_string(platform::processInfo().effectiveUserId());
    auto tool = platform::childProcesses().run(kProcessTool, {"-x", "-u", user, kTargetExecutableName});
    if (!tool) return Result::failure(InstallError::processInspectionFailed(tool.error().localizedDescription()));

    const platform::ChildProcessResult& result = tool.value();
    if (result.terminationStatus == kMatchesFound) {
        addListedIdentifiers(result.standardOutput, ownIdentifier, found);
    } else if (result.terminationStatus != kNoMatch) {
        return Result::failure(InstallError::processInspectionFailed(failureText(result.standardError)));
    }
    return ProcessIdentifiers(found.begin(), found.end());
}

}  // namespace engine
