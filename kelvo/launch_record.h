// The stand-in Kelvo's record of how it was started and what it did, for tests and the demo to read.
//
// Every event appends one line to the record file: the file named by the environment variable
// KELVO_LAUNCH_RECORD; without it, "kelvo-launches.log" in $XDG_RUNTIME_DIR, or in /tmp when that is
// not set. (An app that the macOS workspace opens does not inherit its opener's environment: there
// the record is /tmp/kelvo-launches.log.) A line is TAB-separated "key=value" fields, the first
// three always "pid=<pid>", "event=<name>" and "monotonic=<seconds on CLOCK_MONOTONIC>"; in values a
// backslash, TAB and line feed are written as "\\", "\t" and "\n".
//
//   started: executable=<path> cwd=<folder> argc=<n>, then one arg=<text> per argument, in order
//   eject:   volume=<path> outcome=ejected | outcome=<why it failed>
//   quit:    signal=<number>, or on macOS request=terminate when it was asked to quit
//   refused: request=terminate, on macOS, when it was started with --ignore-sigterm and asked to quit
//
// Each line is written with one append so lines of concurrent copies never interleave.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kelvo {

using RecordFields = std::vector<std::pair<std::string, std::string>>;

// The file that events are appended to.
std::string launchRecordPath();

// Appends one event with `fields` after its pid and name. Failing to write is not an error of
// Kelvo's: the line is lost.
void appendLaunchRecord(const std::string& event, const RecordFields& fields);

}  // namespace kelvo
