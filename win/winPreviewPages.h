// The print preview's page area: the sheets on a dark ground, with scroll bars when a zoomed page is
// bigger than the area. A page is drawn by mapping the printer's whole sheet onto a white rectangle
// (MM_ANISOTROPIC, origin moved to the printable corner) and letting the printable draw it exactly as on
// paper; paint goes through a memory bitmap, so paging and zooming never flicker.
#pragma once

#include "win/winWindow.h"

#include <cstddef>

class winPrintable;

class winPreviewPages : public winWindow
{
public:
    // What the area shows and where the keys that page, zoom or close go: the preview.
    class Owner
    {
    public:
        virtual HDC printerDC() const = 0;
        virtual winPrintable* printable() const = 0;
        // The first page shown (0-based), how many show, and the zoom (0: whole pages; each step doubles).
        virtual std::size_t page() const = 0;
        virtual std::size_t pagesShown() const = 0;
        virtual int zoom() const = 0;
        // A key the area does not scroll with (Escape, Page Up/Down, Home, End, plus, minus).
        virtual void OnPagesKey(UINT key) = 0;
        // Alt+letter; true when a button of the bar took it.
        virtual bool pressMnemonic(wchar_t letter) = 0;

    protected:
        ~Owner() = default;
    };

    explicit winPreviewPages(Owner& owner) : owner_(owner) {}
    bool create(HWND parent);
    // Back to the top left corner, scroll bars and picture renewed.
    void reset();
    void update();

protected:
    const wchar_t* className() const override;
    void PreRegisterClass(WNDCLASSEXW& wc) override;
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;

private:
    struct Geometry {
        int sheetWidth, sheetHeight; // one sheet on the screen
        int contentWidth, contentHeight;
        int originX, originY; // the content's corner in the client area
    };
    Geometry geometry() const;
    void OnPaint();
    void drawSheet(HDC dc, const RECT& sheet, std::size_t page);
    void OnKey(UINT key);
    void OnMouseWheel(int delta);
    void scrollTo(int x, int y);
    void OnScroll(int bar, int request);

    Owner& owner_;
    int scrollX_ = 0, scrollY_ = 0;
    bool updating_ = false;
};
