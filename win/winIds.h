// The window framework's own ids: the texts it shows (WIN_IDS_*, the application's title and the idle
// message), the standard commands it handles, its bars and key indicators. They are plain defines, so
// that the resource compiler reads them too. res/strings.txt gives the texts of these ids; the build
// takes the names from here and refuses a string table that numbers one of them differently.
#pragma once

// texts
#define AFX_IDS_APP_TITLE 57344
#define AFX_IDS_IDLEMESSAGE 57345
#define WIN_IDS_SAVE_CHANGES 61696
#define WIN_IDS_ENTER_INTEGER 61697
#define WIN_IDS_SAVE_FAILED 61698
#define WIN_IDS_SAVE_DISK_FULL 61699
#define WIN_IDS_SAVE_ACCESS 61700
#define WIN_IDS_OPEN_FAILED 61701
#define WIN_IDS_FILE_FILTER 61702
#define WIN_IDS_UNTITLED 61703
#define WIN_IDS_CANNOT_FIND 61704
#define WIN_IDS_RECENT_MISSING 61705
#define WIN_IDS_NO_PRINTER 61706
#define WIN_IDS_PRINTER_UNUSABLE 61707
#define WIN_IDS_PRINT_FAILED 61708
#define WIN_IDS_PRINT_NO_PAGES 61709
#define WIN_IDS_PRINTING 61710
#define WIN_IDS_PRINTING_ON 61711
#define WIN_IDS_PAGE_OF 61712
#define WIN_IDS_CANCEL 61713
#define WIN_IDS_PAGE_NUMBER 61714
#define WIN_IDS_PREVIEW_PRINT 61715
#define WIN_IDS_PREVIEW_NEXT 61716
#define WIN_IDS_PREVIEW_PREV 61717
#define WIN_IDS_PREVIEW_TWO 61718
#define WIN_IDS_PREVIEW_ONE 61719
#define WIN_IDS_PREVIEW_ZOOM_IN 61720
#define WIN_IDS_PREVIEW_ZOOM_OUT 61721
#define WIN_IDS_PREVIEW_CLOSE 61722
#define WIN_IDS_PAGES 61723
#define WIN_IDS_PAGES_OF 61724
#define WIN_IDS_SAVE_KEPT_BOTH 61760

// the File menu
#define ID_FILE_NEW 57600
#define ID_FILE_OPEN 57601
#define ID_FILE_SAVE 57603
#define ID_FILE_SAVE_AS 57604
#define ID_FILE_PRINT_SETUP 57606
#define ID_FILE_PRINT 57607
#define ID_FILE_PRINT_DIRECT 57608
#define ID_FILE_PRINT_PREVIEW 57609
// the recent-file list: sixteen ids, the first of them the placeholder in the File menu
#define ID_FILE_MRU_FILE1 57616
#define ID_FILE_MRU_FILE2 57617
#define ID_FILE_MRU_FILE3 57618
#define ID_FILE_MRU_FILE4 57619
#define ID_FILE_MRU_LAST 57631

// the Edit menu
#define ID_EDIT_CLEAR 57632
#define ID_EDIT_COPY 57634
#define ID_EDIT_CUT 57635
#define ID_EDIT_FIND 57636
#define ID_EDIT_PASTE 57637
#define ID_EDIT_SELECT_ALL 57642
#define ID_EDIT_UNDO 57643

#define ID_APP_EXIT 57665

// the bars' control ids, which are also the View menu's commands that show and hide them
#define ID_VIEW_TOOLBAR 59392
#define ID_VIEW_STATUS_BAR 59393
#define ID_NEXT_PANE 59440
#define ID_PREV_PANE 59441

// the status bar's key indicators
#define ID_INDICATOR_CAPS 59137
#define ID_INDICATOR_NUM 59138
#define ID_INDICATOR_SCRL 59139
