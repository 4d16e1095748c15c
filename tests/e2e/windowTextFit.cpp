// The measuring half of `windowText fit`, loaded into the program under test by a message hook, so that
// each control's text is measured in the control's own font, and its characters are looked for there:
// for every visible static text, button and rich edit control of the window the hook's message is posted
// to, one line (see windowText.cpp) into
// %TEMP%\windowText-fit-<asking process>.txt, then the asker's event is set.
#include <windows.h>

#include <richedit.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

namespace
{

// The room a control gives its text and the flags it draws it with, as the system's static and button
// controls do; false for a control that draws no text of its own (icons, frames, owner-drawn).
bool textRoom(HWND window, RECT& room, UINT& flags)
{
    GetClientRect(window, &room);
    LONG style = GetWindowLongW(window, GWL_STYLE);
    wchar_t cls[64] = {};
    GetClassNameW(window, cls, 64);
    if (!_wcsicmp(cls, L"Static")) {
        LONG type = style & SS_TYPEMASK;
        bool wraps = type == SS_LEFT || type == SS_CENTER || type == SS_RIGHT;
        if (!wraps && type != SS_SIMPLE && type != SS_LEFTNOWORDWRAP)
            return false;
        // a vertically centred text is one line
        wraps = wraps && !(style & SS_CENTERIMAGE);
        flags = DT_EXPANDTABS | (wraps ? DT_WORDBREAK : DT_SINGLELINE) | ((style & SS_NOPREFIX) ? DT_NOPREFIX : 0);
        return true;
    }
    if (_wcsicmp(cls, L"Button"))
        return false;
    flags = (style & BS_MULTILINE) ? DT_WORDBREAK : DT_SINGLELINE;
    switch (style & BS_TYPEMASK) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
        // inside the raised edge and the focus rectangle
        InflateRect(&room, -3, -3);
        return true;
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
    case BS_3STATE:
    case BS_AUTO3STATE:
        // beside the box and the gap after it
        room.left += GetSystemMetrics(SM_CXMENUCHECK) + 4;
        return true;
    case BS_GROUPBOX:
        // on the frame's top line, between its corners
        InflateRect(&room, -8, 0);
        flags = DT_SINGLELINE;
        return true;
    default:
        return false;
    }
}

// How many of the text's characters beyond ASCII come out as the font's missing-glyph box, linked fonts
// included: each is drawn alone and compared with a character that no font has.
int missingGlyphs(HFONT font, const wchar_t* text)
{
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 64, -64, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ oldBitmap = SelectObject(dc, bitmap);
    HGDIOBJ oldFont = SelectObject(dc, font);
    auto draw = [&](wchar_t c) {
        std::memset(bits, 0xFF, 64 * 64 * 4);
        TextOutW(dc, 2, 2, &c, 1);
        GdiFlush();
        return std::string(static_cast<const char*>(bits), 64 * 64 * 4);
    };
    const std::string box = draw(L'\x0378');
    std::wstring seen;
    int missing = 0;
    for (const wchar_t* c = text; *c; ++c) {
        if (*c < 0x80 || (*c >= 0xD800 && *c < 0xE000) || seen.find(*c) != std::wstring::npos)
            continue;
        seen += *c;
        missing += draw(*c) == box;
    }
    SelectObject(dc, oldFont);
    SelectObject(dc, oldBitmap);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return missing;
}

void utf8(FILE* out, const wchar_t* text)
{
    char bytes[16384];
    int n = WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
    for (int i = 0; i + 1 < n; ++i) {
        if (bytes[i] == '\n')
            std::fputs("\\n", out);
        else if (bytes[i] != '\r')
            std::fputc(bytes[i], out);
    }
}

// What one control's text needs and has.
struct Measure {
    bool fits = false;
    long needWidth = 0, needHeight = 0, width = 0, height = 0;
    int missing = 0;
    wchar_t face[LF_FACESIZE] = {};
};

// A static text or a button: its text laid out as the control lays it out, in the control's font.
bool measureText(HWND window, const wchar_t* text, Measure& m)
{
    RECT room = {};
    UINT flags = 0;
    if (!textRoom(window, room, flags))
        return false;
    HFONT font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    if (!font)
        font = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    HDC dc = GetDC(window);
    HGDIOBJ old = SelectObject(dc, font);
    GetTextFaceW(dc, LF_FACESIZE, m.face);
    RECT need = {0, 0, room.right - room.left, 0};
    DrawTextW(dc, text, -1, &need, flags | DT_CALCRECT);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    m.needWidth = need.right;
    m.needHeight = need.bottom;
    m.width = room.right - room.left;
    m.height = room.bottom - room.top;
    m.fits = m.needWidth <= m.width && m.needHeight <= m.height;
    m.missing = missingGlyphs(font, text);
    return true;
}

// A rich edit control shapes its text in the face of its character format alone, without the fonts
// linked to it: its characters are looked for in that face. Its text fits when it needs no scrolling.
bool measureRichEdit(HWND window, const wchar_t* text, Measure& m)
{
    CHARFORMAT2W format = {};
    format.cbSize = sizeof format;
    SendMessageW(window, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
    HDC dc = GetDC(window);
    LOGFONTW description = {};
    description.lfHeight = -MulDiv(format.yHeight, GetDeviceCaps(dc, LOGPIXELSY), 1440);
    description.lfWeight = (format.dwEffects & CFE_BOLD) ? FW_BOLD : format.wWeight;
    description.lfCharSet = format.bCharSet;
    description.lfPitchAndFamily = format.bPitchAndFamily;
    lstrcpynW(description.lfFaceName, format.szFaceName, LF_FACESIZE);
    HFONT font = CreateFontIndirectW(&description);
    HGDIOBJ old = SelectObject(dc, font);
    GetTextFaceW(dc, LF_FACESIZE, m.face);
    for (const wchar_t* c = text; *c; ++c) {
        WORD glyph = 0;
        if (*c >= 0x80 && (*c < 0xD800 || *c >= 0xE000) &&
            GetGlyphIndicesW(dc, c, 1, &glyph, GGI_MARK_NONEXISTING_GLYPHS) == 1 && glyph == 0xFFFF)
            ++m.missing;
    }
    SelectObject(dc, old);
    DeleteObject(font);
    ReleaseDC(window, dc);
    RECT client = {};
    GetClientRect(window, &client);
    SCROLLINFO scroll = {sizeof scroll, SIF_RANGE | SIF_PAGE, 0, 0, 0, 0, 0};
    bool scrolls = GetScrollInfo(window, SB_VERT, &scroll) && scroll.nPage && scroll.nMax >= int(scroll.nPage);
    m.width = m.needWidth = client.right;
    m.height = client.bottom;
    m.needHeight = scrolls ? scroll.nMax - scroll.nMin + 1 : client.bottom;
    m.fits = !scrolls;
    return true;
}

BOOL CALLBACK measure(HWND window, LPARAM out)
{
    wchar_t text[4096] = {}, cls[64] = {};
    GetWindowTextW(window, text, 4096);
    GetClassNameW(window, cls, 64);
    Measure m;
    if (!IsWindowVisible(window) || !*text)
        return TRUE;
    if (!(_wcsnicmp(cls, L"RichEdit", 8) ? measureText(window, text, m) : measureRichEdit(window, text, m)))
        return TRUE;
    FILE* f = reinterpret_cast<FILE*>(out);
    std::fprintf(f, "%d\t", GetDlgCtrlID(window));
    utf8(f, cls);
    std::fprintf(f, "\t%d\t%ld\t%ld\t%ld\t%ld\t%d\t", m.fits ? 1 : 0, m.needWidth, m.needHeight, m.width, m.height,
                 m.missing);
    utf8(f, m.face);
    std::fputc('\t', f);
    utf8(f, text);
    std::fputc('\n', f);
    return TRUE;
}

} // namespace

extern "C" __declspec(dllexport) LRESULT CALLBACK fitHook(int code, WPARAM removed, LPARAM message)
{
    static const UINT ask = RegisterWindowMessageW(L"windowText.fit");
    const MSG* msg = reinterpret_cast<const MSG*>(message);
    if (code == HC_ACTION && removed == PM_REMOVE && msg->message == ask) {
        wchar_t name[64] = {}, path[MAX_PATH + 64] = {};
        swprintf(name, 64, L"windowText-fit-%lu", static_cast<unsigned long>(msg->wParam));
        GetTempPathW(MAX_PATH, path);
        wcscat(path, name);
        wcscat(path, L".txt");
        if (FILE* f = _wfopen(path, L"wb")) {
            EnumChildWindows(msg->hwnd, measure, reinterpret_cast<LPARAM>(f));
            std::fclose(f);
        }
        if (HANDLE done = OpenEventW(EVENT_MODIFY_STATE, FALSE, name)) {
            SetEvent(done);
            CloseHandle(done);
        }
    }
    return CallNextHookEx(nullptr, code, removed, message);
}
