// The main frame. A menu that cannot be loaded or translated leaves the window without one, without
// docking and with the framework's title; creation still succeeds. Any failure of the bars or their images
// fails creation.
#include "app/qwzCMainFrame.h"

#include "app/qwzCMenu.h"
#include "app/qwzCText.h"
#include "app/qwzDib.h"
#include "app/qwzInstallDir.h"
#include "app/qwzVersionInfo.h"
#include "document/qwzCQuillonDoc.h"
#include "win/winDpi.h"
#include "win/winHtmlHelp.h"
#include "win/winServices.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

namespace
{

// each image is the bitmap resource with the command's id; 0 is a separator
const std::vector<unsigned> toolBarButtons = {ID_FILE_NEW, ID_FILE_OPEN, ID_FILE_SAVE,  0, ID_EDIT_UNDO,
                                              ID_EDIT_CUT, ID_EDIT_COPY, ID_EDIT_PASTE, 0, ID_FILE_PRINT,
                                              0,           ID_APP_ABOUT};
const std::vector<unsigned> indicators = {ID_INDICATOR_CAPS, ID_INDICATOR_NUM, ID_INDICATOR_SCRL};
const int imageSize = 40;
const SIZE buttonSize = {47, 46};

// A device-independent bitmap of the image for the image list; every pixel opaque, since the image has
// been composed over the button face already.
winBitmap toBitmap(const qwzDib& dib)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = dib.width();
    info.bmiHeader.biHeight = -dib.height();
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    winBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap || !bits)
        return nullptr;
    auto* out = static_cast<std::uint8_t*>(bits);
    size_t count = size_t(dib.width()) * size_t(dib.height()) * 4;
    std::copy(dib.bits(), dib.bits() + count, out);
    for (size_t i = 3; i < count; i += 4)
        out[i] = 255;
    return bitmap;
}

bool addImage(HIMAGELIST list, const qwzDib& dib)
{
    winBitmap bitmap = toBitmap(dib);
    return bitmap && ImageList_Add(list, bitmap.get(), nullptr) >= 0;
}

} // namespace

bool qwzCMainFrame::OnCreate(const CREATESTRUCTW& cs)
{
    if (!winFrame::OnCreate(cs))
        return false;
    if (!toolBar_.create(hwnd(), toolBarId, TBSTYLE_FLAT | TBSTYLE_TOOLTIPS))
        return false;
    if (!makeImages(winDpi::of(hwnd())) || !toolBar_.setButtons(toolBarButtons))
        return false;
    if (!statusBar_.create(hwnd(), statusBarId) || !statusBar_.setIndicators(indicators))
        return false;
    if (menuTranslated_) {
        toolBar_.enableDocking(true);
        setAppTitle(qwzWide(qwzVersionInfo::instance().fullName));
    }
    setBars(&toolBar_, &statusBar_);
    return true;
}

bool qwzCMainFrame::OnQueryEndSession(LPARAM flags)
{
    // nobody may be there to answer "Save changes?" while an update restarts Windows
    if (flags & ENDSESSION_CLOSEAPP)
        if (qwzCQuillonDoc* doc = quillonDoc(); doc && doc->keepForRestart())
            return true;
    return winFrame::OnQueryEndSession(flags);
}

void qwzCMainFrame::OnActivate(unsigned state)
{
    // coming back to the window, the document looks at its file at once
    if (qwzCQuillonDoc* doc = quillonDoc(); doc && state != WA_INACTIVE)
        doc->lookAtFile();
    winFrame::OnActivate(state);
}

void qwzCMainFrame::OnDestroy()
{
    // no question about the file once the window is going
    if (qwzCQuillonDoc* doc = quillonDoc())
        doc->stopWatching();
    winFrame::OnDestroy();
}

qwzCQuillonDoc* qwzCMainFrame::quillonDoc() const
{
    return dynamic_cast<qwzCQuillonDoc*>(document());
}

HMENU qwzCMainFrame::loadMenu(unsigned id)
{
    qwzCMenu menu;
    menuTranslated_ = menu.load(id);
    return menuTranslated_ ? menu.detach() : nullptr;
}

bool qwzCMainFrame::makeImages(UINT dpi)
{
    int size = winDpi::scale(imageSize, dpi);
    winImageList normal(ImageList_Create(size, size, ILC_COLORDDB, 0, 4));
    winImageList disabled(ImageList_Create(size, size, ILC_COLORDDB, 0, 4));
    bool ok = normal && disabled;
    const qwzDib::Rgb face = platform::systemColour(platform::SystemColour::ButtonFace);
    const qwzDib::Rgb shadow = platform::systemColour(platform::SystemColour::ButtonShadow);
    for (size_t i = 0; ok && i < toolBarButtons.size(); ++i) {
        if (toolBarButtons[i] == 0)
            continue;
        qwzDib image;
        int loaded = image.load(toolBarButtons[i]);
        ok = loaded != 0;
        if (!ok)
            break;
        image.paintEdge(0);
        if (loaded == 2)
            image = image.composedOver(face);
        if (image.width() != size || image.height() != size)
            image = image.scaled(size, size);
        qwzDib greyed = image;
        greyed.recolour(shadow, face, {255, 255, 255}, {255, 0, 255}, 0);
        ok = addImage(normal.get(), image) && addImage(disabled.get(), greyed);
    }
    if (!ok)
        return false;
    toolBar_.setImageLists(normal.get(), disabled.get());
    toolBar_.setSizes({winDpi::scale(buttonSize.cx, dpi), winDpi::scale(buttonSize.cy, dpi)}, {size, size});
    // the toolbar holds the new lists now, so the old ones can go
    normalImages_ = std::move(normal);
    disabledImages_ = std::move(disabled);
    return true;
}

void qwzCMainFrame::OnDpiChanged(UINT dpi, const RECT& suggested)
{
    makeImages(dpi);
    toolBar_.setSide(toolBar_.side());
    winFrame::OnDpiChanged(dpi, suggested);
}

winCommandTable<qwzCMainFrame> qwzCMainFrame::commands()
{
    static const winCommand<qwzCMainFrame> table[] = {
        {ID_HELP_CONTENTS, [](qwzCMainFrame& frame, unsigned) { frame.showHelp(); }},
    };
    return table;
}

bool qwzCMainFrame::waitsForText(unsigned id) const
{
    static constexpr unsigned wholeTextCommands[] = {ID_FILE_SAVE,         ID_FILE_SAVE_AS,       ID_FILE_PRINT,
                                                     ID_FILE_PRINT_DIRECT, ID_FILE_PRINT_PREVIEW, ID_EDIT_FIND,
                                                     ID_EDIT_GOTO_LINE};
    // the text's own commands, while the text (not a preview of it) shows
    const qwzCQuillonDoc* doc = quillonDoc();
    if (viewOverlay() || !doc || !doc->loading())
        return false;
    return std::find(std::begin(wholeTextCommands), std::end(wholeTextCommands), id) != std::end(wholeTextCommands);
}

bool qwzCMainFrame::onCommand(unsigned id)
{
    // an accelerator reaches here even when its menu item is greyed
    if (waitsForText(id))
        return true;
    return winRunCommand(commands(), *this, id) || winFrame::onCommand(id);
}

bool qwzCMainFrame::onUpdateCommand(unsigned id, winCommandState& state)
{
    if (waitsForText(id)) {
        state.enabled = false;
        return true;
    }
    return winUpdateCommand(commands(), *this, id, state) || winFrame::onUpdateCommand(id, state);
}

std::wstring qwzCMainFrame::commandString(unsigned id) const
{
    std::string english = platform::loadString(id);
    return english.empty() ? std::wstring() : qwzWide(translate(english.c_str()));
}

std::wstring qwzCMainFrame::helpFile() const
{
    return qwzWide(installDir(Help)) + L"\\quillon.chm";
}

void qwzCMainFrame::showHelp()
{
    std::wstring file = helpFile();
    DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        if (winServices* app = services())
            app->messageBox(qwzMessage(IDS_NO_HELP_FILE), MB_OK | MB_ICONERROR);
        return;
    }
    // a viewer that can't be loaded is not reported
    winHtmlHelp::displayTopic(file);
}
