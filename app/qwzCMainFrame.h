// Quillon's main window: the framework's frame with a flat, dockable toolbar of 40 by 40 pixel images and
// their greyed twins, a status bar with the key indicators, menu 128 translated into the user's language,
// accelerator table 128 and the version record's full name as its title. It handles Help (F1).
#pragma once

#include "win/winFrame.h"
#include "win/winStatusBar.h"
#include "win/winToolBar.h"

#include <commctrl.h>

#include <memory>
#include <string>
#include <type_traits>

class qwzCMainFrame : public winFrame
{
public:
    static constexpr unsigned resourceId = 128;
    static constexpr unsigned helpCommand = 236;

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

    // Help 236: the help file in the HTML Help viewer, or message 237 when it is missing.
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
    // Activation also has the document look at its file at once; the window's end stops the watch.
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void OnDpiChanged(UINT dpi, const RECT& suggested) override;

private:
    // Makes both image lists for a display of `dpi` and gives them to the toolbar; false when an image
    // could not be made (the toolbar then keeps the lists it had).
    bool makeImages(UINT dpi);
    void showHelp();

    struct ImageListDestroyer {
        void operator()(HIMAGELIST list) const
        {
            ImageList_Destroy(list);
        }
    };
    using ImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDestroyer>;

    winStatusBar statusBar_;
    winToolBar toolBar_;
    // ours: the toolbar only uses them
    ImageList normalImages_;
    ImageList disabledImages_;
    bool menuTranslated_ = false;
};
