// A text as printed pages: laid out by utPageLayout with the printer's own measurements of the printing
// font, each page drawn with exactly those advances and numbered at its foot ("Page %1"). Printing and
// preview draw through printPage alike.
#pragma once

#include "foundation/utPageLayout.h"
#include "win/winHandles.h"
#include "win/winPrintable.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class winTextPrinter : public winPrintable
{
public:
    // The font to print with, as a logical font for `printer`.
    using FontFor = std::function<LOGFONTW(HDC printer)>;

    winTextPrinter(std::wstring text, FontFor fontFor);
    ~winTextPrinter() override;
    winTextPrinter(const winTextPrinter&) = delete;
    winTextPrinter& operator=(const winTextPrinter&) = delete;

    std::size_t beginPrinting(HDC printer) override;
    void printPage(HDC target, std::size_t page) override;

    // The layout of the last beginPrinting: where text and page numbers go.
    const utPageFrame& frame() const
    {
        return frame_;
    }
    // The runs of page `page`, as printPage draws them.
    std::vector<utPageLayout::Run> pageRuns(std::size_t page);
    const std::wstring& text() const
    {
        return text_;
    }

private:
    class Measure;
    void release();
    // Draws `count` units at `text` with the measured advances.
    void drawRun(HDC target, int x, int y, const wchar_t* text, std::size_t count);

    std::wstring text_;
    FontFor fontFor_;
    // the printing font, selected in the printer from beginPrinting until the next or the end
    winFont font_;
    std::optional<winSelection> selected_;
    std::unique_ptr<Measure> measure_;
    std::unique_ptr<utPageLayout> layout_;
    utPageFrame frame_;
    int lineHeight_ = 1;
};
