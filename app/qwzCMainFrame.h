// Quillon's main window: the framework's frame with menu 128 translated into the user's language,
// accelerator table 128 and the version record's full name as its title. Bars and help come later.
#pragma once

#include "win/winFrame.h"

class qwzCMainFrame : public winFrame
{
public:
    static constexpr unsigned resourceId = 128;

    qwzCMainFrame() = default;

    // True when the translated menu replaced the framework's.
    bool menuTranslated() const
    {
        return menuTranslated_;
    }

protected:
    bool OnCreate(const CREATESTRUCTW& cs) override;

private:
    bool menuTranslated_ = false;
};
