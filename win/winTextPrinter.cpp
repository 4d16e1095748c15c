// The text's pages. The printing font stays selected in the printer for the life of a layout, so every
// measurement, at layout time or when a page is drawn, comes from the same font on the same device.
#include "win/winTextPrinter.h"

#include "win/winHandles.h"
#include "win/winIds.h"
#include "win/winText.h"

#include <algorithm>
#include <vector>

// The printer's advance widths, each character measured once.
class winTextPrinter::Measure : public utTextMeasure
{
public:
    explicit Measure(HDC dc) : dc_(dc), basic_(0x10000, -1) {}
    int advance(const char16_t* c, std::size_t units) override
    {
        if (units == 1 && basic_[*c] >= 0)
            return basic_[*c];
        SIZE size = {};
        if (!GetTextExtentPoint32W(dc_, reinterpret_cast<const wchar_t*>(c), int(units), &size))
            size.cx = 0;
        if (units == 1)
            basic_[*c] = int(size.cx);
        return int(size.cx);
    }

private:
    HDC dc_;
    std::vector<int> basic_;
};

winTextPrinter::winTextPrinter(std::wstring text, FontFor fontFor)
    : text_(std::move(text)), fontFor_(std::move(fontFor))
{
}

winTextPrinter::~winTextPrinter()
{
    release();
}

void winTextPrinter::release()
{
    layout_.reset();
    measure_.reset();
    selected_.reset();
    font_.reset();
}

std::size_t winTextPrinter::beginPrinting(HDC printer)
{
    release();
    LOGFONTW logFont = fontFor_(printer);
    font_.reset(CreateFontIndirectW(&logFont));
    selected_.emplace(printer, font_.get());
    TEXTMETRICW metrics = {};
    GetTextMetricsW(printer, &metrics);
    lineHeight_ = std::max(int(metrics.tmHeight + metrics.tmExternalLeading), 1);

    utPageSheet sheet;
    sheet.width = GetDeviceCaps(printer, PHYSICALWIDTH);
    sheet.height = GetDeviceCaps(printer, PHYSICALHEIGHT);
    sheet.offsetX = GetDeviceCaps(printer, PHYSICALOFFSETX);
    sheet.offsetY = GetDeviceCaps(printer, PHYSICALOFFSETY);
    sheet.printableWidth = GetDeviceCaps(printer, HORZRES);
    sheet.printableHeight = GetDeviceCaps(printer, VERTRES);
    sheet.dpiX = GetDeviceCaps(printer, LOGPIXELSX);
    sheet.dpiY = GetDeviceCaps(printer, LOGPIXELSY);
    frame_ = utPageFrame::fit(sheet, lineHeight_);

    measure_ = std::make_unique<Measure>(printer);
    static_assert(sizeof(wchar_t) == sizeof(char16_t), "the layout reads the text's UTF-16 units");
    layout_ = std::make_unique<utPageLayout>(reinterpret_cast<const char16_t*>(text_.data()), text_.size(), *measure_,
                                             frame_.width, frame_.linesPerPage);
    return layout_->paginate();
}

std::vector<utPageLayout::Run> winTextPrinter::pageRuns(std::size_t page)
{
    return layout_ ? layout_->pageRuns(page) : std::vector<utPageLayout::Run>();
}

void winTextPrinter::drawRun(HDC target, int x, int y, const wchar_t* text, std::size_t count)
{
    // the advances the layout measured, so no device places a character elsewhere
    std::vector<INT> dx(count, 0);
    const auto* units = reinterpret_cast<const char16_t*>(text);
    for (std::size_t i = 0; i < count; ++i) {
        bool pair = units[i] >= 0xD800 && units[i] <= 0xDBFF && i + 1 < count && units[i + 1] >= 0xDC00 &&
                    units[i + 1] <= 0xDFFF;
        dx[i] = measure_->advance(units + i, pair ? 2 : 1);
        if (pair)
            ++i;
    }
    ExtTextOutW(target, x, y, 0, nullptr, text, UINT(count), dx.data());
}

void winTextPrinter::printPage(HDC target, std::size_t page)
{
    if (!layout_)
        return;
    winSelection font(target, font_.get());
    SetBkMode(target, TRANSPARENT);
    SetTextColor(target, RGB(0, 0, 0));
    SetTextAlign(target, TA_LEFT | TA_TOP | TA_NOUPDATECP);
    for (const utPageLayout::Run& run : layout_->pageRuns(page))
        drawRun(target, frame_.left + run.x, frame_.top + int(run.row) * lineHeight_, text_.data() + run.start,
                run.end - run.start);

    std::wstring footer = winText::formatId(WIN_IDS_PAGE_NUMBER, {std::to_wstring(page + 1)});
    int width = 0;
    for (wchar_t c : footer)
        width += measure_->advance(reinterpret_cast<const char16_t*>(&c), 1);
    drawRun(target, frame_.left + (frame_.width - width) / 2, frame_.footerTop, footer.data(), footer.size());
}
