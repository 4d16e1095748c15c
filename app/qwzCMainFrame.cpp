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
#include "resourceIds.h"
#include "win/winApp.h"
#include "win/winHtmlHelp.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace
{

// New, Open, Save, -, Undo, Cut, Copy, Paste, -, Print, -, About; each image is the bitmap resource with
// the command's id
const std::vector<unsigned> toolBarButtons = {57600, 57601, 57603, 0, 57643, 57635, 57634, 57637, 0, 57607, 0, 57664};
const std::vector<unsigned> indicators = {ID_INDICATOR_CAPS, ID_INDICATOR_NUM, ID_INDICATOR_SCRL};
const int imageSize = 40;
const SIZE buttonSize = {47, 46};

struct BitmapDeleter {
    void operator()(HBITMAP bitmap) const
    {
        DeleteObject(bitmap);
    }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

// A device-independent bitmap of the image for the image list; every pixel opaque, since the image has
// been composed over the button face already.
Bitmap toBitmap(const qwzDib& dib)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = dib.width();
    info.bmiHeader.biHeight = -dib.height();
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    Bitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
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
    Bitmap bitmap = toBitmap(dib);
    return bitmap && ImageList_Add(list, bitmap.get(), nullptr) >= 0;
}

int scaledToDpi(int pixels, UINT dpi)
{
    return MulDiv(pixels, int(dpi), 96);
}

} // namespace

bool qwzCMainFrame::OnCreate(const CREATESTRUCTW& cs)
{
    if (!winFrame::OnCreate(cs))
        return false;
    if (!toolBar_.create(hwnd(), toolBarId, TBSTYLE_FLAT | TBSTYLE_TOOLTIPS))
        return false;
    UINT dpi = GetDpiForWindow(hwnd());
    if (!makeImages(dpi ? dpi : 96) || !toolBar_.setButtons(toolBarButtons))
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

LRESULT qwzCMainFrame::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    auto* doc = dynamic_cast<qwzCQuillonDoc*>(document());
    // nobody may be there to answer "Save changes?" while an update restarts Windows
    if (doc && msg == WM_QUERYENDSESSION && (lParam & ENDSESSION_CLOSEAPP) && doc->keepForRestart())
        return TRUE;
    if (doc && msg == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE)
        doc->lookAtFile();
    // no question about the file once the window is going
    if (doc && msg == WM_DESTROY)
        doc->stopWatching();
    return winFrame::HandleMessage(msg, wParam, lParam);
}

HMENU qwzCMainFrame::loadMenu(unsigned id)
{
    qwzCMenu menu;
    menuTranslated_ = menu.load(id);
    return menuTranslated_ ? menu.detach() : nullptr;
}

bool qwzCMainFrame::makeImages(UINT dpi)
{
    int size = scaledToDpi(imageSize, dpi);
    ImageList normal(ImageList_Create(size, size, ILC_COLORDDB, 0, 4));
    ImageList disabled(ImageList_Create(size, size, ILC_COLORDDB, 0, 4));
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
    toolBar_.setSizes({scaledToDpi(buttonSize.cx, dpi), scaledToDpi(buttonSize.cy, dpi)}, {size, size});
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

bool qwzCMainFrame::onCommand(unsigned id)
{
    if (id == helpCommand) {
        showHelp();
        return true;
    }
    return winFrame::onCommand(id);
}

bool qwzCMainFrame::onUpdateCommand(unsigned id, winCommandState& state)
{
    if (id == helpCommand) {
        state.enabled = true;
        return true;
    }
    return winFrame::onUpdateCommand(id, state);
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
        if (winApp* app = winApp::instance())
            app->messageBox(qwzMessage(IDS_NO_HELP_FILE), MB_OK | MB_ICONERROR);
        return;
    }
    // a viewer that can't be loaded is not reported
    winHtmlHelp::displayTopic(file);
}
