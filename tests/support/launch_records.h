// Reading the stand-in Kelvo's launch record (the format is described in kelvo/launch_record.h).
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

// One line of the record: its fields in order, values unescaped.
struct LaunchEvent {
    std::vector<std::pair<std::string, std::string>> fields;

    // The first value under `key`; none when there is none.
    std::optional<std::string> value(const std::string& key) const;
    // Every value under `key`, in order.
    std::vector<std::string> values(const std::string& key) const;

    int pid() const;
    std::string event() const { return value("event").value_or(""); }
    // The arguments of a "started" event, after the program path.
    std::vector<std::string> arguments() const { return values("arg"); }
};

// Every event in the record file at `path`, in order; empty when there is no file.
std::vector<LaunchEvent> readLaunchEvents(const std::string& path);

// The events named `event`, in order.
std::vector<LaunchEvent> eventsNamed(const std::vector<LaunchEvent>& events, const std::string& event);

}  // namespace testing_support
