#!/usr/bin/env bash
# Checks that the macOS backend makes every platform call the installer is built on: each
# row of the table below must match (grep -E) somewhere in the backend's Objective-C++ sources.
#   bash tests/macos_api/backend_calls.sh [FOLDER]
# FOLDER defaults to installer/platform/macos. A row's place is a file name there, "*" for any .mm
# file under it, or "posix" for those and the shared POSIX services, which the macOS backend links.
# What the engine does in portable code (appending to file URLs, decoding and trimming text) is not
# asked of the backend. Exits 77, saying why, while FOLDER holds no .mm file.
set -uo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
folder="${1:-$root/installer/platform/macos}"
posix="$root/installer/platform/posix"

if [ -z "$(find "$folder" -name '*.mm' 2>/dev/null | head -n 1)" ]; then
  echo "No macOS backend source (*.mm) in $folder yet: nothing to check."
  exit 77
fi

calls() {
  # place                  pattern                                                  the call
  cat <<'TABLE'
*                          \bprocessInfo\b                                          NSProcessInfo processInfo
process_info.mm            \barguments\b                                            NSProcessInfo arguments
process_info.mm            \bprocessIdentifier\b                                    NSProcessInfo processIdentifier
process_info.mm            \bgeteuid[[:space:]]*\(                                  geteuid
*                          \bmainBundle\b                                           NSBundle mainBundle
*                          \bresourceURL\b                                          NSBundle resourceURL
*                          \bbundlePath\b                                           NSBundle bundlePath
*                          \bdefaultManager\b                                       NSFileManager defaultManager
*                          fileExistsAtPath:                                        NSFileManager fileExistsAtPath:
*                          removeItemAtURL:                                         NSFileManager removeItemAtURL:error:
*                          copyItemAtURL:                                           NSFileManager copyItemAtURL:toURL:error:
*                          fileURLWithPath:                                         NSURL fileURLWithPath:
*                          \blocalizedDescription\b                                 NSError localizedDescription
*                          \bsharedWorkspace\b                                      NSWorkspace sharedWorkspace
*                          \brunningApplications\b                                  NSWorkspace runningApplications
running_application.mm     \bprocessIdentifier\b                                    NSRunningApplication processIdentifier
running_application.mm     \b(isTerminated|terminated)\b                            NSRunningApplication isTerminated
running_application.mm     \bbundleIdentifier\b                                     NSRunningApplication bundleIdentifier
running_application.mm     \bexecutableURL\b                                        NSRunningApplication executableURL
*                          runningApplicationWithProcessIdentifier:                 NSRunningApplication runningApplicationWithProcessIdentifier:
running_application.mm     [[:space:]]terminate\]                                   NSRunningApplication terminate
running_application.mm     [[:space:]]forceTerminate\]                              NSRunningApplication forceTerminate
child_processes.mm         \bNSTask\b                                               NSTask
child_processes.mm         setExecutableURL:|\.executableURL[[:space:]]*=           NSTask setExecutableURL:
child_processes.mm         setArguments:|\.arguments[[:space:]]*=                   NSTask setArguments:
child_processes.mm         setStandardOutput:|\.standardOutput[[:space:]]*=         NSTask setStandardOutput:
child_processes.mm         setStandardError:|\.standardError[[:space:]]*=           NSTask setStandardError:
child_processes.mm         launchAndReturnError:                                    NSTask launchAndReturnError:
child_processes.mm         \bwaitUntilExit\b                                        NSTask waitUntilExit
child_processes.mm         \bterminationStatus\b                                    NSTask terminationStatus
child_processes.mm         \bNSPipe\b                                               NSPipe
child_processes.mm         \bfileHandleForReading\b                                 NSPipe fileHandleForReading
child_processes.mm         readDataToEndOfFileAndReturnError:                       NSFileHandle readDataToEndOfFileAndReturnError:
posix                      \bkill[[:space:]]*\(                                     kill
posix                      \berrno\b                                                the thread's error number
*                          sleepForTimeInterval:                                    NSThread sleepForTimeInterval:
apple_script.mm            \bNSAppleScript\b                                        NSAppleScript
apple_script.mm            initWithSource:                                          NSAppleScript initWithSource:
apple_script.mm            executeAndReturnError:                                   NSAppleScript executeAndReturnError:
apple_script.mm            \bNSAppleScriptErrorMessage\b                            NSAppleScriptErrorMessage
workspace.mm               \bNSWorkspaceOpenConfiguration\b                         NSWorkspaceOpenConfiguration
workspace.mm               setArguments:|\.arguments[[:space:]]*=                   NSWorkspaceOpenConfiguration setArguments:
workspace.mm               setActivates:|\.activates[[:space:]]*=                   NSWorkspaceOpenConfiguration setActivates:
workspace.mm               openApplicationAtURL:                                    NSWorkspace openApplicationAtURL:configuration:completionHandler:
*                          \bdispatch_get_main_queue\b                              dispatch_get_main_queue
*                          \bdispatch_get_global_queue\b                            dispatch_get_global_queue
*                          \bQOS_CLASS_USER_INITIATED\b                             QOS_CLASS_USER_INITIATED
*                          \bdispatch_async\b                                       dispatch_async
*                          \bdispatch_after\b                                       dispatch_after
*                          \bDISPATCH_TIME_NOW\b                                    DISPATCH_TIME_NOW
*                          \bsharedApplication\b                                    NSApplication sharedApplication
*                          setActivationPolicy:|\.activationPolicy[[:space:]]*=     NSApplication setActivationPolicy:
*                          \bNSApplicationActivationPolicyRegular\b                 NSApplicationActivationPolicyRegular
*                          setDelegate:|\.delegate[[:space:]]*=                     NSApplication setDelegate:
*                          [[:space:]]run\]                                         NSApplication run
*                          \bterminate:                                             NSApplication terminate:
*                          activateIgnoringOtherApps:                               NSApplication activateIgnoringOtherApps:
*                          [[:space:]]activate\]                                    NSApplication activate (macOS 14 and later)
*                          SecTranslocateIsTranslocatedURL                          SecTranslocateIsTranslocatedURL
*                          SecTranslocateCreateOriginalPathForURL                   SecTranslocateCreateOriginalPathForURL
file_manager.mm            removexattr[[:space:]]*\([^)]*XATTR_NOFOLLOW             removexattr XATTR_NOFOLLOW
*                          \bapplicationIconImage\b                                 NSApplication applicationIconImage
*                          applicationDidFinishLaunching:                           NSApplicationDelegate applicationDidFinishLaunching:
*                          applicationShouldTerminateAfterLastWindowClosed:         NSApplicationDelegate applicationShouldTerminateAfterLastWindowClosed:
*                          initWithContentRect:                                     NSWindow initWithContentRect:styleMask:backing:defer:
*                          \bNSWindowStyleMaskTitled\b                              NSWindowStyleMaskTitled
*                          \bNSWindowStyleMaskClosable\b                            NSWindowStyleMaskClosable
*                          \bNSBackingStoreBuffered\b                               NSBackingStoreBuffered
*                          setTitle:|\.title[[:space:]]*=                           NSWindow setTitle:
*                          setReleasedWhenClosed:|\.releasedWhenClosed[[:space:]]*= NSWindow setReleasedWhenClosed:
*                          [[:space:]]center\]                                      NSWindow center
*                          setContentView:|\.contentView[[:space:]]*=               NSWindow setContentView:
*                          makeKeyAndOrderFront:                                    NSWindow makeKeyAndOrderFront:
*                          \bNSView\b                                               NSView
*                          addSubview:                                              NSView addSubview:
*                          \bNSImageView\b                                          NSImageView
*                          \bNSImageScaleProportionallyUpOrDown\b                   NSImageScaleProportionallyUpOrDown
*                          labelWithString:                                         NSTextField labelWithString:
*                          setStringValue:|\.stringValue[[:space:]]*=               NSTextField setStringValue:
*                          systemFontOfSize:[^]]*weight:                            NSFont systemFontOfSize:weight:
*                          systemFontOfSize:                                        NSFont systemFontOfSize:
*                          \bNSFontWeightSemibold\b                                 NSFontWeightSemibold
*                          \bsecondaryLabelColor\b                                  NSColor secondaryLabelColor
*                          \bNSTextAlignmentCenter\b                                NSTextAlignmentCenter
*                          \bNSLineBreakByWordWrapping\b                            NSLineBreakByWordWrapping
*                          setMaximumNumberOfLines:|\.maximumNumberOfLines[[:space:]]*= NSTextField setMaximumNumberOfLines:
*                          \bNSProgressIndicator\b                                  NSProgressIndicator
*                          \bNSProgressIndicatorStyleBar\b                          NSProgressIndicatorStyleBar
*                          setIndeterminate:|\.indeterminate[[:space:]]*=           NSProgressIndicator setIndeterminate:
*                          startAnimation:                                          NSProgressIndicator startAnimation:
*                          stopAnimation:                                           NSProgressIndicator stopAnimation:
*                          setUsesThreadedAnimation:|\.usesThreadedAnimation[[:space:]]*= NSProgressIndicator setUsesThreadedAnimation:
*                          \bNSAlert\b                                              NSAlert
*                          setMessageText:|\.messageText[[:space:]]*=               NSAlert setMessageText:
*                          setInformativeText:|\.informativeText[[:space:]]*=       NSAlert setInformativeText:
*                          \bNSAlertStyleWarning\b                                  NSAlertStyleWarning
*                          addButtonWithTitle:                                      NSAlert addButtonWithTitle:
*                          \brunModal\b                                             NSAlert runModal
TABLE
}

found() {
  local place=$1 pattern=$2
  case "$place" in
    '*') grep -rEq --include='*.mm' -- "$pattern" "$folder" ;;
    posix) grep -rEq --include='*.mm' --include='*.cpp' -- "$pattern" "$folder" "$posix" ;;
    *) grep -rEq --include="$place" -- "$pattern" "$folder" ;;
  esac
}

total=0
missing=0
while read -r place pattern call; do
  total=$((total + 1))
  if ! found "$place" "$pattern"; then
    missing=$((missing + 1))
    echo "missing: $call (in $place: $pattern)"
  fi
done < <(calls)
echo "$((total - missing)) of $total platform calls made by the macOS backend."
[ "$missing" -eq 0 ]
