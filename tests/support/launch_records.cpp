#include "support/launch_records.h"

#include <sstream>

#include "support/temp_folder.h"

namespace testing_support {
namespace {

std::string unescaped(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        char next = text[++i];
        out += next == 't' ? '\t' : next == 'n' ? '\n' : next;
    }
    return out;
}

LaunchEvent parseLine(const std::string& line) {
    LaunchEvent event;
    std::istringstream fields(line);
    std::string field;
    while (std::getline(fields, field, '\t')) {
        std::size_t equals = field.find('=');
        if (equals == std::string::npos) continue;
        event.fields.emplace_back(field.substr(0, equals), unescaped(field.substr(equals + 1)));
    }
    return event;
}

}  // namespace

std::optional<std::string> LaunchEvent::value(const std::string& key) const {
    for (const auto& [name, text] : fields) {
        if (name == key) return text;
    }
    return std::nullopt;
}

std::vector<std::string> LaunchEvent::values(const std::string& key) const {
    std::vector<std::string> found;
    for (const auto& [name, text] : fields) {
        if (name == key) found.push_back(text);
    }
    return found;
}

int LaunchEvent::pid() const { return std::stoi(value("pid").value_or("0")); }

std::vector<LaunchEvent> readLaunchEvents(const std::string& path) {
    std::vector<LaunchEvent> events;
    std::istringstream lines(readFile(path));
    std::string line;
    while (std::getline(lines, line)) {
        if (!line.empty()) events.push_back(parseLine(line));
    }
    return events;
}

std::vector<LaunchEvent> eventsNamed(const std::vector<LaunchEvent>& events, const std::string& event) {
    std::vector<LaunchEvent> found;
    for (const LaunchEvent& candidate : events) {
        if (candidate.event() == event) found.push_back(candidate);
    }
    return found;
}

}  // namespace testing_support
