#include "engine/install_error.h"

#include "engine/product_identity.h"

namespace engine {
namespace {

std::string joinedIdentifiers(const std::vector<std::int32_t>& identifiers) {
    std::string joined;
    for (std::size_t i = 0; i < identifiers.size(); ++i) {
        if (i > 0) joined += ", ";
        joined += std::to_string(identifiers[i]);
    }
    return joined;
}

template <class... Handlers>
struct Overloaded : Handlers... { using Handlers::operator()...; };
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace

InstallError InstallError::processInspectionFailed(std::string detail) {
    return InstallError(ProcessInspectionFailed{std::move(detail)});
}
InstallError InstallError::runningKelvoProcesses(std::vector<std::int32_t> processIdentifiers) {
    return InstallError(RunningKelvoProcesses{std::move(processIdentifiers)});
}
InstallError InstallError::copyFailed(std::string detail) {
    return InstallError(CopyFailed{std::move(detail)});
}
InstallError InstallError::launchFailed(std::string detail) {
    return InstallError(LaunchFailed{std::move(detail)});
}
InstallError InstallError::embeddedAppMissing() { return InstallError(EmbeddedAppMissing{}); }

std::optional<std::string> InstallError::errorDescription() const {
    return std::visit(Overloaded{
        [](const ProcessInspectionFailed& e) {
            return "Could not check for running Kelvo processes.\n" + e.detail;
        },
        [](const RunningKelvoProcesses& e) {
            bool one = e.processIdentifiers.size() == 1;
            return std::string("Could not close the running Kelvo ") + (one ? "process" : "processes") +
                   " (" + (one ? "PID" : "PIDs") + " " + joinedIdentifiers(e.processIdentifiers) +
                   "). Quit Kelvo and try again.";
        },
        [](const CopyFailed& e) {
            return "Could not copy Kelvo to the Applications folder.\n" + e.detail;
        },
        [](const LaunchFailed& e) {
            return "Kelvo was installed, but could not be launched automatically.\n" + e.detail +
                   "\nOpen Kelvo from your Applications folder to finish setup.";
        },
        [](const EmbeddedAppMissing&) {
            return std::string("This installer is damaged: the embedded Kelvo app is missing. "
                               "Please re-download the disk image from ") +
                   kProductWebAddress + ".";
        },
    }, case_);
}

}  // namespace engine
