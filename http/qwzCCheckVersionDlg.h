// The version check as the user meets it: runVersionCheck asks the product-attribute server for the
// latest version while the status bar says so and the wait cursor shows, and qwzCCheckVersionDlg ("Check
// For Later Version") shows the verdict with its link.
#pragma once

#include "app/qwzCDialog.h"
#include "app/qwzCStaticWithLink.h"
#include "foundation/utString.h"
#include "http/qwzVersionCheck.h"

class winFrame;

// Asks the server (QWZ_PRODUCT_SERVER or the built-in one) for the attributes "version" and
// "version_string" of the product, both always, and fills `result`. Returns 1: failures are reported
// through the message. The status text of `frame` (when given) says so meanwhile; it and the cursor are
// restored on return.
int runVersionCheck(VersionCheckResult& result, winFrame* frame);

// The start-up check: unless QWZ_DISABLE_STARTUP_VERSION_CHECK is set to a non-empty value, runs the
// check and shows the dialog over `frame` when the program is not the latest version.
void runStartupVersionCheck(winFrame& frame, winServices* services);

class qwzCCheckVersionDlg : public qwzCDialog
{
public:
    // Runs the check itself (the Help menu's command), with `frame`'s status text saying so.
    qwzCCheckVersionDlg(winFrame* frame, winServices* services);
    // Shows the message of a check already made (start-up).
    qwzCCheckVersionDlg(const VersionCheckResult& result, HWND parent, winServices* services);

    const qwzCStaticWithLink& link() const
    {
        return link_;
    }

protected:
    void doDataExchange(winDataExchange& dx) override;
    bool OnInitDialog() override;
    bool OnNotify(const NMHDR& header, LRESULT& result) override;

private:
    utString message_;
    qwzCStaticWithLink link_;
};
