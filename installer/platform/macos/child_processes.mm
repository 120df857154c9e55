#include "platform/macos/child_processes.h"

#import <Foundation/Foundation.h>

#include <optional>

#include "platform/macos/ns_error.h"
#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

std::string bytesOf(NSData* _Nullable data) {
    if (data == nil || data.length == 0) return {};
    return std::string(static_cast<const char*>(data.bytes), data.length);
}

// Reads `reader` to its end: the bytes, or the error of a failed read. (readDataToEndOfFile would
// raise an exception instead, which nothing on the install's thread could catch.)
Expected<std::string, Error> readToEnd(NSFileHandle* reader, const std::string& what) {
    @autoreleasepool {
        NSError* failure = nil;
        NSData* data = [reader readDataToEndOfFileAndReturnError:&failure];
        if (data != nil) return bytesOf(data);
        return Expected<std::string, Error>::failure(errorFromNSError(failure, "Could not read " + what + "."));
    }
}

// Reads both pipes of the launched `task` to their ends at once, so that neither can fill up while
// the other is waited on, then waits for the task itself, also when a read failed.
Expected<ChildProcessResult, Error> collect(NSTask* task, NSPipe* output, NSPipe* errors,
                                            const std::string& program) {
    NSFileHandle* errorReader = errors.fileHandleForReading;
    const std::string errorOutput = "the error output of " + quoted(program);
    __block std::optional<Expected<std::string, Error>> errorText;
    dispatch_group_t drained = dispatch_group_create();
    dispatch_group_async(drained, dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
      errorText = readToEnd(errorReader, errorOutput);
    });
    Expected<std::string, Error> outputText =
        readToEnd(output.fileHandleForReading, "the output of " + quoted(program));
    dispatch_group_wait(drained, DISPATCH_TIME_FOREVER);
    [task waitUntilExit];

    if (!outputText) return Expected<ChildProcessResult, Error>::failure(std::move(outputText).error());
    if (!*errorText) return Expected<ChildProcessResult, Error>::failure(std::move(*errorText).error());
    ChildProcessResult result;
    result.standardOutput = std::move(outputText).value();
    result.standardError = std::move(*errorText).value();
    result.endedBySignal = task.terminationReason == NSTaskTerminationReasonUncaughtSignal;
    result.terminationStatus = task.terminationStatus;
    return result;
}

// Every element as an NSString; nil when one is not UTF-8.
NSArray<NSString*>* _Nullable argumentsIfUTF8(const std::vector<std::string>& arguments) {
    NSMutableArray<NSString*>* converted = [NSMutableArray arrayWithCapacity:arguments.size()];
    for (const std::string& argument : arguments) {
        NSString* element = toNSStringIfUTF8(argument);
        if (element == nil) return nil;
        [converted addObject:element];
    }
    return converted;
}

}  // namespace

Expected<ChildProcessResult, Error> MacChildProcesses::run(const std::string& executable,
                                                           const std::vector<std::string>& arguments) {
    @autoreleasepool {
        NSString* path = toNSStringIfUTF8(executable);
        NSArray<NSString*>* argumentList = argumentsIfUTF8(arguments);
        if (!executable.starts_with('/') || path == nil || argumentList == nil) {
            return Expected<ChildProcessResult, Error>::failure(
                Error("The program " + quoted(executable) +
                      " could not be started: it needs an absolute path and a command line in UTF-8."));
        }
        NSTask* task = [[NSTask alloc] init];
        task.executableURL = [NSURL fileURLWithPath:path];
        task.arguments = argumentList;
        // Launching closes this process's write ends of both pipes, so each read ends when the
        // child (and whatever it passed them on to) has closed its own.
        NSPipe* output = [NSPipe pipe];
        NSPipe* errors = [NSPipe pipe];
        task.standardOutput = output;
        task.standardError = errors;

        NSError* launchError = nil;
        if (![task launchAndReturnError:&launchError]) {
            return Expected<ChildProcessResult, Error>::failure(errorFromNSError(
                launchError, "The program " + quoted(executable) + " could not be started."));
        }
        return collect(task, output, errors, executable);
    }
}

}  // namespace platform::macos
