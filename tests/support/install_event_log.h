// The order in which scripted services were called, as one list of short event names.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace testing_support {

struct InstallEventLog {
    std::vector<std::string> events;

    void add(std::string event) { events.push_back(std::move(event)); }
    bool contains(const std::string& event) const {
        return std::find(events.begin(), events.end(), event) != events.end();
    }
    // The position of the first `event`, or events.size() when there is none.
    std::size_t firstIndex(const std::string& event) const {
        return static_cast<std::size_t>(std::find(events.begin(), events.end(), event) - events.begin());
    }
    std::size_t lastIndex(const std::string& event) const {
        auto found = std::find(events.rbegin(), events.rend(), event);
        return found == events.rend() ? events.size()
                                       : static_cast<std::size_t>(events.rend() - found - 1);
    }
};

}  // namespace testing_support
