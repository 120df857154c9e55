// Modal alerts.
#pragma once

#include <AppKit/NSApplication.h>
#include <AppKit/NSControl.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSAlertStyle) {
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2,
};
static const NSAlertStyle NSWarningAlertStyle
    MACOS_DEPRECATED("10.12", "NSAlertStyleWarning") = NSAlertStyleWarning;
static const NSAlertStyle NSInformationalAlertStyle
    MACOS_DEPRECATED("10.12", "NSAlertStyleInformational") = NSAlertStyleInformational;
static const NSAlertStyle NSCriticalAlertStyle
    MACOS_DEPRECATED("10.12", "NSAlertStyleCritical") = NSAlertStyleCritical;

// Which button ended the alert, in the order the buttons were added.
static const NSModalResponse NSAlertFirstButtonReturn = 1000;
static const NSModalResponse NSAlertSecondButtonReturn = 1001;
static const NSInteger NSAlertDefaultReturn MACOS_DEPRECATED("10.10", "NSAlertFirstButtonReturn") = 1;

@interface NSAlert : NSObject
@property (copy) NSString* messageText;
@property (copy) NSString* informativeText;
@property NSAlertStyle alertStyle;
@property (readonly, copy) NSArray<NSButton*>* buttons;
// The first button added is the default one, which the Return key presses.
- (NSButton*)addButtonWithTitle:(NSString*)title;
// Shows the alert application-modally and blocks until a button ends it.
- (NSModalResponse)runModal;
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(void (^_Nullable)(NSModalResponse response))handler;

+ (nullable NSAlert*)alertWithMessageText:(nullable NSString*)message
                            defaultButton:(nullable NSString*)defaultButton
                          alternateButton:(nullable NSString*)alternateButton
                              otherButton:(nullable NSString*)otherButton
                informativeTextWithFormat:(NSString*)format, ...
    MACOS_DEPRECATED("10.10", "init, messageText, informativeText and addButtonWithTitle:");
@end

NS_ASSUME_NONNULL_END
