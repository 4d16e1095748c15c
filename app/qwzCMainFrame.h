// Quillon's main window: the framework's frame with a flat, dockable toolbar of 40 by 40 pixel images and
// their greyed twins, a status bar with the key indicators, menu 128 translated into the user's language,
// accelerator table 128 and the version record's full name as its title. It handles Help (F1).
#pragma once

#include "resourceIds.h"
#include "win/winFrame.h"
#include "win/winHandles.h"
#include "win/winStatusBar.h"
#include "win/winToolBar.h"

#include <commctrl.h>

#include <string>

class qwzCQuillonDoc;

class qwzCMainFrame : public winFrame
{
public:
    static constexpr unsigned resourceId = IDR_MAINFRAME;
    static constexpr unsigned helpCommand = ID_HELP_CONTENTS;

    qwzCMainFrame() = default;

    // True when the translated menu replaced the framework's.
    bool menuTranslated() const
    {
        return menuTranslated_;
    }

    // The toolbar's image lists, normal and disabled; null before creation.
    HIMAGELIST normalImages() const
    {
        return normalImages_.get();
    }
    HIMAGELIST disabledImages() const
    {
        return disabledImages_.get();
    }

    // Help: the help file in the HTML Help viewer, or IDS_NO_HELP_FILE when it is missing.
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;

    // The help file: the installation tree's help folder + "\quillon.chm".
    virtual std::wstring helpFile() const;

    // Prompts and tooltips: string `id` through the application's catalog.
    std::wstring commandString(unsigned id) const override;

protected:
    // Menu 128 translated; null (no menu) when it can't be loaded or translated.
    HMENU loadMenu(unsigned resourceId) override;
    bool OnCreate(const CREATESTRUCTW& cs) override;
    // Closed by Windows for an update or an installer (ENDSESSION_CLOSEAPP), Quillon keeps the unsaved
    // text in its recovery file and goes without asking; the restart offers the text again.
    bool OnQueryEndSession(LPARAM flags) override;
    // Activation also has the document look at its file at once; the window's end stops the watch.
    void OnActivate(unsigned state) override;
    void OnDestroy() override;
    void OnDpiChanged(UINT dpi, const RECT& suggested) override;

private:
    // Makes both image lists for a display of `dpi` and gives them to the toolbar; false when an image
    // could not be made (the toolbar then keeps the lists it had).
    bool makeImages(UINT dpi);
    void showHelp();
    // True for a command that must wait while the document's text is still arriving.
    bool waitsForText(unsigned id) const;
    // The document, as Quillon's; null before there is one.
    qwzCQuillonDoc* quillonDoc() const;
    static winCommandTable<qwzCMainFrame> commands();

    winStatusBar statusBar_;
    winToolBar toolBar_;
    // ours: the toolbar only uses them
    winImageList normalImages_;
    winImageList disabledImages_;
    bool menuTranslated_ = false;
};
