// Resource ids that are not string-table entries: icons, menus, dialogs and their controls.
#pragma once

#define IDI_QUILLON 128

// About box: the five text controls, then the OK button (IDOK)
#define IDD_ABOUTBOX 103
#define IDC_ABOUT_COPYRIGHT 277
#define IDC_ABOUT_BUILD_DATE 278
#define IDC_ABOUT_LANGUAGE 279
#define IDC_ABOUT_TRADEMARK 280
#define IDC_ABOUT_OTHER_TRADEMARKS 281

// Go To Line dialog: the number field and its range label
#define IDD_GOTO_LINE 249
#define IDC_GOTO_LINE_NUMBER 250
#define IDC_GOTO_LINE_LABEL 251

// Check For Later Version: the message with its link, then the OK button (IDOK)
#define IDD_CHECK_VERSION 361
#define IDC_VERSION_MESSAGE 275

// Recovery of unsaved text: the message naming the text, then Restore (IDOK) and Discard
#define IDD_RECOVERY 339
#define IDC_RECOVERY_MESSAGE 338
#define IDC_RECOVERY_DISCARD 337
