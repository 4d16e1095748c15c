// The About box. Its bold font is made from the copyright control's own font, so that it follows the
// dialog font, and lives as long as the dialog object.
#include "app/qwzCAboutDlg.h"

#include <clocale>

#include "app/qwzCText.h"
#include "app/qwzVersionInfo.h"
#include "res/resource.h"
#include "resourceIds.h"

qwzCAboutDlg::qwzCAboutDlg(HWND parent, winServices* services) : qwzCDialog(IDD_ABOUTBOX, parent, services)
{
    translatedControls.push_back(IDOK);
    translatedControls.push_back(IDC_ABOUT_OTHER_TRADEMARKS);
}

bool qwzCAboutDlg::OnInitDialog()
{
    qwzCDialog::OnInitDialog();
    const qwzVersionInfo& version = qwzVersionInfo::instance();
    qwzAppCatalog& catalog = qwzTheAppCatalog();
    const char* timeLocale = std::setlocale(LC_TIME, nullptr);

    SetWindowTextW(hwnd(), qwzMessage(IDS_ABOUT_CAPTION, version.productName.c_str()).c_str());
    setItemText(IDC_ABOUT_COPYRIGHT, qwzWide(version.copyrightText()));
    setItemText(IDC_ABOUT_BUILD_DATE, qwzMessage(IDS_BUILD_DATE, version.buildDate.c_str()));
    setItemText(IDC_ABOUT_LANGUAGE, qwzMessage(IDS_LANGUAGE_INFO, catalog.requestedLanguage().c_str(),
                                               catalog.usedLanguage().c_str(), timeLocale ? timeLocale : ""));
    setItemText(IDC_ABOUT_TRADEMARK, qwzMessage(IDS_TRADEMARK_NOTICE));

    HWND copyright = GetDlgItem(hwnd(), IDC_ABOUT_COPYRIGHT);
    HFONT dialogFont = reinterpret_cast<HFONT>(SendMessageW(copyright, WM_GETFONT, 0, 0));
    LOGFONTW description = {};
    if (dialogFont && GetObjectW(dialogFont, sizeof description, &description) == sizeof description) {
        description.lfWeight = FW_BOLD;
        boldFont_.reset(CreateFontIndirectW(&description));
    }
    if (boldFont_) {
        for (int id : {IDC_ABOUT_COPYRIGHT, IDC_ABOUT_BUILD_DATE})
            SendMessageW(GetDlgItem(hwnd(), id), WM_SETFONT, reinterpret_cast<WPARAM>(boldFont_.get()), TRUE);
    }
    return true;
}
