// Print preview: takes the view's place in the frame with a bar of its own (Print..., Next Page, Prev
// Page, Two Page/One Page, Zoom In, Zoom Out, Close and the pages shown) and draws the printable's pages
// with the routine that prints them, the printer's units mapped onto the screen. While it shows it stands
// in for the view in command routing: the view's commands are greyed, the print commands print, Print
// Setup lays the pages out again, and the commands that replace the document close it first.
#pragma once

#include "win/winCommandTarget.h"
#include "win/winHandles.h"
#include "win/winPreviewPages.h"
#include "win/winWindow.h"

#include <cstddef>
#include <memory>
#include <string>

class winPrintable;
class winServices;
class winViewHost;

class winPrintPreview : public winWindow, public winCommandTarget, private winPreviewPages::Owner
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

    // The preview of `printable` on `printer` (owned from now on), standing in for `view` in `frame`;
    // Print Setup goes through `services`.
    winPrintPreview(winViewHost& frame, winCommandTarget& view, winServices& services,
                    std::unique_ptr<winPrintable> printable, winOwnedDC printer);
    ~winPrintPreview() override;

    // Lays the pages out and shows the preview in the view's place; false when it could not be made.
    bool create();
    // Gives the frame its view back and frees the pages. Safe from the preview's own handlers: the object
    // stays (without a window) until its owner drops it.
    void close();

    // The first page shown (0-based), the page count, whether two pages show side by side, the zoom
    // (0 is whole pages; each step doubles).
    std::size_t page() const override
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
    int zoom() const override
    {
        return zoom_;
    }
    // Pages shown now: two only at zoom 0, and never past the last.
    std::size_t pagesShown() const override;

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
    static winCommandTable<winPrintPreview> commands();

    HDC printerDC() const override
    {
        return printer_.get();
    }
    winPrintable* printable() const override
    {
        return printable_.get();
    }
    void OnPagesKey(UINT key) override;
    void OnSize();
    void OnButton(int id);
    // Alt+letter: the bar's button whose text underlines that letter; true when one was pressed.
    bool pressMnemonic(wchar_t letter) override;
    void createBar();
    void updateControls();
    bool relayout(winOwnedDC printer);

    winViewHost& frame_;
    winCommandTarget& view_;
    winServices& services_;
    // the printable lets go of the printer before the printer goes: declared after it
    winOwnedDC printer_;
    std::unique_ptr<winPrintable> printable_;
    winPreviewPages pages_{*this};
    winFont barFont_;
    int barHeight_ = 0;
    std::size_t page_ = 0;
    std::size_t pageCount_ = 1;
    bool twoPages_ = false;
    int zoom_ = 0;
    std::wstring savedMessage_;
};
