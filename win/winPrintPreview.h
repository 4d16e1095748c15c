// Print preview: takes the view's place in the frame with a bar of its own (Print..., Next Page, Prev
// Page, Two Page/One Page, Zoom In, Zoom Out, Close and the pages shown) and draws the printable's pages
// with the routine that prints them, the printer's units mapped onto the screen. While it shows it stands
// in for the view in command routing: the view's commands are greyed, the print commands print, Print
// Setup lays the pages out again, and the commands that replace the document close it first.
#pragma once

#include "win/winCommandTarget.h"
#include "win/winWindow.h"

#include <cstddef>
#include <memory>
#include <string>

class winFrame;
class winPrintable;

class winPrintPreview : public winWindow, public winCommandTarget
{
public:
    // The bar's controls.
    enum Control : int {
        printButton = 1,
        nextButton,
        prevButton,
        pagesButton,
        zoomInButton,
        zoomOutButton,
        closeButton,
        pageLabel,
    };
    static constexpr int maxZoom = 2;

    // The preview of `printable` on `printer` (owned from now on, deleted with the preview), standing in
    // for `view` in `frame`.
    winPrintPreview(winFrame& frame, winCommandTarget& view, std::unique_ptr<winPrintable> printable, HDC printer);
    ~winPrintPreview() override;

    // Lays the pages out and shows the preview in the view's place; false when it could not be made.
    bool create();
    // Gives the frame its view back and frees the pages. Safe from the preview's own handlers: the object
    // stays (without a window) until its owner drops it.
    void close();

    // The first page shown (0-based), the page count, whether two pages show side by side, the zoom
    // (0 is whole pages; each step doubles).
    std::size_t page() const
    {
        return page_;
    }
    std::size_t pageCount() const
    {
        return pageCount_;
    }
    bool twoPages() const
    {
        return twoPages_;
    }
    int zoom() const
    {
        return zoom_;
    }
    // Pages shown now: two only at zoom 0, and never past the last.
    std::size_t pagesShown() const;

    // Shows `first` (clamped to the pages there are) and what follows it.
    void showPage(std::size_t first);
    void setTwoPages(bool two);
    void setZoom(int zoom);

    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;

protected:
    const wchar_t* className() const override;
    void PreRegisterClass(WNDCLASSEXW& wc) override;
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;

private:
    class Pages;
    friend class Pages;

    void OnSize();
    void OnButton(int id);
    // Alt+letter: the bar's button whose text underlines that letter; true when one was pressed.
    bool pressMnemonic(wchar_t letter);
    void createBar();
    void updateControls();
    bool relayout(HDC printer);

    winFrame& frame_;
    winCommandTarget& view_;
    std::unique_ptr<winPrintable> printable_;
    HDC printer_;
    std::unique_ptr<Pages> pages_;
    HFONT barFont_ = nullptr;
    int barHeight_ = 0;
    std::size_t page_ = 0;
    std::size_t pageCount_ = 1;
    bool twoPages_ = false;
    int zoom_ = 0;
    std::wstring savedMessage_;
};
